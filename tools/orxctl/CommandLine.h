// The command line of orxctl: what it may say, and what is done then.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "orxctl/Completion.h"
#include "orxctl/Errands.h"
#include "orxctl/Fleet.h"

namespace orx::orxctl {

class CommandLine {
  public:
    CommandLine();

    /// Reads the words behind the name of the program and does what they say; gives the exit
    /// status. A wrong line is told on `errors`. What fails otherwise is thrown.
    int run(int argc, const char* const* argv);

  private:
    using Seconds = std::optional<std::chrono::milliseconds>;

    void addSending();
    void addStatus();
    void addWait();
    void addCommands();
    void addRun();
    void addPing();
    void addCheck();
    void addCompletion();
    CLI::App* addErrand(const std::string& name, const std::string& text,
                        std::function<int()> chosen);
    void addTargets(CLI::App& command);
    void addTimeout(CLI::App& command, const std::string& text);
    void addPolicies(CLI::App& command);
    void addPositional(CLI::App& command, std::string& value, const std::string& name,
                       const std::string& text);

    void refuseMixtures() const;
    [[nodiscard]] Fleet fleet() const;
    [[nodiscard]] SendOptions sendOptions() const;

    int sendCommand();
    int showStatus();
    int watchStatus();
    int waitForRest();
    [[nodiscard]] int listCommands() const;
    int runShow();
    int pingAll();
    [[nodiscard]] int printCompletion() const;
    /// Does the errand with all daemons, tells how it ended, and gives the exit status.
    int tell(Fleet& daemons, const std::vector<Outcome>& outcomes) const;

    [[nodiscard]] CommandLineWords words() const;

    CLI::App app;
    std::function<int()> errand;
    std::vector<std::string> commandWords;
    std::vector<std::string> hostWords;
    std::string hostsFile;
    Seconds timeout;
    SendOptions policies;
    std::string argument;  ///< of the errand
    bool asJson = false;
    bool watch = false;
};

}  // namespace orx::orxctl
