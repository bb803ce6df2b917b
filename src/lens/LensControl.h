// One motorised lens axis, zoom or focus, as an axis with absolute positions.
//
// The motor gives no feedback: the projector takes single steps up and down, faster steps, and on
// some models a command that drives the axis into its end stop. This class counts the steps,
// references the axis at the lower end stop (a reset), learns its travel (a calibration), clamps
// targets into the usable range, and walks to a target one step command at a time. A lock-in
// manoeuvre after a move can take up the motor's backlash.
//
// Positions are motor steps from the lower end stop. -1 stands for an unknown position and for no
// target.
//
// Threads: commands, resets and memory positions come on the command queue's thread, `moveStep` on
// the projector control thread, the status operations on any. There is no lock: the shared fields
// are atomics, and a move re-reads them after every step. That is how a new target, a reset or a
// stop takes effect in mid-move.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "commands/Command.h"
#include "control/StatusAxis.h"
#include "lens/AxisCommands.h"
#include "projector/Projector.h"

namespace orx {

/// How an axis is to move; from the main configuration.
struct MotionParameters {
    int reduceMaxParam = 0;      ///< withheld at the top: >= 1 a percentage, <= 0 a step offset
    bool resetOnLoadMem = true;  ///< a memory recall references the axis first
    int resetSteps = 50;         ///< fast steps of a reset by stepping
    int lockInMode = 0;          ///< manoeuvre after a move, 1 to 6; any other value is none
};

/// The name under which the axis called `axisName` keeps a setting: "zoommin" for the range keys
/// (min, max, maxreduced, reducemaxparam), "abszoom.resetsteps" for all others.
[[nodiscard]] std::string axisKey(std::string_view axisName, std::string_view key);

class LensControl : public StatusAxis {
  public:
    /// Chooses the fast step for resets: the first of the axis's commands that the model supports.
    LensControl(std::shared_ptr<const Projector> projector, const AxisCommands& commands);

    void setParameters(const MotionParameters& motion);

    /// Sets the lower end and the full travel; the upper end is `max` reduced as the parameters
    /// say, but never below `min`.
    void setRange(int min, int max);

    /// What is called when a calibration has ended and the range is known.
    void setCalibrationDone(std::function<void()> callback);

    /// The name under which this axis keeps a setting, as `axisKey`.
    [[nodiscard]] std::string configKey(std::string_view key) const;

    /// Carries out `command` if it is one of this axis; says whether it is. A command without the
    /// argument that it needs does nothing. Throws the standard conversion errors "stoi".
    bool handleCommand(const Command& command);

    /// Walks to the target if there is a way to go; returns when the move has ended.
    void moveStep();

    /// References the axis at the end stop, then makes `requested`, clamped, the target. Returns
    /// when all of the reset has been sent. Without a command for it the axis stays as it is.
    void reset(std::int64_t requested);

    /// Shows the axis as resetting, ahead of a `reset` that has to wait for another axis.
    void beginReset();

    /// Recalls a stored position: references the axis first where the parameters ask for it and the
    /// target changes, or where the position is unknown.
    void gotoMemoryPosition(int memoryPosition);

    /// Ends a running move at its next step and allows none from now on.
    void stop() noexcept { enabled = false; }

    [[nodiscard]] const std::string& name() const noexcept override { return axisName; }
    [[nodiscard]] bool isBusy() const noexcept override { return moving || resetting; }
    /// "resetting>TARGET", "undefined", the bare count while calibrating, or "POSITION/UPPER END"
    /// with ">TARGET" on the way to it.
    [[nodiscard]] std::string positionText() const override;

    [[nodiscard]] int currentPosition() const noexcept { return position; }
    [[nodiscard]] int rangeMin() const noexcept { return min; }
    [[nodiscard]] int rangeMaxReduced() const noexcept { return maxReduced; }
    [[nodiscard]] int rangeMax() const noexcept { return max; }
    [[nodiscard]] int reduceMaxParam() const noexcept { return parameters.reduceMaxParam; }

  private:
    enum class Direction : int { down = -1, none = 0, up = 1 };

    static constexpr int unknown = -1;

    void handleAbsolute(const Command& command);
    void handleStep(const Command& command);
    void handleOverride(const Command& command);
    void startCalibration();
    void endCalibration(const Command& command);
    void countCalibrationStep(Direction direction);

    /// Steps until the target is reached; the direction of the last step, or nothing where a stop,
    /// a reset or a calibration has ended the move.
    [[nodiscard]] std::optional<Direction> walkToTarget();
    void announceMove(int destination, std::int64_t difference);
    void sendStep(Direction direction) const;
    void lockIn(Direction lastDirection) const;

    /// Sends what drives the axis into its end stop; false where the model has nothing for it.
    [[nodiscard]] bool driveToEndStop();
    void sendFastSteps();

    [[nodiscard]] bool isConfigured() const noexcept { return min != maxReduced; }
    [[nodiscard]] int clamp(std::int64_t value) const noexcept;
    void setMax(int newMax);

    const std::shared_ptr<const Projector> projector;
    const AxisCommands& commands;
    const std::string axisName;
    const std::string_view fastResetCommand;  ///< empty where the model supports none
    std::function<void()> calibrationDone;
    MotionParameters parameters;
    int max = unknown;  ///< the full travel; the command queue's thread only

    std::atomic<int> position = unknown;
    std::atomic<int> target = unknown;
    std::atomic<int> min = unknown;
    std::atomic<int> maxReduced = unknown;
    std::atomic<int> resetTarget = 0;
    std::atomic<bool> calibrating = false;
    std::atomic<bool> referenced = false;
    std::atomic<bool> resetting = false;
    std::atomic<bool> moving = false;
    std::atomic<bool> enabled = true;  ///< cleared for good when the daemon quits or restarts
    int announcedTarget = unknown;  ///< the target of the last "moving to" line; move thread only
};

}  // namespace orx
