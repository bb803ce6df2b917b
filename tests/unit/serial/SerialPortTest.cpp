// The serial port of the system, on a pseudo-terminal.
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "serial/SerialPort.h"
#include "support/ProcessCounts.h"
#include "unit/serial/PseudoTerminal.h"

namespace orx::test {
namespace {

class TerminalPort : public testing::Test {
  protected:
    int open() {
        const int descriptor = port->open(line.device());
        port->setAttributes(rawAttributes());
        return descriptor;
    }

    std::string read(std::size_t size = 64) {
        std::string buffer(size, '?');
        const auto count = port->read(buffer);
        EXPECT_GE(count, 0);
        buffer.resize(static_cast<std::size_t>(count));
        return buffer;
    }

    PseudoTerminal line;
    std::unique_ptr<SerialPort> port = makeTerminalPort();
};

TEST_F(TerminalPort, OpensTheDeviceForReadingAndWritingAndNothingElse) {
    const int descriptor = open();
    ASSERT_GE(descriptor, 0);
    std::array<char, 64> name{};
    ASSERT_EQ(::ttyname_r(descriptor, name.data(), name.size()), 0);
    EXPECT_EQ(std::string(name.data()), line.device());
    EXPECT_EQ(::fcntl(descriptor, F_GETFL) & (O_ACCMODE | O_NONBLOCK | O_APPEND | O_SYNC), O_RDWR);
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), 0);
}

TEST_F(TerminalPort, TellsWhyADeviceCannotBeOpened) {
    errno = 0;
    EXPECT_EQ(port->open("/dev/null/no-such-device"), -1);
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_EQ(port->open(""), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(TerminalPort, ClosesTheDeviceWhenItGoes) {
    const auto before = openDescriptors();
    open();
    EXPECT_EQ(openDescriptors(), before + 1);
    port.reset();
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(TerminalPort, ClosesTheDeviceWhenItOpensAnother) {
    open();
    const auto before = openDescriptors();
    open();
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(TerminalPort, AppliesTheAttributesAtOnce) {
    port->open(line.device());
    ASSERT_NE(line.attributes().c_lflag & ICANON, 0U);
    auto wanted = rawAttributes();
    wanted.c_cflag |= CSTOPB;
    wanted.c_cc[VTIME] = 7;
    ::cfsetispeed(&wanted, B19200);
    ::cfsetospeed(&wanted, B19200);
    port->setAttributes(wanted);
    const auto set = line.attributes();
    EXPECT_EQ(set.c_iflag, 0U);
    EXPECT_EQ(set.c_oflag, 0U);
    EXPECT_EQ(set.c_lflag, 0U);
    EXPECT_EQ(set.c_cflag & (CREAD | CLOCAL | CSTOPB | CSIZE), CREAD | CLOCAL | CSTOPB | CS8);
    EXPECT_EQ(::cfgetispeed(&set), static_cast<speed_t>(B19200));
    EXPECT_EQ(::cfgetospeed(&set), static_cast<speed_t>(B19200));
    EXPECT_EQ(set.c_cc[VTIME], 7);
    EXPECT_EQ(set.c_cc[VMIN], 0);
}

TEST_F(TerminalPort, LosesNothingThatHasArrivedWhenTheAttributesChange) {
    open();
    line.answer("early");
    port->setAttributes(rawAttributes());
    EXPECT_EQ(read(), "early");
}

TEST_F(TerminalPort, WritesEveryByteAsItIs) {
    open();
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_EQ(port->write(bytes), 256);
    EXPECT_EQ(line.written(256), bytes);
    EXPECT_EQ(port->write(""), 0);
    EXPECT_FALSE(line.hasMore());
}

TEST_F(TerminalPort, ReadsEveryByteAsItIs) {
    open();
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    line.answer(bytes);
    EXPECT_EQ(read(256), bytes);
}

TEST_F(TerminalPort, EchoesNothing) {
    open();
    line.answer("quiet\r\n");
    EXPECT_EQ(read(), "quiet\r\n");
    EXPECT_FALSE(line.hasMore());
}

TEST_F(TerminalPort, LeavesInTheLineWhatTheBufferCannotTake) {
    open();
    line.answer("0123456789");
    EXPECT_EQ(read(4), "0123");
    EXPECT_EQ(read(), "456789");
}

TEST_F(TerminalPort, ReadsNothingFromASilentLine) {
    open();
    EXPECT_EQ(read(), "");
}

TEST_F(TerminalPort, DrainsTheDevice) {
    open();
    errno = 0;
    port->drain();
    EXPECT_EQ(errno, 0);
    line.hangUp();
    port->drain();
    EXPECT_EQ(errno, EIO);  // the call has reached the line, which is no more
}

TEST_F(TerminalPort, FailsToWriteToALineThatIsGone) {
    open();
    line.hangUp();
    errno = 0;
    EXPECT_EQ(port->write("x"), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(read(), "");
}

TEST_F(TerminalPort, FailsWithoutADevice) {
    std::array<char, 4> buffer{};
    errno = 0;
    EXPECT_EQ(port->write("x"), -1);
    EXPECT_EQ(errno, EBADF);
    errno = 0;
    EXPECT_EQ(port->read(buffer), -1);
    EXPECT_EQ(errno, EBADF);
    errno = 0;
    port->drain();
    EXPECT_EQ(errno, EBADF);
}

}  // namespace
}  // namespace orx::test
