// What a daemon says of itself: the reply to STATUS, taken apart.
//
// "IDLE; zoom: 800/2000>1200 focus: undefined;HELO \n": the state, the axes, the flags. Values; any
// thread may use them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orx::client {

/// One axis of the lens; all positions are motor steps from the lower end stop.
struct AxisStatus {
    std::string name;               ///< "zoom" or "focus"
    std::optional<int> position{};  ///< nothing while it is resetting, and before it was reset
    std::optional<int> upperEnd{};  ///< how far it may go; nothing while it is being calibrated
    std::optional<int> target{};    ///< where it is on its way to; nothing when it is there
    bool resetting = false;         ///< it is being driven into its end stop

    [[nodiscard]] bool isAtRest() const noexcept { return !resetting && !target; }

    /// As the daemon writes it: "800/2000>1200", "resetting>1200", "317" or "undefined".
    [[nodiscard]] std::string positionText() const;

    bool operator==(const AxisStatus&) const = default;
};

struct DaemonStatus {
    bool busy = false;               ///< an axis is moving or resetting
    std::vector<AxisStatus> axes{};  ///< none in dumb mode
    bool hello = false;              ///< HELO: it has started or an axis has moved since CLEARFLAGS
    bool lensConfigLoaded = false;   ///< LCU: the lens memory was written since CLEARFLAGS
    bool dumbMode = false;           ///< DUMB; right after a restart it can be an old one
    bool debugMode = false;          ///< DEBUG: commands are shown instead of sent

    /// Takes a reply apart; nothing where `reply` is none. Flags of later versions are passed over.
    [[nodiscard]] static std::optional<DaemonStatus> parse(std::string_view reply);

    /// The axis of that name, or null.
    [[nodiscard]] const AxisStatus* axis(std::string_view name) const noexcept;

    /// Whether it has a projector to drive. The axes tell: unlike the flags they are never old.
    [[nodiscard]] bool hasProjector() const noexcept { return !axes.empty(); }

    /// Whether nothing moves and nothing is about to: idle, and no axis on its way or resetting.
    /// A command that was sent within the last 50 ms may still be about to move an axis.
    [[nodiscard]] bool isAtRest() const noexcept;

    /// The flags as the daemon writes them, with blanks between them alone.
    [[nodiscard]] std::string flagsText() const;

    bool operator==(const DaemonStatus&) const = default;
};

}  // namespace orx::client
