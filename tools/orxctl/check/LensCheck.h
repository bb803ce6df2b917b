// Checks how the lens is to move, and the lens memory.
#pragma once

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// Reports odd values of the keys `abszoom.*` and `absfocus.*`.
void checkMotion(const CheckedConfig& config, Report& report);

/// Reports odd ranges and slots in a lens memory file, and what keeps the daemon from reading and
/// writing it. The file need not exist. Its lines have been checked.
void checkLensMemory(const ConfigText& memory, Report& report);

}  // namespace orx::orxctl
