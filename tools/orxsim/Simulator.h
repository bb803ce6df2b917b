// The simulator as a process: brings the projector, its serial line, the displays and the signals
// together, on one thread and on the real clock.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "orxsim/DeviceLink.h"
#include "orxsim/Display.h"
#include "orxsim/Output.h"
#include "orxsim/SerialLine.h"
#include "orxsim/SimulatedProjector.h"
#include "orxsim/StopSignals.h"

namespace orx::orxsim {

class Simulator {
  public:
    /// Opens the line and makes the link at `linkPath`. All else must outlive this. Throws where
    /// there is no line or no link to be had.
    Simulator(SimulatedProjector& simulated, std::string linkPath, Display& shown,
              Output& standardOutput, StopSignals& stopSignals);

    /// Serves until the line is cut or a signal ends it. The link is gone by then. Throws
    /// `std::system_error` where the output fails.
    void run(const std::string& model);

  private:
    [[nodiscard]] Instant now() const;
    [[nodiscard]] std::optional<Instant> advance();
    void wait(std::optional<Instant> due);

    SimulatedProjector& projector;
    Display& display;
    Output& output;
    StopSignals& signals;
    SerialLine line;
    DeviceLink link;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

}  // namespace orx::orxsim
