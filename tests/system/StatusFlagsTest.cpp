// The flags at the end of the status reply.
#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

class StatusFlags : public LensStory {
  protected:
    /// What follows the axes in the status reply.
    [[nodiscard]] std::string flags() const {
        const auto reply = status();
        return reply.substr(reply.rfind(';') + 1);
    }
    /// The flags after `command` has been executed.
    std::string flagsAfter(const std::string& command) {
        send(command);
        waitUntilExecuted();
        return flags();
    }
};

TEST_F(StatusFlags, AreEmptyAfterTheFirstStartOnALine) {
    startLens(motorModel());
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;\n");
    EXPECT_EQ(flagsAfter("ON\nOVERRIDEZOPOS 3"), "\n");
    EXPECT_EQ(status(), "IDLE; zoom: 3/2000 focus: undefined;\n");
}

TEST_F(StatusFlags, GreetWhenTheLensIsReset) {
    startLens(motorModel());
    EXPECT_EQ(flagsAfter("ZOOMRESET"), "HELO \n");
}

TEST_F(StatusFlags, GreetWhenTheLensMoves) {
    startLens(motorModel());
    send("OVERRIDEZOPOS 3\nZOOMX 5");
    waitForPositions("5/2000", "undefined");
    EXPECT_EQ(flags(), "HELO \n");
}

TEST_F(StatusFlags, TellThatTheLensMemoryWasWritten) {
    startLens(motorModel());
    EXPECT_EQ(flagsAfter("MEMSAVE 1"), "HELO LCU \n");
    EXPECT_EQ(flagsAfter("CLEARFLAGS"), "\n");
    EXPECT_EQ(flagsAfter("MEMCLEAR"), "LCU \n");
    EXPECT_EQ(flagsAfter("FOCUSRESET"), "HELO LCU \n");
}

TEST_F(StatusFlags, AreClearedBeforeTheNextLineOfTheDatagram) {
    startLens(motorModel());
    EXPECT_EQ(flagsAfter("MEMSAVE 1"), "HELO LCU \n");
    send("STATUS\nCLEARFLAGS\nSTATUS");
    EXPECT_EQ(client.receive(), "IDLE; zoom: undefined focus: undefined;HELO LCU \n");
    EXPECT_EQ(client.receive(), "IDLE; zoom: undefined focus: undefined;\n");
}

TEST_F(StatusFlags, OfDumbAndDebugModeAreNotCleared) {
    installation.writeConfiguration("serial.debug = 2\ncontrolchannel = " + controlAddress());
    installation.writeDefinitions(define({motorModel()}));
    start();
    EXPECT_EQ(status(), "IDLE;;HELO DUMB DEBUG\n");
    send("CLEARFLAGS\nSTATUS");
    EXPECT_EQ(client.receive(), "IDLE;;DUMB DEBUG\n");
}

TEST_F(StatusFlags, TellOfTheDebugModeOfALineThatIsNone) {
    startLens(motorModel(), "serial.debug = 2\n");
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;HELO DEBUG\n");
    EXPECT_EQ(flagsAfter("MEMSAVE 1"), "HELO LCU DEBUG\n");
}

TEST_F(StatusFlags, DoNotTellOfADebugModeThatUsesTheLine) {
    startLens(motorModel(), "serial.debug = 1\n");
    EXPECT_EQ(flags(), "\n");
    EXPECT_EQ(flagsAfter("ZOOMRESET"), "HELO \n");
}

TEST_F(StatusFlags, StandAfterARestartUntilTheNextChange) {
    startLens(motorModel());
    EXPECT_EQ(flagsAfter("CLEARFLAGS"), "\n");
    EXPECT_EQ(flagsAfter("MEMSAVE 1"), "LCU \n");
    restart();
    EXPECT_EQ(flags(), "LCU \n");
    EXPECT_EQ(flagsAfter("ZOOMRESET"), "HELO \n");
}

TEST_F(StatusFlags, OfDumbModeStandAfterARestartUntilTheNextChange) {
    installation.writeDefinitions(define({motorModel()}));
    installation.writeConfiguration(configuration("NONE"));
    start();
    EXPECT_EQ(status(), "IDLE;;HELO DUMB \n");
    installation.writeConfiguration(configuration("MOTOR"));
    restart();
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;HELO DUMB \n");
    EXPECT_EQ(flagsAfter("ZOOMRESET"), "HELO \n");
}

}  // namespace
}  // namespace orx::test
