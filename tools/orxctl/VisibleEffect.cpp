#include "orxctl/VisibleEffect.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "commands/Keywords.h"
#include "lens/AxisCommands.h"

namespace orx::orxctl {
namespace {

using client::AxisStatus;
using client::DaemonStatus;
using client::Request;
using Effect = std::optional<VisibleEffect>;

/// Where the axis is, or will be once it has arrived.
std::optional<int> destination(const AxisStatus& axis) {
    return axis.target ? axis.target : axis.position;
}

bool isCalibrating(const AxisStatus& axis) {
    return axis.position && !axis.upperEnd;
}

/// Asks `condition` of the axis of that name.
VisibleEffect onAxis(const std::string& name, bool mustShow,
                     const std::function<bool(const AxisStatus&)>& condition) {
    return {[name, condition](const DaemonStatus& status) {
                const auto* const axis = status.axis(name);
                return axis != nullptr && condition(*axis);
            },
            mustShow};
}

/// The axis shows something else than before, whatever it is.
Effect anyChange(const AxisStatus& before) {
    if (!before.isAtRest()) return std::nullopt;  // it changes by itself
    return onAxis(before.name, false, [before](const AxisStatus& axis) { return axis != before; });
}

/// Whether steps are counted: an axis without a reference has a target that is no position.
bool isReferenced(const AxisStatus& axis) {
    return axis.upperEnd && destination(axis).value_or(-1) >= 0;
}

/// The axis is on its way to `steps`, or there; downwards it may have to stop at a lower end that
/// is not 0.
Effect goesTo(const AxisStatus& before, std::int64_t steps) {
    if (!isReferenced(before)) return anyChange(before);
    const int from = destination(before).value_or(0);
    const auto upperEnd = std::max(0, *before.upperEnd);
    const auto expected = static_cast<int>(std::clamp<std::int64_t>(steps, 0, upperEnd));
    if (from == expected) return std::nullopt;
    return onAxis(before.name, true, [from, expected](const AxisStatus& axis) {
        const auto now = destination(axis);
        return now == expected || (now && *now > expected && *now < from);
    });
}

Effect stepsBy(const AxisStatus& before, int steps) {
    if (isReferenced(before))
        return goesTo(before, std::int64_t{destination(before).value_or(0)} + steps);
    if (!isCalibrating(before)) return std::nullopt;
    const auto expected = std::int64_t{*before.position} + steps;
    return onAxis(before.name, steps > 0,  // downwards it may be at its lower end

                  [expected](const AxisStatus& axis) { return axis.position == expected; });
}

Effect isReset(const AxisStatus& before) {
    const bool isThere = destination(before).value_or(0) == 0;
    if (isThere) return anyChange(before);
    return onAxis(before.name, true,
                  [](const AxisStatus& axis) { return axis.resetting || destination(axis) == 0; });
}

Effect beginsCalibration(const AxisStatus& before) {
    if (isCalibrating(before)) return std::nullopt;
    return onAxis(before.name, before.position.has_value(),
                  [](const AxisStatus& axis) { return axis.resetting || isCalibrating(axis); });
}

Effect isOverridden(const AxisStatus& before, int steps) {
    if (!before.upperEnd || *before.upperEnd == 0) return anyChange(before);
    return goesTo(before, steps);
}

/// The argument as the daemon reads it: what stands behind the number does not count.
int number(const Request& request) {
    return request.arguments().empty() ? 0 : std::stoi(request.arguments().front());
}

/// 65536 stands for the whole range.
std::int64_t stepsOfFraction(const AxisStatus& axis, int fraction) {
    constexpr double whole = 65536;
    return std::llround(axis.upperEnd.value_or(0) * (1.0 / whole) * fraction);
}

Effect effectOnAxis(const Request& request, const AxisCommands& commands,
                    const DaemonStatus& status) {
    const auto* const axis = status.axis(commands.axisName);
    const auto& keyword = request.keyword();
    if (axis == nullptr) return std::nullopt;
    if (keyword == commands.absCommand)
        return goesTo(*axis, stepsOfFraction(*axis, number(request)));
    if (keyword == commands.absStepsCommand) return goesTo(*axis, number(request));
    if (keyword == commands.stepUpCommand) return stepsBy(*axis, +1);
    if (keyword == commands.stepDownCommand) return stepsBy(*axis, -1);
    if (keyword == commands.resetCommand) return isReset(*axis);
    if (keyword == commands.calibrationStartCommand) return beginsCalibration(*axis);
    if (keyword == commands.overrideCommand) return isOverridden(*axis, number(request));
    return std::nullopt;
}

/// LCU is shown, which was not: the lens memory has been written.
Effect isWritten(const DaemonStatus& before) {
    if (before.lensConfigLoaded) return std::nullopt;
    return VisibleEffect{[](const DaemonStatus& status) { return status.lensConfigLoaded; }, true};
}

Effect flagsAreCleared(const DaemonStatus& before) {
    if (!before.hello && !before.lensConfigLoaded) return std::nullopt;
    return VisibleEffect{
        [](const DaemonStatus& status) { return !status.hello && !status.lensConfigLoaded; }, true};
}

/// Any axis shows something else than before.
Effect lensChanges(const DaemonStatus& before) {
    if (!before.isAtRest()) return std::nullopt;
    return VisibleEffect{
        [before](const DaemonStatus& status) { return status.axes != before.axes; }, false};
}

/// Those axes show it that were not at 0 before.
Effect lensIsReset(const DaemonStatus& before) {
    for (const auto& axis : before.axes)
        if (auto effect = isReset(axis); effect && effect->mustShow) return effect;
    return lensChanges(before);
}

bool isOneOf(const std::string& keyword, std::initializer_list<std::string_view> keywords) {
    return std::ranges::find(keywords, keyword) != keywords.end();
}

}  // namespace

std::optional<VisibleEffect> visibleEffect(const Request& request, const DaemonStatus& before) {
    const auto& keyword = request.keyword();
    if (keyword == CMD_CLEAR_FLAGS) return flagsAreCleared(before);
    if (isOneOf(keyword, {CMD_SAVE_MEMORY, CMD_CLEAR_MEMORY, CMD_ZOOM_CALIBRATION_END,
                          CMD_FOCUS_CALIBRATION_END}))
        return isWritten(before);
    if (keyword == CMD_LOAD_MEMORY) return lensChanges(before);
    if (keyword == CMD_LENS_RESET) return lensIsReset(before);
    if (auto effect = effectOnAxis(request, zoomCommands, before)) return effect;
    return effectOnAxis(request, focusCommands, before);
}

const AxisStatus* movedAxis(const Request& request, const DaemonStatus& status) noexcept {
    for (const auto* const commands : {&zoomCommands, &focusCommands})
        if (isOneOf(request.keyword(), {commands->absCommand, commands->absStepsCommand}))
            return status.axis(commands->axisName);
    return nullptr;
}

}  // namespace orx::orxctl
