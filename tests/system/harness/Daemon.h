// A running daemon: the real executable in a process of its own. What it writes to standard output
// is its console; standard error must stay empty, unless a test says that text is expected there.
//
// ORX_TEST_DAEMON in the environment is the command to start instead, words between blanks: another
// build, or a checker and the daemon in it. What a checker has to say belongs in a file.
#pragma once

#include <string>
#include <vector>

#include "system/harness/ChildProcess.h"
#include "system/harness/ProcessFigures.h"

namespace orx::test {

/// How a daemon is to be started.
struct Launch {
    std::vector<std::string> arguments{};
    bool sessionLeader = false;              ///< as a service manager starts it
    std::vector<int> closedDescriptors{};    ///< which of 0, 1 and 2 it does not get
    std::vector<std::string> environment{};  ///< added to that of the test, "NAME=value" each
    std::vector<std::string> through{};      ///< a command that is to become the daemon
};

class Daemon {
  public:
    /// Starts the daemon on the installation below `prefix`. It is killed at the end where it still
    /// runs.
    explicit Daemon(const std::string& prefix, const Launch& launch = {});

    /// Waits for a console line that is exactly `line`, at place `from` of the console or behind
    /// it; gives the place behind that line. Throws, showing the console, where it does not come.
    std::size_t waitForLine(const std::string& line, std::size_t from = 0) const;

    /// As `waitForLine`, for a line that contains `text`.
    std::size_t waitForText(const std::string& text, std::size_t from = 0) const;

    /// The place behind all of the console up to now.
    [[nodiscard]] std::size_t place() const { return process.output().size(); }

    /// The complete console lines up to now, from place `from` on.
    [[nodiscard]] std::vector<std::string> lines(std::size_t from = 0) const;

    /// The complete console lines up to now, which are then forgotten: all places are void.
    [[nodiscard]] std::vector<std::string> takeLines();

    /// The numbers of the sockets, in the order of their "created socket #" lines.
    [[nodiscard]] std::vector<std::string> socketNumbers() const;

    /// Waits until the process has ended and all of its console is here; gives "exit status 0",
    /// "signal 6" and the like.
    std::string waitForEnd() { return process.waitForEnd(); }

    [[nodiscard]] bool hasEnded() { return process.hasEnded(); }

    /// Sends the process a signal.
    void signal(int number) const { process.signal(number); }

    /// Text on standard error is no mistake from now on: an abnormal end explains itself there.
    void expectErrorText() { process.expectErrorText(); }

    /// All that it has written to standard error. Once it has ended.
    [[nodiscard]] std::string errorText() const { return process.errorText(); }

    [[nodiscard]] pid_t id() const noexcept { return process.id(); }

    /// Closes the reading end of standard output, as a terminal does that goes away.
    void closeConsole() { process.closeOutput(); }

    [[nodiscard]] Holdings holdings() const { return holdingsOf(process.id()); }

    /// Waits until the daemon has as many threads and descriptors as `expected` says. A thread that
    /// has done its work may take a moment to be gone, and the log is open now and then.
    void waitForHoldings(const Holdings& expected) const;

    [[nodiscard]] long ownKilobytes() const { return test::ownKilobytes(process.id()); }
    [[nodiscard]] std::vector<ThreadFigures> threads() const { return threadsOf(process.id()); }
    [[nodiscard]] long cpuTime() const { return cpuTimeOf(process.id()); }
    /// Whether no thread has anything to do at this moment.
    [[nodiscard]] bool isAsleep() const;

  private:
    ChildProcess process;
};

}  // namespace orx::test
