// Definitions given as text, read without a file.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orxdef/BinaryWriter.h"
#include "orxdef/CommandTable.h"
#include "orxdef/TomlReader.h"

namespace orx::orxdef {

using Lines = std::vector<std::string>;

/// What compiling `text` reports, the file being called m.toml.
inline Lines mistakesIn(std::string_view text) {
    Mistakes mistakes({"m.toml"});
    const auto image = binaryImage(parseToml({std::string(text)}, mistakes), mistakes);
    if (mistakes.empty() && !image) return {"no image, and no mistake that says why"};
    return mistakes.lines();
}

/// What `text` defines, or nothing where there are mistakes in it.
inline DefinitionSet definitionsOf(std::string_view text) {
    Mistakes mistakes({"m.toml"});
    auto definitions = parseToml({std::string(text)}, mistakes);
    return mistakes.empty() ? std::move(definitions) : DefinitionSet();
}

/// The bytes that `text` compiles to, or none where there are mistakes in it.
inline std::string imageOf(std::string_view text) {
    Mistakes mistakes({"m.toml"});
    return binaryImage(parseToml({std::string(text)}, mistakes), mistakes).value_or("");
}

/// One command of a model with all its entries.
struct ReadCommand {
    std::string keyword;
    std::uint16_t id = 0;
    std::string bytes;
    std::vector<ArgumentDescriptor> arguments;
};

/// The commands of `model`, one of `definitions`, in the order of its strings.
inline std::vector<ReadCommand> commandsOf(const DefinitionSet& definitions,
                                           const ModelDefinition& model) {
    auto names = commandNames(definitions);
    std::vector<ReadCommand> commands;
    for (const auto& string : model.strings) {
        auto& command =
            commands.emplace_back(ReadCommand{names[string.id], string.id, string.bytes, {}});
        for (const auto& argument : model.descriptors)
            if (argument.id == string.id) command.arguments.push_back(argument);
    }
    return commands;
}

/// A model whose commands begin on line 5.
inline std::string modelWith(const std::string& commands) {
    return "[[model]]\nname = 'M'\nbaudrate = 9600\n[model.commands]\n" + commands + "\n";
}

/// A model whose keys after the name and the speed begin on line 4.
inline std::string modelWithKeys(const std::string& keys) {
    return "[[model]]\nname = 'M'\nbaudrate = 9600\n" + keys + "\n";
}

}  // namespace orx::orxdef
