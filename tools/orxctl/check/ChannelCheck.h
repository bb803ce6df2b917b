// Checks the addresses of the control channel, without binding any.
#pragma once

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/Network.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// Reports what would keep a daemon with those rights from listening, and who else could be heard.
void checkChannels(const CheckedConfig& config, const PortRights& rights, Report& report);

}  // namespace orx::orxctl
