#include "lens/LensControl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "config/ConfigKeys.h"
#include "control/Status.h"
#include "core/Console.h"
#include "core/Log.h"

namespace orx {
namespace {

std::string_view firstSupported(const Projector& projector, const auto& candidates) {
    const auto candidate = std::ranges::find_if(
        candidates, [&projector](std::string_view command) { return projector.supports(command); });
    return candidate != candidates.end() ? *candidate : std::string_view();
}

/// What remains of a travel of `max` steps; still as wide as the calculation makes it.
std::int64_t reduce(int max, int reduceMaxParam) {
    constexpr double percent = 100.0;
    if (reduceMaxParam < 1) return std::int64_t{max} + reduceMaxParam;
    return std::llround(max * (percent - reduceMaxParam) / percent);
}

/// The argument of an absolute command as steps: 65536 stands for the whole usable range.
std::int64_t scaleToRange(int value, int maxReduced) {
    return std::llround(maxReduced * (1.0 / 65536) * value);
}

}  // namespace

LensControl::LensControl(std::shared_ptr<const Projector> lensProjector,
                         const AxisCommands& axisCommands)
    : projector(std::move(lensProjector)),
      commands(axisCommands),
      axisName(axisCommands.axisName),
      fastResetCommand(firstSupported(*projector, axisCommands.fastResetCommands)) {}

void LensControl::setParameters(const MotionParameters& motion) {
    parameters = motion;
}

void LensControl::setRange(int newMin, int newMax) {
    min = newMin;
    setMax(newMax);
}

void LensControl::setMax(int newMax) {
    constexpr std::int64_t greatest = std::numeric_limits<int>::max();
    max = newMax;
    const auto reduced = std::min(reduce(newMax, parameters.reduceMaxParam), greatest);
    maxReduced = reduced < min ? min.load() : static_cast<int>(reduced);
}

void LensControl::setCalibrationDone(std::function<void()> callback) {
    calibrationDone = std::move(callback);
}

std::string axisKey(std::string_view axisName, std::string_view key) {
    const bool isRangeKey = std::ranges::find(config_key::range, key) != config_key::range.end();
    std::string name(isRangeKey ? "" : "abs");
    name.append(axisName).append(isRangeKey ? "" : ".");
    return name.append(key);
}

std::string LensControl::configKey(std::string_view key) const {
    return axisKey(axisName, key);
}

int LensControl::clamp(std::int64_t value) const noexcept {
    if (value < min) return min;
    return value >= maxReduced ? maxReduced.load() : static_cast<int>(value);
}

bool LensControl::handleCommand(const Command& command) {
    if (command.is(commands.absCommand) || command.is(commands.absStepsCommand)) {
        handleAbsolute(command);
    } else if (command.is(commands.stepUpCommand) || command.is(commands.stepDownCommand)) {
        handleStep(command);
    } else if (command.is(commands.calibrationStartCommand)) {
        startCalibration();
    } else if (command.is(commands.calibrationEndCommand)) {
        endCalibration(command);
    } else if (command.is(commands.setResetStepsCommand)) {
        if (!command.arguments().empty()) parameters.resetSteps = std::stoi(command.arguments()[0]);
    } else if (command.is(commands.resetCommand)) {
        reset(0);
    } else if (command.is(commands.overrideCommand)) {
        handleOverride(command);
    } else {
        return false;
    }
    return true;
}

void LensControl::handleAbsolute(const Command& command) {
    if (command.arguments().empty()) return;
    const int value = std::stoi(command.arguments().front());
    const auto steps =
        command.is(commands.absCommand) ? scaleToRange(value, maxReduced) : std::int64_t{value};
    if (!referenced && isConfigured()) {
        reset(steps);
    } else {
        target = clamp(steps);
    }
}

void LensControl::handleStep(const Command& command) {
    const auto direction = command.is(commands.stepUpCommand) ? Direction::up : Direction::down;
    if (referenced) {
        target = clamp(std::int64_t{target} + static_cast<int>(direction));
        return;
    }
    if (calibrating) countCalibrationStep(direction);
    projector->send(command);  // an axis without a reference can still be jogged by hand
}

void LensControl::countCalibrationStep(Direction direction) {
    if (direction == Direction::up || position > min) position += static_cast<int>(direction);
}

void LensControl::handleOverride(const Command& command) {
    if (calibrating || !isConfigured() || command.arguments().empty()) return;
    const int place = clamp(std::stoi(command.arguments().front()));
    position = place;  // ahead of the target: a poll in between then steps back what it stepped
    target = place;
    referenced = true;
}

void LensControl::startCalibration() {
    log("- entering " + axisName + " calibration mode", Echo::yes);
    calibrating = true;
    referenced = false;
    reset(0);
    const int endStop = position;
    min = endStop;
    maxReduced = endStop;
}

void LensControl::endCalibration(const Command& command) {
    const int given = command.arguments().empty() ? 0 : std::stoi(command.arguments().front());
    const int newMax = given > 0 ? given : position.load();
    setMax(newMax);
    calibrating = false;
    log("- exiting " + axisName + " calibration mode, new max: " + std::to_string(newMax) +
            " steps " + (given > 0 ? "(explicit input)" : "(determined by advancing)"),
        Echo::yes);
    calibrationDone();
    reset(0);
}

void LensControl::reset(std::int64_t requested) {
    resetTarget = clamp(requested);
    resetting = true;
    if (!driveToEndStop()) {
        log("  " + axisName + " reset not possible, no supported command?!", Echo::yes);
        resetting = false;
        return;
    }
    target = resetTarget.load();
    position = 0;
    resetting = false;
    if (!calibrating && isConfigured()) referenced = true;
}

bool LensControl::driveToEndStop() {
    if (projector->supports(commands.resetCommand)) {
        Status::setHello();
        projector->sendByName(commands.resetCommand);
    } else if (!fastResetCommand.empty()) {
        sendFastSteps();
    } else {
        return false;
    }
    return true;
}

void LensControl::sendFastSteps() {
    log("- resetting absolute " + axisName + " (" + std::to_string(parameters.resetSteps) +
            " fast steps)",
        Echo::yes);
    Status::setHello();
    for (int sent = 0; sent < parameters.resetSteps; ++sent) {
        projector->sendByName(fastResetCommand);
    }
    printLine("  " + axisName + " reset done.");
}

void LensControl::beginReset() {
    resetTarget = 0;
    resetting = true;
    Status::setHello();
}

void LensControl::gotoMemoryPosition(int memoryPosition) {
    if (parameters.resetOnLoadMem) {
        // Lost steps must not add up from recall to recall.
        if (target != clamp(memoryPosition)) reset(memoryPosition);
    } else if (position != unknown && target != unknown) {
        target = clamp(memoryPosition);
    } else {
        reset(memoryPosition);
    }
}

void LensControl::moveStep() {
    if (!referenced) return;
    const auto arrivedBy = walkToTarget();
    if (arrivedBy && moving && parameters.lockInMode != 0) lockIn(*arrivedBy);
    moving = false;
}

std::optional<LensControl::Direction> LensControl::walkToTarget() {
    auto direction = Direction::none;
    for (;;) {
        if (!enabled || resetting) return std::nullopt;
        const int destination = target;  // read after the flags: a reset that has just ended counts
        const auto difference = std::int64_t{destination} - position;
        if (difference == 0) return referenced ? std::optional(direction) : std::nullopt;
        direction = difference > 0 ? Direction::up : Direction::down;
        // Counted ahead of the command, and added rather than stored: a reset on the other thread
        // may put the count to zero at this very moment, and that must stand.
        position += static_cast<int>(direction);
        if (!moving || destination != announcedTarget) announceMove(destination, difference);
        sendStep(direction);
    }
}

void LensControl::announceMove(int destination, std::int64_t difference) {
    Status::setHello();
    moving = true;
    announcedTarget = destination;
    log("- absolute " + axisName + ": moving to position " + std::to_string(destination) + "/" +
            std::to_string(maxReduced) + " (" + (difference > 0 ? "+" : "") +
            std::to_string(difference) + " steps)",
        Echo::yes);
}

void LensControl::sendStep(Direction direction) const {
    projector->sendByName(direction == Direction::up ? commands.stepUpCommand
                                                     : commands.stepDownCommand);
}

void LensControl::lockIn(Direction lastDirection) const {
    using enum Direction;
    /// The first of the two steps after a move up and after a move down, by mode.
    struct Manoeuvre {
        Direction afterUp;
        Direction afterDown;
    };
    constexpr std::array<Manoeuvre, 7> manoeuvres{
        {{none, none}, {up, none}, {none, down}, {up, up}, {down, down}, {up, down}, {down, up}}};

    const int mode = parameters.lockInMode;
    log("- absolute " + axisName + ": locking in (mode " + std::to_string(mode) + ")", Echo::yes);
    if (mode < 0 || mode >= static_cast<int>(manoeuvres.size())) return;
    const auto& manoeuvre = manoeuvres.at(static_cast<std::size_t>(mode));
    const auto first = lastDirection == up ? manoeuvre.afterUp : manoeuvre.afterDown;
    if (first == none || position == (first == up ? maxReduced : min)) return;
    sendStep(first);
    sendStep(first == up ? down : up);
}

std::string LensControl::positionText() const {
    if (resetting) return std::string("resetting>").append(std::to_string(resetTarget));
    const int here = position;
    if (here == unknown) return "undefined";
    if (calibrating) return std::to_string(here);
    const int destination = target;
    auto text = std::to_string(here) + "/" + std::to_string(maxReduced);
    if (here != destination) text.append(">").append(std::to_string(destination));
    return text;
}

}  // namespace orx
