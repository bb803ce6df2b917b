// The names of the two lens axes and of their commands, written out by hand.
#pragma once

#include <array>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "lens/AxisCommands.h"

namespace orx::test {

struct AxisNames {
    std::string axis;
    std::string abs;
    std::string absSteps;
    std::string stepUp;
    std::string stepDown;
    std::string calibrationStart;
    std::string calibrationEnd;
    std::string overridePosition;
    std::string setResetSteps;
    std::string reset;
    std::array<std::string, 3> fastResets;
    const AxisCommands* commands;  ///< what the axis itself is built with

    /// All that the axis takes, in the order in which it looks for them.
    [[nodiscard]] std::vector<std::string> taken() const {
        return {
            abs,           absSteps, stepUp,          stepDown, calibrationStart, calibrationEnd,
            setResetSteps, reset,    overridePosition};
    }
};

inline const AxisNames zoomNames{
    .axis = "zoom",
    .abs = "ZOOM",
    .absSteps = "ZOOMX",
    .stepUp = "AZ+",
    .stepDown = "AZ-",
    .calibrationStart = "ZOCALSTART",
    .calibrationEnd = "ZOCALEND",
    .overridePosition = "OVERRIDEZOPOS",
    .setResetSteps = "SETZORSTSTEPS",
    .reset = "ZOOMRESET",
    .fastResets = {"Z---", "Z--", "Z-"},
    .commands = &zoomCommands,
};

inline const AxisNames focusNames{
    .axis = "focus",
    .abs = "FOCUS",
    .absSteps = "FOCUSX",
    .stepUp = "AF+",
    .stepDown = "AF-",
    .calibrationStart = "FOCALSTART",
    .calibrationEnd = "FOCALEND",
    .overridePosition = "OVERRIDEFOPOS",
    .setResetSteps = "SETFORSTSTEPS",
    .reset = "FOCUSRESET",
    .fastResets = {"F---", "F--", "F-"},
    .commands = &focusCommands,
};

/// Shows an axis by its name in the names and messages of tests.
inline void PrintTo(const AxisNames& names, std::ostream* out) {
    *out << names.axis;
}

/// Names the two instances of a test after their axes.
inline std::string nameOfAxis(const testing::TestParamInfo<AxisNames>& info) {
    return info.param.axis;
}

}  // namespace orx::test
