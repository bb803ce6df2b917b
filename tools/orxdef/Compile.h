// The `compile` subcommand: definitions in TOML in, one binary definition file out.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orx::orxdef {

/// What is compiled to what; "-" stands for standard input and for standard output.
struct CompileRequest {
    std::vector<std::string> models;  ///< in the order that they get in the definition file
    std::string output;
};

/// Returns the exit status: 0 with the output written and nothing else printed, or 1 with one line
/// on `errors` for each mistake and the output as it was before.
[[nodiscard]] int compile(const CompileRequest& request, std::ostream& standardOutput,
                          std::ostream& errors);

}  // namespace orx::orxdef
