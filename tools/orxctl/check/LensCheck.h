// Checks how the lens is to move, and the lens memory.
#pragma once

#include <string>

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// Reports odd values of the keys `abszoom.*` and `absfocus.*`.
void checkMotion(const CheckedConfig& config, Report& report);

/// Reports what is wrong with the lens memory file at `path`, which need not exist.
void checkLensMemory(const std::string& path, Report& report);

}  // namespace orx::orxctl
