// How a command leaves by the serial connector, and what is shown of it.
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/serial/ConnectorBench.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SerialConnectorSend : public ConnectorBench {};

TEST_F(SerialConnectorSend, WritesThenWaitsThenDrainsAndReads) {
    connectSilently();
    EXPECT_EQ(send("ZOOM=042\r"), "");
    EXPECT_THAT(line.events, ElementsAre("write", "sleep", "drain", "read"));
    EXPECT_THAT(line.writes, ElementsAre("ZOOM=042\r"));
    EXPECT_THAT(time.sleeps, ElementsAre(40));
}

TEST_F(SerialConnectorSend, LogsWhatItSendsWithoutShowingIt) {
    connectSilently();
    EXPECT_EQ(send(std::string("\x02"
                               "A b\\\0\xFF\r",
                               8)),
              "");
    EXPECT_THAT(log.messages(),
                ElementsAre(R"(sending \x02A b\\x00\xff\x0d [02 41 20 62 5c 00 ff 0d])"));
}

TEST_F(SerialConnectorSend, ShowsWhatItSendsAtDebugLevelOne) {
    connectSilently(1);
    EXPECT_EQ(send("ON\r"), "[RS232] sending: ON\\x0d [4f 4e 0d]\n");
    EXPECT_THAT(log.messages(), ElementsAre("sending ON\\x0d [4f 4e 0d]"));
    EXPECT_THAT(line.writes, ElementsAre("ON\r"));
    EXPECT_THAT(line.events, ElementsAre("write", "sleep", "drain", "read"));
}

TEST_F(SerialConnectorSend, OnlyShowsAndLogsAtDebugLevelTwo) {
    connectSilently(2);
    EXPECT_EQ(send("ON\r"),
              "[RS232] ON\\x0d\n"
              "DEBUG - command string is: ON\\x0d [4f 4e 0d]\n");
    EXPECT_THAT(log.messages(), ElementsAre("DEBUG - command string is: ON\\x0d [4f 4e 0d]"));
    EXPECT_THAT(line.events, ElementsAre("sleep"));
    EXPECT_THAT(time.sleeps, ElementsAre(40));
}

TEST_F(SerialConnectorSend, WaitsAndDrainsForAnEmptyCommandToo) {
    connectSilently();
    EXPECT_EQ(send(""), "");
    EXPECT_THAT(line.events, ElementsAre("write", "sleep", "drain", "read"));
    EXPECT_THAT(line.writes, ElementsAre(""));
    EXPECT_THAT(time.sleeps, ElementsAre(40));
    EXPECT_THAT(log.messages(), ElementsAre("sending  []"));
}

TEST_F(SerialConnectorSend, ShowsAnEmptyCommandAtEachDebugLevel) {
    connectSilently(1);
    EXPECT_EQ(send(""), "[RS232] sending:  []\n");
    connectSilently(2);
    EXPECT_EQ(send(""), "[RS232] \nDEBUG - command string is:  []\n");
}

TEST_F(SerialConnectorSend, SendsOneCommandAfterTheOther) {
    connectSilently();
    send("ON");
    send("OFF");
    EXPECT_THAT(line.writes, ElementsAre("ON", "OFF"));
    EXPECT_THAT(line.events,
                ElementsAre("write", "sleep", "drain", "read", "write", "sleep", "drain", "read"));
    EXPECT_THAT(log.messages(), ElementsAre("sending ON [4f 4e]", "sending OFF [4f 46 46]"));
}

TEST_F(SerialConnectorSend, DropsTheReply) {
    connectSilently();
    line.replies = {"ACK\r", "more"};
    EXPECT_EQ(send("ON"), "");
    EXPECT_TRUE(line.replies.empty());
    EXPECT_THAT(log.messages(), ElementsAre("sending ON [4f 4e]"));
}

TEST_F(SerialConnectorSend, WaitsTheDelayOfTheSettingsAsItStands) {
    connectSilently();
    connector->setDelay(7);
    EXPECT_EQ(settings->delay(), 7);
    send("a");
    settings->setDelay(0);
    send("b");
    settings->setDelay(1234);
    send("c");
    EXPECT_THAT(time.sleeps, ElementsAre(7, 0, 1234));
}

TEST_F(SerialConnectorSend, WaitsTheDelayAtDebugLevelTwoAsItStands) {
    connectSilently(2);
    connector->setDelay(5);
    send("a");
    connector->setDelay(-1);
    send("b");
    EXPECT_THAT(time.sleeps, ElementsAre(5, -1));
}

TEST_F(SerialConnectorSend, DoesNotSleepOnTheRealClockForANegativeDelay) {
    connect();
    const auto port = [this] { return std::make_unique<FakeSerialPort>(line); };
    outputOf([&] {
        SerialConnector real(settings, port());
        for (const int delay : {-1, -999, -1000, -1001, -2147483647 - 1}) {
            real.setDelay(delay);
            real.send("x");
        }
    });
    EXPECT_EQ(line.written(), "xxxxx");
}

/// A line that takes less than it is given, and then nothing.
class FailingPort final : public SerialPort {
  public:
    explicit FailingPort(std::vector<std::string>& operations) : events(operations) {}

    int open(const std::string&) override { return 3; }
    void setAttributes(const termios&) override {}
    ssize_t write(std::string_view bytes) override {
        events.push_back("write " + std::string(bytes));
        if (events.size() == 1) return 1;
        errno = EIO;
        return -1;
    }
    void drain() override { events.emplace_back("drain"); }
    ssize_t read(std::span<char>) override {
        events.emplace_back("read");
        return 0;
    }

  private:
    std::vector<std::string>& events;
};

TEST_F(SerialConnectorSend, WritesOnceEvenWhereTheLineDoesNotTakeAll) {
    connectSilently();
    std::vector<std::string> events;
    const auto output = outputOf([&] {
        SerialConnector failing(settings, std::make_unique<FailingPort>(events), time);
        failing.send("first");
        failing.send("second");
    });
    EXPECT_THAT(events,
                ElementsAre("write first", "drain", "read", "write second", "drain", "read"));
    EXPECT_EQ(output, "[RS232] fd 3: serial init /dev/nowhere @ 19200 baud, delay = 40ms\n");
}

}  // namespace
}  // namespace orx::test
