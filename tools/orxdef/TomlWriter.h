// Writes definitions as TOML, in the form that a person would choose where that can say it all.
//
// What it cannot say (other numbers or another order of the commands than the usual ones, names
// outside the vocabulary, entries that the plain form would refuse) goes to tables called
// `verbatim`, which the compiler takes over as they are.
#pragma once

#include <string>

#include "orxdef/Definition.h"

namespace orx::orxdef {

/// The text that compiles to the same bytes as `definitions`.
[[nodiscard]] std::string tomlText(const DefinitionSet& definitions);

}  // namespace orx::orxdef
