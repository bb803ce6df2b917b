// The commands that concern both axes: the memory slots and the reset of the whole lens.
#include <filesystem>
#include <stdexcept>

#include "unit/lens/ControlBench.h"

namespace orx::test {
namespace {

class ProjectorControlMemory : public ControlBench {
  protected:
    static constexpr auto filled = "zoommax = 2000\nfocusmax = 1000\nmem = 3:10;20,\n";
};

TEST_F(ProjectorControlMemory, IsRecalledOnBothAxes) {
    writeMemory(filled);
    build();
    EXPECT_EQ(outputOf([this] { execute("MEMLOAD 3"); }),
              "- loading memory slot 3: zoom=20 focus=10\n");
    EXPECT_EQ(sent(), Lines({"ZOOMRESET", "FOCUSRESET"}));
    EXPECT_EQ(status(), "IDLE; zoom: 0/2000>20 focus: 0/1000>10");

    line.writes.clear();
    runUntilSleep(2);
    EXPECT_EQ(sent(), joined(times(20, "AZ+"), times(10, "AF+")));
    EXPECT_EQ(status(), "IDLE; zoom: 20/2000 focus: 10/1000");
}

TEST_F(ProjectorControlMemory, IsRecalledWithoutAResetWhereConfigured) {
    writeMemory(filled);
    buildOn(modelKnowing({"AZ+", "AF+", "ZOOMRESET", "FOCUSRESET"}),
            "abszoom.resetonloadmem = 0\n");
    placeAt(100, 200);
    execute("MEMLOAD 3");
    EXPECT_EQ(sent(), Lines({"FOCUSRESET"}));
    EXPECT_EQ(status(), "IDLE; zoom: 100/2000>20 focus: 0/1000>10");
}

TEST_F(ProjectorControlMemory, OfAnEmptySlotMovesNothing) {
    writeMemory(filled);
    build();
    placeAt(100, 200);
    const std::string message = "- could not load memory slot 4, no position data";
    EXPECT_EQ(outputOf([this] { execute("MEMLOAD 4"); }), message + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(message));
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(status(), "IDLE; zoom: 100/2000 focus: 200/1000");
}

TEST_F(ProjectorControlMemory, OfANegativeSlotIsAsGoodAsAnyOther) {
    build();
    placeAt(100, 200);
    execute("MEMLOAD -1");
    execute("MEMSAVE -1");
    clearLog();
    execute("MEMLOAD -1");
    EXPECT_THAT(logged(), testing::ElementsAre("- loading memory slot -1: zoom=100 focus=200"));
}

TEST_F(ProjectorControlMemory, IsSavedAndCleared) {
    build();
    placeAt(100, 200);
    execute("MEMSAVE 1 2");
    EXPECT_THAT(contentOf(memoryPath), testing::HasSubstr("mem = 1:200;100,\n"));
    EXPECT_EQ(flags(), "LCU ");
    execute("MEMCLEAR");
    EXPECT_THAT(contentOf(memoryPath), testing::HasSubstr("mem = \n"));
    execute("MEMLOAD 1");
    EXPECT_THAT(logged(), testing::ElementsAre("- saving memory slot 1: zoom=100 focus=200",
                                               "- clearing all memory slots",
                                               "- could not load memory slot 1, no position data"));
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_F(ProjectorControlMemory, IsLeftAloneWithoutASlotNumber) {
    build();
    placeAt(100, 200);
    const auto before = contentOf(memoryPath);
    EXPECT_EQ(outputOf([this] {
                  execute("MEMLOAD");
                  execute("MEMSAVE");
                  execute("MEMLOAD first");
                  execute("MEMSAVE first");
              }),
              "");
    EXPECT_THAT(logged(), testing::IsEmpty());
    EXPECT_EQ(contentOf(memoryPath), before);
}

TEST_F(ProjectorControlMemory, ThatCannotBeWrittenFailsTheCommand) {
    build();
    std::filesystem::remove_all(INSTALL_PREFIX + "/var");
    const auto cannotWrite = testing::ThrowsMessage<std::runtime_error>(
        testing::StrEq("could not write to file: " + memoryPath));
    EXPECT_THAT([this] { execute("MEMSAVE 1"); }, cannotWrite);
    EXPECT_THAT([this] { execute("MEMCLEAR"); }, cannotWrite);
    EXPECT_THAT([this] { execute("ZOCALEND 100"); }, cannotWrite);
    EXPECT_THAT([this] { execute("FOCALEND 100"); }, cannotWrite);
}

class ProjectorControlLensReset : public ControlBench {};

TEST_F(ProjectorControlLensReset, ShowsOnBothAxesBeforeEitherStarts) {
    build();
    placeAt(100, 200);
    Lines seen;
    line.onWrite = [&](const std::string&) { seen.push_back(Status::statusReply()); };
    execute("LENSRESET");
    EXPECT_EQ(sent(), Lines({"ZOOMRESET", "FOCUSRESET"}));
    EXPECT_EQ(seen, Lines({"BUSY; zoom: resetting>0 focus: resetting>0;HELO \n",
                           "BUSY; zoom: 0/2000 focus: resetting>0;HELO \n"}));
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: 0/2000 focus: 0/1000;HELO \n");
}

TEST_F(ProjectorControlLensReset, EndsForTheZoomBeforeItBeginsForTheFocus) {
    buildOn(modelKnowing({"Z-", "F-"}), "abszoom.resetsteps = 3\nabsfocus.resetsteps = 2\n");
    EXPECT_EQ(outputOf([this] { execute("LENSRESET"); }),
              "- resetting absolute zoom (3 fast steps)\n"
              "  zoom reset done.\n"
              "- resetting absolute focus (2 fast steps)\n"
              "  focus reset done.\n");
    EXPECT_EQ(sent(), Lines({"Z-", "Z-", "Z-", "F-", "F-"}));
}

TEST_F(ProjectorControlLensReset, IsReportedForEitherAxisWhereTheModelCannot) {
    buildOn(modelKnowing({"AZ+", "AF+"}));
    const std::string zoomLine = "  zoom reset not possible, no supported command?!";
    const std::string focusLine = "  focus reset not possible, no supported command?!";
    EXPECT_EQ(outputOf([this] { execute("LENSRESET"); }), zoomLine + "\n" + focusLine + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(zoomLine, focusLine));
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: undefined focus: undefined;HELO \n");
}

}  // namespace
}  // namespace orx::test
