#include "system/harness/Daemon.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "system/harness/Spawn.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe to be had");
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// A descriptor that becomes readable when the process ends. The header of the library's own
/// wrapper is of no use to C++ everywhere.
FileDescriptor openHandle(pid_t process) {
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

std::string describeEnding(int status) {
    if (WIFSIGNALED(status)) return "signal " + std::to_string(WTERMSIG(status));
    return "exit status " + std::to_string(WEXITSTATUS(status));
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

Daemon::Daemon(const std::string& prefix, const Launch& launch) {
    auto output = makePipe();
    auto error = makePipe();
    const FileDescriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    Spawn wanted{.command = {ORX_EXECUTABLE},
                 .environment = {"ORX_TEST_PREFIX=" + prefix},
                 .standardDescriptors = {input.get(), output.writing.get(), error.writing.get()},
                 .sessionLeader = launch.sessionLeader};
    wanted.command.insert(wanted.command.end(), launch.arguments.begin(), launch.arguments.end());
    for (const int closed : launch.closedDescriptors)
        wanted.standardDescriptors.at(static_cast<std::size_t>(closed)) = FileDescriptor::none;
    process = spawn(wanted);
    processHandle = openHandle(process);
    consoleOutput = std::move(output.reading);
    errorOutput = std::move(error.reading);
    console = std::make_unique<ByteRecorder>(consoleOutput.get());
    errors = std::make_unique<ByteRecorder>(errorOutput.get());
}

Daemon::~Daemon() {
    if (!hasEnded()) {
        ::kill(process, SIGKILL);
        reap();
    }
    errors->waitForEnd();
    if (errorsExpected) return;
    EXPECT_EQ(errors->bytes(), "") << "on standard error";
}

std::size_t Daemon::waitForLine(const std::string& line, std::size_t from) const {
    std::size_t behind = std::string::npos;
    console->waitUntil(
        [&](const std::string& bytes) {
            behind = find(bytes, line, from);
            return behind != std::string::npos;
        },
        "the console line \"" + line + "\"");
    return behind;
}

std::size_t Daemon::waitForText(const std::string& text, std::size_t from) const {
    std::size_t end = std::string::npos;
    console->waitUntil(
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
    std::istringstream text(console->bytes().substr(from));
    for (std::string line; std::getline(text, line) && !text.eof();)
        complete.push_back(line);
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

bool Daemon::hasEnded() {
    pollfd handle{processHandle.get(), POLLIN, 0};
    if (ending.empty() && ::poll(&handle, 1, 0) > 0) reap();
    return !ending.empty();
}

void Daemon::reap() {
    int status = 0;
    ::waitpid(process, &status, 0);
    ending = describeEnding(status);
}

std::string Daemon::waitForEnd() {
    pollfd handle{processHandle.get(), POLLIN, 0};
    if (ending.empty() && ::poll(&handle, 1, patienceMs) <= 0) {
        throw std::runtime_error("the daemon does not end; its console:\n" + console->bytes());
    }
    if (ending.empty()) reap();
    if (console) console->waitForEnd();
    return ending;
}

void Daemon::signal(int number) const {
    ::kill(process, number);
}

void Daemon::closeConsole() {
    console.reset();
    consoleOutput.close();
}

std::size_t Daemon::threadCount() const {
    return countEntries("task");
}

std::size_t Daemon::descriptorCount() const {
    return countEntries("fd");
}

std::size_t Daemon::countEntries(const std::string& folder) const {
    const std::filesystem::path path = "/proc/" + std::to_string(process) + "/" + folder;
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path))
        ++count;
    return count;
}

}  // namespace orx::test
