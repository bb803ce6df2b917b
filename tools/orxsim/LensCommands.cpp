#include "orxsim/LensCommands.h"

#include <algorithm>
#include <array>

#include "commands/Keywords.h"

namespace orx::orxsim {
namespace {

constexpr std::array<LensCommand, 18> lensCommands{{
    {CMD_ZOOM_ABS_PLUS, Axis::zoom, Drive::step, Direction::up},
    {CMD_ZOOM_ABS_MINUS, Axis::zoom, Drive::step, Direction::down},
    {CMD_ZOOM_PLUS, Axis::zoom, Drive::jog, Direction::up, 1},
    {CMD_ZOOM_PLUS2, Axis::zoom, Drive::jog, Direction::up, 2},
    {CMD_ZOOM_PLUS3, Axis::zoom, Drive::jog, Direction::up, 3},
    {CMD_ZOOM_MINUS, Axis::zoom, Drive::jog, Direction::down, 1},
    {CMD_ZOOM_MINUS2, Axis::zoom, Drive::jog, Direction::down, 2},
    {CMD_ZOOM_MINUS3, Axis::zoom, Drive::jog, Direction::down, 3},
    {CMD_ZOOM_RESET, Axis::zoom, Drive::reset, Direction::down},
    {CMD_FOCUS_ABS_PLUS, Axis::focus, Drive::step, Direction::up},
    {CMD_FOCUS_ABS_MINUS, Axis::focus, Drive::step, Direction::down},
    {CMD_FOCUS_PLUS, Axis::focus, Drive::jog, Direction::up, 1},
    {CMD_FOCUS_PLUS2, Axis::focus, Drive::jog, Direction::up, 2},
    {CMD_FOCUS_PLUS3, Axis::focus, Drive::jog, Direction::up, 3},
    {CMD_FOCUS_MINUS, Axis::focus, Drive::jog, Direction::down, 1},
    {CMD_FOCUS_MINUS2, Axis::focus, Drive::jog, Direction::down, 2},
    {CMD_FOCUS_MINUS3, Axis::focus, Drive::jog, Direction::down, 3},
    {CMD_FOCUS_RESET, Axis::focus, Drive::reset, Direction::down},
}};

}  // namespace

const LensCommand* findLensCommand(std::string_view keyword) noexcept {
    const auto* const command = std::ranges::find(lensCommands, keyword, &LensCommand::keyword);
    return command != lensCommands.end() ? command : nullptr;
}

}  // namespace orx::orxsim
