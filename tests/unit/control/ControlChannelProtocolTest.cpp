// What the control channel makes of the datagrams it receives.
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/control/ChannelBench.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ControlChannelProtocol : public ChannelBench {
  protected:
    /// The messages of the log but for the one that the start of the listener leaves.
    [[nodiscard]] std::vector<std::string> logged() const {
        auto messages = log.messages();
        EXPECT_EQ(messages.front(), "listening on 127.0.0.1:0");
        messages.erase(messages.begin());
        return messages;
    }
};

TEST_F(ControlChannelProtocol, AnswersAStatusRequest) {
    EXPECT_EQ(serve({"STATUS"}), "");
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n"));
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ControlChannelProtocol, AnswersOnceThoughALineFeedEndsTheRequest) {
    EXPECT_EQ(serve({"STATUS\n"}), "");
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n"));
}

TEST_F(ControlChannelProtocol, AnswersEachStatusLineWithADatagram) {
    EXPECT_EQ(serve({"STATUS\nSTATUS"}), "");
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n", "IDLE;;HELO \n"));
}

TEST_F(ControlChannelProtocol, TakesBlanksAndWordsBesideStatus) {
    EXPECT_EQ(serve({" \tSTATUS please\r\n"}), "");
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n"));
}

TEST_F(ControlChannelProtocol, ClearsTheFlagsForTheNextLineAlready) {
    Status::setLensConfigLoaded();
    EXPECT_EQ(serve({"STATUS\nCLEARFLAGS\nSTATUS"}), "");
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO LCU \n", "IDLE;;\n"));
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ControlChannelProtocol, LogsAndQueuesEveryOtherCommandWithoutAnAnswer) {
    EXPECT_EQ(serve({"ZOOM 1200"}), "src=127.0.0.5 cmd=ZOOM (1200)\n");
    EXPECT_THAT(replies(), IsEmpty());
    EXPECT_THAT(logged(), ElementsAre("src=127.0.0.5 cmd=ZOOM (1200)"));
    EXPECT_THAT(queued(), ElementsAre("ZOOM (1200)"));
}

TEST_F(ControlChannelProtocol, ShowsACommandAsItWasUnderstood) {
    EXPECT_EQ(serve({"  ZOOM 1 x 2  \r\nON 5\nRAW 0a 0\nRAW 0a 1B\nKEYSTONEVERT -2.50"}),
              "src=127.0.0.5 cmd=ZOOM (1,2)\n"
              "src=127.0.0.5 cmd=ON\n"
              "src=127.0.0.5 cmd=RAW\n"
              "src=127.0.0.5 cmd=RAW (0a1B)\n"
              "src=127.0.0.5 cmd=KEYSTONEVERT (-2.50)\n");
    EXPECT_THAT(queued(),
                ElementsAre("ZOOM (1,2)", "ON", "RAW", "RAW (0a1B)", "KEYSTONEVERT (-2.50)"));
}

TEST_F(ControlChannelProtocol, HandlesTheLinesOfADatagramInOrder) {
    EXPECT_EQ(serve({"ZOOM 7\nFOCUS 8\nSTATUS\nfoo\nON"}),
              "src=127.0.0.5 cmd=ZOOM (7)\n"
              "src=127.0.0.5 cmd=FOCUS (8)\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"foo\")\n"
              "src=127.0.0.5 cmd=ON\n");
    EXPECT_THAT(logged(),
                ElementsAre("src=127.0.0.5 cmd=ZOOM (7)", "src=127.0.0.5 cmd=FOCUS (8)",
                            "src=127.0.0.5 unknown command (\"foo\")", "src=127.0.0.5 cmd=ON"));
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n"));
    EXPECT_THAT(queued(), ElementsAre("ZOOM (7)", "FOCUS (8)", "ON"));
}

TEST_F(ControlChannelProtocol, HandlesDatagramsInOrder) {
    serve({"ON", "ZOOM 1\n", "OFF"});
    EXPECT_THAT(queued(), ElementsAre("ON", "ZOOM (1)", "OFF"));
}

TEST_F(ControlChannelProtocol, LogsAnUnknownCommandAndSendsNothing) {
    EXPECT_EQ(serve({"zoom 5"}), "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"zoom 5\")\n");
    EXPECT_THAT(logged(), ElementsAre("src=127.0.0.5 unknown command (\"zoom 5\")"));
    EXPECT_THAT(replies(), IsEmpty());
    EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ControlChannelProtocol, ComparesCommandsWithTheirCase) {
    EXPECT_EQ(serve({"status\nClearFlags\nquit\nCMD_STATUS"}),
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"status\")\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"ClearFlags\")\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"quit\")\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"CMD_STATUS\")\n");
    EXPECT_THAT(replies(), IsEmpty());
}

TEST_F(ControlChannelProtocol, ShowsAnUnknownLineAsItWasReceived) {
    const std::string line(" \"what\"\0\xFF\t?\r", 12);
    EXPECT_EQ(serve({line + "\n"}),
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"" + line + "\")\n");
    EXPECT_THAT(logged(), ElementsAre("src=127.0.0.5 unknown command (\"" + line + "\")"));
}

TEST_F(ControlChannelProtocol, TakesAnEmptyLineForAnUnknownCommand) {
    EXPECT_EQ(serve({"ON\n\nOFF\n\n"}),
              "src=127.0.0.5 cmd=ON\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"\")\n"
              "src=127.0.0.5 cmd=OFF\n"
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"\")\n");
    EXPECT_EQ(serve({"\n"}), "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"\")\n");
}

TEST_F(ControlChannelProtocol, PassesOverAnEmptyDatagram) {
    EXPECT_EQ(serve({"", "ON", ""}), "src=127.0.0.5 cmd=ON\n");
    EXPECT_THAT(queued(), ElementsAre("ON"));
}

TEST_F(ControlChannelProtocol, TakesTheSourceTextOfTheLogForNoCommand) {
    EXPECT_EQ(serve({"cmd=ON"}), "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"cmd=ON\")\n");
    EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ControlChannelProtocol, CutsADatagramTo2048Bytes) {
    const std::string status = "STATUS\n";
    const std::string kept(2048 - status.size(), 'a');
    const auto line = "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"" + kept + "\")\n";
    EXPECT_EQ(serve({status + kept}), line);
    EXPECT_EQ(serve({status + kept + "b"}), line);
    EXPECT_EQ(serve({status + kept + std::string(3000 - 2048, 'b')}), line);
    EXPECT_EQ(serve({status + kept.substr(1)}),
              "[CTRLCHAN|#N] src=127.0.0.5 unknown command (\"" + kept.substr(1) + "\")\n");
    EXPECT_THAT(replies(), testing::SizeIs(4));
}

TEST_F(ControlChannelProtocol, CutsTheCommandThatLiesAcrossTheEnd) {
    const std::string filling(2048 - std::string("\nON").size(), ' ');
    EXPECT_THAT(serve({filling + "\nON\nOFF"}), HasSubstr("\")\nsrc=127.0.0.5 cmd=ON\n"));
    EXPECT_THAT(queued(), ElementsAre("ON"));
}

TEST_F(ControlChannelProtocol, LeavesNothingOfALongDatagramInAShortOne) {
    EXPECT_EQ(serve({"ZOOM 123456\n", "ZOOM 7"}),
              "src=127.0.0.5 cmd=ZOOM (123456)\nsrc=127.0.0.5 cmd=ZOOM (7)\n");
}

TEST_F(ControlChannelProtocol, HandlesADatagramThatAnotherHasReceived) {
    class Watched final : public ControlChannelListener {
      public:
        using ControlChannelListener::ControlChannelListener;
        void reply(const sockaddr_in&, std::string_view text) const override {
            replies.emplace_back(text);
        }
        mutable std::vector<std::string> replies;
    };
    const auto sender = ipv4("192.0.2.7", 9);
    outputOf([&] {
        Watched channel("127.0.0.1:0", queue);
        channel.handleDatagram("STATUS\nON\nfoo\nCLEARFLAGS\nSTATUS", sender);
        EXPECT_THAT(channel.replies, ElementsAre("IDLE;;HELO \n", "IDLE;;\n"));
        channel.handleDatagram("RESTART\nOFF", sender);
        channel.handleDatagram("STATUS\nOFF", sender);
        EXPECT_THAT(channel.replies, testing::SizeIs(2));
    });
    EXPECT_THAT(logged(),
                ElementsAre("src=192.0.2.7 cmd=ON", "src=192.0.2.7 unknown command (\"foo\")",
                            "src=192.0.2.7 cmd=RESTART"));
    EXPECT_EQ(queue->receivedCount(), 2U);
}

}  // namespace
}  // namespace orx::test
