// Tells terminals, such as serial lines, from other devices by their numbers, without opening them.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace orx::orxctl {

/// Whether a driver of the system makes a terminal of the character device of that number; nothing
/// where the list of drivers cannot be read.
[[nodiscard]] std::optional<bool> isTerminal(dev_t device,
                                             const std::string& driverList = "/proc/tty/drivers");

/// Whether a serial line of that number has a name only and no hardware behind it. `deviceFolder`
/// is where the system describes devices by their numbers.
[[nodiscard]] bool lacksHardware(dev_t device, const std::string& deviceFolder = "/sys/dev/char");

}  // namespace orx::orxctl
