// Reads one [[model]] of a TOML definition.
#pragma once

#include "orxdef/CommandNumbering.h"
#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// The model that `table` describes, its commands in the order of their keywords unless its
/// `verbatim` gives another. Behind them stand the entries that `verbatim` has itself.
/// What is mistaken is in `report`, and the result then tells as much as could be read; a name
/// that is missing or impossible is empty.
[[nodiscard]] ModelDefinition readModel(const toml::table& table, const CommandNumbering& numbering,
                                        FileReport& report);

}  // namespace orx::orxdef
