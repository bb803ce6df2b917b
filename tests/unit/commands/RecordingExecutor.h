// Stands for the projector control: remembers what it was told to carry out.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commands/CommandExecutor.h"

namespace orx::test {

class RecordingExecutor final : public CommandExecutor {
  public:
    void execute(const Command& command) override {
        executed.push_back(command.text(true));
        if (onExecute) onExecute(command);
    }

    std::vector<std::string> executed;              ///< the display texts in order
    std::function<void(const Command&)> onExecute;  ///< called within each execution
};

}  // namespace orx::test
