// The `decompile` subcommand: a binary definition file in, TOML out.
#pragma once

#include <iosfwd>
#include <string>

namespace orx::orxdef {

/// Writes what the definition file `path` holds to `output` as TOML that compiles to the same
/// bytes; that they are the same has been tried.
/// Returns the exit status: 0, or 1 with one line on `errors` for each mistake and no output.
[[nodiscard]] int decompile(const std::string& path, std::ostream& output, std::ostream& errors);

}  // namespace orx::orxdef
