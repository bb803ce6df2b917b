// How the serial connector reads the projector's reply.
#include <cerrno>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/serial/ConnectorBench.h"

namespace orx::test {
namespace {

using testing::ElementsAre;

class SerialConnectorRead : public ConnectorBench {
  protected:
    SerialConnectorRead() { connectSilently(); }

    /// Reads one reply; `printed` is what that shows.
    std::string read() {
        std::string reply;
        printed = outputOf([&] { reply = connector->read(); });
        return reply;
    }

    std::string printed;
};

TEST_F(SerialConnectorRead, DrainsBeforeItReads) {
    EXPECT_EQ(read(), "");
    EXPECT_THAT(line.events, ElementsAre("drain", "read"));
    EXPECT_EQ(printed, "");
}

TEST_F(SerialConnectorRead, JoinsThePiecesUntilTheLineIsSilent) {
    line.replies = {"POW", "ER", "=1"};
    EXPECT_EQ(read(), "POWER=1");
    EXPECT_THAT(line.events, ElementsAre("drain", "read", "read", "read", "read"));
}

TEST_F(SerialConnectorRead, GivesCarriageReturnsAsLineFeeds) {
    line.replies = {std::string("\rA\r\nB\0\xFF\r", 8)};
    EXPECT_EQ(read(), std::string("\nA\n\nB\0\xFF\n", 8));
}

TEST_F(SerialConnectorRead, CutsAReplyAt200BytesAndLeavesTheRestInTheLine) {
    line.replies = {std::string(200, 'a') + std::string(200, 'b') + "c"};
    EXPECT_EQ(read(), std::string(200, 'a'));
    EXPECT_THAT(line.events, ElementsAre("drain", "read"));  // a full buffer asks for no more
    EXPECT_EQ(read(), std::string(200, 'b'));
    EXPECT_EQ(read(), "c");
    EXPECT_EQ(printed, "");
}

TEST_F(SerialConnectorRead, AsksOnlyForTheSpaceThatIsLeft) {
    line.replies = {std::string(150, 'a'), std::string(49, 'b'), "cd"};
    EXPECT_EQ(read(), std::string(150, 'a') + std::string(49, 'b') + "c");
    EXPECT_THAT(line.replies, ElementsAre("d"));
    EXPECT_EQ(read(), "d");
}

TEST_F(SerialConnectorRead, LeavesTheRestOfALongReplyToTheNextCommand) {
    line.replies = {std::string(250, 'a')};
    EXPECT_EQ(send("ON"), "");
    EXPECT_THAT(line.replies, ElementsAre(std::string(50, 'a')));
    EXPECT_EQ(send("OFF"), "");
    EXPECT_THAT(line.replies, ElementsAre());
}

TEST_F(SerialConnectorRead, ShowsAReadError) {
    line.readFails = true;
    line.error = EIO;
    EXPECT_EQ(read(), "");
    EXPECT_EQ(printed, "[RS232] read error: Input/output error\n");
    line.error = EBADF;
    EXPECT_EQ(send("ON"), "[RS232] read error: Bad file descriptor\n");
    EXPECT_THAT(log.messages(), ElementsAre("sending ON [4f 4e]"));
}

TEST_F(SerialConnectorRead, KeepsWhatCameAheadOfAnError) {
    line.replies = {"AB\r"};
    line.readFails = true;
    line.error = EIO;
    EXPECT_EQ(read(), "AB\n");
    EXPECT_EQ(printed, "[RS232] read error: Input/output error\n");
    EXPECT_THAT(line.events, ElementsAre("drain", "read", "read"));
}

TEST_F(SerialConnectorRead, GoesOnAfterAnError) {
    line.readFails = true;
    line.error = EIO;
    read();
    line.readFails = false;
    line.replies = {"back"};
    EXPECT_EQ(read(), "back");
    EXPECT_EQ(printed, "");
}

}  // namespace
}  // namespace orx::test
