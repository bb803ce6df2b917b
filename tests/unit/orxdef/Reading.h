// Definitions given as text, read without a file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orxdef/BinaryWriter.h"
#include "orxdef/TomlReader.h"

namespace orx::orxdef {

using Lines = std::vector<std::string>;

/// What compiling `text` reports, the file being called m.toml.
inline Lines mistakesIn(std::string_view text) {
    Mistakes mistakes({"m.toml"});
    TomlReader reader(mistakes);
    reader.parse(text, 0);
    const auto image = binaryImage(reader.definitions(), mistakes);
    if (mistakes.empty() && !image) return {"no image, and no mistake that says why"};
    return mistakes.lines();
}

/// The models of `text`, or none where there are mistakes in it.
inline std::vector<ModelDefinition> modelsOf(std::string_view text) {
    Mistakes mistakes({"m.toml"});
    TomlReader reader(mistakes);
    reader.parse(text, 0);
    return mistakes.empty() ? reader.definitions().models : std::vector<ModelDefinition>();
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
