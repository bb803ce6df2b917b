// A serial connector on a line in memory, with a clock that stands.
#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "control/Status.h"
#include "serial/SerialConnector.h"
#include "support/CapturedOutput.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTime.h"
#include "support/ProcessLog.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

class ConnectorBench : public testing::Test {
  protected:
    ConnectorBench() {
        // Sleeps stand among the events of the line, so that their order shows.
        time.onSleep = [this] { line.events.emplace_back("sleep"); };
        Status::reset();
        Status::setDebug(false);
    }
    ~ConnectorBench() override { Status::reset(); }

    /// Builds the connector and gives what it printed.
    std::string connect(int debug = 0) {
        settings = std::make_shared<SerialSettings>(LineParameters{.bytesize = 7,
                                                                   .stopbits = 2,
                                                                   .parity = 1,
                                                                   .baudrate = 19200,
                                                                   .timeout = 300,
                                                                   .delay = 40});
        settings->readConfiguration(MainConfig(folder.write(
            "orx.cfg", "serial.device = /dev/nowhere\nserial.debug = " + std::to_string(debug))));
        return outputOf([this] {
            connector = std::make_unique<SerialConnector>(
                settings, std::make_unique<FakeSerialPort>(line), time);
        });
    }

    /// Builds the connector and forgets what that left on the line and in the log.
    void connectSilently(int debug = 0) {
        connect(debug);
        line.events.clear();
        log.startOver();
    }

    /// Sends and gives what that printed.
    std::string send(const std::string& bytes) const {
        return outputOf([this, &bytes] { connector->send(bytes); });
    }

    TemporaryFolder folder;
    FakeLine line;
    FakeTime time;
    std::shared_ptr<SerialSettings> settings;
    std::unique_ptr<SerialConnector> connector;
    ProcessLog log;
};

}  // namespace orx::test
