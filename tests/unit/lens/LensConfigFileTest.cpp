// When and how the lens memory file is written and read again.
#include <filesystem>
#include <stdexcept>

#include "unit/lens/LensConfigBench.h"

namespace orx::test {
namespace {

class LensConfigFile : public LensConfigBench {
  protected:
    [[nodiscard]] auto throwsThatItCannotWrite() const {
        return testing::ThrowsMessage<std::runtime_error>(
            testing::StrEq("could not write to file: " + memoryPath));
    }
};

TEST_F(LensConfigFile, LiesBelowTheInstallPrefix) {
    build().save();
    EXPECT_TRUE(std::filesystem::exists(INSTALL_PREFIX + "/var/lensmemory.cfg"));
}

TEST_F(LensConfigFile, IsNotWrittenAtTheStart) {
    build();
    EXPECT_FALSE(std::filesystem::exists(memoryPath));

    const std::string content = "# kept\nzoommax = 2000\nmem = 3:10;20,";
    writeMemory(content);
    build();
    EXPECT_EQ(memory(), content);
    EXPECT_EQ(flags(), "");
}

TEST_F(LensConfigFile, HoldsRangesAndSlots) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\nfocusmin = 5\nmem = 2:500;800,1:340;1200\n");
    build("abszoom.reducemax = 10%\nabsfocus.reducemax = 50\n").save();
    EXPECT_EQ(memory(),
              "focusmax = 1000\n"
              "focusmaxreduced = 950\n"
              "focusmin = 5\n"
              "focusreducemaxparam = -50\n"
              "mem = 1:340;1200,2:500;800,\n"
              "zoommax = 2000\n"
              "zoommaxreduced = 1800\n"
              "zoommin = 0\n"
              "zoomreducemaxparam = 10\n"
              "\n");
}

TEST_F(LensConfigFile, HoldsTheRangesOfAxesThatWereNeverCalibrated) {
    build().clearAllSlots();
    EXPECT_EQ(memory(),
              "focusmax = 0\n"
              "focusmaxreduced = 0\n"
              "focusmin = 0\n"
              "focusreducemaxparam = 0\n"
              "mem = \n"
              "zoommax = 0\n"
              "zoommaxreduced = 0\n"
              "zoommin = 0\n"
              "zoomreducemaxparam = 0\n"
              "\n");
}

TEST_F(LensConfigFile, HoldsNegativeNumbers) {
    writeMemory("zoommin = -2147483648\nzoommax = -1\nfocusmax = 2147483647\n");
    build().save();
    EXPECT_EQ(memory(),
              "focusmax = 2147483647\n"
              "focusmaxreduced = 2147483647\n"
              "focusmin = 0\n"
              "focusreducemaxparam = 0\n"
              "mem = \n"
              "zoommax = -1\n"
              "zoommaxreduced = -1\n"
              "zoommin = -2147483648\n"
              "zoomreducemaxparam = 0\n"
              "\n");
}

TEST_F(LensConfigFile, KeepsKeysThatAreNotKnownHere) {
    writeMemory("# a comment\nzz = last\nabszoom.note = by hand\n = nameless\nZoommin = 7\n");
    build().clearAllSlots();
    EXPECT_EQ(memory(),
              " = nameless\n"
              "Zoommin = 7\n"
              "abszoom.note = by hand\n"
              "focusmax = 0\n"
              "focusmaxreduced = 0\n"
              "focusmin = 0\n"
              "focusreducemaxparam = 0\n"
              "mem = \n"
              "zoommax = 0\n"
              "zoommaxreduced = 0\n"
              "zoommin = 0\n"
              "zoomreducemaxparam = 0\n"
              "zz = last\n"
              "\n");
}

TEST_F(LensConfigFile, IsReadBackAsItWasWritten) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    auto& first = build("abszoom.reducemax = 10%\n");
    placeAt(1200, 340);
    first.saveSlot(1);
    const auto written = memory();
    auto& second = build("abszoom.reducemax = 10%\n");
    EXPECT_EQ(second.loadSlot(1).zoom, 1200);
    second.save();
    EXPECT_EQ(memory(), written);
}

TEST_F(LensConfigFile, RaisesItsFlagEveryTimeItIsWritten) {
    auto& built = build();
    built.saveSlot(1);
    EXPECT_EQ(flags(), "LCU ");
    Status::clearFlags();
    built.clearAllSlots();
    EXPECT_EQ(flags(), "LCU ");
    Status::clearFlags();
    built.save();
    EXPECT_EQ(flags(), "LCU ");
}

TEST_F(LensConfigFile, IsWrittenAtTheEndOfACalibrationOfEitherAxis) {
    build("abszoom.resetsteps = 1\nabszoom.reducemax = 10%\nabsfocus.resetsteps = 1\n");
    zoom->handleCommand(Command("ZOCALSTART"));
    EXPECT_EQ(memory(), "");
    line.writes.clear();
    std::string atReset;
    atWrite(1, [&] { atReset = memory(); });
    zoom->handleCommand(Command("ZOCALEND 2000"));
    EXPECT_THAT(memory(), testing::HasSubstr("zoommax = 2000\nzoommaxreduced = 1800\n"));
    EXPECT_EQ(atReset, memory()) << "written ahead of the reset";
    EXPECT_EQ(flags(), "HELO LCU ");

    focus->handleCommand(Command("FOCALSTART"));
    focus->handleCommand(Command("FOCALEND 77"));
    EXPECT_THAT(memory(), testing::HasSubstr("focusmax = 77\n"));
}

TEST_F(LensConfigFile, ThatCannotBeWrittenLeavesTheSavedSlotInMemory) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    auto& built = build();
    placeAt(1200, 340);
    denyWriting();
    clearLog();
    EXPECT_THAT([&] { built.saveSlot(1); }, throwsThatItCannotWrite());
    EXPECT_THAT(logged(), testing::ElementsAre("- saving memory slot 1: zoom=1200 focus=340"));
    EXPECT_TRUE(built.hasSlot(1));
    EXPECT_EQ(built.loadSlot(1).zoom, 1200);
    EXPECT_EQ(flags(), "");
}

TEST_F(LensConfigFile, ThatCannotBeWrittenLeavesTheSlotsClearedInMemory) {
    writeMemory("mem = 3:10;20,\n");
    auto& built = build();
    denyWriting();
    EXPECT_THAT([&] { built.clearAllSlots(); }, throwsThatItCannotWrite());
    EXPECT_FALSE(built.hasSlot(3));
    EXPECT_EQ(flags(), "");
}

TEST_F(LensConfigFile, ThatIsAFolderCannotBeWritten) {
    std::filesystem::create_directory(memoryPath);
    EXPECT_THAT([this] { build().save(); }, throwsThatItCannotWrite());
}

TEST_F(LensConfigFile, ThatCannotBeWrittenEndsACalibrationAheadOfItsReset) {
    build();
    denyWriting();
    EXPECT_THAT([this] { zoom->handleCommand(Command("ZOCALEND 2000")); },
                throwsThatItCannotWrite());
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(zoom->rangeMax(), 2000);
}

TEST_F(LensConfigFile, IsReadAgainOnReload) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\nmem = 1:1;1,\nold = 1\n");
    auto& built = build("abszoom.reducemax = 10%\n");
    writeMemory("zoommin = 10\nzoommax = 500\nfocusmin = 20\nmem = 2:5;8,\nnew = 2\n");
    clearLog();
    EXPECT_EQ(outputOf([&] { built.reload(); }),
              "[LENSMEM] load lens config :: zoom: 10-450 (reduced from 500) "
              "focus: 20-20 (reduced from 0)\n"
              "    lensmem slot 2: focus=5 zoom=8\n");
    EXPECT_FALSE(built.hasSlot(1));
    EXPECT_TRUE(built.hasSlot(2));

    built.save();
    EXPECT_THAT(memory(), testing::HasSubstr("new = 2\n"));
    EXPECT_THAT(memory(), testing::Not(testing::HasSubstr("old = 1\n")));
}

TEST_F(LensConfigFile, IsEmptyOnReloadWhenItHasGone) {
    writeMemory("zoommax = 2000\nmem = 1:1;1,\n");
    auto& built = build();
    denyWriting();
    built.reload();
    EXPECT_EQ(zoom->rangeMax(), 0);
    EXPECT_FALSE(built.hasSlot(1));
}

TEST_F(LensConfigFile, LeavesTheMotionParametersAloneOnReload) {
    writeMemory("zoommax = 2000\n");
    auto& built = build("abszoom.reducemax = 10%\nabszoom.resetsteps = 3\n");
    zoom->handleCommand(Command("SETZORSTSTEPS 1"));
    writeMemory("zoommax = 1000\n");
    built.reload();
    EXPECT_EQ(zoom->rangeMaxReduced(), 900);
    zoom->reset(0);
    EXPECT_EQ(sent(), Lines{"Z-"});
}

TEST_F(LensConfigFile, CannotBeReadAgainWhereANumberIsNone) {
    auto& built = build();
    writeMemory("mem = 1:2;x,\n");
    EXPECT_THAT([&] { built.reload(); }, ThrowsStoi<std::invalid_argument>());
    writeMemory("focusmax = 2147483648\n");
    EXPECT_THAT([&] { built.reload(); }, ThrowsStoi<std::out_of_range>());
}

TEST_F(LensConfigFile, CannotBeReadAgainWhenItIsMalformed) {
    auto& built = build();
    writeMemory("zoommax = 2000\nmem\n");
    EXPECT_THAT([&] { built.reload(); }, testing::ThrowsMessage<std::runtime_error>(testing::StrEq(
                                             "[config] " + memoryPath + ", line 2: parse error")));
}

TEST_F(LensConfigFile, IsHandledThroughTheGeneralConfigurationFile) {
    build();
    ConfigFile& file = *config;
    writeMemory("zoommax = 2000\nmem = 1:1;1,\n");
    const auto printedOnReload = outputOf([&] { file.reload(); });
    EXPECT_EQ(zoom->rangeMax(), 2000);
    EXPECT_EQ(outputOf([&] { file.dump(); }), printedOnReload);
    file.save();
    EXPECT_THAT(memory(), testing::HasSubstr("zoommaxreduced = 2000\n"));
}

}  // namespace
}  // namespace orx::test
