// Shows the simulated projector on a terminal while it runs, on the terminal's second page: what
// was on it before comes back in the end.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orxsim/Display.h"
#include "orxsim/Output.h"
#include "orxsim/Screen.h"
#include "orxsim/StopSignals.h"

namespace orx::orxsim {

class LiveScreen final : public Display {
  public:
    /// More often is more than an eye takes in.
    static constexpr Instant leastInterval = std::chrono::milliseconds(50);

    /// `terminal` and `stopSignals` must outlive this.
    LiveScreen(Output& terminal, StopSignals& stopSignals);
    LiveScreen(const LiveScreen&) = delete;
    LiveScreen& operator=(const LiveScreen&) = delete;
    ~LiveScreen() override;

    void begin(const Setup& setup, const SimulatedProjector& projector) override;
    void show(const Report& report) override;
    std::optional<Instant> refresh(const SimulatedProjector& projector, Instant now) override;
    void unplugged() override;
    void end(const Totals& totals) override;

  private:
    [[nodiscard]] ScreenSize size() const;
    void draw(const std::vector<std::string>& lines);
    void leave(const std::string& lastWords);

    Output& output;
    StopSignals& signals;
    std::optional<Screen> screen;
    std::vector<std::string> drawn;
    Instant lastDrawing = -leastInterval;
};

}  // namespace orx::orxsim
