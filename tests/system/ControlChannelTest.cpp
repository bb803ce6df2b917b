// The control channel as clients see it: lines, replies, and what is no command.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::string idle = "IDLE; zoom: undefined focus: undefined;\n";

class ControlChannel : public Story {
  protected:
    void SetUp() override {
        startWith(motorModel());
        daemon->waitForText("start, waiting for commands");
        daemon->waitForLine("[PROJCTRL] start");
        place = daemon->place();
    }
    /// The console lines since the start, once the listener has handled all that was sent.
    [[nodiscard]] std::vector<std::string> newLines() const {
        static_cast<void>(status());
        return daemon->lines(place);
    }
    [[nodiscard]] std::string unknown(const std::string& text) const {
        return "src=" + ownAddress() + " unknown command (\"" + text + "\")";
    }
    [[nodiscard]] std::string unknownOnConsole(const std::string& text) const {
        return "[CTRLCHAN|#" + daemon->socketNumbers().at(0) + "] " + unknown(text);
    }

    std::size_t place = 0;
};

TEST_F(ControlChannel, ShowsAnUnknownLineWithTheSocketAndLogsItWithout) {
    send("picmute now");
    EXPECT_THAT(newLines(), ElementsAre(unknownOnConsole("picmute now")));
    EXPECT_EQ(installation.log().at(0), unknown("picmute now"));
    EXPECT_EQ(line.written(), "");
}

TEST_F(ControlChannel, ShowsAnUnknownLineAsItWasReceived) {
    const std::string odd("\tno \x01pe\0 \xff!\r", 12);
    send(odd + "\n");
    EXPECT_THAT(newLines(), ElementsAre(unknownOnConsole(odd)));
    EXPECT_EQ(installation.log().at(0), unknown(odd));
}

TEST_F(ControlChannel, TakesASymbolicNameForNoCommand) {
    send("CMD_POWER_ON");
    EXPECT_THAT(newLines(), ElementsAre(unknownOnConsole("CMD_POWER_ON")));
}

TEST_F(ControlChannel, TellsOfAnEmptyLineBetweenTwoOthers) {
    send("ON\n\n \nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_THAT(newLines(), testing::IsSupersetOf({unknownOnConsole(""), unknownOnConsole(" ")}));
    EXPECT_EQ(line.written(), "ON\rOFF\r");
}

TEST_F(ControlChannel, PassesOverAnEmptyDatagram) {
    send("");
    send("");
    EXPECT_THAT(newLines(), IsEmpty());
    send("ON");
    line.waitFor("ON\r");
}

TEST_F(ControlChannel, AnswersStatusOnceForEveryLineThatAsks) {
    send("STATUS\n");
    EXPECT_EQ(client.receive(), idle);
    send("STATUS\nSTATUS");
    EXPECT_EQ(client.receive(), idle);
    EXPECT_EQ(client.receive(), idle);
    send("ON\nSTATUS");
    EXPECT_EQ(client.receive(), idle);
    EXPECT_FALSE(client.hasReply());
}

TEST_F(ControlChannel, NeitherShowsNorLogsStatusAndClearFlags) {
    const auto before = installation.logLines();
    send("STATUS\nCLEARFLAGS\nSTATUS now\nCLEARFLAGS all");
    EXPECT_EQ(client.receive(), idle);
    EXPECT_EQ(client.receive(), idle);
    EXPECT_THAT(newLines(), IsEmpty());
    EXPECT_EQ(installation.logLines(), before);
}

TEST_F(ControlChannel, AnswersTheClientThatAsks) {
    const Client other;
    other.send("STATUS");
    EXPECT_EQ(other.receive(), idle);
    EXPECT_FALSE(client.hasReply());
}

TEST_F(ControlChannel, GoesOnWithTheNextLineAfterAnUnknownOne) {
    send("ON\nnonsense\nOFF");
    line.waitFor("ON\rOFF\r");
    EXPECT_THAT(newLines(), Contains(unknownOnConsole("nonsense")));
}

TEST_F(ControlChannel, CutsADatagramBehindItsFirst2048Bytes) {
    const std::string command = "PICMUTE";
    send(std::string(2048 - command.size(), ' ') + command + "\nOFF\n" + std::string(947, 'x'));
    line.waitFor("PMUTE\r");
    EXPECT_THAT(newLines(), ElementsAre("src=" + ownAddress() + " cmd=PICMUTE",
                                        "[CMDQ] executing cmd: PICMUTE (rcvd from ctrlchan)"));
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "PMUTE\r");
}

TEST_F(ControlChannel, ShowsTheFirst2048BytesOfALongUnknownLine) {
    send(std::string(3000, 'x'));
    EXPECT_THAT(newLines(), ElementsAre(unknownOnConsole(std::string(2048, 'x'))));
}

TEST_F(ControlChannel, CutsAWordWhereTheDatagramIsCut) {
    send(std::string(2047, ' ') + "ON");
    EXPECT_THAT(newLines(), ElementsAre(unknownOnConsole(std::string(2047, ' ') + "O")));
    EXPECT_EQ(line.written(), "");
}

TEST_F(ControlChannel, DropsWhatFollowsQuitInItsDatagram) {
    send("ON\nQUIT\nOFF\nnonsense");
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    EXPECT_EQ(line.written(), "ON\r");
    EXPECT_THAT(daemon->lines(), Not(Contains(unknownOnConsole("nonsense"))));
    EXPECT_THAT(installation.log(), Contains("src=" + ownAddress() + " cmd=QUIT"));
    EXPECT_THAT(installation.log(), Not(Contains("src=" + ownAddress() + " cmd=OFF")));
}

TEST_F(ControlChannel, DropsWhatFollowsRestartInItsDatagram) {
    send("RESTART\nOFF\nSTATUS");
    daemon->waitForLine("[CMDQ] start", place);
    EXPECT_FALSE(client.hasReply());
    EXPECT_EQ(status(), idle);
    EXPECT_EQ(line.written(), "");
    EXPECT_THAT(daemon->lines(), Not(Contains("src=" + ownAddress() + " cmd=OFF")));
}

}  // namespace
}  // namespace orx::test
