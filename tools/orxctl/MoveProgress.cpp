#include "orxctl/MoveProgress.h"

#include <cstdint>
#include <cstdlib>

namespace orx::orxctl {
namespace {

constexpr int barWidth = 20;

std::string barText(int full) {
    std::string text = "[";
    text.append(static_cast<std::size_t>(full), '#');
    text.append(static_cast<std::size_t>(barWidth - full), '-');
    return text + "] ";
}

}  // namespace

std::string MoveProgress::line(const client::DaemonStatus& status) {
    std::string text;
    for (const auto& axis : status.axes) {
        text.append(text.empty() ? "" : "  ").append(axis.name).append(" ");
        text.append(bar(axis)).append(axis.positionText());
    }
    return text;
}

std::string MoveProgress::bar(const client::AxisStatus& axis) {
    if (axis.isAtRest()) {
        moves.erase(axis.name);
        return "";
    }
    if (axis.resetting || !axis.position) return barText(0);
    auto& move = moves.try_emplace(axis.name, Move{*axis.position, *axis.target}).first->second;
    if (move.target != *axis.target) move = {*axis.position, *axis.target};
    const auto whole = std::abs(std::int64_t{move.target} - move.start);
    const auto done = std::abs(std::int64_t{*axis.position} - move.start);
    return barText(static_cast<int>(done >= whole ? barWidth : barWidth * done / whole));
}

}  // namespace orx::orxctl
