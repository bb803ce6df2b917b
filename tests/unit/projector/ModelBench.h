// A projector model on a serial line in memory.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "commands/Command.h"
#include "projector/Projector.h"
#include "support/CapturedOutput.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTime.h"

namespace orx::test {

/// A model without checksum that has one command.
inline Projector modelWith(const std::string& keyword, const std::string& bytes,
                           ArgumentDescriptors descriptors = {}, int checksum = 0) {
    ArgumentTable table;
    if (!descriptors.empty()) table[keyword] = std::move(descriptors);
    return {"DEMO", std::move(table), {{keyword, bytes}}, checksum};
}

inline std::string bytesFor(const Projector& projector, const std::string& line) {
    return projector.commandString(Command(line));
}

inline std::string dumpOf(const Projector& projector) {
    return outputOf([&projector] { projector.dump(); });
}

/// Line parameters of a device that the fake line stands for.
inline std::shared_ptr<SerialSettings> lineSettings() {
    return std::make_shared<SerialSettings>(LineParameters{
        .bytesize = 8, .stopbits = 1, .parity = 0, .baudrate = 9600, .timeout = 100, .delay = 20});
}

/// A connector to the line.
inline std::shared_ptr<SerialConnector> connectorTo(FakeLine& line, FakeTime& time,
                                                    std::shared_ptr<SerialSettings> settings) {
    std::shared_ptr<SerialConnector> connector;
    outputOf([&] {
        connector = std::make_shared<SerialConnector>(std::move(settings),
                                                      std::make_unique<FakeSerialPort>(line), time);
    });
    return connector;
}

}  // namespace orx::test
