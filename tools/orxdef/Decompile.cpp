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
    Mistakes mistakes({path});
    std::string image;
    const auto definitions = readBinaryFile(mistakes, image);
    if (!mistakes.empty()) {
        mistakes.print(errors);
        return 1;
    }
    const auto text = tomlText(definitions);
    // A file may use its bytes in ways that no definition asks for, one entry within another.
    if (!compilesTo(image, text)) {
        errors << path << ": its entries overlap in a way that TOML cannot say\n";
        return 1;
    }
    output << text;
    return 0;
}

}  // namespace orx::orxdef
