// What can be done with one daemon, from the first question to the outcome.
//
// Any thread may call these; each blocks until its outcome is known.
#pragma once

#include <chrono>

#include "orx/client/Client.h"
#include "orx/client/Request.h"
#include "orxctl/Outcome.h"

namespace orx::orxctl {

struct SendOptions {
    bool wait = false;     ///< until the lens is at rest
    bool confirm = false;  ///< by what STATUS shows before and after
    bool force = false;    ///< without asking first whether there is a projector
    std::chrono::milliseconds answerTime = client::Client::answerTime;
    std::chrono::milliseconds waitTime{0};  ///< limit of `wait`
};

/// Sends `request`, once; before that it asks whether there is somebody to carry it out. STATUS
/// itself is asked, not sent. `observer` is shown each status of a wait.
[[nodiscard]] Outcome send(const client::Client& daemon, const client::Request& request,
                           const SendOptions& options,
                           const client::Client::Observer& observer = {});

/// Asks for the status.
[[nodiscard]] Outcome askStatus(const client::Client& daemon, std::chrono::milliseconds limit);

/// Asks for the status and tells how long the answer took.
[[nodiscard]] Outcome ping(const client::Client& daemon, std::chrono::milliseconds limit);

/// Waits until the lens is at rest.
[[nodiscard]] Outcome waitUntilAtRest(const client::Client& daemon, std::chrono::milliseconds limit,
                                      const client::Client::Observer& observer = {});

}  // namespace orx::orxctl
