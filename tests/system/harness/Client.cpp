#include "system/harness/Client.h"

#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

sockaddr_in ownSocketAddress(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, ownAddress().c_str(), &address.sin_addr);
    return address;
}

const sockaddr* generic(const sockaddr_in& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

std::string ownAddress() {
    constexpr unsigned upperHalfOfLoopback = 64;
    const auto id = static_cast<unsigned>(::getpid());
    const std::array<unsigned, 3> octets{upperHalfOfLoopback + (id >> 16U & 0x3FU),
                                         id >> 8U & 0xFFU, id & 0xFFU};
    std::string text = "127";
    for (const auto octet : octets)
        text += "." + std::to_string(octet);
    return text;
}

std::string controlAddress(int index) {
    return ownAddress() + ":" + std::to_string(controlPort + index);
}

Client::Client() : socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    const auto address = ownSocketAddress(0);
    if (::bind(socket.get(), generic(address), sizeof address) != 0) {
        throw std::runtime_error("no socket to be had at " + ownAddress());
    }
}

void Client::send(const std::string& text, int port) const {
    const auto address = ownSocketAddress(port);
    ::sendto(socket.get(), text.data(), text.size(), 0, generic(address), sizeof address);
}

bool Client::waitForReply(int milliseconds) const {
    pollfd reply{socket.get(), POLLIN, 0};
    return ::poll(&reply, 1, milliseconds) > 0;
}

std::string Client::take() const {
    std::array<char, 65536> buffer{};
    const auto count = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
    return {buffer.data(), static_cast<std::size_t>(count < 0 ? 0 : count)};
}

std::string Client::receive() const {
    if (!waitForReply(patienceMs)) throw std::runtime_error("no reply from the daemon");
    return take();
}

std::string Client::status(int port) const {
    constexpr int attempts = 30;
    while (hasReply())
        static_cast<void>(take());  // of an earlier attempt
    for (int attempt = 0; attempt < attempts; ++attempt) {
        send("STATUS", port);
        if (waitForReply(patienceMs / attempts)) return take();
    }
    throw std::runtime_error("no status from the daemon");
}

bool Client::isFree(int port) {
    const FileDescriptor probe(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const auto address = ownSocketAddress(port);
    return ::bind(probe.get(), generic(address), sizeof address) == 0;
}

}  // namespace orx::test
