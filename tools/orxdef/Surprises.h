// Finds what is well formed in a definition and would still surprise when the daemon uses it.
#pragma once

#include <string>

#include "commands/Vocabulary.h"
#include "orxdef/CommandTable.h"
#include "orxdef/Definition.h"
#include "orxdef/Mistakes.h"
#include "orxdef/NumberStyle.h"

namespace orx::orxdef {

/// Adds to `mistakes` everything that is found in `definitions`, each at its place and with the
/// reason.
void findSurprises(const DefinitionSet& definitions, Mistakes& mistakes);

/// The part of it that concerns the numbers and names of the file and its models.
void findListSurprises(const DefinitionSet& definitions, Mistakes& mistakes);
/// The part that concerns the serial line of one model.
void findLineSurprises(const ModelDefinition& model, Mistakes& mistakes);
/// The part that concerns one command of `model`, called `name`.
void findCommandSurprises(const ModelDefinition& model, const std::string& name,
                          const ModelCommand& command, Mistakes& mistakes);

/// Where an argument stands: in which command, and behind which others.
struct ArgumentSetting {
    const std::string& title;  ///< of the command
    std::size_t commandSize;   ///< of its bytes, without arguments
    ArgumentKind kind;         ///< what clients have to send
    const LineSettings& line;
    NumberStyle style{};                           ///< left behind by the arguments ahead
    const ArgumentDescriptor* previous = nullptr;  ///< null for the first one
};
/// The part that concerns one argument, whose number is not 0.
void findArgumentSurprises(const ArgumentDescriptor& argument, const ArgumentSetting& setting,
                           Mistakes& mistakes);

/// The part that concerns the lens of one model with those commands.
void findLensSurprises(const ModelDefinition& model, const CommandTable& commands,
                       Mistakes& mistakes);

}  // namespace orx::orxdef
