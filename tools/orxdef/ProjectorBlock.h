// The block of one model in the binary file: its header, command strings and argument descriptors.
#pragma once

#include <string>

#include "orxdef/Definition.h"

namespace orx::orxdef {

/// The block in the order in which `model` has its entries. Whether its counts and sizes fit
/// their fields is the caller's to check.
[[nodiscard]] std::string projectorBlock(const ModelDefinition& model);

}  // namespace orx::orxdef
