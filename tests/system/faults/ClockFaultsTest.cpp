// A clock that is set back shows in the log and holds nothing up: nothing waits for the time of
// day.
#include "system/faults/FaultStory.h"

namespace orx::test {
namespace {

class ClockSetBack : public FaultStory {
  protected:
    void SetUp() override {
        FaultStory::SetUp();
        configure("serial.delay = 20\n");
        auto launch = underFaults();
        launch.environment.emplace_back("TZ=UTC");
        start(launch);
    }
    /// To noon of a day that is long gone.
    void setBack() {
        constexpr std::int64_t noon = 978350400;
        faults.setClock(noon);
    }
    [[nodiscard]] bool logIsOfNoon() const {
        return installation.logLines().front().starts_with("12:0");
    }
};

TEST_F(ClockSetBack, StampsTheLogAndKeepsItsOrder) {
    send("before");
    waitForLog("src=" + ownAddress() + R"( unknown command ("before"))");
    setBack();
    expectToServe();
    EXPECT_TRUE(logIsOfNoon());
    EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
}

TEST_F(ClockSetBack, DoesNotHoldUpAMovingLens) {
    send("ZOOMRESET\nZOOMX 30");
    line.waitFor("zrz+z+");
    setBack();
    waitForPositions("30/2000", "undefined");
    EXPECT_TRUE(logIsOfNoon());
}

TEST_F(ClockSetBack, DoesNotHoldUpCommandsThatWaitForTheirTurn) {
    std::string commands;
    std::string bytes;
    for (int count = 0; count < 10; ++count) {
        commands += "ON\n";
        bytes += "ON\r";
    }
    send(commands);
    line.waitFor("ON\r");
    setBack();
    line.waitFor(bytes);
    expectToServe();
    EXPECT_TRUE(logIsOfNoon());
}

TEST_F(ClockSetBack, DoesNotHoldUpARestart) {
    setBack();
    restart();
    expectToServe();
    EXPECT_TRUE(logIsOfNoon());
}

}  // namespace
}  // namespace orx::test
