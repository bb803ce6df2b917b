// Checks the values of the keys `serial.*`, and the device where one is used.
#pragma once

#include <optional>

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/DefinitionCheck.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// `model` is what overridden values fall back to; nothing where there is none.
void checkSerial(const CheckedConfig& config, const std::optional<ChosenModel>& model,
                 Report& report);

}  // namespace orx::orxctl
