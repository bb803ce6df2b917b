// What of this machine's network decides whether a UDP socket can be bound, told without binding.
#pragma once

#include <cstdint>
#include <netinet/in.h>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orx::orxctl {

/// Whether a socket of this machine can have that address.
[[nodiscard]] bool isOfThisMachine(in_addr address);

/// 127.0.0.0/8, which only this machine itself can reach.
[[nodiscard]] bool isLoopback(in_addr address) noexcept;

/// A UDP socket that somebody has open.
struct UdpSocket {
    in_addr address;
    std::uint16_t port;
    ino_t inode;
    bool isIpv6 = false;  ///< on all IPv6 addresses, and then as a rule on all others, too
};

/// All of them, from tables as the system shows them.
[[nodiscard]] std::vector<UdpSocket> udpSockets(const std::string& table = "/proc/net/udp",
                                                const std::string& tableOfIpv6 = "/proc/net/udp6");

/// Whether two sockets at those places exclude each other.
[[nodiscard]] bool collide(in_addr left, std::uint16_t leftPort, in_addr right,
                           std::uint16_t rightPort) noexcept;

/// Which low ports a process may bind.
struct PortRights {
    int firstForAll = 0;  ///< from this one on every process may
    bool hasAll = false;  ///< the process has the right to the others, too
};

/// Those of this process.
[[nodiscard]] PortRights ownPortRights();

}  // namespace orx::orxctl
