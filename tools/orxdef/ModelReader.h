// Reads one [[model]] of a TOML definition.
#pragma once

#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// The model that `table` describes, its commands in the order of their keywords.
/// What is mistaken is in `report`, and the result then tells as much as could be read; a name
/// that is missing or impossible is empty.
[[nodiscard]] ModelDefinition readModel(const toml::table& table, FileReport& report);

}  // namespace orx::orxdef
