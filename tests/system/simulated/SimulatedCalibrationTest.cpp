// Calibration and memory slots, measured at the motors: an operator jogs each axis to its upper end
// stop, and every recall brings the lens back to where it was saved.
#include <array>
#include <optional>
#include <string>

#include <gmock/gmock.h>

#include "system/simulated/Bench.h"

namespace orx::test {
namespace {

constexpr int zoomTravel = 83;
constexpr int focusTravel = 47;

struct Spot {
    int zoom;
    int focus;
};

/// Where slots 1 to 5 are saved: both end stops, and in between.
constexpr std::array<Spot, 5> spots{
    {{0, focusTravel}, {zoomTravel, 0}, {17, 30}, {zoomTravel, focusTravel}, {60, 2}}};

/// What one axis is calibrated with.
struct AxisWords {
    std::string start;
    std::string up;
    std::string down;
    std::string end;
};

const AxisWords zoomWords{"ZOCALSTART", "AZ+", "AZ-", "ZOCALEND"};
const AxisWords focusWords{"FOCALSTART", "AF+", "AF-", "FOCALEND"};

class SimulatedCalibration : public testing::TestWithParam<std::string> {
  protected:
    /// As an operator does who looks at the picture: once a step no longer moves it, that step is
    /// taken back, and the count is the travel.
    void calibrate(const AxisWords& words) {
        bench.send(words.start);
        static_cast<void>(bench.waitUntilExecuted());
        while (!isStoppedBy(words.up)) {
        }
        bench.send(words.down);
        bench.send(words.end);
        static_cast<void>(bench.waitForRest());
    }

    [[nodiscard]] bool isStoppedBy(const std::string& step) const {
        const auto place = bench.projector().place();
        bench.send(step);
        return bench.projector().waitForCommand(step, place).endStop;
    }

    void calibrateBoth() {
        calibrate(zoomWords);
        calibrate(focusWords);
    }

    void expectTravels() const {
        EXPECT_EQ(bench.status().zoom.upperEnd, zoomTravel);
        EXPECT_EQ(bench.status().focus.upperEnd, focusTravel);
    }

    void saveAllSpots() {
        int slot = 0;
        for (const auto& spot : spots) {
            bench.send("ZOOMX " + std::to_string(spot.zoom) + "\nFOCUSX " +
                       std::to_string(spot.focus));
            static_cast<void>(bench.waitForRest());
            EXPECT_EQ(motors(), text(spot));
            bench.send("MEMSAVE " + std::to_string(++slot));
        }
        static_cast<void>(bench.waitUntilExecuted());
    }

    /// Recalls every slot, and each from a slot that is not the one before it.
    void recallAllSpots() {
        for (const std::size_t slot : {3U, 1U, 5U, 2U, 4U}) {
            bench.send("MEMLOAD " + std::to_string(slot));
            const auto status = bench.waitForRest();
            const auto& spot = spots.at(slot - 1);
            EXPECT_EQ(motors(), text(spot)) << "after the recall of slot " << slot;
            EXPECT_EQ(status.zoom.position, spot.zoom);
            EXPECT_EQ(status.focus.position, spot.focus);
        }
    }

    /// Kills the daemon in the middle of a move, jogs the lens by hand and leaves it there.
    void killInMidMove() {
        bench.send("ZOOMX 1\nFOCUSX 1");
        static_cast<void>(bench.waitForRest());
        const auto place = bench.projector().place();
        bench.send("SETDELAY 3600000\nZOOMX 9");  // the move lasts far longer than the test
        static_cast<void>(bench.projector().waitForCommand("AZ+", place));
        bench.kill();
        bench.start();
        EXPECT_EQ(bench.status().zoom.text, "undefined");
        bench.send("Z++\nF+");
        EXPECT_EQ(motors(), text({2 + 20, 1 + 5}));
    }

    [[nodiscard]] std::string motors() {
        const auto axes = bench.waitUntilExecuted();
        return text({axes.zoom.motor, axes.focus.motor});
    }

    [[nodiscard]] static std::string text(const Spot& spot) {
        return "zoom " + std::to_string(spot.zoom) + ", focus " + std::to_string(spot.focus);
    }

    Bench bench{
        {.model = GetParam(),
         .projector = {"--travel", std::to_string(zoomTravel) + "," + std::to_string(focusTravel),
                       "--start", "40,20"},
         .lineDelay = 1,
         .configuration = "abszoom.resetsteps = 2\nabsfocus.resetsteps = 2\n"}};
};

INSTANTIATE_TEST_SUITE_P(Models, SimulatedCalibration, testing::Values("DEMO-1", "DEMO-3"),
                         [](const auto& test) {
                             return test.param == "DEMO-1" ? "NativeReset" : "FastSteps";
                         });

TEST_P(SimulatedCalibration, FindsTheTravelByJogging) {
    calibrate(zoomWords);
    EXPECT_EQ(bench.status().zoom.text, "0/" + std::to_string(zoomTravel));
    EXPECT_EQ(bench.status().focus.text, "undefined");
    calibrate(focusWords);
    EXPECT_EQ(bench.status().focus.text, "0/" + std::to_string(focusTravel));
    EXPECT_EQ(motors(), text({0, 0}));
}

TEST_P(SimulatedCalibration, LetsTheLensReachItsEndStopsWithoutMeetingThem) {
    calibrateBoth();
    const auto before = bench.waitUntilExecuted();
    bench.send("ZOOM 65536\nFOCUS 65536");
    static_cast<void>(bench.waitForRest());
    EXPECT_EQ(motors(), text({zoomTravel, focusTravel}));
    bench.send("ZOOM 0\nFOCUS 0");
    static_cast<void>(bench.waitForRest());
    const auto after = bench.waitUntilExecuted();
    EXPECT_EQ(motors(), text({0, 0}));
    EXPECT_EQ(after.zoom.contacts, before.zoom.contacts);
    EXPECT_EQ(after.focus.contacts, before.focus.contacts);
}

TEST_P(SimulatedCalibration, BringsEveryRecallBackToItsSpot) {
    calibrateBoth();
    saveAllSpots();
    recallAllSpots();
}

TEST_P(SimulatedCalibration, OutlivesARestart) {
    calibrateBoth();
    saveAllSpots();
    bench.restart();
    EXPECT_EQ(bench.status().zoom.text, "undefined");
    recallAllSpots();
    expectTravels();
}

TEST_P(SimulatedCalibration, CanBeRepeatedAfterARestart) {
    bench.send("ZOCALEND 5\nFOCALEND 5");
    bench.restart();
    calibrateBoth();
    expectTravels();
    saveAllSpots();
    recallAllSpots();
}

TEST_P(SimulatedCalibration, CanBeRepeatedOnceTheDaemonWasKilledInTheMiddleOfIt) {
    bench.send("ZOCALSTART\nAZ+\nAZ+\nFOCALSTART\nAF+");
    static_cast<void>(bench.waitUntilExecuted());
    bench.kill();
    bench.start();
    calibrateBoth();
    expectTravels();
    saveAllSpots();
    recallAllSpots();
}

TEST_P(SimulatedCalibration, OutlivesAKilledDaemon) {
    calibrateBoth();
    saveAllSpots();
    killInMidMove();
    recallAllSpots();
    expectTravels();
}

}  // namespace
}  // namespace orx::test
