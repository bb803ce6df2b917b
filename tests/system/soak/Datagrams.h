// Datagrams of all sorts, as a network may bring them: what a client means, and what it does not.
// None moves the lens or fills the queue, so that they may come as fast as the daemon reads them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "system/simulated/Dice.h"

namespace orx::test {

enum class DatagramKind { valid, invalid, oversized, binary, empty };

inline constexpr std::array<const char*, 5> datagramKindNames{"valid", "invalid", "oversized",
                                                              "binary", "empty"};

/// What the console tells of a datagram.
enum class Trace { nothing, unknown, command };

struct Datagram {
    DatagramKind kind = DatagramKind::empty;
    std::string bytes{};
    Trace trace = Trace::nothing;
    bool goesToTheLine = false;  ///< the projector is sent `lineCommand`
};

class DatagramMix {
  public:
    static constexpr const char* lineCommand = "PICMUTE";

    explicit DatagramMix(std::uint64_t seed) : dice(seed) {}

    /// `mayBeOversized` is for the sender to say: many long ones at once overflow the socket.
    [[nodiscard]] Datagram next(bool mayBeOversized);

  private:
    [[nodiscard]] Datagram valid();
    [[nodiscard]] Datagram invalid();
    [[nodiscard]] Datagram oversized();
    [[nodiscard]] Datagram binary();

    Dice dice;
};

}  // namespace orx::test
