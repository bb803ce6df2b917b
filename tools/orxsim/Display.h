// Who watches the simulated projector: a writer of events, or a screen.
#pragma once

#include <optional>
#include <string>

#include "orxsim/Instant.h"
#include "orxsim/SimulatedProjector.h"

namespace orx::orxsim {

/// What the simulator stands in for, and where.
struct Setup {
    std::string device;
    std::string link;
    std::string model;
};

class Display {
  public:
    Display() = default;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    virtual ~Display() = default;

    /// The line is there; comes first.
    virtual void begin(const Setup& setup, const SimulatedProjector& projector) = 0;

    virtual void show(const Report& report) = 0;

    /// Anything about the projector may have changed. Gives when to be called again in any case.
    virtual std::optional<Instant> refresh(const SimulatedProjector& projector, Instant now) = 0;

    /// The line was cut; comes last.
    virtual void unplugged() = 0;

    /// The simulator was told to end; comes last.
    virtual void end(const Totals& totals) = 0;
};

}  // namespace orx::orxsim
