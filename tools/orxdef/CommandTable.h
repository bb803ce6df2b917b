// The commands of one model as the daemon sees them: by name, with their arguments by number.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "orxdef/Definition.h"

namespace orx::orxdef {

/// The names of the command list by their numbers; where a number stands twice the last one counts.
using CommandNames = std::map<std::uint16_t, std::string>;

[[nodiscard]] CommandNames commandNames(const DefinitionSet& definitions);

/// One command of a model, with all that stands in the file for it.
struct ModelCommand {
    const CommandString* string = nullptr;  ///< null where the file has descriptors alone
    std::map<unsigned, const ArgumentDescriptor*> arguments;  ///< by number, counted from 1
};

/// By command name; a command whose number is not in the command list has the empty name. Where
/// the file has several entries for one name or argument, the last one counts.
using CommandTable = std::map<std::string, ModelCommand, std::less<>>;

/// The commands of `model`, which is one of `definitions`; both must outlive the table.
[[nodiscard]] CommandTable commandTable(const DefinitionSet& definitions,
                                        const ModelDefinition& model);

/// The model of exactly that name, the last one where there are several; null where there is none.
[[nodiscard]] const ModelDefinition* findModel(const DefinitionSet& definitions,
                                               std::string_view name);

/// The bytes of `command` with {1}, {2} and so on where its arguments stand, in the notation of the
/// TOML form: \xNN, \r, {{ and so on.
[[nodiscard]] std::string templateText(const ModelCommand& command);

}  // namespace orx::orxdef
