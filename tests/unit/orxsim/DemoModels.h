// The demo models of this tree, compiled for a test.
#pragma once

#include <string>

#include "orxdef/BinaryWriter.h"
#include "orxdef/Mistakes.h"
#include "orxdef/TomlReader.h"
#include "support/TemporaryFolder.h"

namespace orx::orxsim {

inline orxdef::DefinitionSet demoDefinitions() {
    orxdef::Mistakes mistakes({ORX_SOURCE_DIR "/definitions/demo.toml"});
    return orxdef::readToml(mistakes);
}

/// The definition file as the daemon would load it.
inline std::string demoImage() {
    orxdef::Mistakes mistakes({"demo.toml"});
    return orxdef::binaryImage(demoDefinitions(), mistakes).value();
}

}  // namespace orx::orxsim
