#include "orxsim/LensMotor.h"

#include <algorithm>

namespace orx::orxsim {

LensMotor::LensMotor(const Mechanics& wanted, Chance loss)
    : mechanics(wanted),
      lossOfSteps(loss),
      motorPosition(wanted.start),
      lensPosition(wanted.start) {}

bool LensMotor::step(Direction direction, Drive drive) {
    if (drive != Drive::reset && lossOfSteps.happens()) {
        ++lostSteps;
        return true;
    }
    const bool moved = direction == Direction::up ? stepUp() : stepDown();
    if (!moved) ++contactCounts[static_cast<std::size_t>(drive)];
    return moved;
}

bool LensMotor::stepUp() noexcept {
    if (motorPosition - mechanics.backlash == mechanics.travel) return false;
    ++motorPosition;
    lensPosition = std::max(lensPosition, motorPosition - mechanics.backlash);
    return true;
}

bool LensMotor::stepDown() noexcept {
    if (motorPosition == 0) return false;
    --motorPosition;
    lensPosition = std::min(lensPosition, motorPosition);
    return true;
}

}  // namespace orx::orxsim
