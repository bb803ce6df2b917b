// Which commands move the lens, and how.
#pragma once

#include <cstdint>
#include <string_view>

#include "orxsim/LensMotor.h"

namespace orx::orxsim {

enum class Axis : std::uint8_t { zoom, focus };
inline constexpr std::size_t axisCount = 2;

/// A single step is of speed 0, the three jogs are of speed 1 to 3. A reset drives down for as long
/// as it takes.
struct LensCommand {
    std::string_view keyword;
    Axis axis;
    Drive drive;
    Direction direction;
    int speed = 0;
};

/// The lens command of that name; null for any other command.
[[nodiscard]] const LensCommand* findLensCommand(std::string_view keyword) noexcept;

}  // namespace orx::orxsim
