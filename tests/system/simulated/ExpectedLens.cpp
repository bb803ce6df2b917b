#include "system/simulated/ExpectedLens.h"

#include <algorithm>
#include <cmath>
#include <regex>

namespace orx::test {
namespace {

constexpr int unknown = -1;

std::string describe(const char* what, int number) {
    return std::string(what).append(" ").append(std::to_string(number));
}

}  // namespace

int ExpectedAxis::clamp(long value) const noexcept {
    return static_cast<int>(std::clamp(value, long{axis.min}, long{axis.upperEnd()}));
}

void ExpectedAxis::setTarget(std::optional<int> newTarget) {
    target = newTarget;
    if (!target || target != place) place.reset();
}

void ExpectedAxis::goTo(int steps) {
    if (!referenced) {
        reset(steps);
    } else {
        setTarget(clamp(steps));
    }
}

void ExpectedAxis::step(int direction) {
    if (!referenced) return;  // passed on as it is; the daemon knows no position
    setTarget(target ? std::optional(clamp(long{*target} + direction)) : std::nullopt);
}

void ExpectedAxis::reset(int requested) {
    const bool inMidMove = !place;
    if (inMidMove) {
        ++resetsInMidMove;
    } else {
        place = 0;
        ahead = 0;
    }
    referenced = true;
    setTarget(clamp(requested));
    if (inMidMove) place.reset();  // the move may still have a step to send
}

void ExpectedAxis::recall(std::optional<int> saved) {
    const auto wanted = saved ? std::optional(clamp(*saved)) : std::nullopt;
    if (!referenced) {
        reset(saved.value_or(unknown));
    } else if (!axis.resetOnLoad) {
        setTarget(wanted);
    } else if (!target || !wanted) {
        ++resetsInMidMove;  // there may be one: both are unknown only while the axis moves
        setTarget(wanted);
    } else if (target != wanted) {
        reset(*saved);
    }
}

void ExpectedAxis::calibrate(int travel) {
    axis.min = 0;  // the end stop is where it begins
    axis.max = travel;
    reset(0);
}

std::string ExpectedAxis::rest(const AxisStatus& shown, int motor, const Contacts& contacts,
                               StepsInFlight& inFlight) {
    if (!referenced) {
        if (shown.position) return "a position before the first reset: " + shown.text;
        return {};
    }
    if (!shown.position) return "no position after a reset: " + shown.text;
    if (shown.upperEnd != axis.upperEnd()) return "another range: " + shown.text;
    if (target && shown.position != target) {
        return shown.text + describe(", but the commands lead to", *target);
    }
    auto wrong = compare(*shown.position, motor, contacts, inFlight);
    place = target = shown.position;
    return wrong;
}

std::string ExpectedAxis::compare(int shown, int motor, const Contacts& contacts,
                                  StepsInFlight& inFlight) {
    const int difference = motor - shown;
    const int allowedAbove = ahead + resetsInMidMove;
    const bool usedUp = contacts.upper > 0;  // the end stop took the difference away
    const bool asBefore = difference == (usedUp ? 0 : ahead);
    const bool explained = resetsInMidMove > 0 && (difference == 0 || difference == 1);
    inFlight.resets += resetsInMidMove;
    if (resetsInMidMove > 0) inFlight.differences += difference == 1;
    inFlight.contacts += contacts.upper + contacts.lower;
    std::string wrong;
    if (!asBefore && !explained) wrong += describe(" the motor stands at", motor);
    if (contacts.upper > allowedAbove) wrong += describe(" upper end stop met:", contacts.upper);
    if (contacts.lower > resetsInMidMove) wrong += describe(" lower end stop met:", contacts.lower);
    ahead = difference;
    resetsInMidMove = 0;
    if (wrong.empty()) return {};
    return describe("STATUS says", shown).append(",").append(wrong);
}

void ExpectedLens::take(const LensCommand& command) {
    if (command.act == Act::resetLens) {
        for (auto& each : axes)
            each.reset(0);
    } else if (command.act == Act::save) {
        if (command.argument) slots[*command.argument] = {axes[0].position(), axes[1].position()};
    } else if (command.act == Act::load) {
        if (command.argument) recall(*command.argument);
    } else if (command.act == Act::clear) {
        slots.clear();
    } else if (command.act != Act::other) {
        takeOfAxis(axes.at(static_cast<std::size_t>(command.axis)), command);
    }
}

void ExpectedLens::takeOfAxis(ExpectedAxis& ofAxis, const LensCommand& command) const {
    constexpr double whole = 65536.0;
    if (command.act == Act::reset) ofAxis.reset(0);
    if (command.act == Act::stepUp) ofAxis.step(+1);
    if (command.act == Act::stepDown) ofAxis.step(-1);
    if (!command.argument) return;
    const int argument = *command.argument;
    if (command.act == Act::calibrate) ofAxis.calibrate(argument);
    if (command.act == Act::toSteps) ofAxis.goTo(argument);
    if (command.act == Act::toPart) {
        ofAxis.goTo(static_cast<int>(std::lround(argument / whole * ofAxis.setup().upperEnd())));
    }
}

void ExpectedLens::recall(int number) {
    const auto slot = slots.find(number);
    if (slot == slots.end()) return;
    for (std::size_t axis = 0; axis < axes.size(); ++axis)
        axes.at(axis).recall(slot->second.at(axis));
}

std::string ExpectedLens::learnSlots(const std::string& lensMemory) {
    static const std::regex entry(R"((-?\d+):(-?\d+);(-?\d+),)");
    for (std::sregex_iterator each(lensMemory.begin(), lensMemory.end(), entry), end; each != end;
         ++each) {
        const std::array<int, 2> saved{std::stoi((*each)[3]), std::stoi((*each)[2])};
        const auto known = slots.find(std::stoi((*each)[1]));
        if (known == slots.end()) return "the lens memory holds what it should not: " + each->str();
        auto& slot = known->second;
        for (std::size_t axis = 0; axis < axes.size(); ++axis) {
            if (slot.at(axis).value_or(saved.at(axis)) != saved.at(axis)) {
                return "the lens memory holds another position: " + each->str();
            }
            slot.at(axis) = saved.at(axis);
        }
    }
    return {};
}

}  // namespace orx::test
