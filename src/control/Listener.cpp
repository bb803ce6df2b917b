#include "control/Listener.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <sys/socket.h>

#include "control/Interface.h"
#include "core/Console.h"
#include "core/Log.h"

namespace orx {
namespace {

FileDescriptor boundSocket(const sockaddr_in& address) {
    FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP));
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);
    // A socket that could not be created shows up here, as one that cannot be bound.
    if (::bind(socket.get(), generic, sizeof address) != 0) {
        throw std::runtime_error(Listener::bindFailure(errno));
    }
    constexpr int backlog = 5;
    ::listen(socket.get(), backlog);  // has no effect on a datagram socket
    return socket;
}

std::string hexadecimal(std::uint32_t number) {
    std::array<char, sizeof "ffffffff"> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", number);
    return digits.data();
}

}  // namespace

Listener::Listener(const std::string& interface, Time& retryTime) : time(retryTime) {
    const auto [addressText, portText, port, address] = parseInterface(interface);
    socket = boundSocket(address);
    printLine("[LISTENER] created socket #" + std::to_string(socketFd()) + " @ " + addressText +
              ":" + std::to_string(port) + " (" + hexadecimal(address.sin_addr.s_addr) + ")");
    log("listening on " + addressText + ":" + portText, Echo::no);
}

Listener::~Listener() {
    beginClosing();
}

void Listener::close() {
    if (!beginClosing()) return;
    waitForReceiver();
    socket.close();
}

bool Listener::beginClosing() {
    if (!socket.isOpen()) return false;
    printLine("[LISTENER] closing socket #" + std::to_string(socketFd()));
    closing = true;
    ::shutdown(socketFd(), SHUT_RDWR);  // says ENOTCONN, yet wakes a blocked receive
    return true;
}

std::optional<std::string_view> Listener::receive(std::span<char> buffer, sockaddr_in& sender) {
    constexpr int retryPauseMs = 50;
    for (;;) {
        socklen_t length = sizeof sender;
        const auto received = ::recvfrom(socketFd(), buffer.data(), buffer.size(), 0,
                                         reinterpret_cast<sockaddr*>(&sender), &length);
        // The end shows as no bytes, exactly as an empty datagram does, so the count cannot tell.
        if (closing) return std::nullopt;
        if (received >= 0) return std::string_view(buffer.data(), static_cast<size_t>(received));
        if (errno != EINTR) time.sleepMs(retryPauseMs);
    }
}

void Listener::reply(const sockaddr_in& address, std::string_view text) const {
    ::sendto(socketFd(), text.data(), text.size(), 0, reinterpret_cast<const sockaddr*>(&address),
             sizeof address);
}

std::string Listener::bindFailure(int errorNumber) {
    return std::string("[LISTENER] socket bind failed: ") + std::strerror(errorNumber);
}

std::string Listener::peerAddress(const sockaddr_in& address) {
    std::array<char, INET_ADDRSTRLEN> text{};
    ::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return text.data();
}

}  // namespace orx
