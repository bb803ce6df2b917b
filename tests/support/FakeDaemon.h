// A daemon of which a test decides what it answers: a UDP socket with a thread of its own.
#pragma once

#include <array>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/FileDescriptor.h"
#include "orx/client/Address.h"
#include "support/UdpPeer.h"

namespace orx::test {

class FakeDaemon {
  public:
    /// Gives the replies to a datagram. Called on the daemon's thread.
    using Answer = std::function<std::vector<std::string>(const std::string& datagram)>;

    /// `elsewhere` answers from another socket than the one that is asked, as a daemon may that
    /// listens on all addresses of its machine.
    enum class From : bool { sameSocket, elsewhere };

    explicit FakeDaemon(Answer answerer, From from = From::sameSocket)
        : socket(boundSocket()),
          replySocket(from == From::elsewhere ? boundSocket()
                                              : FileDescriptor(::dup(socket.get()))),
          answer(std::move(answerer)),
          thread([this] { serve(); }) {}
    FakeDaemon(const FakeDaemon&) = delete;
    FakeDaemon& operator=(const FakeDaemon&) = delete;
    ~FakeDaemon() {
        ::shutdown(socket.get(), SHUT_RDWR);  // wakes the thread, though it says ENOTCONN
        thread.join();
    }

    [[nodiscard]] client::Address address() const {
        const auto bound = boundAddress(socket.get());
        return {addressText(bound), portOf(bound)};
    }

    /// All datagrams up to now but for STATUS.
    [[nodiscard]] std::vector<std::string> commands() const {
        const std::lock_guard lock(mutex);
        return received;
    }

  private:
    static FileDescriptor boundSocket() {
        FileDescriptor made(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
        // Nobody else can take its port once it is gone: the address is this process's own.
        const auto own = ipv4(privateAddress(), 0);
        if (::bind(made.get(), reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0)
            throw std::runtime_error("no port for a daemon");
        return made;
    }

    void serve() {
        std::array<char, 4096> buffer{};
        for (;;) {
            sockaddr_in sender{};
            socklen_t length = sizeof sender;
            auto* const from = reinterpret_cast<sockaddr*>(&sender);
            const auto size =
                ::recvfrom(socket.get(), buffer.data(), buffer.size(), 0, from, &length);
            if (size <= 0) return;  // nobody sends an empty datagram: this is the end
            const std::string datagram(buffer.data(), static_cast<std::size_t>(size));
            record(datagram);
            for (const auto& reply : answer(datagram))
                ::sendto(replySocket.get(), reply.data(), reply.size(), 0, from, length);
        }
    }

    void record(const std::string& datagram) {
        const std::lock_guard lock(mutex);
        if (datagram != "STATUS") received.push_back(datagram);
    }

    FileDescriptor socket;
    FileDescriptor replySocket;
    Answer answer;
    mutable std::mutex mutex;
    std::vector<std::string> received;
    std::thread thread;
};

}  // namespace orx::test
