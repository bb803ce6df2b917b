#include "system/soak/Datagrams.h"

#include <algorithm>

namespace orx::test {

Datagram DatagramMix::next(bool mayBeOversized) {
    switch (dice.below(20)) {
        case 0:
            return {};
        case 1:
        case 2:
            return mayBeOversized ? oversized() : invalid();
        case 3:
        case 4:
        case 5:
        case 6:
        case 7:
            return binary();
        case 8:
        case 9:
        case 10:
        case 11:
        case 12:
            return invalid();
        default:
            return valid();
    }
}

/// Those without their argument are executed, and do nothing.
Datagram DatagramMix::valid() {
    constexpr std::array<const char*, 5> quick{"ZOOMX", "MEMLOAD", "SETDELAY", "OVERRIDEFOPOS",
                                               "FOCUS"};
    constexpr int seldom = 100;
    if (dice.oneOf(seldom)) return {DatagramKind::valid, lineCommand, Trace::command, true};
    if (dice.oneOf(2)) return {DatagramKind::valid, "CLEARFLAGS"};
    return {DatagramKind::valid, dice.pick(quick), Trace::command};
}

Datagram DatagramMix::invalid() {
    constexpr std::array<const char*, 6> wrong{"zoomx 100", "ZOOMX100", "FROBNICATE",
                                               "STATUS?",   "\"ON\"",   "CMD_ZOOM_ABS 3"};
    return {DatagramKind::invalid, dice.pick(wrong), Trace::unknown};
}

/// One word of more than the daemon reads.
Datagram DatagramMix::oversized() {
    constexpr int shortest = 2049;
    constexpr int longest = 8000;
    return {DatagramKind::oversized, dice.bytes(dice.between(shortest, longest), 'a', 'z'),
            Trace::unknown};
}

/// One line, and by its first byte no command, whatever follows.
Datagram DatagramMix::binary() {
    constexpr int longest = 200;
    constexpr int greatestByte = 255;
    auto bytes = dice.bytes(dice.between(1, longest), 0, greatestByte);
    std::ranges::replace(bytes, '\n', '\0');
    bytes.front() = '\x01';
    return {DatagramKind::binary, std::move(bytes), Trace::unknown};
}

}  // namespace orx::test
