// Reads the TOML table of one command argument.
#pragma once

#include <string>

#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// The descriptor that `table` describes, with `pos` still 0; `title` is what messages call the
/// argument. What is mistaken in the table is in `report`, and stands as 0 in the result.
[[nodiscard]] ArgumentDescriptor readArgument(const toml::table& table, const std::string& title,
                                              FileReport& report);

}  // namespace orx::orxdef
