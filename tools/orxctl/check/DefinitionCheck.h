// Checks the definition file and the choice of the projector model in it.
#pragma once

#include <memory>
#include <optional>

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/Report.h"
#include "projector/Projector.h"
#include "serial/SerialSettings.h"

namespace orx::orxctl {

/// What the daemon takes out of the definition file.
struct ChosenModel {
    std::string name;
    std::shared_ptr<Projector> projector;
    LineParameters line;
};

/// Loads the file as the daemon does and reports what is wrong with it and with the choice; says to
/// `report` which model is found. Nothing where the daemon would have no projector.
[[nodiscard]] std::optional<ChosenModel> checkDefinition(const CheckedConfig& config,
                                                         Report& report);

}  // namespace orx::orxctl
