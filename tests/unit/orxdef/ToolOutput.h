// A subcommand called as a function, with what it prints.
#pragma once

#include <functional>
#include <ostream>
#include <sstream>
#include <string>

namespace orx::orxdef {

struct ToolOutput {
    int status = 0;
    std::string output{};
    std::string errors{};
};

/// Calls `subcommand` with a standard output and a standard error of its own.
inline ToolOutput outputOf(const std::function<int(std::ostream&, std::ostream&)>& subcommand) {
    std::ostringstream output;
    std::ostringstream errors;
    const int status = subcommand(output, errors);
    return {status, output.str(), errors.str()};
}

}  // namespace orx::orxdef
