// The commands of the vocabulary as `orxctl commands` shows them.
#pragma once

#include <string>

namespace orx::orxctl {

/// A line for each command that `pattern` is about: keyword, kind of argument or "-", what it does.
/// A pattern with *, ? or [ is matched against the whole keyword, any other is looked for in all
/// that the line says; case does not count. Empty where there is no such command.
[[nodiscard]] std::string commandList(const std::string& pattern);

}  // namespace orx::orxctl
