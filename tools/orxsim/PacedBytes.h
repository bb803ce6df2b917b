// One direction of a serial line: bytes on their way, each taking the time of its bits.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "orxdef/Definition.h"
#include "orxsim/Instant.h"

namespace orx::orxsim {

/// How long one character occupies the line: start bit, data bits, parity bit and stop bits. None
/// where the line has no speed.
[[nodiscard]] Instant characterTime(const orxdef::LineSettings& line);

class PacedBytes {
  public:
    /// With no time a character, bytes arrive at once.
    explicit PacedBytes(Instant timePerCharacter) : perCharacter(timePerCharacter) {}

    /// Sends `bytes` at `now`, or as soon as the line is free.
    void send(std::string_view bytes, Instant now);

    /// When the next byte arrives; nothing while the line is idle.
    [[nodiscard]] std::optional<Instant> nextArrival() const;

    /// The bytes that have arrived by `now`.
    [[nodiscard]] std::string take(Instant now);

    /// When the last byte sent arrives, or has arrived.
    [[nodiscard]] Instant lastArrival() const noexcept { return busyUntil; }

  private:
    struct Piece {
        Instant arrival;
        std::string bytes;
    };

    Instant perCharacter;
    Instant busyUntil{0};
    std::deque<Piece> pieces;
};

}  // namespace orx::orxsim
