#include "serial/SerialConnector.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "control/Status.h"
#include "core/Console.h"
#include "core/Log.h"
#include "core/Text.h"

namespace orx {

SerialConnector::SerialConnector(std::shared_ptr<SerialSettings> lineSettings,
                                 std::unique_ptr<SerialPort> serialPort, Time& delayTime)
    : settings(std::move(lineSettings)), port(std::move(serialPort)), time(delayTime) {
    if (hasDevice()) {
        openDevice();
        return;
    }
    printLine("[RS232] entering NO_SERIAL_DEVICE debug mode: serial init & write disabled");
    log("# serial debug mode: not writing to serial port", Echo::no);
    Status::setDebug(true);
}

bool SerialConnector::hasDevice() const noexcept {
    return settings->debug() != SerialSettings::noSerialDevice;
}

void SerialConnector::openDevice() {
    const int fd = port->open(settings->device());
    if (fd == -1) throw std::runtime_error(openFailure(errno));
    log("[RS232] fd " + std::to_string(fd) + ": serial init " + settings->device() + " @ " +
            std::to_string(settings->baudrate()) +
            " baud, delay = " + std::to_string(settings->delay()) + "ms",
        Echo::yes);
    port->setAttributes(settings->terminalAttributes());
}

std::string SerialConnector::openFailure(int errorNumber) {
    return std::string("[RS232] could not init serial device: ") + std::strerror(errorNumber);
}

void SerialConnector::send(std::string_view bytes) {
    if (!hasDevice()) {
        showInsteadOfSending(bytes);
        return;
    }
    const auto shown = escapeBytes(bytes) + " " + listBytes(bytes);
    if (settings->debug() > 0) printLine("[RS232] sending: " + shown);
    log("sending " + shown, Echo::no);
    port->write(bytes);
    time.sleepMs(settings->delay());
    read();  // the projector's acknowledgement carries nothing we use
}

void SerialConnector::showInsteadOfSending(std::string_view bytes) {
    const auto escaped = escapeBytes(bytes);
    printLine("[RS232] " + escaped);
    log("DEBUG - command string is: " + escaped + " " + listBytes(bytes), Echo::yes);
    time.sleepMs(settings->delay());
}

std::string SerialConnector::read() {
    if (!hasDevice()) return {};
    port->drain();
    std::array<char, maxReplySize> buffer{};
    std::span<char> space(buffer);
    ssize_t received = 0;
    while (!space.empty() && (received = port->read(space)) > 0) {
        space = space.subspan(static_cast<std::size_t>(received));
    }
    if (received == -1) {
        printLine(std::string("[RS232] read error: ") + std::strerror(errno));
    }
    std::string reply(buffer.data(), buffer.size() - space.size());
    std::ranges::replace(reply, '\r', '\n');
    return reply;
}

}  // namespace orx
