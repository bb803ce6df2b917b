#include "orx/client/Client.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <netdb.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <system_error>
#include <thread>

#include "core/FileDescriptor.h"

namespace orx::client {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = Client::Milliseconds;

sockaddr_in lookUp(const Address& address) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(address.host.c_str(), nullptr, &hints, &found);
    if (error != 0) {
        throw std::runtime_error("host " + address.host + ": " + ::gai_strerror(error));
    }
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    auto peer = *reinterpret_cast<const sockaddr_in*>(found->ai_addr);
    peer.sin_port = htons(address.port);
    return peer;
}

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// A socket with a port of its own. It is not connected, because a daemon that listens on all
/// addresses of a machine may answer from another one than it was asked at; what a connected socket
/// is told all the same, that nobody listens, is asked for.
FileDescriptor openSocket() {
    FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket.isOpen()) fail("cannot open a socket");
    constexpr int yes = 1;
    ::setsockopt(socket.get(), IPPROTO_IP, IP_RECVERR, &yes, sizeof yes);
    return socket;
}

/// That nobody listens is told by the send after the one that it concerns; the daemon may be about
/// to start, so it is as good as a lost datagram.
void sendOnce(const FileDescriptor& socket, const sockaddr_in& peer, std::string_view text) {
    const auto* const generic = reinterpret_cast<const sockaddr*>(&peer);
    for (int attempts = 2; attempts > 0; --attempts) {
        if (::sendto(socket.get(), text.data(), text.size(), 0, generic, sizeof peer) >= 0) return;
        if (errno != ECONNREFUSED) fail("cannot send");
    }
}

/// Milliseconds until `end` as poll counts them, rounded up so that nobody waits too short.
int millisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now());
    return static_cast<int>(std::clamp<Milliseconds::rep>(left.count(), 0, 60'000));
}

/// The status that arrives before `end`. What is no status is passed over; that nobody listens at
/// the other end goes to `refused`.
std::optional<DaemonStatus> receiveUntil(const FileDescriptor& socket, Clock::time_point end,
                                         bool& refused) {
    constexpr std::size_t mostBytes = 2048;  // a reply has not even a tenth of it
    std::array<char, mostBytes> buffer{};
    do {
        pollfd waiting{socket.get(), POLLIN, 0};
        ::poll(&waiting, 1, millisecondsUntil(end));
        const auto size = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (size < 0) {
            refused = refused || errno == ECONNREFUSED;
            ::recv(socket.get(), buffer.data(), buffer.size(), MSG_ERRQUEUE);  // or poll goes on
            continue;
        }
        const std::string_view reply(buffer.data(), static_cast<std::size_t>(size));
        if (auto status = DaemonStatus::parse(reply)) return status;
    } while (Clock::now() < end);
    return std::nullopt;
}

}  // namespace

Client::Client(const Address& address) : peer(lookUp(address)) {}

void Client::send(const Request& request) const {
    sendOnce(openSocket(), peer, request.text());
}

std::optional<DaemonStatus> Client::status(Milliseconds timeout) const {
    bool refused = false;
    return ask(timeout, refused);
}

Presence Client::presence(Milliseconds timeout) const {
    bool refused = false;
    if (ask(timeout, refused)) return Presence::answers;
    return refused ? Presence::deserted : Presence::silent;
}

bool Client::hasSamePeer(const Client& other) const noexcept {
    return peer.sin_addr.s_addr == other.peer.sin_addr.s_addr &&
           peer.sin_port == other.peer.sin_port;
}

std::optional<DaemonStatus> Client::ask(Milliseconds timeout, bool& refused) const {
    constexpr Milliseconds firstPause{50};
    constexpr Milliseconds longestPause{1000};
    const auto socket = openSocket();
    const auto end = Clock::now() + timeout;
    auto pause = firstPause;
    do {
        sendOnce(socket, peer, "STATUS");
        auto answer = receiveUntil(socket, std::min(end, Clock::now() + pause), refused);
        if (answer) return answer;
        pause = std::min(2 * pause, longestPause);
    } while (Clock::now() < end);
    return std::nullopt;
}

Rest Client::waitUntilAtRest(Milliseconds timeout, const Observer& observer) const {
    constexpr Milliseconds betweenQuestions{50};
    const auto end = Clock::now() + timeout;
    std::optional<Clock::time_point> lastAnswer;
    std::optional<Clock::time_point> atRestSince;
    for (auto asked = Clock::now(); asked < end; asked = Clock::now()) {
        bool refused = false;
        const auto left = std::chrono::ceil<Milliseconds>(end - asked);
        const auto answer = ask(std::min(left, answerTime), refused);
        if (!answer && refused) return Rest::silent;
        if (!answer) continue;
        lastAnswer = Clock::now();
        if (observer) observer(*answer);
        if (!answer->isAtRest())
            atRestSince.reset();
        else if (!atRestSince)
            atRestSince = lastAnswer;
        else if (asked >= *atRestSince + settlingTime)
            return Rest::reached;
        std::this_thread::sleep_until(std::min(end, Clock::now() + betweenQuestions));
    }
    const bool answers = lastAnswer && *lastAnswer + answerTime > Clock::now();
    return answers ? Rest::busy : Rest::silent;
}

}  // namespace orx::client
