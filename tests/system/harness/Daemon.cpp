#include "system/harness/Daemon.h"

#include <cstdlib>
#include <iterator>
#include <regex>
#include <sstream>

#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

std::vector<std::string> daemonCommand() {
    const char* chosen = std::getenv("ORX_TEST_DAEMON");
    if (chosen == nullptr) return {ORX_EXECUTABLE};
    std::istringstream words(chosen);
    return {std::istream_iterator<std::string>(words), {}};
}

ChildStart startOf(const std::string& prefix, const Launch& launch) {
    ChildStart start{.command = launch.through,
                     .environment = {"ORX_TEST_PREFIX=" + prefix},
                     .sessionLeader = launch.sessionLeader,
                     .closedDescriptors = launch.closedDescriptors};
    start.environment.insert(start.environment.end(), launch.environment.begin(),
                             launch.environment.end());
    const auto command = daemonCommand();
    start.command.insert(start.command.end(), command.begin(), command.end());
    start.command.insert(start.command.end(), launch.arguments.begin(), launch.arguments.end());
    return start;
}

std::size_t find(const std::string& console, const std::string& line, std::size_t from) {
    for (auto start = from; start < console.size(); start = console.find('\n', start) + 1) {
        const auto end = console.find('\n', start);
        if (end == std::string::npos) break;
        if (console.compare(start, end - start, line) == 0) return end + 1;
    }
    return std::string::npos;
}

}  // namespace

Daemon::Daemon(const std::string& prefix, const Launch& launch)
    : process(startOf(prefix, launch)) {}

std::size_t Daemon::waitForLine(const std::string& line, std::size_t from) const {
    std::size_t behind = std::string::npos;
    process.output().waitUntil(
        [&](const std::string& bytes) {
            behind = find(bytes, line, from);
            return behind != std::string::npos;
        },
        "the console line \"" + line + "\"");
    return behind;
}

std::size_t Daemon::waitForText(const std::string& text, std::size_t from) const {
    std::size_t end = std::string::npos;
    process.output().waitUntil(
        [&](const std::string& bytes) {
            const auto start = bytes.find(text, from);
            end = start != std::string::npos ? bytes.find('\n', start) : start;
            return end != std::string::npos;
        },
        "the console text \"" + text + "\"");
    return end + 1;
}

std::vector<std::string> Daemon::lines(std::size_t from) const {
    std::vector<std::string> complete;
    std::istringstream text(process.output().bytes().substr(from));
    for (std::string line; std::getline(text, line) && !text.eof();)
        complete.push_back(line);
    return complete;
}

std::vector<std::string> Daemon::takeLines() {
    auto complete = lines();
    std::size_t size = 0;
    for (const auto& line : complete)
        size += line.size() + 1;
    process.output().forget(size);
    return complete;
}

std::vector<std::string> Daemon::socketNumbers() const {
    std::vector<std::string> numbers;
    const std::regex created(R"(\[LISTENER\] created socket #(\d+) @ .*)");
    for (const auto& line : lines()) {
        std::smatch match;
        if (std::regex_match(line, match, created)) numbers.push_back(match[1]);
    }
    return numbers;
}

void Daemon::waitForHoldings(const Holdings& expected) const {
    waitUntil([&] { return holdings() == expected; },
              [&] { return expected.text() + "; there are " + holdings().text(); });
}

bool Daemon::isAsleep() const {
    return isProcessAsleep(process.id());
}

}  // namespace orx::test
