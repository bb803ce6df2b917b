// RESTART: the daemon rebuilds itself from what is installed now, within the same process.
#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

class Restart : public LensStory {
  protected:
    /// Sends RESTART to a daemon that is to end by it; gives how it ended.
    std::string restartAndWaitForEnd() {
        send("RESTART");
        return daemon->waitForEnd();
    }
};

TEST_F(Restart, ShowsTheTeardownAndTheNewStartInOrder) {
    startWith(motorModel());
    daemon->waitForText("start, waiting for commands");
    daemon->waitForLine("[PROJCTRL] start");
    const auto socket = daemon->socketNumbers().at(0);
    const auto before = daemon->place();
    restart();
    auto place = daemon->waitForLine("src=" + ownAddress() + " cmd=RESTART", before);
    place = daemon->waitForLine("[CMDQ] executing cmd: RESTART (rcvd from ctrlchan)", place);
    place = daemon->waitForLine("[CMDQ] stop.", place);
    place = daemon->waitForLine("ORX restarting...", place);
    place = daemon->waitForLine("[LISTENER] closing socket #" + socket, place);
    place = daemon->waitForText("[RS232] fd ", place);
    EXPECT_LT(daemon->waitForLine("[CTRLCHAN|#" + socket + "] stop.", before), place);
    EXPECT_LT(daemon->waitForLine("[PROJCTRL] stop.", before), place);
    place = daemon->waitForText("[LENSMEM] load lens config", place);
    place = daemon->waitForText("[LISTENER] created socket #", place);
    daemon->waitForLine("[CMDQ] start", place);
    daemon->waitForLine("[PROJCTRL] start", place);
    daemon->waitForText("start, waiting for commands", place);
}

TEST_F(Restart, DoesNotPrintTheBannerAgain) {
    startWith(motorModel());
    restart();
    EXPECT_THAT(daemon->lines(), Contains(StartsWith("orx v" ORX_VERSION " ")).Times(1));
}

TEST_F(Restart, BeginsANewLog) {
    startWith(motorModel());
    send("ON");
    waitUntilExecuted();
    restart();
    const auto log = installation.log();
    EXPECT_EQ(log.front(), "listening on " + controlAddress());
    EXPECT_EQ(log.back(), "-- ORX logging start --");
    EXPECT_EQ(log.size(), 4U);
}

TEST_F(Restart, LeavesTheEndOfTheOldLogWhereTheNewOneIsAnother) {
    startWith(motorModel());
    installation.writeConfiguration(
        configuration("MOTOR", "logfile = " + installation.file("new.log") + "\n"));
    restart();
    const auto log = installation.log();
    EXPECT_THAT(std::vector(log.begin(), log.begin() + 3),
                ElementsAre("-- ORX logging end --", "ORX restarting...",
                            "src=" + ownAddress() + " cmd=RESTART"));
    EXPECT_THAT(contentOf(installation.file("new.log")),
                testing::EndsWith(" -- ORX logging start --\n"));
}

TEST_F(Restart, SelectsTheProjectorThatIsConfiguredNow) {
    auto other = fixedModel();
    other.commands = {{"ON", "other on\r"}};
    installation.writeDefinitions(define({motorModel(), other}));
    installation.writeConfiguration(configuration("MOTOR"));
    start();
    installation.writeConfiguration(configuration("FIXED"));
    restart();
    send("ON");
    line.waitFor("other on\r");
}

TEST_F(Restart, ReadsTheDefinitionFileAgain) {
    startWith(motorModel());
    auto changed = motorModel();
    changed.commands = {{"ON", "changed on\r"}};
    installation.writeDefinitions(define({changed}));
    restart();
    send("ON");
    line.waitFor("changed on\r");
}

TEST_F(Restart, OpensTheLineThatIsConfiguredNow) {
    startWith(motorModel());
    Pty other;
    installation.writeConfiguration("projector = MOTOR\ncontrolchannel = " + controlAddress() +
                                    "\nserial.device = " + other.device() + "\n");
    restart();
    send("ON");
    other.waitFor("ON\r");
    EXPECT_EQ(line.written(), "");
}

TEST_F(Restart, BindsTheAddressThatIsConfiguredNow) {
    startWith(motorModel());
    installation.writeConfiguration(
        configuration("MOTOR", "controlchannel = " + controlAddress(5) + "\n"));
    restart();
    EXPECT_THAT(client.status(controlPort + 5), StartsWith("IDLE;"));
    EXPECT_TRUE(Client::isFree(controlPort));
    client.send("QUIT", controlPort + 5);
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

TEST_F(Restart, UndoesADelayThatWasSet) {
    startWith(motorModel());
    send("SETDELAY 3600000");  // a command with it would take an hour
    waitUntilExecuted();
    restart();
    send("ON\nOFF");
    line.waitFor("ON\rOFF\r");
}

TEST_F(Restart, UndoesResetStepsThatWereSet) {
    startLens(stepperModel(), "abszoom.resetsteps = 2\n");
    send("SETZORSTSTEPS 40");
    waitUntilExecuted();
    restart();
    send("ZOOMRESET");
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "Z<Z<");
}

TEST_F(Restart, TakesNewMotionParameters) {
    startLens(stepperModel(), "abszoom.resetsteps = 2\n");
    installation.writeConfiguration(
        configuration("STEPPER", "abszoom.resetsteps = 3\nabszoom.reducemax = 10\n"));
    restart();
    send("ZOOMRESET");
    waitForPositions("0/1990", "undefined");
    EXPECT_EQ(line.written(), "Z<Z<Z<");
}

TEST_F(Restart, ForgetsWhereTheLensStands) {
    startLens(motorModel());
    send("OVERRIDEZOPOS 30");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: 30/2000 focus: undefined");
    restart();
    EXPECT_EQ(axes(), "IDLE; zoom: undefined focus: undefined");
}

TEST_F(Restart, TakesTheDefaultsOnceTheConfigurationIsDeleted) {
    installation.write("other.ccd", define({motorModel()}).bytes());
    const auto given = installation.write(
        "given.cfg",
        configuration("MOTOR", "definitionfile = " + installation.file("other.ccd") + "\n"));
    start({.arguments = {given}});
    installation.remove("given.cfg");
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(), "ERROR: projector definition file " +
                                          installation.file("lib/orx.ccd") + " not found");
}

TEST_F(Restart, IntoAConfigurationThatDoesNotParseEndsTheDaemon) {
    startWith(motorModel());
    const auto socket = daemon->socketNumbers().at(0);
    installation.writeConfiguration(configuration("MOTOR", "nonsense\n"));
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(),
              "ERROR: [config] " + installation.file("etc/orx.cfg") + ", line 4: parse error");
    EXPECT_THAT(daemon->lines(), Contains("[CTRLCHAN|#" + socket + "] stop."));
    EXPECT_THAT(daemon->lines(), Contains("[PROJCTRL] stop."));
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_F(Restart, IntoABadDefinitionFileEndsTheDaemon) {
    startWith(motorModel());
    auto image = define({motorModel()});
    image.revision = 12;
    installation.writeDefinitions(image);
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(), "ERROR: projector definition file has wrong revision");
    EXPECT_THAT(installation.log(), ElementsAre("-- ORX logging start --"));
}

TEST_F(Restart, IntoALineThatDoesNotOpenEndsTheDaemon) {
    startWith(motorModel());
    installation.writeConfiguration(configuration("MOTOR", "serial.device = /nonexistent/tty\n"));
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(),
              "ERROR: [RS232] could not init serial device: No such file or directory");
}

TEST_F(Restart, IntoALensMemoryThatDoesNotParseEndsTheDaemon) {
    startWith(motorModel());
    installation.writeLensMemory("mem = x:1;2,\n");
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(), "ERROR: stoi");
}

TEST_F(Restart, IntoAnAddressThatFailsEndsTheDaemonAndClosesTheOthers) {
    startWith(motorModel());
    installation.writeConfiguration(configuration(
        "MOTOR", "controlchannel = " + controlAddress(1) + ", " + controlAddress(1) + "\n"));
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    const auto socket = daemon->socketNumbers().back();
    EXPECT_EQ(daemon->lines().back(),
              "ERROR: [LISTENER] socket bind failed: Address already in use");
    EXPECT_EQ(daemon->lines().at(daemon->lines().size() - 2),
              "[LISTENER] closing socket #" + socket);
}

TEST_F(Restart, FromDumbModeIntoAFailureEndsTheDaemon) {
    installation.writeDefinitions(define({motorModel()}));
    installation.writeConfiguration(configuration("NONE"));
    start();
    installation.remove("lib/orx.ccd");
    EXPECT_EQ(restartAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(), "ERROR: projector definition file " +
                                          installation.file("lib/orx.ccd") + " not found");
}

}  // namespace
}  // namespace orx::test
