// The projector's side of a serial line, a pseudo-terminal.
#pragma once

#include <string>

#include "core/FileDescriptor.h"

namespace orx::bench {

class SerialLine {
  public:
    SerialLine();

    /// The device, for the server.
    [[nodiscard]] const std::string& device() const noexcept { return path; }

    /// Waits for bytes; gives how many there were. Throws where none come.
    [[nodiscard]] long receive() const;

    /// Drops what is there.
    void discard() const;

  private:
    FileDescriptor master;
    std::string path;
    FileDescriptor slave;  ///< keeps the line up while no server has it open
};

}  // namespace orx::bench
