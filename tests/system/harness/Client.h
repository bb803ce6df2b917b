// A client of the control channel: a real UDP socket.
#pragma once

#include <cstdint>
#include <string>

#include "core/FileDescriptor.h"

namespace orx::test {

/// Where the daemons of this test process listen: a loopback address that no other process has, so
/// that tests with the same ports run side by side.
[[nodiscard]] std::string ownAddress();

/// The port of a daemon's first control channel; more follow it. Below the ports that the system
/// gives out by itself.
inline constexpr int controlPort = 17781;

/// "ADDRESS:PORT" of the control channel with number `index`.
[[nodiscard]] std::string controlAddress(int index = 0);

class Client {
  public:
    Client();

    /// Sends `text` as one datagram to `port` of `ownAddress`.
    void send(const std::string& text, int port = controlPort) const;

    /// Waits for one datagram. Throws where none comes.
    [[nodiscard]] std::string receive() const;

    /// Asks for the status until it is answered. Throws where it never is.
    [[nodiscard]] std::string status(int port = controlPort) const;

    /// Whether a datagram is there by now.
    [[nodiscard]] bool hasReply() const { return waitForReply(0); }

    /// Whether nobody listens at `port` of `ownAddress`.
    [[nodiscard]] static bool isFree(int port);

  private:
    [[nodiscard]] bool waitForReply(int milliseconds) const;
    [[nodiscard]] std::string take() const;

    FileDescriptor socket;
};

}  // namespace orx::test
