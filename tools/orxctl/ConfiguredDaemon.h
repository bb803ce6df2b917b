// The daemon that a configuration belongs to, for whoever knows its file and not its address: a
// service that is to be stopped.
#pragma once

#include <string>

#include "orxctl/HostsFile.h"

namespace orx::orxctl {

/// Where a daemon with the configuration at `path` listens, as seen from its own machine. Of
/// several channels the first that no other machine and no firewall has a part in, else the first.
/// Throws `std::invalid_argument` where the configuration cannot be read, or a daemon could not
/// listen.
[[nodiscard]] Target configuredDaemon(const std::string& path);

}  // namespace orx::orxctl
