#include "orxdef/Decompile.h"

#include <ostream>

#include "orxdef/BinaryReader.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/TomlReader.h"
#include "orxdef/TomlWriter.h"

namespace orx::orxdef {
namespace {

bool compilesTo(const std::string& image, const std::string& text) {
    Mistakes mistakes({"decompiled"});
    const auto definitions = parseToml({text}, mistakes);
    return mistakes.empty() && binaryImage(definitions, mistakes) == image;
}

}  // namespace

int decompile(const std::string& path, std::ostream& output, std::ostream& errors) {
    std::string image;
    const auto definitions = readSoundFile(path, image, errors);
    if (!definitions) return 1;
    const auto text = tomlText(*definitions);
    // No such file is known; but what is given back has to be right, or nothing.
    if (!compilesTo(image, text)) {
        errors << path << ": the TOML for it would not compile to the same bytes\n";
        return 1;
    }
    output << text;
    return 0;
}

}  // namespace orx::orxdef
