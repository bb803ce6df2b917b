#include "system/harness/ChildProcess.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

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

/// What is written to the terminal is read as it is, but for the line ends.
Pipe makeTerminal() {
    const winsize size{.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
    int reading = FileDescriptor::none;
    int writing = FileDescriptor::none;
    if (::openpty(&reading, &writing, nullptr, nullptr, &size) != 0) {
        throw std::runtime_error("no terminal to be had");
    }
    for (const int end : {reading, writing})
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return {FileDescriptor(reading), FileDescriptor(writing)};
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

}  // namespace

ChildProcess::ChildProcess(const ChildStart& start) : executable(start.command.front()) {
    auto output = start.onTerminal ? makeTerminal() : makePipe();
    auto error = makePipe();
    const FileDescriptor input(::open(start.inputFile.c_str(), O_RDONLY | O_CLOEXEC));
    Spawn wanted{.command = start.command,
                 .environment = start.environment,
                 .standardDescriptors = {input.get(), output.writing.get(), error.writing.get()},
                 .sessionLeader = start.sessionLeader};
    for (const int closed : start.closedDescriptors)
        wanted.standardDescriptors.at(static_cast<std::size_t>(closed)) = FileDescriptor::none;
    process = spawn(wanted);
    processHandle = openHandle(process);
    outputEnd = std::move(output.reading);
    errorEnd = std::move(error.reading);
    outputRecorder = std::make_unique<ByteRecorder>(outputEnd.get());
    errorRecorder = std::make_unique<ByteRecorder>(errorEnd.get());
}

ChildProcess::~ChildProcess() {
    if (!hasEnded()) {
        ::kill(process, SIGKILL);
        reap();
    }
    errorRecorder->waitForEnd();
    if (errorsExpected) return;
    EXPECT_EQ(errorRecorder->bytes(), "") << "on standard error of " << executable;
}

bool ChildProcess::hasEnded() {
    pollfd handle{processHandle.get(), POLLIN, 0};
    if (ending.empty() && ::poll(&handle, 1, 0) > 0) reap();
    return !ending.empty();
}

void ChildProcess::reap() {
    int status = 0;
    ::waitpid(process, &status, 0);
    ending = describeEnding(status);
}

std::string ChildProcess::waitForEnd() {
    pollfd handle{processHandle.get(), POLLIN, 0};
    if (ending.empty() && ::poll(&handle, 1, patienceMs) <= 0) {
        throw std::runtime_error(executable + " does not end; its output:\n" +
                                 outputRecorder->bytes());
    }
    if (ending.empty()) reap();
    if (outputRecorder) outputRecorder->waitForEnd();
    return ending;
}

std::string ChildProcess::errorText() const {
    errorRecorder->waitForEnd();
    return errorRecorder->bytes();
}

void ChildProcess::signal(int number) const {
    ::kill(process, number);
}

void ChildProcess::closeOutput() {
    outputRecorder.reset();
    outputEnd.close();
}

}  // namespace orx::test
