#include "serial/SerialSettings.h"

#include <algorithm>
#include <array>

#include "config/ConfigKeys.h"
#include "core/Console.h"

namespace orx {
namespace {

constexpr int missing = -1;

/// The configured value that is to replace the one of the model.
std::optional<int> configured(const MainConfig& config, const SerialRange& range) {
    const int value = config.getInt(range.key, missing);
    if (!range.contains(value)) return std::nullopt;
    return value;
}

tcflag_t characterSize(int bits) {
    switch (bits) {
        case 5:
            return CS5;
        case 6:
            return CS6;
        case 7:
            return CS7;
        default:
            return CS8;
    }
}

/// A baud rate in bit/s and the platform's constant for it.
struct Speed {
    int baudrate;
    speed_t constant;
};

constexpr std::array<Speed, 30> speeds{{
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000},
    {1500000, B1500000}, {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000},
    {3500000, B3500000}, {4000000, B4000000},
}};

/// Exact rates only: the nearest one would talk to no projector.
speed_t speedConstant(int baudrate) noexcept {
    const auto* const speed = std::ranges::find(speeds, baudrate, &Speed::baudrate);
    return speed != speeds.end() ? speed->constant : B0;
}

}  // namespace

std::optional<int> parityFromText(std::string_view text) noexcept {
    const auto* const name = std::ranges::find(parityTexts, text);
    if (name == parityTexts.end()) return std::nullopt;
    return static_cast<int>(name - parityTexts.begin());
}

bool isPossibleSpeed(int baudrate) noexcept {
    return speedConstant(baudrate) != B0;
}

LineParameters SerialSettings::parameters() const noexcept {
    auto result = line;
    result.delay = delay();
    return result;
}

void SerialSettings::readConfiguration(const MainConfig& config) {
    devicePath = config.serialDevice();
    debugLevel = configured(config, serial_range::debug).value_or(debugLevel);
    line.baudrate = configured(config, serial_range::baudrate).value_or(line.baudrate);
    line.bytesize = configured(config, serial_range::bytesize).value_or(line.bytesize);
    setDelay(configured(config, serial_range::delay).value_or(delay()));
    line.parity = parityFromText(config.getString(config_key::serialParity)).value_or(line.parity);
    line.stopbits = configured(config, serial_range::stopbits).value_or(line.stopbits);
    line.timeout = configured(config, serial_range::timeout).value_or(line.timeout);
}

termios SerialSettings::terminalAttributes() const {
    constexpr int odd = 1;
    constexpr int even = 2;
    constexpr int msPerTenth = 100;
    termios attributes{};
    attributes.c_cflag = CREAD | CLOCAL | characterSize(line.bytesize);
    if (line.parity == odd || line.parity == even) attributes.c_cflag |= PARENB;
    if (line.parity == odd) attributes.c_cflag |= PARODD;
    if (line.stopbits == 2) attributes.c_cflag |= CSTOPB;
    attributes.c_cc[VTIME] = static_cast<cc_t>(line.timeout / msPerTenth);
    attributes.c_cc[VMIN] = 0;
    const auto speed = speedConstant(line.baudrate);
    ::cfsetispeed(&attributes, speed);
    ::cfsetospeed(&attributes, speed);
    return attributes;
}

void SerialSettings::dump() const {
    printLine("  baudrate: " + std::to_string(line.baudrate));
    printLine("  bytesize: " + std::to_string(line.bytesize));
    printLine("     delay: " + std::to_string(delay()));
    printLine("    parity: " + std::to_string(line.parity));
    printLine("  stopbits: " + std::to_string(line.stopbits));
    printLine("   timeout: " + std::to_string(line.timeout));
}

}  // namespace orx
