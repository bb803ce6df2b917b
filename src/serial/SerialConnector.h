// The RS-232 link to the projector: writes a command string, waits, drains the answer.
//
// `send` is called from two threads, the command queue's and the one that steps the lens, without a
// lock: the delay and the drain keep the commands of one thread apart, nothing keeps the threads
// apart. In debug level 2 there is no device: what would be sent is shown and logged.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/Time.h"
#include "serial/SerialPort.h"
#include "serial/SerialSettings.h"

namespace orx {

class SerialConnector {
  public:
    /// A reply is cut at this length; the rest is read after the next command.
    static constexpr std::size_t maxReplySize = 200;

    /// Opens and configures the device of `settings`. Throws `std::runtime_error` "[RS232] could
    /// not init serial device: " and the system's text where it cannot be opened.
    explicit SerialConnector(std::shared_ptr<SerialSettings> settings,
                             std::unique_ptr<SerialPort> port = makeTerminalPort(),
                             Time& time = systemTime());
    SerialConnector(const SerialConnector&) = delete;
    SerialConnector& operator=(const SerialConnector&) = delete;
    virtual ~SerialConnector() = default;

    /// Writes `bytes`, waits the delay and drains the reply. A failed write is passed over: the
    /// line has no acknowledgement to tell a command that was lost anyway.
    void send(std::string_view bytes);

    /// Waits until the last command has left the port, then reads the reply until the line has been
    /// silent for the timeout. Carriage returns are given as line feeds. A read error is printed.
    std::string read();

    /// The milliseconds to wait after each write, from now on.
    void setDelay(int milliseconds) noexcept { settings->setDelay(milliseconds); }

  private:
    [[nodiscard]] bool hasDevice() const noexcept;
    void openDevice();
    void showInsteadOfSending(std::string_view bytes);

    std::shared_ptr<SerialSettings> settings;
    std::unique_ptr<SerialPort> port;
    Time& time;
};

}  // namespace orx
