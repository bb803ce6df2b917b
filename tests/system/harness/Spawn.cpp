#include "system/harness/Spawn.h"

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orx::test {
namespace {

/// Pointers into `texts`, as execve wants them.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> ownEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; *entry != nullptr; ++entry)
        entries.emplace_back(*entry);
    return entries;
}

/// A daemon must hold its own against these, so it starts with what the system does by default.
void resetSignals() {
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGHUP, SIG_DFL);
}

void dieWithTheTest() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
}

void arrangeDescriptors(const std::array<int, 3>& descriptors) {
    for (int number = 0; number < 3; ++number) {
        const int wanted = descriptors[static_cast<std::size_t>(number)];
        if (wanted == -1) {
            ::close(number);
        } else {
            ::dup2(wanted, number);
        }
    }
}

}  // namespace

pid_t spawn(const Spawn& wanted) {
    auto command = wanted.command;
    auto environment = ownEnvironment();
    environment.insert(environment.begin(), wanted.environment.begin(), wanted.environment.end());
    const auto arguments = pointersTo(command);
    const auto variables = pointersTo(environment);
    const pid_t process = ::fork();
    if (process == -1) throw std::runtime_error("no process to be had");
    if (process != 0) return process;
    constexpr int notStarted = 127;
    dieWithTheTest();
    resetSignals();
    if (wanted.sessionLeader) ::setsid();
    arrangeDescriptors(wanted.standardDescriptors);
    ::execve(arguments.front(), arguments.data(), variables.data());
    ::_exit(notStarted);
}

}  // namespace orx::test
