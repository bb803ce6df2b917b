// The serial line as a stream of bytes, behind an interface so that tests need no hardware.
//
// The operations are those of the platform, and report as it does: -1 with errno set.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <termios.h>

namespace orx {

class SerialPort {
  public:
    SerialPort() = default;
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;
    virtual ~SerialPort() = default;

    /// Opens the device for reading and writing. The descriptor, or -1.
    virtual int open(const std::string& device) = 0;
    /// Applies the attributes at once.
    virtual void setAttributes(const termios& attributes) = 0;
    /// Hands all bytes to the system in one call.
    virtual ssize_t write(std::string_view bytes) = 0;
    /// Waits until all that was written has left the port.
    virtual void drain() = 0;
    /// Reads what has arrived, or waits for it as the attributes say. 0 after silence.
    virtual ssize_t read(std::span<char> buffer) = 0;
};

/// A terminal device of the system.
[[nodiscard]] std::unique_ptr<SerialPort> makeTerminalPort();

}  // namespace orx
