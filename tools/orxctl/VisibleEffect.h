// What STATUS must show once a command has been carried out, as far as it can tell.
#pragma once

#include <functional>
#include <optional>

#include "orx/client/DaemonStatus.h"
#include "orx/client/Request.h"

namespace orx::orxctl {

struct VisibleEffect {
    /// Whether a status from after the command shows it.
    std::function<bool(const client::DaemonStatus&)> isShown;
    /// Whether it has to show. Otherwise a status without it tells nothing: a memory slot may be
    /// empty, an axis without a travel does not move.
    bool mustShow = false;
};

/// The effect of `request` on a daemon whose status is `before`; nothing where STATUS cannot tell,
/// as for all that only the projector sees, or a move to where the lens is already.
[[nodiscard]] std::optional<VisibleEffect> visibleEffect(const client::Request& request,
                                                         const client::DaemonStatus& before);

/// The axis in `status` that `request` sends to a position; null where it sends none.
[[nodiscard]] const client::AxisStatus* movedAxis(const client::Request& request,
                                                  const client::DaemonStatus& status) noexcept;

}  // namespace orx::orxctl
