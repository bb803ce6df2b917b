#include "orxctl/Fleet.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

namespace orx::orxctl {

namespace {

/// Calls `work` for all numbers below `count`, as many at a time as there can be threads.
void doSideBySide(std::size_t count, const std::function<void(std::size_t)>& work) {
    constexpr std::size_t mostThreads = 256;
    std::atomic<std::size_t> next = 0;
    const auto doSome = [&] {
        for (auto number = next++; number < count; number = next++)
            work(number);
    };
    std::vector<std::jthread> threads;
    try {
        for (auto others = std::min(count, mostThreads); others > 1; --others)
            threads.emplace_back(doSome);
    } catch (const std::system_error&) {
        // Those that there are do it all, only later.
    }
    doSome();
}

}  // namespace

Fleet::Fleet(std::vector<Target> daemons)
    : targets(std::move(daemons)), clients(targets.size()), failures(targets.size()) {}

std::vector<Outcome> Fleet::doForAll(const Errand& errand) {
    if (firsts.empty()) lookUp();
    std::vector<Outcome> outcomes(size());
    doSideBySide(size(), [&](std::size_t number) {
        if (firsts[number] == number) outcomes[number] = doFor(number, errand);
    });
    for (std::size_t number = 0; number < size(); ++number)
        if (firsts[number] != number) outcomes[number] = outcomes[firsts[number]];
    return outcomes;
}

void Fleet::lookUp() {
    doSideBySide(size(), [this](std::size_t number) {
        try {
            clients[number].emplace(targets[number].address);
        } catch (const std::runtime_error& error) {
            failures[number] = error.what();
        }
    });
    for (std::size_t number = 0; number < size(); ++number)
        firsts.push_back(firstLike(number));
}

std::size_t Fleet::firstLike(std::size_t number) const {
    const auto& wanted = clients[number];
    const auto same = std::ranges::find_if(clients, [&wanted](const auto& client) {
        return client && wanted && client->hasSamePeer(*wanted);
    });
    return wanted ? static_cast<std::size_t>(same - clients.begin()) : number;
}

Outcome Fleet::doFor(std::size_t number, const Errand& errand) const {
    if (!clients[number]) return {ExitStatus::noAnswer, failures[number]};
    try {
        return errand(*clients[number], number);
    } catch (const std::runtime_error& error) {
        return {ExitStatus::noAnswer, error.what()};
    }
}

}  // namespace orx::orxctl
