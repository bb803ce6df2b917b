#include "orxdef/CommandTable.h"

#include <algorithm>

#include "orxdef/CommandTemplate.h"

namespace orx::orxdef {

CommandNames commandNames(const DefinitionSet& definitions) {
    CommandNames names;
    for (const auto& command : definitions.commandList)
        names[command.id] = command.name;
    return names;
}

CommandTable commandTable(const DefinitionSet& definitions, const ModelDefinition& model) {
    auto names = commandNames(definitions);
    CommandTable table;
    for (const auto& string : model.strings)
        table[names[string.id]].string = &string;
    for (const auto& descriptor : model.descriptors)
        table[names[descriptor.id]].arguments[descriptor.number] = &descriptor;
    return table;
}

const ModelDefinition* findModel(const DefinitionSet& definitions, std::string_view name) {
    const auto found =
        std::find_if(definitions.models.rbegin(), definitions.models.rend(),
                     [name](const ModelDefinition& model) { return model.name == name; });
    return found != definitions.models.rend() ? &*found : nullptr;
}

std::string templateText(const ModelCommand& command) {
    CommandTemplate parsed;
    if (command.string != nullptr) parsed.bytes = command.string->bytes;
    for (const auto& [number, argument] : command.arguments)
        parsed.placeholders.push_back(
            {number, std::min<std::size_t>(argument->pos, parsed.bytes.size())});
    return parsed.text();
}

}  // namespace orx::orxdef
