// The projector without its surroundings: bytes and time go in, answers and reports come out.
//
// Time is what the caller says it is. Whatever is due, a byte that has arrived, a motor step, a
// silence, happens at its own instant and in that order, however late `advance` is called: a run is
// the same on a busy machine and on an idle one.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/CommandTable.h"
#include "orxsim/Behaviour.h"
#include "orxsim/CommandRecognizer.h"
#include "orxsim/LensMotor.h"
#include "orxsim/LineNoise.h"
#include "orxsim/PacedBytes.h"
#include "orxsim/ProjectorState.h"
#include "orxsim/Report.h"

namespace orx::orxsim {

class SimulatedProjector {
  public:
    /// So long a pause ends a command that could have gone on.
    static constexpr Instant silenceGap = std::chrono::milliseconds(20);

    /// The definition must outlive the projector.
    SimulatedProjector(const orxdef::CommandTable& commands, const orxdef::ModelDefinition& model,
                       Behaviour wanted);

    /// Takes bytes that were put on the line at `now`.
    void receive(std::string_view bytes, Instant now);

    /// Does everything that is due by `now`.
    void advance(Instant now);

    /// When there is something to do next; nothing while the projector is idle.
    [[nodiscard]] std::optional<Instant> nextDue() const;

    /// What was carried out or refused since the last call.
    [[nodiscard]] std::vector<Report> takeReports();

    /// The bytes of answers that have left by `now`.
    [[nodiscard]] std::string takeOutput(Instant now) { return outgoing.take(now); }

    /// Whether the line was cut. Nothing happens any more then.
    [[nodiscard]] bool isUnplugged() const noexcept { return unplugged; }

    [[nodiscard]] AxisReadings axes() const;
    [[nodiscard]] const ProjectorState& state() const noexcept { return otherState; }
    [[nodiscard]] const Totals& totals() const noexcept { return counts; }

  private:
    /// A lens command that is being carried out.
    struct Motion {
        Heard heard;
        const LensCommand* command;
        int remaining;  ///< steps
        Instant due;    ///< of the next step
    };

    [[nodiscard]] std::optional<Instant> nextEvent() const;
    [[nodiscard]] std::optional<Instant> endOfSilence() const;
    void happen(Instant now);
    void hearWhatIsDue(Instant now);
    void carryOut(Instant now);
    void begin(Heard heard, Instant now);
    void moveOn(Instant now);
    void finish(Heard heard, bool metEndStop, Instant now);
    [[nodiscard]] std::optional<std::string> answerTo(const Heard& heard);
    [[nodiscard]] std::string garbage();
    [[nodiscard]] int stepsOf(const LensCommand& command) const;
    [[nodiscard]] LensMotor makeMotor(Axis axis) const;

    Behaviour behaviour;
    CommandRecognizer recognizer;
    std::string acknowledgement;
    std::string error;
    LineNoise noise;
    Chance garbageSource;
    std::array<LensMotor, axisCount> motors;
    ProjectorState otherState;
    PacedBytes incoming;
    PacedBytes outgoing;
    std::deque<Heard> waiting;  ///< heard, but not begun
    std::optional<Motion> motion;
    std::vector<Report> reports;
    Totals counts;
    bool unplugged = false;
};

}  // namespace orx::orxsim
