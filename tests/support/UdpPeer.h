// The other side of a listener: a client's socket on the loopback network.
#pragma once

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdint>
#include <netinet/in.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "core/FileDescriptor.h"

namespace orx::test {

inline sockaddr_in ipv4(const std::string& address, std::uint16_t port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    if (::inet_pton(AF_INET, address.c_str(), &result.sin_addr) != 1) {
        throw std::invalid_argument(address);
    }
    return result;
}

/// Where a socket is bound.
inline sockaddr_in boundAddress(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw std::runtime_error("not a bound socket");
    }
    return address;
}

inline std::string addressText(const sockaddr_in& address) {
    std::array<char, INET_ADDRSTRLEN> text{};
    ::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return text.data();
}

inline std::uint16_t portOf(const sockaddr_in& address) {
    return ntohs(address.sin_port);
}

/// A loopback address that only this process uses, so that a test can have any port on it.
inline std::string privateAddress() {
    const auto process = static_cast<unsigned>(::getpid());
    return "127." + std::to_string(64 + (process >> 16U) % 64) + "." +
           std::to_string((process >> 8U) % 256) + "." + std::to_string(process % 256);
}

/// Below the ports that the system hands out by itself.
constexpr int privatePort = 17781;

class UdpPeer {
  public:
    explicit UdpPeer(const std::string& address = "127.0.0.1")
        : socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        const timeval patience{60, 0};  // a lost reply must not keep a failing test forever
        ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        const auto own = ipv4(address, 0);
        if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0) {
            throw std::runtime_error("no socket at " + address);
        }
    }

    [[nodiscard]] sockaddr_in address() const { return boundAddress(socket.get()); }

    /// Sends one datagram to the socket that is bound to `target`.
    void send(sockaddr_in target, std::string_view bytes) const {
        if (target.sin_addr.s_addr == htonl(INADDR_ANY)) {
            target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        }
        const auto sent = ::sendto(socket.get(), bytes.data(), bytes.size(), 0,
                                   reinterpret_cast<const sockaddr*>(&target), sizeof target);
        if (sent != static_cast<ssize_t>(bytes.size())) throw std::runtime_error("not sent");
    }

    /// Waits for one datagram; nothing where none comes at all.
    [[nodiscard]] std::optional<std::string> receive() const { return receive(0); }

    /// A datagram that has already arrived.
    [[nodiscard]] std::optional<std::string> receiveArrived() const {
        return receive(MSG_DONTWAIT);
    }

  private:
    [[nodiscard]] std::optional<std::string> receive(int flags) const {
        std::string bytes(65536, '\0');
        const auto size = ::recv(socket.get(), bytes.data(), bytes.size(), flags);
        if (size < 0) return std::nullopt;
        bytes.resize(static_cast<std::size_t>(size));
        return bytes;
    }

    FileDescriptor socket;
};

}  // namespace orx::test
