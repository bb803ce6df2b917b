// One motor of the lens and the lens element that it drives, between two end stops.
//
// Between motor and lens lies the backlash b: the motor turns through it before it takes the lens
// along, so motor - b <= lens <= motor. The lens moves from 0 to the travel. A motor that would
// push the lens beyond an end stop stalls and stays where it is. Positions are counted in motor
// steps from the lower end stop, the backlash taken up downwards: after a drive to it both are 0.
#pragma once

#include <array>
#include <cstdint>

#include "orxsim/Chance.h"

namespace orx::orxsim {

/// What drives a motor; contacts with an end stop are counted apart for each.
enum class Drive : std::uint8_t { step, jog, reset };
inline constexpr std::size_t driveCount = 3;

enum class Direction : std::uint8_t { up, down };

class LensMotor {
  public:
    struct Mechanics {
        int travel;        ///< steps from one end stop of the lens to the other
        int start;         ///< where motor and lens stand at first, 0 to travel
        int backlash = 0;  ///< steps of the motor without the lens when it turns round
    };

    LensMotor(const Mechanics& wanted, Chance loss);

    /// Makes one motor step, unless it is lost. False at a contact: the motor has met an end stop
    /// and stalled. A reset loses no steps.
    bool step(Direction direction, Drive drive);

    [[nodiscard]] int motor() const noexcept { return motorPosition; }
    [[nodiscard]] int lens() const noexcept { return lensPosition; }
    [[nodiscard]] int travel() const noexcept { return mechanics.travel; }
    /// Steps that were asked for but that the motor did not make.
    [[nodiscard]] int lost() const noexcept { return lostSteps; }
    [[nodiscard]] int contacts(Drive drive) const noexcept {
        return contactCounts[static_cast<std::size_t>(drive)];
    }

  private:
    [[nodiscard]] bool stepUp() noexcept;
    [[nodiscard]] bool stepDown() noexcept;

    Mechanics mechanics;
    Chance lossOfSteps;
    int motorPosition;
    int lensPosition;
    int lostSteps = 0;
    std::array<int, driveCount> contactCounts{};
};

}  // namespace orx::orxsim
