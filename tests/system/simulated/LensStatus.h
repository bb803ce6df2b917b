// What a status reply says of the lens, as numbers.
#pragma once

#include <optional>
#include <string>

namespace orx::test {

struct AxisStatus {
    std::string text;               ///< as the reply has it: "20/40>30", "undefined"
    std::optional<int> position{};  ///< nothing while it is unknown or the axis is being reset
    std::optional<int> upperEnd{};  ///< of the usable range; nothing also while calibrating
    bool onTheWay = false;          ///< there is a target ahead
};

struct LensStatus {
    bool idle = false;
    AxisStatus zoom;
    AxisStatus focus;

    /// Idle, and no axis has a target ahead.
    [[nodiscard]] bool atRest() const noexcept { return idle && !zoom.onTheWay && !focus.onTheWay; }
};

/// Reads a reply. Throws, showing it, where it is none of a daemon with two axes.
[[nodiscard]] LensStatus readLensStatus(const std::string& reply);

}  // namespace orx::test
