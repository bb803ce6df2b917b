// A simulated projector under a clock of the test's own.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orxsim/SimulatedProjector.h"
#include "unit/orxsim/ModelBench.h"

namespace orx::orxsim {

using std::chrono::microseconds;
using std::chrono::milliseconds;

class ProjectorBench {
  public:
    explicit ProjectorBench(Behaviour behaviour = {},
                            const std::vector<TestCommand>& commands = usualCommands())
        : bench(commands), simulated(bench.table(), bench.model(), std::move(behaviour)) {}

    /// Puts `bytes` on the line and does what is due at once.
    void send(std::string_view bytes) {
        simulated.receive(bytes, now);
        simulated.advance(now);
    }

    /// Lets time pass.
    void pass(Instant time) {
        now += time;
        simulated.advance(now);
    }

    /// What was answered since the last call.
    std::string answers() { return simulated.takeOutput(now); }

    std::vector<Report> reports() { return simulated.takeReports(); }

    /// The commands carried out since the last call; "?" for what was refused.
    std::vector<std::string> commands() {
        std::vector<std::string> names;
        for (const auto& report : reports())
            names.push_back(report.heard.isCommand() ? report.heard.command : "?");
        return names;
    }

    [[nodiscard]] AxisReading zoom() const { return simulated.axes()[0]; }
    [[nodiscard]] AxisReading focus() const { return simulated.axes()[1]; }
    SimulatedProjector& projector() { return simulated; }

  private:
    ModelBench bench;
    SimulatedProjector simulated;
    Instant now{0};
};

}  // namespace orx::orxsim
