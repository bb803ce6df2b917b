// A process that a test has started. What it writes to standard output and to standard error is
// recorded; it never outlives its owner.
//
// Standard error must stay empty, which also catches what a sanitizer has to say, unless a test
// says that text is expected there.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

#include "core/FileDescriptor.h"
#include "system/harness/ByteRecorder.h"

namespace orx::test {

/// How a process is to be started.
struct ChildStart {
    std::vector<std::string> command{};      ///< the executable and its arguments
    std::vector<std::string> environment{};  ///< added to that of the test, "NAME=value" each
    bool sessionLeader = false;              ///< as a service manager starts it
    std::vector<int> closedDescriptors{};    ///< which of 0, 1 and 2 it does not get
    std::string inputFile = "/dev/null";     ///< what it gets as standard input
    bool onTerminal = false;                 ///< its standard output is one, of 80 columns
};

class ChildProcess {
  public:
    explicit ChildProcess(const ChildStart& start);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Kills the process where it still runs.
    ~ChildProcess();

    /// What it writes to standard output, until `closeOutput`.
    [[nodiscard]] ByteRecorder& output() const { return *outputRecorder; }

    /// Closes the reading end of standard output, as a terminal does that goes away.
    void closeOutput();

    /// Waits until the process has ended and all of its output is here; gives "exit status 0",
    /// "signal 6" and the like. Throws, showing the output, where it does not end.
    std::string waitForEnd();

    [[nodiscard]] bool hasEnded();

    void signal(int number) const;

    /// All that it has written to standard error. Once it has ended.
    [[nodiscard]] std::string errorText() const;

    [[nodiscard]] pid_t id() const noexcept { return process; }

    /// Text on standard error is no mistake from now on.
    void expectErrorText() noexcept { errorsExpected = true; }

  private:
    void reap();

    FileDescriptor outputEnd;
    FileDescriptor errorEnd;
    pid_t process = -1;
    FileDescriptor processHandle;
    std::unique_ptr<ByteRecorder> outputRecorder;
    std::unique_ptr<ByteRecorder> errorRecorder;
    std::string executable;
    std::string ending;
    bool errorsExpected = false;
};

}  // namespace orx::test
