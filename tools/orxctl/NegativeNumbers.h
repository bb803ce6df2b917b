// Negative numbers on a command line. The parser takes what begins with "-" for an option; so a
// negative number is hidden from it behind a byte that no command line holds.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orx::orxctl {

/// The words from the last one to the first, as the parser wants them, with the numbers hidden.
[[nodiscard]] std::vector<std::string> hideNumbers(std::vector<std::string> words);

/// `text` with the numbers in it as the user wrote them.
[[nodiscard]] std::string asWritten(std::string text);

/// Makes the parser give the values of all options and arguments as the user wrote them, for
/// `command` and those below it. Once all of them have been added.
void letBeAsWritten(CLI::App& command);

}  // namespace orx::orxctl
