#include "orxctl/check/TerminalDrivers.h"

#include <fstream>
#include <sstream>
#include <sys/sysmacros.h>

namespace orx::orxctl {
namespace {

/// One line of the list: "usbserial /dev/ttyUSB 188 0-511 serial".
bool isServedBy(const std::string& driver, dev_t device) {
    std::istringstream line(driver);
    std::string name;
    std::string node;
    unsigned majorNumber = 0;
    unsigned first = 0;
    if (!(line >> name >> node >> majorNumber >> first)) return false;
    unsigned last = first;
    if (line.peek() == '-') line.ignore() >> last;
    const auto minorNumber = minor(device);
    return major(device) == majorNumber && minorNumber >= first && minorNumber <= last;
}

}  // namespace

std::optional<bool> isTerminal(dev_t device, const std::string& driverList) {
    std::ifstream drivers(driverList);
    if (!drivers.is_open()) return std::nullopt;
    for (std::string driver; std::getline(drivers, driver);)
        if (isServedBy(driver, device)) return true;
    return false;
}

bool lacksHardware(dev_t device, const std::string& deviceFolder) {
    const auto numbers = std::to_string(major(device)) + ":" + std::to_string(minor(device));
    std::ifstream file(deviceFolder + "/" + numbers + "/type");
    constexpr int unknownChip = 0;
    int type = -1;
    return file >> type && type == unknownChip;
}

}  // namespace orx::orxctl
