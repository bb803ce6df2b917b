// The `list` subcommand: what a binary definition file holds, as tables.
#pragma once

#include <iosfwd>
#include <string>

namespace orx::orxdef {

/// Prints the models with their serial lines, and the commands of each model with their arguments
/// and bytes, as the daemon sees them.
/// Returns the exit status: 0, or 1 with one line on `errors` for each mistake and no output.
[[nodiscard]] int list(const std::string& path, std::ostream& output, std::ostream& errors);

}  // namespace orx::orxdef
