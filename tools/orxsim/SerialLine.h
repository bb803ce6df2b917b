// The projector's end of a serial line without hardware: a pseudo-terminal, whose other end the
// daemon opens by its path as it would open the device of a real line.
#pragma once

#include <string>
#include <string_view>

#include "core/FileDescriptor.h"

namespace orx::orxsim {

class SerialLine {
  public:
    /// Throws `std::system_error` where the system has no pseudo-terminal left.
    SerialLine();

    /// The path of the end that the daemon opens.
    [[nodiscard]] const std::string& device() const noexcept { return path; }

    /// Readable when bytes have come.
    [[nodiscard]] int descriptor() const noexcept { return projectorEnd.get(); }

    /// The bytes that have come; never waits.
    [[nodiscard]] std::string read() const;

    /// Sends `bytes`. As on any line without flow control, what nobody takes in time is lost.
    void write(std::string_view bytes) const;

    /// Cuts the line: whoever has the other end open finds it hung up.
    void unplug() noexcept;

  private:
    FileDescriptor projectorEnd;
    std::string path;
    FileDescriptor otherEnd;  ///< kept open: the daemon may close its own and open it again
};

}  // namespace orx::orxsim
