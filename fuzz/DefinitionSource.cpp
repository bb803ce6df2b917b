// Any text as a definition in TOML: compiling and checking must survive it, and what it compiles to
// must be read without damage and given back as a text that compiles to the same bytes.
#include <cstdint>
#include <string>

#include "common/GivenBack.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/Surprises.h"
#include "orxdef/TomlReader.h"

using namespace orx::orxdef;

namespace {

/// Lengths that are said explicitly may be lies; everything else must come back.
void giveBack(const std::string& image) {
    Mistakes damage({"compiled"});
    const auto definitions = readBinary(image, 0, damage);
    if (!damage.empty()) return;
    orx::fuzz::expectSameGivenBack(definitions, image);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Mistakes mistakes({"any text"});
    const auto definitions = parseToml({text}, mistakes);
    const auto image = binaryImage(definitions, mistakes);
    orx::fuzz::expect(!mistakes.empty() || image.has_value(),
                      "no image, and no mistake that says why");
    findSurprises(definitions, mistakes);
    static_cast<void>(mistakes.lines());
    if (image) giveBack(*image);
    return 0;
}
