#include "orxdef/Surprises.h"

namespace orx::orxdef {

void findSurprises(const DefinitionSet& definitions, Mistakes& mistakes) {
    findListSurprises(definitions, mistakes);
    for (const auto& model : definitions.models) {
        findLineSurprises(model, mistakes);
        const auto commands = commandTable(definitions, model);
        for (const auto& [name, command] : commands)
            findCommandSurprises(model, name, command, mistakes);
        findLensSurprises(model, commands, mistakes);
    }
}

}  // namespace orx::orxdef
