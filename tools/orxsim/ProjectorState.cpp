#include "orxsim/ProjectorState.h"

#include "commands/Keywords.h"

namespace orx::orxsim {
namespace {

/// The commands that turn a switch on and off.
struct SwitchCommands {
    std::string_view on;
    std::string_view off;
};

/// In the order of the switches.
constexpr std::array<SwitchCommands, ProjectorState::switchCount> switchCommands{{
    {CMD_POWER_ON, CMD_POWER_OFF},
    {CMD_SHUTTER_ON, CMD_SHUTTER_OFF},
    {CMD_MUTE, CMD_UNMUTE},
    {CMD_PICTURE_MUTE, CMD_PICTURE_UNMUTE},
    {CMD_AV_MUTE, CMD_AV_UNMUTE},
    {CMD_FREEZE, CMD_UNFREEZE},
}};

}  // namespace

bool ProjectorState::apply(const std::string& command, const Arguments& arguments) {
    const auto before = *this;
    for (std::size_t index = 0; index < switchCount; ++index) {
        if (command == switchCommands[index].on) allSwitches[index].on = true;
        if (command == switchCommands[index].off) allSwitches[index].on = false;
    }
    if (!arguments.empty() && command == CMD_INPUT_SELECT) {
        chosenInput = arguments.front();
    } else if (!arguments.empty()) {
        lastValues[command] = arguments;
    }
    return *this != before;
}

}  // namespace orx::orxsim
