// A running daemon: the real executable in a process of its own.
//
// What it writes to standard output is its console. Standard error must stay empty, which also
// catches what a sanitizer has to say, unless a test says that text is expected there.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

#include "core/FileDescriptor.h"
#include "system/harness/ByteRecorder.h"

namespace orx::test {

/// How a daemon is to be started.
struct Launch {
    std::vector<std::string> arguments{};
    bool sessionLeader = false;            ///< as a service manager starts it
    std::vector<int> closedDescriptors{};  ///< which of 0, 1 and 2 it does not get
};

class Daemon {
  public:
    /// Starts the daemon on the installation below `prefix`.
    explicit Daemon(const std::string& prefix, const Launch& launch = {});
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;
    /// Kills the daemon where it still runs.
    ~Daemon();

    /// Waits for a console line that is exactly `line`, at place `from` of the console or behind
    /// it; gives the place behind that line. Throws, showing the console, where it does not come.
    std::size_t waitForLine(const std::string& line, std::size_t from = 0) const;

    /// As `waitForLine`, for a line that contains `text`.
    std::size_t waitForText(const std::string& text, std::size_t from = 0) const;

    /// The place behind all of the console up to now.
    [[nodiscard]] std::size_t place() const { return console->size(); }

    /// The complete console lines up to now, from place `from` on.
    [[nodiscard]] std::vector<std::string> lines(std::size_t from = 0) const;

    /// The numbers of the sockets, in the order of their "created socket #" lines.
    [[nodiscard]] std::vector<std::string> socketNumbers() const;

    /// Waits until the process has ended and all of its console is here; gives "exit status 0",
    /// "signal 6" and the like.
    std::string waitForEnd();

    [[nodiscard]] bool hasEnded();

    /// Sends the process a signal.
    void signal(int number) const;

    /// Text on standard error is no mistake from now on: an abnormal end explains itself there.
    void expectErrorText() { errorsExpected = true; }

    /// Closes the reading end of standard output, as a terminal does that goes away.
    void closeConsole();

    [[nodiscard]] std::size_t threadCount() const;
    [[nodiscard]] std::size_t descriptorCount() const;

  private:
    void reap();
    [[nodiscard]] std::size_t countEntries(const std::string& folder) const;

    FileDescriptor consoleOutput;
    FileDescriptor errorOutput;
    pid_t process = -1;
    FileDescriptor processHandle;
    std::unique_ptr<ByteRecorder> console;
    std::unique_ptr<ByteRecorder> errors;
    std::string ending;
    bool errorsExpected = false;
};

}  // namespace orx::test
