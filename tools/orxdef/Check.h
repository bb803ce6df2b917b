// The `check` subcommand: everything that would surprise when the daemon uses a definition.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orx::orxdef {

enum class CheckFormat { text, json };

/// Checks the definitions at `paths`: each binary file by itself, and all files of TOML together,
/// as they are compiled. Which of the two a file is, its name and its first bytes tell. Everything
/// that is found goes to `output`, one line each with its place, or as one JSON object:
///
///   { "findings": [ { "severity": "error", "file": F, "line": N, "column": N, "message": M } ],
///     "errors": N, "warnings": N, "notes": N }
///
/// with "byte" in place of "line" and "column" for a binary file.
/// Returns the exit status: 0 where there is no error and no warning, else 1.
[[nodiscard]] int check(const std::vector<std::string>& paths, CheckFormat format,
                        std::ostream& output);

}  // namespace orx::orxdef
