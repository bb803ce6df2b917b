#include "system/orxctl/UdpSocket.h"

#include <arpa/inet.h>
#include <array>
#include <stdexcept>
#include <sys/socket.h>

#include "system/harness/Client.h"

namespace orx::test {

sockaddr_in ownPlace(int port) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, ownAddress().c_str(), &place.sin_addr);
    return place;
}

bool isSame(const sockaddr_in& left, const sockaddr_in& right) noexcept {
    return left.sin_port == right.sin_port && left.sin_addr.s_addr == right.sin_addr.s_addr;
}

UdpSocket::UdpSocket() : socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    const auto place = ownPlace(0);
    if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) {
        throw std::runtime_error("no socket to be had at " + ownAddress());
    }
}

std::string UdpSocket::address() const {
    sockaddr_in place{};
    socklen_t size = sizeof place;
    ::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&place), &size);
    return ownAddress() + ":" + std::to_string(ntohs(place.sin_port));
}

void UdpSocket::send(const std::string& text, const sockaddr_in& to) const {
    ::sendto(socket.get(), text.data(), text.size(), 0, reinterpret_cast<const sockaddr*>(&to),
             sizeof to);
}

std::optional<Arrival> UdpSocket::take() const {
    std::array<char, 4096> buffer{};
    Arrival arrival;
    socklen_t size = sizeof arrival.from;
    const auto count = ::recvfrom(socket.get(), buffer.data(), buffer.size(), 0,
                                  reinterpret_cast<sockaddr*>(&arrival.from), &size);
    if (count < 0) return std::nullopt;
    arrival.text.assign(buffer.data(), static_cast<std::size_t>(count));
    return arrival;
}

}  // namespace orx::test
