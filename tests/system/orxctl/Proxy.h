// The network between a client and a daemon, in the hands of a test: it loses, holds back and
// doubles datagrams, and remembers what was sent. Where no daemon is, it is a daemon that keeps
// silent.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "system/harness/Client.h"
#include "system/orxctl/ReadingThread.h"
#include "system/orxctl/UdpSocket.h"

namespace orx::test {

/// The port of this test process where no daemon ever is.
inline constexpr int nobodysPort = controlPort + 99;

class Proxy {
  public:
    enum class Fate : std::uint8_t { pass, drop, twice, hold };

    struct Datagram {
        bool isReply = false;
        std::string text{};
        std::size_t number = 0;  ///< counted from 1, for requests and replies each
    };

    /// Decides about each datagram; called by the thread of the proxy, one datagram at a time.
    using Rule = std::function<Fate(const Datagram&)>;

    /// Passes everything on, to the daemon at that port of this test process.
    explicit Proxy(int daemonPort = controlPort);

    /// Where clients find the daemon behind the proxy.
    [[nodiscard]] std::string address() const { return clientSide.address(); }

    /// Holds for all datagrams from now on.
    void setRule(Rule newRule);

    /// Lets the datagrams go that were held back, each so many times.
    void release(int times = 1);

    /// The requests that clients have sent before this call, whatever became of them.
    [[nodiscard]] std::vector<std::string> requests();

    /// How many requests with that text there were up to now.
    [[nodiscard]] std::size_t count(const std::string& text);

    /// Waits until there have been so many more of them than at this moment. Throws where they do
    /// not come.
    void waitForMore(const std::string& text, std::size_t more);

    // Rules.

    [[nodiscard]] static Fate dropAll(const Datagram&) { return Fate::drop; }
    [[nodiscard]] static Fate doubleAll(const Datagram&) { return Fate::twice; }
    [[nodiscard]] static Fate dropReplies(const Datagram& datagram);
    /// Drops the requests that are not STATUS.
    [[nodiscard]] static Fate dropCommands(const Datagram& datagram);
    [[nodiscard]] static Rule dropFirstReplies(std::size_t replies);
    /// Drops one datagram in two, both ways, by chance; commands pass.
    [[nodiscard]] static Rule dropHalf(std::uint32_t seed);

  private:
    /// A client, and the socket that speaks for it.
    struct Route {
        sockaddr_in client;
        UdpSocket daemonSide;
    };
    /// A datagram that is ready to go.
    struct Letter {
        const UdpSocket* sender;
        sockaddr_in receiver;
        std::string text;
    };

    [[nodiscard]] std::vector<int> descriptors() const;
    void passOn();
    [[nodiscard]] std::size_t countOf(const std::string& text) const;
    [[nodiscard]] const UdpSocket& routeOf(const sockaddr_in& client);
    void handle(const Letter& letter, bool isReply);

    const sockaddr_in daemon;
    UdpSocket clientSide;
    mutable std::mutex mutex;  ///< guards all below
    std::condition_variable heard;
    Rule rule;
    std::vector<std::unique_ptr<Route>> routes;
    std::vector<Letter> held;
    std::vector<std::string> received;
    std::size_t replies = 0;
    ReadingThread thread;
};

}  // namespace orx::test
