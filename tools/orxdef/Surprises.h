// Finds what is well formed in a definition and would still surprise when the daemon uses it.
#pragma once

#include <string>

#include "orxdef/CommandTable.h"
#include "orxdef/Definition.h"
#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// Adds to `mistakes` everything that is found in `definitions`, each at its place and with the
/// reason.
void findSurprises(const DefinitionSet& definitions, Mistakes& mistakes);

/// The part of it that concerns the numbers and names of the file and its models.
void findListSurprises(const DefinitionSet& definitions, Mistakes& mistakes);
/// The part that concerns the serial line of one model.
void findLineSurprises(const ModelDefinition& model, Mistakes& mistakes);
/// The part that concerns one command, called `name`, of the model called `model`.
void findCommandSurprises(const std::string& model, const std::string& name,
                          const ModelCommand& command, Mistakes& mistakes);
/// The part that concerns the lens of one model with those commands.
void findLensSurprises(const ModelDefinition& model, const CommandTable& commands,
                       Mistakes& mistakes);

}  // namespace orx::orxdef
