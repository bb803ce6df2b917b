// Standard output of the simulator: every text is out when `write` returns.
#pragma once

#include <string_view>

#include "orxsim/StopSignals.h"

namespace orx::orxsim {

class Output {
  public:
    /// Writes to `fileDescriptor`, which stays the caller's. `stopSignals` must outlive this.
    Output(int fileDescriptor, StopSignals& stopSignals)
        : descriptor(fileDescriptor), signals(stopSignals) {}

    /// Waits for a slow reader, but gives up when the simulator is to end meanwhile. Throws
    /// `std::system_error` where nothing can be written any more, as when the reader is gone.
    void write(std::string_view text);

    [[nodiscard]] int get() const noexcept { return descriptor; }

  private:
    [[nodiscard]] bool waitForRoom();

    int descriptor;
    StopSignals& signals;
};

}  // namespace orx::orxsim
