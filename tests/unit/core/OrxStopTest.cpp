// How the daemon serves until QUIT, and how it goes down.
#include <algorithm>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ProcessCounts.h"
#include "support/WaitUntil.h"
#include "unit/core/OrxBench.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

const std::string endMessage = "-- ORX logging end --";

class OrxStop : public OrxBench {
  protected:
    [[nodiscard]] long loggedEnds() const {
        const auto messages = logged();
        return std::ranges::count(messages, endMessage);
    }
};

TEST_F(OrxStop, EndsItsRunOnQuit) {
    build();
    const auto output = serve({{0, "ON\nQUIT\nON"}});
    EXPECT_THAT(output, HasSubstr("[CMDQ] executing cmd: ON (rcvd from ctrlchan)\n"));
    EXPECT_THAT(output, HasSubstr("[CMDQ] executing cmd: QUIT (rcvd from ctrlchan)\n"));
    EXPECT_THAT(output, HasSubstr("[CMDQ] stop.\n"));
    EXPECT_THAT(output, Not(HasSubstr("dumb mode")));
    EXPECT_EQ(sent(), "<on>");
}

TEST_F(OrxStop, LeavesTheTeardownToShutdown) {
    build();
    serve({{0, "QUIT"}});
    EXPECT_EQ(loggedEnds(), 0);
    outputOf([this] { daemon->shutdown(); });
    EXPECT_EQ(loggedEnds(), 1);
    EXPECT_EQ(logged().front(), endMessage);
}

TEST_F(OrxStop, ServesInDumbMode) {
    settings["projector"] = "OTHER";
    build();
    const auto output = serve({{0, "ON\nQUIT"}});
    EXPECT_THAT(output, HasSubstr("[CMDQ] start\n"));
    // A line of the channel's thread may come in between.
    EXPECT_LT(output.find("[CMDQ] running in dumb mode (no valid projector)\n"),
              output.find("[CMDQ] start\n"));
    EXPECT_THAT(output, HasSubstr("[CMDQ] executing cmd: ON (rcvd from ctrlchan)\n"));
    EXPECT_THAT(output, Not(HasSubstr("[PROJCTRL]")));
    EXPECT_EQ(sent(), "");
    release();
    EXPECT_EQ(logged().front(), endMessage);
}

TEST_F(OrxStop, AppliesTheAliasesOfTheConfiguration) {
    settings["cmd.CMD_ZOOM_PLUS"] = "&CMD_ZOOM_PLUS2";
    build();
    serve({{0, "Z+\nZ++\nON\nQUIT"}});
    EXPECT_EQ(sent(), "<2><2><on>");
}

TEST_F(OrxStop, ServesOnAllItsChannels) {
    settings["controlchannel"] = channel() + "," + channel(1) + "," + channel(2);
    for (int number = 0; number < 3; ++number) {
        SCOPED_TRACE(number);
        build();
        EXPECT_THAT(serve({{number, "QUIT"}}), HasSubstr("[CMDQ] stop.\n"));
        release();
    }
}

TEST_F(OrxStop, TearsDownOnce) {
    build();
    serve({{0, "QUIT"}});
    outputOf([this] { daemon->shutdown(); });
    EXPECT_EQ(outputOf([this] { daemon->shutdown(); }), "");
    EXPECT_EQ(release(), "");
    EXPECT_EQ(loggedEnds(), 1);
}

TEST_F(OrxStop, TearsDownWhenItGoes) {
    build();
    serve({{0, "QUIT"}});
    EXPECT_THAT(release(), HasSubstr("[LISTENER] closing socket #"));
    EXPECT_EQ(loggedEnds(), 1);
}

TEST_F(OrxStop, TearsDownWhatNeverRan) {
    for (const std::string projector : {"MODEL", "OTHER"}) {
        SCOPED_TRACE(projector);
        settings["projector"] = projector;
        build();
        EXPECT_THAT(outputOf([this] { daemon->shutdown(); }),
                    MatchesRegex("\\[LISTENER\\] closing socket #[0-9]+\n"));
        EXPECT_EQ(loggedEnds(), 1);
        release();
    }
}

TEST_F(OrxStop, ClosesItsChannelsInTheirOrder) {
    settings["controlchannel"] = channel() + "," + channel(1);
    const auto created = build();
    const auto closed = release();
    const auto socketNumber = [](const std::string& text, const std::string& start) {
        const auto number = text.find(start) + start.size();
        return text.substr(number, text.find_first_not_of("0123456789", number) - number);
    };
    const auto first = socketNumber(created, "created socket #");
    const auto second = socketNumber(created.substr(created.rfind("created")), "created socket #");
    EXPECT_EQ(closed, "[LISTENER] closing socket #" + first + "\n[LISTENER] closing socket #" +
                          second + "\n");
}

TEST_F(OrxStop, EndsAChannelThatWaitsForADatagram) {
    settings["controlchannel"] = channel() + "," + channel(1);
    build();
    const auto whole = serveToTheEnd({{0, "QUIT"}});
    const auto count = [&whole](const std::string& text) {
        int found = 0;
        for (auto place = whole.find(text); place != std::string::npos;
             place = whole.find(text, place + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count("] start, waiting for commands\n"), 2);
    EXPECT_EQ(count("] stop.\n"), 4) << "two channels, the queue and the projector control";
}

TEST_F(OrxStop, WaitsForTheProjectorControl) {
    build();
    const auto output = serveToTheEnd({{0, "QUIT"}});
    EXPECT_THAT(output, HasSubstr("[PROJCTRL] start\n"));
    EXPECT_THAT(output, HasSubstr("[PROJCTRL] stop.\n"));
}

TEST_F(OrxStop, ResetsTheStatus) {
    settings["serial.debug"] = "2";
    build();
    EXPECT_THAT(Status::statusReply(), HasSubstr("zoom"));
    release();
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DEBUG\n") << "only the text of the flags is left";
    Status::setHello();
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO \n");
}

TEST_F(OrxStop, LeavesNoDescriptorAndNoThreadBehind) {
    const auto descriptors = openDescriptors();
    settings["controlchannel"] = channel() + "," + channel(1);
    build();
    serve({{0, "QUIT"}});
    release();
    const auto threads = runningThreads();
    EXPECT_EQ(openDescriptors(), descriptors);
    for (int round = 0; round < 5; ++round) {
        build();
        serve({{1, "ON\nQUIT"}});
        release();
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(waitUntil([threads] { return runningThreads() <= threads; }));
}

TEST_F(OrxStop, KeepsTheConfigurationThatItWasGiven) {
    const auto config = configuration();
    outputOf([this, &config] { daemon = std::make_unique<Orx>(config); });
    outputOf([this] { daemon->shutdown(); });
    EXPECT_EQ(config.use_count(), 2);
    release();
    EXPECT_EQ(config.use_count(), 1);
}

}  // namespace
}  // namespace orx::test
