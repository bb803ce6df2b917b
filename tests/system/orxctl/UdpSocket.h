// A datagram socket at the address of this test process, on a port that the system chooses. A
// value; one thread at a time, but for sending.
#pragma once

#include <netinet/in.h>
#include <optional>
#include <string>

#include "core/FileDescriptor.h"

namespace orx::test {

/// The place of a socket at the address of this test process.
[[nodiscard]] sockaddr_in ownPlace(int port);

[[nodiscard]] bool isSame(const sockaddr_in& left, const sockaddr_in& right) noexcept;

/// A datagram as it has come in.
struct Arrival {
    sockaddr_in from{};
    std::string text{};
};

class UdpSocket {
  public:
    UdpSocket();

    /// "ADDRESS:PORT"
    [[nodiscard]] std::string address() const;

    [[nodiscard]] int descriptor() const noexcept { return socket.get(); }

    /// That nobody is there is no error.
    void send(const std::string& text, const sockaddr_in& to) const;

    /// The next datagram, where there is one by now.
    [[nodiscard]] std::optional<Arrival> take() const;

  private:
    FileDescriptor socket;
};

}  // namespace orx::test
