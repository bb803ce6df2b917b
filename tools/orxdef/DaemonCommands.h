// The commands of the vocabulary that the daemon acts on by itself. They never reach a projector,
// so a definition needs no bytes for them.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "commands/Keywords.h"
#include "lens/AxisCommands.h"

namespace orx::orxdef {

inline constexpr std::array<std::string_view, 10> daemonCommands{
    CMD_QUIT,        CMD_RESTART,     CMD_SET_DELAY,  CMD_RAW,    CMD_CLEAR_MEMORY,
    CMD_SAVE_MEMORY, CMD_LOAD_MEMORY, CMD_LENS_RESET, CMD_STATUS, CMD_CLEAR_FLAGS,
};

[[nodiscard]] constexpr bool isForAxis(std::string_view keyword, const AxisCommands& axis) {
    return keyword == axis.absCommand || keyword == axis.absStepsCommand ||
           keyword == axis.calibrationStartCommand || keyword == axis.calibrationEndCommand ||
           keyword == axis.overrideCommand || keyword == axis.setResetStepsCommand;
}

[[nodiscard]] constexpr bool isForDaemon(std::string_view keyword) {
    return std::ranges::find(daemonCommands, keyword) != daemonCommands.end() ||
           isForAxis(keyword, zoomCommands) || isForAxis(keyword, focusCommands);
}

}  // namespace orx::orxdef
