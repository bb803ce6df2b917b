// Words of a command line that the parser would not leave as they are: it takes what begins with
// "-" for an option, also where it is a negative number, and takes "[a,b]" apart. So they are
// hidden from it behind a byte that no command line holds.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace orx::orxctl {

/// The words from the last one to the first, as the parser wants them, with those hidden.
[[nodiscard]] std::vector<std::string> hideFromParser(std::vector<std::string> words);

/// `text` with the words in it as the user wrote them.
[[nodiscard]] std::string asWritten(std::string text);

/// Makes the parser give the values of all options and arguments as the user wrote them, for
/// `command` and those below it. Once all of them have been added.
void letBeAsWritten(CLI::App& command);

}  // namespace orx::orxctl
