// Reads what a TOML definition says of one command.
#pragma once

#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// The command that stands under `keyword`: a string, or a table of `send` and `args`. Its number
/// is its place in the vocabulary, counted from 1.
/// What is mistaken is in `report`, and the result then tells as much as could be read.
[[nodiscard]] CommandDefinition readCommand(const toml::key& keyword, const toml::node& value,
                                            FileReport& report);

}  // namespace orx::orxdef
