// Without a valid projector: the control channel works, and nothing is sent to anything.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string message = "running in dumb mode (no valid projector)";

class DumbMode : public Story {
  protected:
    void SetUp() override { installation.writeDefinitions(define({motorModel()})); }
    /// Starts with these configuration lines and no projector.
    void startDumb(const std::string& lines = "") {
        installation.writeConfiguration("controlchannel = " + controlAddress() + "\n" + lines);
        start();
    }
};

TEST_F(DumbMode, IsToldOnceBeforeTheQueueStarts) {
    startDumb();
    const auto place = daemon->waitForLine("[CMDQ] " + message);
    daemon->waitForLine("[CMDQ] start", place);
    EXPECT_THAT(daemon->lines(), Contains(HasSubstr(message)).Times(1));
    EXPECT_THAT(installation.log(), ElementsAre(message, "listening on " + controlAddress(),
                                                "-- ORX logging start --"));
}

TEST_F(DumbMode, IsShownInTheStatus) {
    startDumb();
    EXPECT_EQ(status(), "IDLE;;HELO DUMB \n");
}

TEST_F(DumbMode, HoldsForAnUnknownProjectorAndForAnotherCase) {
    for (const auto* name : {"NONE", "motor", "MOTOR2", "MOTO"}) {
        startDumb("projector = " + std::string(name) + "\n");
        EXPECT_EQ(status(), "IDLE;;HELO DUMB \n") << name;
        EXPECT_EQ(quit(), "exit status 0") << name;
    }
}

TEST_F(DumbMode, ShowsCommandsAndSendsNone) {
    startDumb("serial.device = " + line.device() + "\n");
    const auto before = installation.log().size();
    send("ON\nZOOMX 5\nMEMSAVE 1\nRAW 41\nSETDELAY 5\nLENSRESET");
    waitUntilExecuted();
    for (const auto* shown : {"ON", "ZOOMX (5)", "MEMSAVE (1)", "RAW (41)", "LENSRESET"}) {
        EXPECT_THAT(daemon->lines(), Contains("[CMDQ] executing cmd: " + std::string(shown) +
                                              " (rcvd from ctrlchan)"));
    }
    EXPECT_FALSE(installation.has("var/lensmemory.cfg"));
    EXPECT_EQ(installation.log().size(), before + 7);  // those six and the one waited for
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "");
}

TEST_F(DumbMode, NeedsNeitherALineNorItsSettings) {
    startDumb("serial.device = /nonexistent/tty\nserial.delay = fast\ncmd.X = \\xZZ\n");
    EXPECT_EQ(status(), "IDLE;;HELO DUMB \n");
    EXPECT_THAT(daemon->lines(), Not(Contains(HasSubstr("[RS232]"))));
    EXPECT_THAT(daemon->lines(), Not(Contains(HasSubstr("[PROJCTRL]"))));
}

TEST_F(DumbMode, ShowsTheDebugFlagOnlyWithoutADevice) {
    for (const auto& [level, flags] :
         {std::pair{0, "HELO DUMB "}, {1, "HELO DUMB "}, {2, "HELO DUMB DEBUG"}}) {
        startDumb("serial.debug = " + std::to_string(level) + "\n");
        EXPECT_EQ(status(), "IDLE;;" + std::string(flags) + "\n") << level;
        EXPECT_THAT(daemon->lines(), Not(Contains("[HEADER]")));
        EXPECT_EQ(quit(), "exit status 0");
    }
}

TEST_F(DumbMode, RefusesADebugLevelThatIsNoNumber) {
    installation.writeConfiguration("serial.debug = on\n");
    EXPECT_EQ(startAndWaitForEnd(), "exit status 1");
    EXPECT_EQ(daemon->lines().back(), "ERROR: stoi");
}

TEST_F(DumbMode, EndsByQuit) {
    startDumb();
    const auto socket = daemon->socketNumbers().at(0);
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_THAT(daemon->lines(), Contains("[CTRLCHAN|#" + socket + "] stop."));
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_F(DumbMode, IsDecidedAnewByARestart) {
    startDumb();
    restart();
    EXPECT_EQ(status(), "IDLE;;HELO DUMB \n");
    EXPECT_THAT(daemon->lines(), Contains("[CMDQ] " + message).Times(2));
    installation.writeConfiguration(configuration("MOTOR"));
    restart();
    EXPECT_THAT(daemon->lines(), Contains("[CMDQ] " + message).Times(2));
    send("ON");
    line.waitFor("ON\r");
    installation.writeConfiguration(configuration("NONE"));
    restart();
    EXPECT_EQ(status(), "IDLE;;HELO DUMB \n");
    EXPECT_THAT(daemon->lines(), Contains("[CMDQ] " + message).Times(3));
}

}  // namespace
}  // namespace orx::test
