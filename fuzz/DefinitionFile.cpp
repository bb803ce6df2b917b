// Any bytes as a definition file for the tools: reading, checking, listing and giving back must
// survive them, and what is given back must compile to the same bytes.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "orxdef/BinaryReader.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/List.h"
#include "orxdef/Surprises.h"
#include "orxdef/TomlReader.h"
#include "orxdef/TomlWriter.h"

using namespace orx::orxdef;

namespace {

[[noreturn]] void fail(const std::string& text) {
    std::cerr << "does not compile to the same bytes:\n" << text;
    std::abort();
}

void giveBack(const DefinitionSet& definitions, std::string_view image) {
    const auto text = tomlText(definitions);
    Mistakes mistakes({"given back"});
    const auto again = binaryImage(parseToml({text}, mistakes), mistakes);
    mistakes.print(std::cerr);
    if (!mistakes.empty() || again != image) fail(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view image(reinterpret_cast<const char*>(data), size);
    Mistakes mistakes({"any bytes"});
    const auto definitions = readBinary(image, 0, mistakes);
    if (mistakes.empty()) {
        giveBack(definitions, image);
        for (const auto& model : definitions.models)
            for (const auto& [name, command] : commandTable(definitions, model))
                static_cast<void>(templateText(command));
    }
    findSurprises(definitions, mistakes);
    static_cast<void>(mistakes.lines());
    return 0;
}
