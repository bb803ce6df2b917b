#include "orxctl/Fleet.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <utility>

namespace orx::orxctl {

Fleet::Fleet(std::vector<Target> daemons) : targets(std::move(daemons)), clients(targets.size()) {}

std::vector<Outcome> Fleet::doForAll(const Errand& errand) {
    constexpr std::size_t mostThreads = 256;
    std::vector<Outcome> outcomes(size());
    std::atomic<std::size_t> next = 0;
    const auto doSome = [&] {
        for (auto number = next++; number < size(); number = next++)
            outcomes[number] = doFor(number, errand);
    };
    std::vector<std::jthread> threads;
    for (std::size_t others = std::min(size(), mostThreads); others > 1; --others)
        threads.emplace_back(doSome);
    doSome();
    threads.clear();  // waits for them
    return outcomes;
}

Outcome Fleet::doFor(std::size_t number, const Errand& errand) {
    try {
        auto& client = clients[number];
        if (!client) client.emplace(targets[number].address);
        return errand(*client, number);
    } catch (const std::runtime_error& error) {
        return {ExitStatus::noAnswer, error.what()};
    }
}

}  // namespace orx::orxctl
