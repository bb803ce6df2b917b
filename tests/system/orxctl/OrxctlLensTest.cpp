// When the client says that the lens has arrived, the motors of the simulated projector stand
// there.
#include <gmock/gmock.h>

#include "system/orxctl/Orxctl.h"
#include "system/simulated/Bench.h"

namespace orx::test {
namespace {

constexpr int zoomTravel = 80;
constexpr int focusTravel = 40;

class OrxctlLens : public testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(bench.quit(), "exit status 0"); }

    void expectMove(const std::string& command, int zoom, int focus) {
        EXPECT_EQ(resultOf(command + " --wait -H " + controlAddress()), done()) << command;
        const auto axes = bench.waitUntilExecuted();
        EXPECT_EQ(axes.zoom.motor, zoom) << command;
        EXPECT_EQ(axes.focus.motor, focus) << command;
    }

    Bench bench{
        {.projector = {"--travel", std::to_string(zoomTravel) + "," + std::to_string(focusTravel)},
         .lineDelay = 5,
         .lensMemory = "zoommax = " + std::to_string(zoomTravel) +
                       "\nfocusmax = " + std::to_string(focusTravel) + "\nmem = 3:12;70,\n"}};
};

TEST_F(OrxctlLens, IsWhereACommandHasSentItOnceTheClientIsBack) {
    expectMove("LENSRESET", 0, 0);
    expectMove("ZOOM 32768", zoomTravel / 2, 0);
    expectMove("FOCUSX 33", zoomTravel / 2, 33);
    expectMove("ZOOMX 7", 7, 33);
    expectMove("MEMLOAD 3", 70, 12);
    expectMove("AF-", 70, 11);
    expectMove("ZOOM 65536", zoomTravel, 11);
}

}  // namespace
}  // namespace orx::test
