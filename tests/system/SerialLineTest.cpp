// The serial line as the daemon sets it up, and the pace at which it writes.
#include "system/harness/Story.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::Not;

class SerialLine : public Story {
  protected:
    /// Restarts the running daemon with these configuration lines; gives the line's parameters.
    termios attributesWith(const std::string& lines) {
        installation.writeConfiguration(configuration("MOTOR", lines));
        restart();
        return line.attributes();
    }
};

TEST_F(SerialLine, IsSetUpAsTheModelSays) {
    auto model = motorModel();
    model.line.baudrate = 38400;
    model.line.stopbits = 2;
    model.line.timeout = 250;
    startWith(model);
    const auto attributes = line.attributes();
    EXPECT_EQ(::cfgetospeed(&attributes), B38400);
    EXPECT_EQ(::cfgetispeed(&attributes), B38400);
    EXPECT_EQ(attributes.c_cflag & CSTOPB, tcflag_t{CSTOPB});
    EXPECT_EQ(attributes.c_cflag & (CREAD | CLOCAL), tcflag_t{CREAD | CLOCAL});
    EXPECT_EQ(attributes.c_cc[VTIME], 2);
    EXPECT_EQ(attributes.c_cc[VMIN], 0);
}

TEST_F(SerialLine, IsRaw) {
    ASSERT_NE(line.attributes().c_lflag & (ICANON | ECHO), 0U);  // as every terminal begins
    startWith(motorModel());
    const auto attributes = line.attributes();
    EXPECT_EQ(attributes.c_iflag, 0U);
    EXPECT_EQ(attributes.c_oflag, 0U);
    EXPECT_EQ(attributes.c_lflag, 0U);
}

TEST_F(SerialLine, IsSetUpAsTheConfigurationSaysWhereItDoes) {
    startWith(motorModel());
    auto attributes =
        attributesWith("serial.baudrate = 115200\nserial.stopbits = 2\nserial.timeout = 3100\n");
    EXPECT_EQ(::cfgetospeed(&attributes), B115200);
    EXPECT_EQ(attributes.c_cflag & CSTOPB, tcflag_t{CSTOPB});
    EXPECT_EQ(attributes.c_cc[VTIME], 31);
    attributes = attributesWith("serial.stopbits = 1\nserial.timeout = 99\n");
    EXPECT_EQ(::cfgetospeed(&attributes), B9600);
    EXPECT_EQ(attributes.c_cflag & CSTOPB, 0U);
    EXPECT_EQ(attributes.c_cc[VTIME], 0);
}

TEST_F(SerialLine, KeepsWhatTheModelSaysWhereTheConfigurationIsOutOfRange) {
    startWith(motorModel());
    const auto place = daemon->place();
    const auto attributes = attributesWith(
        "serial.baudrate = 4000001\nserial.stopbits = 0\nserial.timeout = 10001\n"
        "serial.delay = -1\nserial.parity = Even\nserial.bytesize = 9\n");
    EXPECT_EQ(::cfgetospeed(&attributes), B9600);
    EXPECT_EQ(attributes.c_cflag & CSTOPB, 0U);
    EXPECT_EQ(attributes.c_cc[VTIME], 0);
    daemon->waitForText("serial init " + line.device() + " @ 9600 baud, delay = 0ms", place);
}

TEST_F(SerialLine, HasNoSpeedForARateThatNoLineHas) {
    startWith(motorModel());
    const auto place = daemon->place();
    const auto attributes = attributesWith("serial.baudrate = 14400\n");
    EXPECT_EQ(::cfgetospeed(&attributes), B0);
    daemon->waitForText(" @ 14400 baud, delay = 0ms", place);
}

TEST_F(SerialLine, TakesTheSpeedsFromTheSlowestOn) {
    startWith(motorModel());
    for (const auto& [rate, speed] :
         {std::pair{50, B50}, {1200, B1200}, {57600, B57600}, {460800, B460800}}) {
        const auto attributes = attributesWith("serial.baudrate = " + std::to_string(rate) + "\n");
        EXPECT_EQ(::cfgetospeed(&attributes), static_cast<speed_t>(speed)) << rate;
    }
}

TEST_F(SerialLine, TakesTheFastestSpeed) {
    startWith(motorModel());
    const auto attributes = attributesWith("serial.baudrate = 4000000\n");
    EXPECT_EQ(::cfgetospeed(&attributes), static_cast<speed_t>(B4000000));
}

TEST_F(SerialLine, WaitsForTheDelayAfterEveryCommand) {
    startWith(motorModel(), "serial.delay = 150\n");
    send("ON\nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_GE(installation.pace(), 0.150);
    send("SETDELAY 200\nON\nOFF");
    line.waitFor("ON\rOFF\rON\rOFF\r");
    EXPECT_GE(installation.pace(), 0.200);
}

TEST_F(SerialLine, WaitsForTheEndOfTheReply) {
    auto model = motorModel();
    model.line.timeout = 100;
    startWith(model);
    send("ON\nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_GE(installation.pace(), 0.050);  // the terminal measures a tenth of a second roughly
}

TEST_F(SerialLine, DoesNotWaitForADelayBelowZero) {
    startWith(motorModel());
    send("SETDELAY -2147483648\nON\nSETDELAY -1\nOFF\nSETDELAY -1500\nON\nOFF");
    line.waitFor("ON\rOFF\rON\rOFF\r");
}

TEST_F(SerialLine, KeepsTheDelayWhereSetDelayHasNoNumber) {
    startWith(motorModel());
    send("SETDELAY\nSETDELAY soon\nON\nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_THAT(daemon->lines(),
                Contains("[CMDQ] executing cmd: SETDELAY (rcvd from ctrlchan)").Times(2));
}

TEST_F(SerialLine, IsReadByTwoHundredBytesForACommand) {
    startWith(motorModel());
    line.send(std::string(450, 'r'));
    waitUntil([&] { return line.waiting() == 450; },
              [&] { return "450 bytes, there are " + std::to_string(line.waiting()); });
    send("ON");
    waitUntilExecuted();
    EXPECT_EQ(line.waiting(), 250);
    send("OFF\nRAW 41");
    waitUntilExecuted();
    EXPECT_EQ(line.waiting(), 0);
    EXPECT_EQ(line.written(), "ON\rOFF\rA");
    EXPECT_THAT(daemon->lines(), Not(Contains(testing::HasSubstr("rrr"))));
}

TEST_F(SerialLine, IsReadEvenForAnEmptyCommand) {
    startWith(motorModel(), "cmd.CMD_INFO = &CMD_FREEZE\n");
    line.send(std::string(50, 'r'));
    waitUntil([&] { return line.waiting() == 50; }, [] { return std::string("50 bytes"); });
    send("INFO");
    waitUntilExecuted();
    EXPECT_EQ(line.waiting(), 0);
}

}  // namespace
}  // namespace orx::test
