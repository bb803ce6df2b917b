// Checks the command aliases, the keys `cmd.*`.
#pragma once

#include <optional>

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/DefinitionCheck.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// `model` is the projector model to which the aliases are applied, here as in the daemon; nothing
/// where there is none.
void checkAliases(const CheckedConfig& config, const std::optional<ChosenModel>& model,
                  Report& report);

}  // namespace orx::orxctl
