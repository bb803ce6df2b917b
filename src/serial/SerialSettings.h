// The parameters of the RS-232 line: first those of the projector model, then what the main
// configuration overrides, and the terminal attributes that they make.
//
// A value, copied freely. The delay may be changed by one thread while another reads it; all else
// is set while the daemon starts.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <termios.h>

#include "config/ConfigKeys.h"
#include "config/MainConfig.h"
#include "core/CopyableAtomic.h"

namespace orx {

/// The line parameters as a projector definition gives them.
struct LineParameters {
    int bytesize;  ///< character size, 5 to 8 bits
    int stopbits;  ///< 1 or 2
    int parity;    ///< 0 none, 1 odd, 2 even
    int baudrate;  ///< bit/s
    int timeout;   ///< milliseconds of silence that end a reply
    int delay;     ///< milliseconds to wait after each write
};

/// A `serial.*` key of the main configuration whose value is a whole number, and the values that
/// are taken.
struct SerialRange {
    std::string_view key;
    int lowest;
    int highest;

    [[nodiscard]] constexpr bool contains(int value) const noexcept {
        return value >= lowest && value <= highest;
    }
};

namespace serial_range {

inline constexpr SerialRange debug{config_key::serialDebug, 0, 2};
inline constexpr SerialRange baudrate{config_key::serialBaudrate, 0, 4'000'000};
inline constexpr SerialRange bytesize{config_key::serialBytesize, 5, 8};
inline constexpr SerialRange delay{config_key::serialDelay, 0, 10'000};
inline constexpr SerialRange stopbits{config_key::serialStopbits, 1, 2};
inline constexpr SerialRange timeout{config_key::serialTimeout, 0, 10'000};

/// In the order in which they are read.
inline constexpr std::array<SerialRange, 6> all{debug, baudrate, bytesize,
                                                delay, stopbits, timeout};

}  // namespace serial_range

/// What `serial.parity` can be, by the number that stands for it.
inline constexpr std::array<std::string_view, 3> parityTexts{"none", "odd", "even"};

/// The number of the parity called `text`, or nothing where there is none.
[[nodiscard]] std::optional<int> parityFromText(std::string_view text) noexcept;

/// Whether the platform has a constant for that speed in bit/s; the line is dead with any other.
[[nodiscard]] bool isPossibleSpeed(int baudrate) noexcept;

class SerialSettings {
  public:
    /// `serial.debug`: at this level there is no serial device at all.
    static constexpr int noSerialDevice = 2;

    /// No device and debug level 0.
    explicit SerialSettings(const LineParameters& parameters)
        : line(parameters), delayMs(parameters.delay) {}
    virtual ~SerialSettings() = default;
    SerialSettings(const SerialSettings&) = default;
    SerialSettings& operator=(const SerialSettings&) = delete;

    /// Takes the device and every `serial.*` value that lies within its range; a value outside, and
    /// a parity other than those of `parityTexts`, is passed over. Throws the standard conversion
    /// errors "stoi" for a value that is no number.
    void readConfiguration(const MainConfig& config);

    [[nodiscard]] const std::string& device() const noexcept { return devicePath; }
    [[nodiscard]] int baudrate() const noexcept { return line.baudrate; }
    /// All that is in force now.
    [[nodiscard]] LineParameters parameters() const noexcept;
    [[nodiscard]] int debug() const noexcept { return debugLevel; }

    /// Milliseconds to wait after each write. No range is checked: a negative delay is none.
    void setDelay(int milliseconds) noexcept { delayMs.store(milliseconds); }
    [[nodiscard]] int delay() const noexcept { return delayMs.load(); }

    /// The record for tcsetattr: a raw line that never blocks a read beyond the timeout. A baud
    /// rate without a constant of the platform gives B0.
    [[nodiscard]] termios terminalAttributes() const;

    /// Prints the six line parameters to standard output.
    void dump() const;

  private:
    LineParameters line;
    CopyableAtomic<int> delayMs;  ///< in place of `line.delay`, which keeps what the model asks for
    std::string devicePath;
    int debugLevel = 0;  ///< 0 normal, 1 diagnostic output, 2 no serial device
};

}  // namespace orx
