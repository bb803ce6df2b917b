// The way of a request: from the datagram over console and log to the bytes on the line.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

class Request : public Story {
  protected:
    /// The console lines of a command that came from the client.
    static std::vector<std::string> consoleOf(const std::string& shown) {
        return {"src=" + ownAddress() + " cmd=" + shown,
                "[CMDQ] executing cmd: " + shown + " (rcvd from ctrlchan)"};
    }
    /// Waits until the line of the daemon's queue for `shown` stands; gives all lines since
    /// `place`.
    [[nodiscard]] std::vector<std::string> linesUntilExecuted(const std::string& shown,
                                                              std::size_t place) const {
        daemon->waitForLine(consoleOf(shown).back(), place);
        return daemon->lines(place);
    }
    /// Starts the daemon and waits until the last of its threads has said so.
    void startQuietly(const Model& model, const std::string& more = "") {
        startWith(model, more);
        daemon->waitForText("start, waiting for commands");
        daemon->waitForLine("[PROJCTRL] start");
    }
};

TEST_F(Request, GoesFromTheDatagramToTheLine) {
    startQuietly(motorModel());
    const auto place = daemon->place();
    send("PICMUTE");
    line.waitFor("PMUTE\r");
    EXPECT_EQ(daemon->lines(place), consoleOf("PICMUTE"));
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "PMUTE\r");
}

TEST_F(Request, IsLoggedWhereItComesFromAndWhatIsSent) {
    startQuietly(motorModel());
    send("PICMUTE");
    line.waitFor("PMUTE\r");
    waitForLog(R"(sending PMUTE\x0d [50 4d 55 54 45 0d])");
    EXPECT_EQ(installation.log().at(1), "src=" + ownAddress() + " cmd=PICMUTE");
    EXPECT_EQ(installation.log().at(2), "listening on " + controlAddress());
}

TEST_F(Request, IsCarriedOutInTheOrderOfArrival) {
    startQuietly(motorModel());
    send("ON\nPICMUTE");
    send("PICUNMUTE\nOFF\n");
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "ON\rPMUTE\rPUNMUTE\rOFF\r");
}

TEST_F(Request, IsReadWordByWord) {
    startQuietly(motorModel());
    const auto place = daemon->place();
    send(" \t ON \v please\r\n");
    EXPECT_EQ(linesUntilExecuted("ON", place), consoleOf("ON"));
    line.waitFor("ON\r");
}

TEST_F(Request, IsShownWithTheArgumentsThatWereUnderstood) {
    startQuietly(motorModel());
    auto place = daemon->place();
    send("INPUT 12abc x 0x10 99999999999 +3");
    EXPECT_EQ(linesUntilExecuted("INPUT (12abc,0x10,+3)", place),
              consoleOf("INPUT (12abc,0x10,+3)"));
    place = daemon->place();
    send("KEYSTONEVERT 1.5e2 -inf one 1e999");
    EXPECT_EQ(linesUntilExecuted("KEYSTONEVERT (1.5e2,-inf)", place),
              consoleOf("KEYSTONEVERT (1.5e2,-inf)"));
    place = daemon->place();
    send("INPUT abc");
    EXPECT_EQ(linesUntilExecuted("INPUT", place), consoleOf("INPUT"));
}

TEST_F(Request, WhichTheModelLacksPutsNothingOnTheLine) {
    startQuietly(motorModel());
    const auto place = daemon->place();
    send("FREEZE");
    EXPECT_EQ(linesUntilExecuted("FREEZE", place), consoleOf("FREEZE"));
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "");
    EXPECT_EQ(installation.log().at(1), "src=" + ownAddress() + " cmd=FREEZE");
}

TEST_F(Request, IsNeverAnswered) {
    startQuietly(motorModel());
    send("ON\nFREEZE\nnonsense\nCLEARFLAGS\nSTATUS");
    EXPECT_EQ(client.receive(), "IDLE; zoom: undefined focus: undefined;\n");
    waitUntilExecuted();
    EXPECT_FALSE(client.hasReply());
}

TEST_F(Request, WaitsForTheDelayOfTheOneBefore) {
    auto model = motorModel();
    model.line.delay = 150;
    startQuietly(model);
    send("ON\nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_GE(installation.pace(), 0.150);
}

}  // namespace
}  // namespace orx::test
