// The client in a process of its own, as people and scripts call it.
#pragma once

#include <ostream>
#include <string>

#include "system/harness/ChildProcess.h"

namespace orx::test {

/// How a call has ended, and all that it has said.
struct CallResult {
    std::string ending{};  ///< "exit status 0", "signal 2"
    std::string output{};
    std::string errors{};

    bool operator==(const CallResult&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const CallResult& result) {
        return stream << result.ending << "\noutput: " << result.output
                      << "\nerrors: " << result.errors;
    }
};

/// What a client finds that is not on its command line.
struct Surroundings {
    std::string inputFile = "/dev/null";            ///< its standard input
    bool onTerminal = false;                        ///< its standard output is one, of 80 columns
    std::string configurations = "/dev/null/none";  ///< where a user keeps them
};

class Orxctl {
  public:
    /// Starts it with the words of `line`, which blanks divide: "ZOOMX 3 --wait".
    explicit Orxctl(const std::string& line, const Surroundings& surroundings = {});

    [[nodiscard]] CallResult waitForEnd();

    [[nodiscard]] bool hasEnded() { return process.hasEnded(); }

    /// Waits until its output contains `text`, at place `from` or behind it; gives the place behind
    /// that. Throws where it does not come.
    std::size_t waitForOutput(const std::string& text, std::size_t from = 0) const;

    /// Interrupts it, as Ctrl-C does.
    void interrupt() const;

  private:
    ChildProcess process;
};

/// The result of a call of `line` that ends by itself.
[[nodiscard]] CallResult resultOf(const std::string& line, const Surroundings& surroundings = {});

/// The result of a call that has done what it was to do, and said `output`.
[[nodiscard]] CallResult done(const std::string& output = "");

}  // namespace orx::test
