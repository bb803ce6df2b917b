// The memory slots: saved, recalled and cleared, and what the file holds of them.
#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// The lens memory file of a lens with its ranges and these slots.
std::string memoryWith(const std::string& slots) {
    return "focusmax = 100\nfocusmaxreduced = 100\nfocusmin = 0\nfocusreducemaxparam = 0\nmem = " +
           slots +
           "\n"
           "zoommax = 2000\nzoommaxreduced = 2000\nzoommin = 0\nzoomreducemaxparam = 0\n\n";
}

class LensMemory : public LensStory {
  protected:
    /// Moves both axes without a step on the line.
    void standAt(int zoom, int focus) const {
        send("OVERRIDEZOPOS " + std::to_string(zoom) + "\nOVERRIDEFOPOS " + std::to_string(focus));
    }
    /// What one axis has put on the line; between the two axes there is no fixed order.
    std::string sentBy(char axis) {
        const auto all = line.written();
        std::string commands;
        for (std::size_t place = 0; place < all.size(); place += 2) {
            if (all[place] == axis) commands += all.substr(place, 2);
        }
        return commands;
    }
    /// Starts a lens whose memory file holds these slots.
    void startWithSlots(const std::string& slots, const std::string& more = "") {
        installation.writeLensMemory("mem = " + slots + "\nzoommax = 2000\nfocusmax = 100\n");
        startWith(motorModel(), more);
    }
};

TEST_F(LensMemory, SavesThePositionsOfBothAxes) {
    startLens(motorModel());
    standAt(1200, 34);
    send("MEMSAVE 2");
    standAt(7, 8);
    send("MEMSAVE 1\nMEMSAVE -3");
    waitUntilExecuted();
    EXPECT_EQ(installation.lensMemory(), memoryWith("-3:8;7,1:8;7,2:34;1200,"));
    EXPECT_THAT(lensLog(), ElementsAre("- saving memory slot 2: zoom=1200 focus=34",
                                       "- saving memory slot 1: zoom=7 focus=8",
                                       "- saving memory slot -3: zoom=7 focus=8"));
    EXPECT_THAT(daemon->lines(), Contains("- saving memory slot 2: zoom=1200 focus=34"));
    EXPECT_EQ(line.written(), "");
}

TEST_F(LensMemory, SavesUnknownPositionsAsTheyAre) {
    startLens(motorModel());
    send("MEMSAVE 1");
    waitUntilExecuted();
    EXPECT_EQ(installation.lensMemory(), memoryWith("1:-1;-1,"));
}

TEST_F(LensMemory, ReplacesASlotThatIsSavedAgain) {
    startWithSlots("1:5;6,3:7;8,");
    standAt(20, 10);
    send("MEMSAVE 3");
    waitUntilExecuted();
    EXPECT_EQ(installation.lensMemory(), memoryWith("1:5;6,3:10;20,"));
}

TEST_F(LensMemory, ReferencesBothAxesAndMovesToTheSlot) {
    startWithSlots("3:2;3,");
    send("MEMLOAD 3");
    waitForPositions("3/2000", "2/100");
    EXPECT_EQ(sentBy('z'), "zrz+z+z+");
    EXPECT_EQ(sentBy('f'), "frf+f+");
    EXPECT_THAT(lensLog(), Contains("- loading memory slot 3: zoom=3 focus=2"));
    EXPECT_THAT(daemon->lines(), Contains("- loading memory slot 3: zoom=3 focus=2"));
}

TEST_F(LensMemory, ReferencesAgainForEveryOtherSlot) {
    startWithSlots("1:0;2,2:0;3,");
    send("MEMLOAD 1");
    waitForPositions("2/2000", "0/100");
    send("MEMLOAD 1");
    waitUntilExecuted();
    EXPECT_EQ(sentBy('z'), "zrz+z+");
    send("MEMLOAD 2");
    waitForPositions("3/2000", "0/100");
    EXPECT_EQ(sentBy('z'), "zrz+z+zrz+z+z+");
    EXPECT_EQ(sentBy('f'), "fr");
}

TEST_F(LensMemory, GoesStraightToASlotWhereToldTo) {
    startWithSlots("1:4;12,2:1;10,", "abszoom.resetonloadmem = 0\nabsfocus.resetonloadmem = 0\n");
    standAt(10, 1);
    send("MEMLOAD 1");
    waitForPositions("12/2000", "4/100");
    send("MEMLOAD 2");
    waitForPositions("10/2000", "1/100");
    EXPECT_EQ(sentBy('z'), "z+z+z-z-");
    EXPECT_EQ(sentBy('f'), "f+f+f+f-f-f-");
}

TEST_F(LensMemory, ReferencesAnAxisWhosePositionIsUnknownWhateverItIsTold) {
    startWithSlots("1:0;2,", "abszoom.resetonloadmem = 0\nabsfocus.resetonloadmem = 0\n");
    send("MEMLOAD 1");
    waitForPositions("2/2000", "0/100");
    EXPECT_EQ(sentBy('z'), "zrz+z+");
    EXPECT_EQ(sentBy('f'), "fr");
}

TEST_F(LensMemory, TellsOfASlotWithoutData) {
    startWithSlots("1:4;12,");
    send("MEMLOAD 2\nMEMLOAD\nMEMSAVE\nMEMLOAD one");
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "");
    const std::string message = "- could not load memory slot 2, no position data";
    EXPECT_THAT(lensLog(), ElementsAre("    lensmem slot 1: focus=4 zoom=12", message));
    EXPECT_THAT(daemon->lines(), Contains(message));
    EXPECT_EQ(axes(), "IDLE; zoom: undefined focus: undefined");
}

TEST_F(LensMemory, ForgetsAllSlotsAtOnce) {
    startWithSlots("1:4;12,2:5;6,");
    send("MEMCLEAR\nMEMLOAD 1");
    waitUntilExecuted();
    EXPECT_EQ(installation.lensMemory(), memoryWith(""));
    EXPECT_THAT(lensLog(), Contains("- clearing all memory slots"));
    EXPECT_THAT(lensLog(), Contains("- could not load memory slot 1, no position data"));
    EXPECT_EQ(line.written(), "");
}

TEST_F(LensMemory, ShowsItsSlotsAtTheStart) {
    startWithSlots("10:1;2,9:3;4,", "abszoom.reducemax = 50\n");
    auto place = daemon->waitForLine(
        "[LENSMEM] load lens config :: zoom: 0-1950 (reduced from 2000) "
        "focus: 0-100 (reduced from 100)");
    place = daemon->waitForLine("    lensmem slot 9: focus=3 zoom=4", place);
    daemon->waitForLine("    lensmem slot 10: focus=1 zoom=2", place);
    EXPECT_THAT(lensLog(), ElementsAre("    lensmem slot 9: focus=3 zoom=4",
                                       "    lensmem slot 10: focus=1 zoom=2"));
    EXPECT_THAT(installation.log(), Contains("load lens config :: zoom: 0-1950 (reduced from 2000) "
                                             "focus: 0-100 (reduced from 100)"));
}

TEST_F(LensMemory, ReadsWhatCanBeASlot) {
    startWithSlots(" 1:2;3 , 4:100, 5;6, ,7:8;9;10,1;2:3,");
    EXPECT_THAT(lensLog(), ElementsAre("    lensmem slot 1: focus=3 zoom=2",
                                       "    lensmem slot 7: focus=8 zoom=9"));
}

TEST_F(LensMemory, IsWrittenOnlyWhenItChanges) {
    startWithSlots("1:4;12,");
    const auto before = installation.lensMemory();
    send("MEMLOAD 1\nMEMLOAD 2\nZOOMRESET\nON");
    waitUntilExecuted();
    restart();
    EXPECT_EQ(installation.lensMemory(), before);
}

TEST_F(LensMemory, OutlivesARestart) {
    startLens(motorModel());
    standAt(3, 1);
    send("MEMSAVE 4");
    waitUntilExecuted();
    const auto place = daemon->place();
    restart();
    daemon->waitForLine("    lensmem slot 4: focus=1 zoom=3", place);
    send("MEMLOAD 4");
    waitForPositions("3/2000", "1/100");
}

TEST_F(LensMemory, OutlivesTheProcess) {
    startLens(motorModel());
    standAt(3, 1);
    send("MEMSAVE 4");
    EXPECT_EQ(quit(), "exit status 0");
    start();
    daemon->waitForLine("    lensmem slot 4: focus=1 zoom=3");
    send("MEMLOAD 4");
    waitForPositions("3/2000", "1/100");
}

TEST_F(LensMemory, IsReadAgainByARestart) {
    startWithSlots("1:4;12,");
    installation.writeLensMemory("mem = 2:5;6,\nzoommax = 10\nfocusmin = 1\nfocusmax = 9\n");
    const auto place = daemon->place();
    restart();
    daemon->waitForLine(
        "[LENSMEM] load lens config :: zoom: 0-10 (reduced from 10) focus: 1-9 (reduced from 9)",
        place);
    EXPECT_THAT(daemon->lines(place), Contains("    lensmem slot 2: focus=5 zoom=6"));
    EXPECT_THAT(daemon->lines(place), Not(Contains("    lensmem slot 1: focus=4 zoom=12")));
}

}  // namespace
}  // namespace orx::test
