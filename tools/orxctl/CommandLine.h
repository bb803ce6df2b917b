// The command line of orxctl: what it may say, and how that is read.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "orxctl/Call.h"
#include "orxctl/Completion.h"

namespace orx::orxctl {

class CommandLine {
  public:
    CommandLine();

    /// Reads the words behind the name of the program and does what they say; gives the exit
    /// status. A wrong line is told on standard error. What fails otherwise is thrown.
    int run(int argc, const char* const* argv);

  private:
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

    void refuseMixtures() const;
    [[nodiscard]] int printCompletion() const;
    [[nodiscard]] CommandLineWords words() const;

    CLI::App app;
    std::function<int()> errand;
    std::vector<std::string> commandWords;
    Call call;
    bool watch = false;
};

}  // namespace orx::orxctl
