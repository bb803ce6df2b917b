// What the lens must do, told by the commands alone: where each axis has to come to rest, and how
// far its motor may then be from there. It is told of every command in the order in which the
// daemon executes them, and of every rest in between.
//
// The motor stands exactly where STATUS says, with one exception. A reset that is given while the
// axis moves may leave one step in flight, which then comes behind the end of the reset: up, and
// the motor stands one step above its count from then on; or down, against the end stop. What that
// step has done shows at the next rest; it stays so until the next reset.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

#include "system/simulated/LensSequence.h"

namespace orx::test {

/// End stops that single steps of one axis have met since the last rest.
struct Contacts {
    int upper = 0;
    int lower = 0;
};

/// What the exception has been used for.
struct StepsInFlight {
    int resets = 0;       ///< given while their axis moved
    int differences = 0;  ///< found at the first rest behind such a reset
    int contacts = 0;     ///< with an end stop, by the step or by the difference that it has left
};

class ExpectedAxis {
  public:
    explicit ExpectedAxis(const AxisSetup& setup) : axis(setup) {}

    void goTo(int steps);
    void step(int direction);
    void reset(int requested);
    void recall(std::optional<int> saved);
    /// At rest only.
    void calibrate(int travel);

    /// Where the axis stands; -1 before its first reset, nothing while it may be moving.
    [[nodiscard]] std::optional<int> position() const noexcept { return place; }
    [[nodiscard]] const AxisSetup& setup() const noexcept { return axis; }

    /// The lens is at rest: the status says `shown`, the motor stands at `motor`. Gives what is
    /// wrong, empty where nothing is; counts in `inFlight` what the exception is used for.
    [[nodiscard]] std::string rest(const AxisStatus& shown, int motor, const Contacts& contacts,
                                   StepsInFlight& inFlight);

  private:
    void setTarget(std::optional<int> newTarget);
    [[nodiscard]] int clamp(long value) const noexcept;
    [[nodiscard]] std::string compare(int shown, int motor, const Contacts& contacts,
                                      StepsInFlight& inFlight);

    AxisSetup axis;
    bool referenced = false;
    std::optional<int> place = -1;
    std::optional<int> target = -1;
    int ahead = 0;            ///< of the motor, left by a step in flight
    int resetsInMidMove = 0;  ///< since the last rest
};

class ExpectedLens {
  public:
    explicit ExpectedLens(const std::array<AxisSetup, 2>& setup)
        : axes{ExpectedAxis(setup[0]), ExpectedAxis(setup[1])} {}

    void take(const LensCommand& command);

    [[nodiscard]] ExpectedAxis& axis(std::size_t number) { return axes.at(number); }

    /// The slots that the lens memory file holds, now that the lens is at rest: what was saved in
    /// mid-move is known only then. Gives what is wrong with them, empty where nothing is.
    [[nodiscard]] std::string learnSlots(const std::string& lensMemory);

  private:
    /// Zoom, focus; nothing for a position in mid-move.
    using Slot = std::array<std::optional<int>, 2>;

    void takeOfAxis(ExpectedAxis& ofAxis, const LensCommand& command) const;
    void recall(int number);

    std::array<ExpectedAxis, 2> axes;
    std::map<int, Slot> slots;
};

}  // namespace orx::test
