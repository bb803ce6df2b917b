// Any bytes as a definition file for the tools: reading, checking, listing and giving back must
// survive them, and what is given back must compile to the same bytes.
#include <cstdint>
#include <string_view>

#include "common/GivenBack.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/List.h"
#include "orxdef/Surprises.h"

using namespace orx::orxdef;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view image(reinterpret_cast<const char*>(data), size);
    Mistakes mistakes({"any bytes"});
    const auto definitions = readBinary(image, 0, mistakes);
    if (mistakes.empty()) {
        orx::fuzz::expectSameGivenBack(definitions, image);
        for (const auto& model : definitions.models)
            for (const auto& [name, command] : commandTable(definitions, model))
                static_cast<void>(templateText(command));
    }
    findSurprises(definitions, mistakes);
    static_cast<void>(mistakes.lines());
    return 0;
}
