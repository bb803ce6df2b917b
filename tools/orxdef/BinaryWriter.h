// Turns definitions into the bytes of a projector definition file, as `DefinitionFormat.h` lays
// them out.
#pragma once

#include <optional>
#include <string>

#include "orxdef/Definition.h"
#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// The whole file: the command list in the order of the keywords, the projector list and the
/// blocks in the order of the models, each block straight after the one before.
/// Nothing where the definitions go beyond what the format can say; each limit that is passed is
/// then in `mistakes`, at the place of the model that passes it. Texts over 255 bytes must have
/// been refused before.
[[nodiscard]] std::optional<std::string> binaryImage(const DefinitionSet& definitions,
                                                     Mistakes& mistakes);

}  // namespace orx::orxdef
