// One IPv4 UDP socket, bound to an address and port of this machine.
//
// One thread receives and replies. `close` may be called from another thread meanwhile: it wakes a
// blocked `receive`, waits until the receiving thread has let go of the socket, and only then
// closes the descriptor. (Closing alone would neither wake that thread nor free the port.)
#pragma once

#include <atomic>
#include <netinet/in.h>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/FileDescriptor.h"
#include "core/Time.h"

namespace orx {

class Listener {
  public:
    /// Binds a socket to `interface`: an IPv4 address or "*", a colon and a port, with blanks
    /// around either. The port is cut to its low 16 bits. Throws as `parseInterface`, and
    /// `std::runtime_error` with the text `bindFailure` for a failed bind.
    explicit Listener(const std::string& interface, Time& time = systemTime());
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener();

    /// Announces the end on standard output and closes the socket. A second call does nothing.
    void close();

    /// Waits for the next datagram and puts its first bytes into `buffer`, as many as fit, and its
    /// sender into `sender`. Gives the bytes received, which may be none, or nothing once the
    /// socket is being closed. Any other failure is tried again after a pause.
    [[nodiscard]] std::optional<std::string_view> receive(std::span<char> buffer,
                                                          sockaddr_in& sender);

    /// Sends `text` as one datagram; a failure is ignored. For the receiving thread. A derived
    /// class can take the replies instead of the socket.
    virtual void reply(const sockaddr_in& address, std::string_view text) const;

    /// The IPv4 address of `address` as a dotted quad, without the port.
    [[nodiscard]] static std::string peerAddress(const sockaddr_in& address);

    /// What is thrown where binding fails with that error number of the system.
    [[nodiscard]] static std::string bindFailure(int errorNumber);

    /// The descriptor of the socket, -1 once it is closed.
    [[nodiscard]] int socketFd() const noexcept { return socket.get(); }

  protected:
    /// Called by `close` once a blocked `receive` has been woken: returns when no thread uses the
    /// socket any more. A derived class whose thread receives closes in its own destructor.
    virtual void waitForReceiver() {}

  private:
    /// Announces the end and wakes the receiver; false where the socket is closed already.
    bool beginClosing();

    FileDescriptor socket;
    std::atomic<bool> closing = false;
    Time& time;
};

}  // namespace orx
