// What must not end the daemon: a line that goes away, and a console that is closed.
#include <csignal>

#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class Trouble : public LensStory {};

TEST_F(Trouble, AnUnpluggedLineDoesNotEndTheDaemon) {
    startLens(motorModel());
    send("ON");
    line.waitFor("ON\r");
    line.unplug();
    send("OFF\nZOOMX 3");
    waitForPositions("3/2000", "undefined");
    EXPECT_THAT(installation.log(), Contains(R"(sending OFF\x0d [4f 46 46 0d])"));
    EXPECT_EQ(quit(), "exit status 0");
}

TEST_F(Trouble, ALineThatHangsUpDoesNotEndASessionLeader) {
    installation.writeLensMemory("zoommax = 2000\nfocusmax = 100\n");
    install(motorModel());
    start({.sessionLeader = true});
    line.unplug();
    send("ON\nZOOMX 3");
    waitForPositions("3/2000", "undefined");
    EXPECT_EQ(quit(), "exit status 0");
}

TEST_F(Trouble, ALineThatIsPluggedInAgainWorksAfterARestart) {
    startWith(motorModel());
    line.unplug();
    Pty again;
    installation.writeConfiguration("projector = MOTOR\ncontrolchannel = " + controlAddress() +
                                    "\nserial.device = " + again.device() + "\n");
    restart();
    send("ON");
    again.waitFor("ON\r");
}

TEST_F(Trouble, ALineThatCannotBeReadIsReportedAndLeftAtThat) {
    install(motorModel(), "serial.device = /proc/self/mem\n");  // nothing lies at its beginning
    start();
    send("ON");
    daemon->waitForLine("[RS232] read error: Input/output error");
    send("OFF");
    waitUntilExecuted();
    EXPECT_THAT(daemon->lines(), Contains("[RS232] read error: Input/output error").Times(2));
}

TEST_F(Trouble, AConsoleThatIsClosedDoesNotEndTheDaemon) {
    startLens(motorModel());
    daemon->closeConsole();
    send("nonsense\nON\nZOOMRESET");
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "ON\rzr");
    send("QUIT");
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_F(Trouble, NoConsoleAtAllLeavesTheLineAndTheLogClean) {
    install(motorModel());
    daemon =
        std::make_unique<Daemon>(installation.prefix(), Launch{.closedDescriptors = {0, 1, 2}});
    waitForLog("listening on " + controlAddress());
    send("nonsense\nON\nMEMSAVE 1");
    waitForStatus("IDLE; zoom: undefined focus: undefined;HELO LCU \n");
    EXPECT_EQ(line.written(), "ON\r");
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "ON\r");
    EXPECT_THAT(installation.lensMemory(), Not(HasSubstr("[")));
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_F(Trouble, SignalsOfALostTerminalDoNotEndTheDaemon) {
    startLens(motorModel());
    for (const int number : {SIGHUP, SIGPIPE}) {
        daemon->signal(number);
        EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;\n") << number;
    }
    EXPECT_EQ(quit(), "exit status 0");
}

TEST_F(Trouble, SignalsThatAskForTheEndAreObeyed) {
    for (const int number : {SIGTERM, SIGINT}) {
        startLens(motorModel());
        daemon->signal(number);
        EXPECT_EQ(daemon->waitForEnd(), "signal " + std::to_string(number));
    }
}

}  // namespace
}  // namespace orx::test
