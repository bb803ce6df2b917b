#include "harness/UdpClient.h"

#include <array>
#include <chrono>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>

#include "harness/Clock.h"

namespace orx::bench {
namespace {

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

FileDescriptor newSocket() {
    FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!socket.isOpen()) throw std::runtime_error("no socket to be had");
    return socket;
}

bool receivesWithin(const FileDescriptor& socket) {
    std::array<char, 2048> buffer;
    return ::recv(socket.get(), buffer.data(), buffer.size(), 0) > 0;
}

}  // namespace

int freePort() {
    // Below the ports that the system gives to the sockets of clients, which come and go.
    constexpr int lowest = 10'000;
    constexpr int count = 20'000;
    constexpr int farFromOtherProcesses = 100;
    static int number = ::getpid() * farFromOtherProcesses % count;
    for (int attempt = 0; attempt < count; ++attempt) {
        number = (number + 1) % count;
        const auto socket = newSocket();
        const auto address = loopback(lowest + number);
        const auto* generic = reinterpret_cast<const sockaddr*>(&address);
        if (::bind(socket.get(), generic, sizeof address) == 0) return lowest + number;
    }
    throw std::runtime_error("no port to be had");
}

std::vector<int> freePorts(int count) {
    std::vector<int> ports;
    while (static_cast<int>(ports.size()) < count)
        ports.push_back(freePort());
    return ports;
}

UdpClient::UdpClient(int port) : socket(newSocket()) {
    constexpr timeval patience{10, 0};
    const auto address = loopback(port);
    ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("no socket to be had");
}

void UdpClient::send(std::string_view datagram) const {
    ::send(socket.get(), datagram.data(), datagram.size(), 0);
}

void UdpClient::receive() const {
    if (!receivesWithin(socket)) throw std::runtime_error("a datagram was not answered");
}

double UdpClient::ask(std::string_view datagram) const {
    const Stopwatch stopwatch;
    send(datagram);
    receive();
    return stopwatch.microseconds();
}

void UdpClient::waitForAnswer(std::string_view datagram) const {
    constexpr int attempts = 10'000;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        send(datagram);
        if (receivesWithin(socket)) return;  // refused at once while nobody listens
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    throw std::runtime_error("a server does not answer");
}

void UdpClient::flood(std::string_view datagram, long count, int inFlight) const {
    for (int sent = 0; sent < inFlight; ++sent)
        send(datagram);
    for (auto toSend = count - inFlight; toSend > 0; --toSend) {
        receive();
        send(datagram);
    }
    for (int answered = 0; answered < inFlight; ++answered)
        receive();
}

}  // namespace orx::bench
