// The serial connector on a line of the system.
#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serial/SerialConnector.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"
#include "unit/serial/PseudoTerminal.h"

namespace orx::test {
namespace {

class SerialConnectorLine : public testing::Test {
  protected:
    SerialConnectorLine() { connect(0); }

    /// Opens the line with that many milliseconds of patience.
    void connect(int timeout) {
        settings = std::make_shared<SerialSettings>(LineParameters{.bytesize = 8,
                                                                   .stopbits = 1,
                                                                   .parity = 0,
                                                                   .baudrate = 115200,
                                                                   .timeout = timeout,
                                                                   .delay = 0});
        settings->readConfiguration(
            MainConfig(folder.write("orx.cfg", "serial.device = " + line.device())));
        opened = outputOf([this] { connector = std::make_unique<SerialConnector>(settings); });
    }

    TemporaryFolder folder;
    PseudoTerminal line;
    std::shared_ptr<SerialSettings> settings;
    std::unique_ptr<SerialConnector> connector;
    std::string opened;
};

TEST_F(SerialConnectorLine, OpensARawLineOfTheRate) {
    EXPECT_THAT(opened, testing::MatchesRegex("\\[RS232\\] fd [0-9]+: serial init " +
                                              line.device() + " @ 115200 baud, delay = 0ms\n"));
    const auto attributes = line.attributes();
    EXPECT_EQ(::cfgetospeed(&attributes), static_cast<speed_t>(B115200));
    EXPECT_EQ(attributes.c_lflag, 0U);
    EXPECT_EQ(attributes.c_iflag, 0U);
    EXPECT_EQ(attributes.c_oflag, 0U);
}

TEST_F(SerialConnectorLine, SendsTheBytesAndDropsTheReply) {
    line.answer("ACK\r");
    const std::string bytes("\x02SET\0\xFF\r\n\x03", 9);
    EXPECT_EQ(outputOf([&] { connector->send(bytes); }), "");
    EXPECT_EQ(line.written(bytes.size()), bytes);
    EXPECT_FALSE(line.hasMore());
    EXPECT_EQ(connector->read(), "");
}

TEST_F(SerialConnectorLine, LeavesTheRestOfALongReplyInTheDriver) {
    line.answer(std::string(200, 'a') + std::string(200, 'b') + "c\r");
    EXPECT_EQ(connector->read(), std::string(200, 'a'));
    EXPECT_EQ(connector->read(), std::string(200, 'b'));
    EXPECT_EQ(connector->read(), "c\n");
}

TEST_F(SerialConnectorLine, WaitsForTheReplyAndForItsFurtherPieces) {
    connect(25'000);
    std::atomic<pid_t> reading = 0;
    std::string reply;
    std::thread reader([&] {
        reading = thisThread();
        reply = connector->read();
    });
    EXPECT_TRUE(waitUntil([&] { return reading != 0 && isAsleep(reading); }));
    line.feed(std::string(50, 'a'));
    EXPECT_TRUE(waitUntilAsleep(reading));
    line.feed(std::string(150, 'b'));  // fills the reply, so that nothing waits for silence
    reader.join();
    EXPECT_EQ(reply, std::string(50, 'a') + std::string(150, 'b'));
}

TEST_F(SerialConnectorLine, GoesOnWhenTheAdapterIsPulled) {
    line.hangUp();
    EXPECT_EQ(outputOf([this] {
                  connector->send("ON\r");
                  connector->send("OFF\r");
              }),
              "");
    EXPECT_EQ(connector->read(), "");
}

TEST_F(SerialConnectorLine, KeepsTheCommandsOfSeveralThreadsWhole) {
    constexpr int rounds = 200;
    outputOf([this] {
        const auto sending = [this](const std::string& command) {
            return std::thread([this, command] {
                for (int round = 0; round < rounds; ++round)
                    connector->send(command);
            });
        };
        std::array threads{sending("ZOOM=+\n"), sending("FOCUS=-\n"), std::thread([this] {
                               for (int round = 0; round < rounds; ++round)
                                   connector->setDelay(-round);
                           })};
        std::map<std::string, int> commands;
        const auto size = rounds * (std::string("ZOOM=+\nFOCUS=-\n").size());
        std::istringstream lines(line.written(size));
        for (std::string text; std::getline(lines, text);)
            ++commands[text];
        for (auto& thread : threads)
            thread.join();
        EXPECT_THAT(commands, testing::ElementsAre(testing::Pair("FOCUS=-", rounds),
                                                   testing::Pair("ZOOM=+", rounds)));
    });
}

}  // namespace
}  // namespace orx::test
