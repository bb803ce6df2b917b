// A random story of the lens: a projector, the settings of both axes, and commands, each given at
// its own moment. The same seed tells the same story.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "system/simulated/Bench.h"
#include "system/simulated/Dice.h"

namespace orx::test {

/// How one axis is built and set up.
struct AxisSetup {
    int travel = 0;    ///< of the simulated motor
    int start = 0;     ///< where the motor stands when the projector is switched on
    int min = 0;       ///< lower end of the usable range
    int max = 0;       ///< calibrated travel; the motor's may be a little longer
    int withheld = 0;  ///< steps that `reducemax` takes off at the top
    int resetSteps = 0;
    int lockInMode = 0;
    bool resetOnLoad = true;

    [[nodiscard]] int upperEnd() const noexcept { return max - withheld; }
};

enum class Act {
    toPart,
    toSteps,
    stepUp,
    stepDown,
    reset,
    resetLens,
    save,
    load,
    clear,
    calibrate,  ///< at rest only: several commands, with the new travel as the argument
    other       ///< nothing of the lens: passed on to the projector
};

/// What the client commands. Both axes take `resetLens`, `save`, `load` and `clear`.
struct LensCommand {
    Act act = Act::reset;
    int axis = 0;  ///< 0 zoom, 1 focus
    std::optional<int> argument{};
    std::string word{};  ///< of `other`

    /// One line for each command that the daemon is sent.
    [[nodiscard]] std::string text() const;
};

enum class Moment {
    atRest,   ///< once all before is done
    atOnce,   ///< right behind the command before
    underWay  ///< when the line has seen some more commands, or the lens is at rest
};

struct SequenceStep {
    Moment moment = Moment::atRest;
    std::size_t lineCommands = 0;  ///< how many more, for `underWay`
    LensCommand command{};
};

struct LensSequence {
    std::uint64_t seed = 0;
    std::string model{};
    int lineDelay = 0;                ///< milliseconds that the daemon waits after each command
    std::array<AxisSetup, 2> axes{};  ///< zoom, focus
    std::vector<SequenceStep> steps{};

    [[nodiscard]] BenchSetup bench() const;

    /// How to play the story by hand: the settings, and each datagram with its moment.
    [[nodiscard]] std::string text() const;
};

/// An axis whose calibrated travel has `shortest` to `longest` steps.
[[nodiscard]] AxisSetup rollAxis(Dice& dice, int shortest, int longest);

/// A command at a moment of its own.
[[nodiscard]] SequenceStep rollStep(Dice& dice, const std::array<AxisSetup, 2>& axes);

/// Thirty commands for a projector that resets its lens natively or, with every other seed, by fast
/// steps.
[[nodiscard]] LensSequence randomSequence(std::uint64_t seed);

}  // namespace orx::test
