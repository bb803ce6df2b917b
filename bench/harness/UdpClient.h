// A client of a server on 127.0.0.1.
#pragma once

#include <string_view>
#include <vector>

#include "core/FileDescriptor.h"

namespace orx::bench {

/// A port that nobody listens at, another one each time.
[[nodiscard]] int freePort();

/// So many of them.
[[nodiscard]] std::vector<int> freePorts(int count);

class UdpClient {
  public:
    explicit UdpClient(int port);

    void send(std::string_view datagram) const;

    /// Waits for an answer. Throws where none comes.
    void receive() const;

    /// Sends a datagram and waits for the answer; gives the microseconds that it took.
    [[nodiscard]] double ask(std::string_view datagram) const;

    /// Asks until there is an answer, for a server that is about to start. Throws where there is
    /// none.
    void waitForAnswer(std::string_view datagram) const;

    /// Asks `count` times, as many as `inFlight` of them under way at once.
    void flood(std::string_view datagram, long count, int inFlight) const;

  private:
    FileDescriptor socket;
};

}  // namespace orx::bench
