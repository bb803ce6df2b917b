// The parameters of the RS-232 line: first those of the projector model, then what the main
// configuration overrides, and the terminal attributes that they make.
//
// A value, copied freely. The delay may be changed by one thread while another reads it; all else
// is set while the daemon starts.
#pragma once

#include <string>
#include <termios.h>

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
    /// a parity other than "none", "odd" and "even", is passed over. Throws the standard conversion
    /// errors "stoi" for a value that is no number.
    void readConfiguration(const MainConfig& config);

    [[nodiscard]] const std::string& device() const noexcept { return devicePath; }
    [[nodiscard]] int baudrate() const noexcept { return line.baudrate; }
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
