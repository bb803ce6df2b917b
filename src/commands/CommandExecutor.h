// Whoever carries out the commands that the queue hands over.
#pragma once

#include "commands/Command.h"

namespace orx {

class CommandExecutor {
  public:
    CommandExecutor() = default;
    CommandExecutor(const CommandExecutor&) = delete;
    CommandExecutor& operator=(const CommandExecutor&) = delete;
    virtual ~CommandExecutor() = default;

    /// Carries out one valid command on the caller's thread and returns when it is done. An
    /// argument that cannot be read raises the standard conversion errors.
    virtual void execute(const Command& command) = 0;
};

}  // namespace orx
