// Checks the serial device without opening it: opening alone can already reset an adapter.
#pragma once

#include <string>

#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// The folder where the system names adapters by what they are, not by the order of plugging.
inline constexpr const char* namesById = "/dev/serial/by-id";

/// Reports what would keep the daemon from using the device at `path`, which stands at `place`.
void checkDevice(const std::string& path, const Place& place, Report& report,
                 const std::string& byIdFolder = namesById);

}  // namespace orx::orxctl
