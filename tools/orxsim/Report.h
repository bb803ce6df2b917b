// What has happened at the simulated projector, as its displays show it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "orxsim/CommandRecognizer.h"
#include "orxsim/LensMotor.h"
#include "orxsim/ProjectorState.h"

namespace orx::orxsim {

/// Where an axis stands, and what it has met so far.
struct AxisReading {
    int motor = 0;
    int lens = 0;
    int travel = 0;
    int lost = 0;
    std::array<int, driveCount> contacts{};  ///< with the end stops, by kind of drive
};
using AxisReadings = std::array<AxisReading, axisCount>;

/// One command that was carried out, or bytes that were refused.
struct Report {
    Heard heard;
    bool metEndStop = false;                       ///< in this very command
    AxisReadings axes;                             ///< afterwards
    std::optional<std::string> answer;             ///< nothing where none is given
    std::optional<ProjectorState> changedState{};  ///< afterwards; nothing where it is as before
};

/// How much was heard so far.
struct Totals {
    std::uint64_t commands = 0;
    std::uint64_t unknown = 0;
};

}  // namespace orx::orxsim
