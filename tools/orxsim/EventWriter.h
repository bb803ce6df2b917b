// Writes what happens as events for a program to read: one JSON object a line, each line out at
// once, without times, so that equal runs give equal lines.
//
// Bytes of answers stand as one character each, U+0000 to U+00FF. The state of the projector stands
// in the first event and in that of every command that has changed it.
#pragma once

#include "orxsim/Display.h"
#include "orxsim/Output.h"

namespace orx::orxsim {

class EventWriter final : public Display {
  public:
    /// `lines` must outlive the writer.
    explicit EventWriter(Output& lines) : output(lines) {}

    void begin(const Setup& setup, const SimulatedProjector& projector) override;
    void show(const Report& report) override;
    std::optional<Instant> refresh(const SimulatedProjector& projector, Instant now) override;
    void unplugged() override;
    void end(const Totals& totals) override;

  private:
    Output& output;
};

}  // namespace orx::orxsim
