// The memory slots: how they are read from the file, and what saving, loading and clearing do.
#include <stdexcept>

#include "unit/lens/LensConfigBench.h"

namespace orx::test {
namespace {

class LensConfigSlots : public LensConfigBench {
  protected:
    /// The log lines about the slots when `mem` is read from the file.
    Lines slotsOf(const std::string& mem) {
        writeMemory("mem = " + mem + "\n");
        clearLog();
        build();
        auto lines = logged();
        EXPECT_FALSE(lines.empty());
        lines.erase(lines.begin());
        return lines;
    }

    /// The log line about one slot.
    [[nodiscard]] static std::string slot(int number, int focus, int zoom) {
        return "    lensmem slot " + std::to_string(number) + ": focus=" + std::to_string(focus) +
               " zoom=" + std::to_string(zoom);
    }
};

TEST_F(LensConfigSlots, AreListedWithTheRangesInAscendingOrder) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\nmem = 2:500;800,1:340;1200,-7:3;4,10:5;6,\n");
    const std::string printed = outputOf([this] { build(); });
    EXPECT_EQ(printed,
              "[LENSMEM] load lens config :: zoom: 0-2000 (reduced from 2000) "
              "focus: 0-1000 (reduced from 1000)\n"
              "    lensmem slot -7: focus=3 zoom=4\n"
              "    lensmem slot 1: focus=340 zoom=1200\n"
              "    lensmem slot 2: focus=500 zoom=800\n"
              "    lensmem slot 10: focus=5 zoom=6\n");
    EXPECT_THAT(logged(),
                testing::ElementsAre("load lens config :: zoom: 0-2000 (reduced from 2000) "
                                     "focus: 0-1000 (reduced from 1000)",
                                     slot(-7, 3, 4), slot(1, 340, 1200), slot(2, 500, 800),
                                     slot(10, 5, 6)));
}

TEST_F(LensConfigSlots, AreListedAgainOnDemand) {
    writeMemory("mem = 1:340;1200,\n");
    const auto& built = build();
    EXPECT_EQ(outputOf([&] { built.dump(); }),
              "[LENSMEM] load lens config :: zoom: 0-0 (reduced from 0) "
              "focus: 0-0 (reduced from 0)\n"
              "    lensmem slot 1: focus=340 zoom=1200\n");
}

TEST_F(LensConfigSlots, AreReadWhereTheyAreWellFormed) {
    struct Case {
        std::string mem;
        Lines slots;
    };
    const std::vector<Case> cases{
        {"", {}},
        {",", {}},
        {",,,", {}},
        {"3:10;20,", {slot(3, 10, 20)}},
        {"3:10;20", {slot(3, 10, 20)}},
        {" 3 : 10 ; 20 , 4:5;6 ,", {slot(3, 10, 20), slot(4, 5, 6)}},
        {"3:-1;-1,", {slot(3, -1, -1)}},
        {"+3:+1;+2,", {slot(3, 1, 2)}},
        {"3:10a;20b,", {slot(3, 10, 20)}},
        {"3:10;20;30,", {slot(3, 10, 20)}},
        {"3:10:7;20,", {slot(3, 10, 20)}},
        {"2147483647:2147483647;-2147483648,", {slot(2147483647, 2147483647, -2147483647 - 1)}},
        // The last of several pieces for one slot counts.
        {"3:10;20,3:30;40,", {slot(3, 30, 40)}},
        {"3:10;20,4:1;2,03:30;40,", {slot(3, 30, 40), slot(4, 1, 2)}},
        // A piece without both separators is passed over.
        {"4:100,", {}},
        {"4;100,", {}},
        {"4,", {}},
        {"hello,", {}},
        {"4:100,3:10;20,junk,", {slot(3, 10, 20)}},
        // With the separators the wrong way round the position reaches to the end of the piece.
        {"5;7:9,", {slot(5, 9, 7)}},
        {"5;7:9;8,", {slot(5, 9, 7)}},
        {"5;7:123456,", {slot(5, 123456, 7)}},
    };
    for (const auto& [mem, slots] : cases) {
        SCOPED_TRACE(mem);
        EXPECT_EQ(slotsOf(mem), slots);
    }
}

TEST_F(LensConfigSlots, CannotBeReadWhereANumberIsNone) {
    for (const std::string mem : {":;", "3:;20,", "3:10;,", ":10;20,", "x:10;20,", "3:x;20,",
                                  "3:10;x,", "5;:9,", "5;7:,", "1:2;3,4:5;x,"}) {
        SCOPED_TRACE(mem);
        writeMemory("mem = " + mem + "\n");
        EXPECT_THAT([this] { build(); }, ThrowsStoi<std::invalid_argument>());
    }
}

TEST_F(LensConfigSlots, CannotBeReadWhereANumberIsTooGreat) {
    for (const std::string mem :
         {"2147483648:1;2,", "1:2147483648;2,", "1:2;2147483648,", "1:2;-2147483649,"}) {
        SCOPED_TRACE(mem);
        writeMemory("mem = " + mem + "\n");
        EXPECT_THAT([this] { build(); }, ThrowsStoi<std::out_of_range>());
    }
}

TEST_F(LensConfigSlots, ExistWhereTheFileHasThem) {
    writeMemory("mem = 3:10;20,4:100,\n");
    const auto& built = build();
    EXPECT_TRUE(built.hasSlot(3));
    EXPECT_FALSE(built.hasSlot(4));
    EXPECT_FALSE(built.hasSlot(0));
    EXPECT_FALSE(built.hasSlot(-3));
}

TEST_F(LensConfigSlots, AreLoadedWithFocusFirstInTheFileAndZoomFirstInTheLog) {
    writeMemory("mem = 3:10;20,\n");
    const auto& built = build();
    clearLog();
    LensPosition position{};
    EXPECT_EQ(outputOf([&] { position = built.loadSlot(3); }),
              "- loading memory slot 3: zoom=20 focus=10\n");
    EXPECT_THAT(logged(), testing::ElementsAre("- loading memory slot 3: zoom=20 focus=10"));
    EXPECT_EQ(position.focus, 10);
    EXPECT_EQ(position.zoom, 20);
}

TEST_F(LensConfigSlots, AreLoadedWithoutWritingTheFile) {
    const std::string content = "# kept\nmem = 3:10;20,\n";
    writeMemory(content);
    EXPECT_EQ(build().loadSlot(3).zoom, 20);
    EXPECT_EQ(memory(), content);
    EXPECT_EQ(flags(), "");
}

TEST_F(LensConfigSlots, AreSavedWithThePositionsOfTheAxes) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    auto& built = build();
    placeAt(1200, 340);
    clearLog();
    EXPECT_EQ(outputOf([&] { built.saveSlot(1); }),
              "- saving memory slot 1: zoom=1200 focus=340\n");
    EXPECT_THAT(logged(), testing::ElementsAre("- saving memory slot 1: zoom=1200 focus=340"));
    EXPECT_TRUE(built.hasSlot(1));
    EXPECT_EQ(built.loadSlot(1).zoom, 1200);
    EXPECT_EQ(built.loadSlot(1).focus, 340);
    EXPECT_THAT(memory(), testing::HasSubstr("mem = 1:340;1200,\n"));
}

TEST_F(LensConfigSlots, AreSavedWithThePositionNotTheTarget) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    auto& built = build();
    placeAt(1200, 340);
    zoom->handleCommand(Command("ZOOMX 7"));
    built.saveSlot(1);
    EXPECT_EQ(built.loadSlot(1).zoom, 1200);
}

TEST_F(LensConfigSlots, AreSavedAlsoWhereThePositionIsUnknown) {
    auto& built = build();
    built.saveSlot(-2);
    EXPECT_THAT(memory(), testing::HasSubstr("mem = -2:-1;-1,\n"));
}

TEST_F(LensConfigSlots, AreReplacedWhenTheyAreSavedAgain) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\nmem = 1:1;1,2:500;800,\n");
    auto& built = build();
    placeAt(1200, 340);
    built.saveSlot(1);
    EXPECT_THAT(memory(), testing::HasSubstr("mem = 1:340;1200,2:500;800,\n"));
}

TEST_F(LensConfigSlots, AreClearedAllAtOnce) {
    writeMemory("mem = 1:1;1,2:500;800,\n");
    auto& built = build();
    clearLog();
    EXPECT_EQ(outputOf([&] { built.clearAllSlots(); }), "- clearing all memory slots\n");
    EXPECT_THAT(logged(), testing::ElementsAre("- clearing all memory slots"));
    EXPECT_FALSE(built.hasSlot(1));
    EXPECT_FALSE(built.hasSlot(2));
    EXPECT_THAT(memory(), testing::HasSubstr("mem = \n"));
}

}  // namespace
}  // namespace orx::test
