// The contents of all files of one run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// In the order of the files; nothing for one that is not to be read, or cannot be.
using FileContents = std::vector<std::optional<std::string>>;

/// The contents of the files of `mistakes`. A file that cannot be read is a mistake like any other.
[[nodiscard]] FileContents readFiles(Mistakes& mistakes);

}  // namespace orx::orxdef
