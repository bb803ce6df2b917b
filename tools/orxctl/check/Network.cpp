#include "orxctl/check/Network.h"

#include <arpa/inet.h>
#include <fstream>
#include <ifaddrs.h>
#include <linux/capability.h>
#include <memory>
#include <net/if.h>
#include <optional>
#include <sstream>

namespace orx::orxctl {
namespace {

/// A number that the system shows in a file of its own.
int numberIn(const std::string& path, int otherwise) {
    int number = otherwise;
    std::ifstream file(path);
    return file >> number ? number : otherwise;
}

std::uint32_t ipv4(const sockaddr* address) {
    if (address == nullptr || address->sa_family != AF_INET) return INADDR_ANY;
    return reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr;
}

/// Whether `wanted` is an address of the interface; of the loopback interface its whole network is.
bool hasAddress(const ifaddrs& interface, std::uint32_t wanted) {
    if (interface.ifa_addr == nullptr || interface.ifa_addr->sa_family != AF_INET) return false;
    const auto own = ipv4(interface.ifa_addr);
    if (own == wanted) return true;
    const auto mask = ipv4(interface.ifa_netmask);
    if ((interface.ifa_flags & IFF_LOOPBACK) != 0 && (own & mask) == (wanted & mask)) return true;
    return (interface.ifa_flags & IFF_BROADCAST) != 0 && ipv4(interface.ifa_broadaddr) == wanted;
}

bool isOfAnInterface(std::uint32_t wanted) {
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0) return true;  // rather nothing than a wrong alarm
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(first, &::freeifaddrs);
    for (const auto* interface = all.get(); interface != nullptr; interface = interface->ifa_next)
        if (hasAddress(*interface, wanted)) return true;
    return false;
}

/// "0100007F:1E65", the address as this machine stores it.
std::optional<UdpSocket> ipv4Socket(const std::string& address) {
    constexpr std::size_t digits = 8;
    constexpr int hexadecimal = 16;
    if (address.size() <= digits + 1 || address[digits] != ':') return std::nullopt;
    const auto number = std::stoul(address.substr(0, digits), nullptr, hexadecimal);
    const auto port = std::stoul(address.substr(digits + 1), nullptr, hexadecimal);
    return UdpSocket{{static_cast<in_addr_t>(number)}, static_cast<std::uint16_t>(port), 0};
}

/// The address of an IPv6 socket that stands in the way of IPv4: all of them, or one of IPv4 in the
/// other form. Of the others nothing.
std::optional<UdpSocket> ipv6Socket(const std::string& address) {
    constexpr std::size_t prefixSize = 24;
    const auto prefix = address.substr(0, prefixSize);
    const bool isMapped = prefix == "0000000000000000FFFF0000";
    if (!isMapped && prefix != std::string(prefixSize, '0')) return std::nullopt;
    auto socket = ipv4Socket(address.substr(prefixSize));
    if (!socket || isMapped) return socket;
    if (socket->address.s_addr != INADDR_ANY) return std::nullopt;  // ::1 and its like
    socket->isIpv6 = true;
    return socket;
}

void addSockets(const std::string& table, std::optional<UdpSocket> (*parse)(const std::string&),
                std::vector<UdpSocket>& sockets) {
    std::ifstream file(table);
    std::string line;
    std::getline(file, line);  // the titles of the columns
    while (std::getline(file, line)) {
        std::istringstream columns(line);
        std::string number;
        std::string address;
        std::string skipped;
        columns >> number >> address;
        constexpr int columnsAheadOfInode = 7;
        for (int column = 0; column < columnsAheadOfInode; ++column)
            columns >> skipped;
        auto socket = parse(address);
        if (socket && columns >> socket->inode) sockets.push_back(*socket);
    }
}

}  // namespace

bool isOfThisMachine(in_addr address) {
    return address.s_addr == INADDR_ANY || address.s_addr == INADDR_BROADCAST ||
           IN_MULTICAST(ntohl(address.s_addr)) ||
           numberIn("/proc/sys/net/ipv4/ip_nonlocal_bind", 0) != 0 ||
           isOfAnInterface(address.s_addr);
}

bool isLoopback(in_addr address) noexcept {
    return ntohl(address.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
}

std::vector<UdpSocket> udpSockets(const std::string& table, const std::string& tableOfIpv6) {
    std::vector<UdpSocket> sockets;
    addSockets(table, ipv4Socket, sockets);
    addSockets(tableOfIpv6, ipv6Socket, sockets);
    return sockets;
}

bool collide(in_addr left, std::uint16_t leftPort, in_addr right,
             std::uint16_t rightPort) noexcept {
    return leftPort == rightPort &&
           (left.s_addr == INADDR_ANY || right.s_addr == INADDR_ANY || left.s_addr == right.s_addr);
}

PortRights ownPortRights() {
    constexpr int usualFirst = 1024;
    PortRights rights{.firstForAll =
                          numberIn("/proc/sys/net/ipv4/ip_unprivileged_port_start", usualFirst)};
    std::ifstream status("/proc/thread-self/status");
    for (std::string line; std::getline(status, line);) {
        std::istringstream columns(line);
        std::string title;
        std::uint64_t rightsInForce = 0;
        if (columns >> title >> std::hex >> rightsInForce && title == "CapEff:")
            rights.hasAll = (rightsInForce >> CAP_NET_BIND_SERVICE & 1U) != 0;
    }
    return rights;
}

}  // namespace orx::orxctl
