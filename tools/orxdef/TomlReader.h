// Reads projector definitions from TOML files; definitions/demo.toml shows the form.
#pragma once

#include "orxdef/Definition.h"
#include "orxdef/FileContents.h"
#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// What all files of `mistakes` say together, the models in the order in which they stand there.
/// A file that cannot be read is a mistake like any other; the result is complete only if there
/// were none.
[[nodiscard]] DefinitionSet readToml(Mistakes& mistakes);

/// The same with the contents of the files given, in the order in which `mistakes` has them.
[[nodiscard]] DefinitionSet parseToml(const FileContents& texts, Mistakes& mistakes);

}  // namespace orx::orxdef
