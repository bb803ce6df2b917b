// The block of one model in the binary file: its header, command strings and argument descriptors.
#pragma once

#include <cstddef>
#include <string>

#include "orxdef/Definition.h"

namespace orx::orxdef {

/// The arguments of all commands of `model` together.
[[nodiscard]] std::size_t countDescriptors(const ModelDefinition& model);

/// The block in the order in which `model` has its commands. Whether its counts and sizes fit
/// their fields is the caller's to check.
[[nodiscard]] std::string projectorBlock(const ModelDefinition& model);

}  // namespace orx::orxdef
