// What differs between the two lens axes: their name and the commands that concern them.
#pragma once

#include <array>
#include <string_view>

#include "commands/Keywords.h"

namespace orx {

struct AxisCommands {
    std::string_view axisName;  ///< in log lines and configuration keys
    std::string_view absCommand;
    std::string_view absStepsCommand;
    std::string_view stepUpCommand;    ///< also what is sent to the projector for a step up
    std::string_view stepDownCommand;  ///< also what is sent to the projector for a step down
    std::string_view calibrationStartCommand;
    std::string_view calibrationEndCommand;
    std::string_view overrideCommand;
    std::string_view setResetStepsCommand;
    std::string_view resetCommand;                      ///< also the projector's native reset
    std::array<std::string_view, 3> fastResetCommands;  ///< downwards, the preferred one first
};

inline constexpr AxisCommands zoomCommands{
    .axisName = "zoom",
    .absCommand = CMD_ZOOM_ABS,
    .absStepsCommand = CMD_ZOOM_ABS_STEPS,
    .stepUpCommand = CMD_ZOOM_ABS_PLUS,
    .stepDownCommand = CMD_ZOOM_ABS_MINUS,
    .calibrationStartCommand = CMD_ZOOM_CALIBRATION_START,
    .calibrationEndCommand = CMD_ZOOM_CALIBRATION_END,
    .overrideCommand = CMD_OVERRIDE_ZOOM_POSITION,
    .setResetStepsCommand = CMD_SET_ZOOM_RESET_STEPS,
    .resetCommand = CMD_ZOOM_RESET,
    .fastResetCommands = {CMD_ZOOM_MINUS3, CMD_ZOOM_MINUS2, CMD_ZOOM_MINUS},
};

inline constexpr AxisCommands focusCommands{
    .axisName = "focus",
    .absCommand = CMD_FOCUS_ABS,
    .absStepsCommand = CMD_FOCUS_ABS_STEPS,
    .stepUpCommand = CMD_FOCUS_ABS_PLUS,
    .stepDownCommand = CMD_FOCUS_ABS_MINUS,
    .calibrationStartCommand = CMD_FOCUS_CALIBRATION_START,
    .calibrationEndCommand = CMD_FOCUS_CALIBRATION_END,
    .overrideCommand = CMD_OVERRIDE_FOCUS_POSITION,
    .setResetStepsCommand = CMD_SET_FOCUS_RESET_STEPS,
    .resetCommand = CMD_FOCUS_RESET,
    .fastResetCommands = {CMD_FOCUS_MINUS3, CMD_FOCUS_MINUS2, CMD_FOCUS_MINUS},
};

}  // namespace orx
