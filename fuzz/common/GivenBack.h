// A definition file given back as a text: it must compile to the same bytes.
#pragma once

#include <iostream>
#include <string_view>

#include "common/Check.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/Mistakes.h"
#include "orxdef/TomlReader.h"
#include "orxdef/TomlWriter.h"

namespace orx::fuzz {

/// `definitions` are what was read in `image`, without damage.
inline void expectSameGivenBack(const orxdef::DefinitionSet& definitions, std::string_view image) {
    const auto text = orxdef::tomlText(definitions);
    orxdef::Mistakes mistakes({"given back"});
    const auto again = orxdef::binaryImage(orxdef::parseToml({text}, mistakes), mistakes);
    mistakes.print(std::cerr);
    if (!mistakes.empty() || again != image) fail("does not compile to the same bytes:\n" + text);
}

}  // namespace orx::fuzz
