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

    /// Opens and configures the device of `settings`. Throws `std::runtime_error` with the
    /// text `openFailure` where it cannot be opened.
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

    /// What is thrown where opening the device fails with that error number of the system.
    [[nodiscard]] static std::string openFailure(int errorNumber);

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
