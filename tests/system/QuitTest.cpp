// The orderly end: what is said, in which order, and with which exit status.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::UnorderedElementsAre;

class Quit : public Story {};

TEST_F(Quit, ShowsTheTeardown) {
    startWith(motorModel());
    daemon->waitForText("start, waiting for commands");
    daemon->waitForLine("[PROJCTRL] start");
    const auto socket = daemon->socketNumbers().at(0);
    const auto place = daemon->place();
    EXPECT_EQ(quit(), "exit status 0");
    const std::string received = "src=" + ownAddress() + " cmd=QUIT";
    const std::string executing = "[CMDQ] executing cmd: QUIT (rcvd from ctrlchan)";
    const std::string queueStop = "[CMDQ] stop.";
    const std::string closing = "[LISTENER] closing socket #" + socket;
    const std::string channelStop = "[CTRLCHAN|#" + socket + "] stop.";
    EXPECT_THAT(daemon->lines(place), UnorderedElementsAre(received, executing, queueStop, closing,
                                                           channelStop, "[PROJCTRL] stop."));
    auto next = daemon->waitForLine(received, place);
    EXPECT_LT(next, daemon->waitForLine(channelStop, place));
    next = daemon->waitForLine(executing, next);
    EXPECT_LT(next, daemon->waitForLine("[PROJCTRL] stop.", place));
    next = daemon->waitForLine(queueStop, next);
    daemon->waitForLine(closing, next);
}

TEST_F(Quit, IsTheLastThingInTheLog) {
    startWith(motorModel());
    EXPECT_EQ(quit(), "exit status 0");
    const auto log = installation.log();
    ASSERT_EQ(log.size(), 6U);
    EXPECT_EQ(log.at(0), "-- ORX logging end --");
    EXPECT_EQ(log.at(1), "src=" + ownAddress() + " cmd=QUIT");
    EXPECT_EQ(log.at(5), "-- ORX logging start --");
}

TEST_F(Quit, PutsNothingOnTheLine) {
    auto model = motorModel();
    model.commands.emplace_back("QUIT", "bye\r");
    model.commands.emplace_back("RESTART", "again\r");
    startWith(model);
    restart();
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "");
}

TEST_F(Quit, ComesAfterTheCommandsAheadOfIt) {
    startWith(motorModel());
    send("ON\nPICMUTE\nOFF\nQUIT");
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    EXPECT_EQ(line.written(), "ON\rPMUTE\rOFF\r");
}

TEST_F(Quit, FreesTheAddress) {
    startWith(motorModel());
    EXPECT_FALSE(Client::isFree(controlPort));
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_TRUE(Client::isFree(controlPort));
}

TEST_F(Quit, AtOnceAfterTheStartIsHeard) {
    install(motorModel());
    for (int time = 0; time < 20; ++time) {
        daemon = std::make_unique<Daemon>(installation.prefix());
        daemon->waitForText("[LISTENER] created socket #");
        EXPECT_EQ(quit(), "exit status 0");
        EXPECT_THAT(daemon->lines(), Contains("[PROJCTRL] stop."));
        EXPECT_EQ(daemon->lines().front().substr(0, 3), "orx");
        EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
    }
}

}  // namespace
}  // namespace orx::test
