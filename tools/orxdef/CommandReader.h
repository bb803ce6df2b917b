// Reads what a TOML definition says of one command.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orxdef/CommandNumbering.h"
#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// One command of a model: its name and the entries that it makes in the model's block.
struct CommandEntries {
    std::string name;
    CommandString string;
    std::vector<ArgumentDescriptor> descriptors;
};

/// The command that stands under `keyword`: a string, or a table of `send` and `args`. Its number
/// is that of `numbering`; a name that has none is a mistake and gives nothing.
/// What is mistaken is in `report`, and the result then tells as much as could be read.
[[nodiscard]] std::optional<CommandEntries> readCommand(const toml::key& keyword,
                                                        const toml::node& value,
                                                        const CommandNumbering& numbering,
                                                        FileReport& report);

}  // namespace orx::orxdef
