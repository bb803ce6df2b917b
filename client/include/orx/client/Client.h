// Talks to one daemon over UDP.
//
// A datagram may be lost, and only STATUS is answered. So a question is asked again and again until
// there is an answer or the time is over, while a command is sent exactly once: done twice, most of
// them would not be the same. Replies carry no number; every question has a socket of its own, and
// a late reply to an earlier one can never be taken for its answer.
//
// STATUS is answered late while the daemon waits to hand over an earlier command of the same
// channel: it executes one at a time, and a reset of the lens may take many seconds.
//
// All operations may be called by several threads at once.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <netinet/in.h>
#include <optional>

#include "orx/client/Address.h"
#include "orx/client/DaemonStatus.h"
#include "orx/client/Request.h"

namespace orx::client {

/// How waiting for the lens has ended.
enum class Rest : std::uint8_t {
    reached,  ///< the lens is at rest
    busy,     ///< it was not within the time
    silent,   ///< the daemon does not answer, or has stopped to
};

/// What a question has told of the daemon.
enum class Presence : std::uint8_t {
    answers,
    silent,    ///< it may be there, and late
    deserted,  ///< its host says that nobody listens; the daemon may be about to start
};

class Client {
  public:
    using Milliseconds = std::chrono::milliseconds;
    /// Is shown each status on the way; called on the thread that waits.
    using Observer = std::function<void(const DaemonStatus&)>;

    /// An answer that takes longer than this is none, on a network that is not out of order.
    static constexpr Milliseconds answerTime{2000};

    /// For how long an idle daemon is watched before its lens counts as being at rest. A move
    /// begins up to 50 ms behind its command, and the command itself a little behind its datagram.
    static constexpr Milliseconds settlingTime{200};

    /// Looks the host up. Throws `std::runtime_error` where there is none of that name.
    explicit Client(const Address& address);

    /// Sends `request`, once. Throws `std::system_error` where this machine cannot send to there;
    /// that nobody listens is no error.
    void send(const Request& request) const;

    /// The status as it is at a moment after this call; nothing where `timeout` passes without an
    /// answer. STATUS is sent again after 50 ms, then after twice as long each time, up to 1 s.
    /// Throws as `send`.
    [[nodiscard]] std::optional<DaemonStatus> status(Milliseconds timeout = answerTime) const;

    /// Asks as `status` does, and tells what is known where there is no answer.
    [[nodiscard]] Presence presence(Milliseconds timeout = answerTime) const;

    /// Whether both look to the same address and port, by whatever name.
    [[nodiscard]] bool hasSamePeer(const Client& other) const noexcept;

    /// Waits until the lens has been at rest for `settlingTime`, for `timeout` at most. An axis
    /// that cannot be reset may be on its way for ever, so there is no waiting without a limit. A
    /// host that says that nobody listens is given `answerTime`, and has lost its daemon then.
    /// Throws as `send`, and what `observer` throws.
    [[nodiscard]] Rest waitUntilAtRest(Milliseconds timeout, const Observer& observer = {}) const;

  private:
    [[nodiscard]] std::optional<DaemonStatus> ask(Milliseconds timeout, bool& refused) const;

    sockaddr_in peer{};
};

}  // namespace orx::client
