// The `compile` subcommand: definitions in TOML in, one binary definition file out.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orx::orxdef {

/// Compiles the files `models`, in that order, to the file `output`.
/// Returns the exit status: 0 with the output written and nothing printed, or 1 with one line on
/// `errors` for each mistake and the output as it was before.
[[nodiscard]] int compile(const std::vector<std::string>& models, const std::string& output,
                          std::ostream& errors);

}  // namespace orx::orxdef
