// How an errand to one daemon has ended.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orx/client/DaemonStatus.h"

namespace orx::orxctl {

/// Scripts rely on these numbers. The greater, the worse.
enum class ExitStatus : std::uint8_t {
    done = 0,
    usage = 1,      ///< a wrong command line, or an unknown command; nothing was sent
    noAnswer = 2,   ///< no answer, or STATUS does not show what was to be confirmed
    stillBusy = 3,  ///< the lens was not at rest within the time
    refused = 4,    ///< a command for the projector, to a daemon that has none; not sent
};

struct Outcome {
    ExitStatus status = ExitStatus::done;
    std::string text{};                            ///< for the user; may be empty when done
    std::optional<client::DaemonStatus> daemon{};  ///< where the errand was to ask for it
};

[[nodiscard]] constexpr int asNumber(ExitStatus status) noexcept {
    return static_cast<int>(status);
}

[[nodiscard]] inline ExitStatus worstOf(const std::vector<Outcome>& outcomes) {
    const auto worst = std::ranges::max_element(outcomes, {}, &Outcome::status);
    return worst != outcomes.end() ? worst->status : ExitStatus::done;
}

}  // namespace orx::orxctl
