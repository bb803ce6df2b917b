#include "orxsim/PacedBytes.h"

#include <algorithm>

namespace orx::orxsim {

Instant characterTime(const orxdef::LineSettings& line) {
    if (line.baudrate == 0) return Instant(0);
    const bool hasParity =
        line.parity == orxdef::Parity::odd || line.parity == orxdef::Parity::even;
    const int bits = 1 + line.characterSize() + (hasParity ? 1 : 0) + (line.stopbits == 2 ? 2 : 1);
    return Instant(std::chrono::seconds(1)) * bits / line.baudrate;
}

void PacedBytes::send(std::string_view bytes, Instant now) {
    busyUntil = std::max(busyUntil, now);
    if (perCharacter == Instant(0)) {
        pieces.push_back({busyUntil, std::string(bytes)});
        return;
    }
    for (const char byte : bytes) {
        busyUntil += perCharacter;
        pieces.push_back({busyUntil, std::string(1, byte)});
    }
}

std::optional<Instant> PacedBytes::nextArrival() const {
    if (pieces.empty()) return std::nullopt;
    return pieces.front().arrival;
}

std::string PacedBytes::take(Instant now) {
    std::string arrived;
    while (!pieces.empty() && pieces.front().arrival <= now) {
        arrived += pieces.front().bytes;
        pieces.pop_front();
    }
    return arrived;
}

}  // namespace orx::orxsim
