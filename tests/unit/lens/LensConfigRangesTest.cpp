// How the axes get their ranges from the lens memory file and their motion parameters from the main
// configuration.
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "unit/lens/LensConfigBench.h"

namespace orx::test {
namespace {

class LensConfigRanges : public LensConfigBench {};

TEST_F(LensConfigRanges, AreEmptyWithoutAFile) {
    EXPECT_EQ(outputOf([this] { build(); }),
              "[LENSMEM] load lens config :: zoom: 0-0 (reduced from 0) "
              "focus: 0-0 (reduced from 0)\n");
    EXPECT_EQ(zoom->rangeMin(), 0);
    EXPECT_EQ(zoom->rangeMax(), 0);
    EXPECT_EQ(focus->rangeMin(), 0);
    EXPECT_EQ(focus->rangeMax(), 0);
}

TEST_F(LensConfigRanges, AreEmptyWhereAFolderStandsInPlaceOfTheFile) {
    std::filesystem::create_directory(memoryPath);
    EXPECT_NO_THROW(build());
    EXPECT_EQ(zoom->rangeMax(), 0);
}

TEST_F(LensConfigRanges, ComeFromTheFileAndAreReduced) {
    writeMemory("zoommin = 0\nzoommax = 2000\nfocusmin = 0\nfocusmax = 1000\n");
    const auto printed =
        outputOf([this] { build("abszoom.reducemax = 10%\nabsfocus.reducemax = 50\n"); });
    const std::string loaded =
        "load lens config :: zoom: 0-1800 (reduced from 2000) focus: 0-950 (reduced from 1000)";
    EXPECT_EQ(printed, "[LENSMEM] " + loaded + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(loaded));
}

TEST_F(LensConfigRanges, BelongToTheirOwnAxis) {
    writeMemory("zoommin = 1\nzoommax = 20\nfocusmin = 3\nfocusmax = 40\n");
    build();
    EXPECT_EQ(zoom->rangeMin(), 1);
    EXPECT_EQ(zoom->rangeMax(), 20);
    EXPECT_EQ(focus->rangeMin(), 3);
    EXPECT_EQ(focus->rangeMax(), 40);
}

TEST_F(LensConfigRanges, MissDefaultToZeroOneByOne) {
    writeMemory("zoommax = 20\nfocusmin = -3\nfocusmax =\n");
    build();
    EXPECT_EQ(zoom->rangeMin(), 0);
    EXPECT_EQ(zoom->rangeMax(), 20);
    EXPECT_EQ(focus->rangeMin(), -3);
    EXPECT_EQ(focus->rangeMax(), 0);
}

TEST_F(LensConfigRanges, DoNotComeFromTheKeysThatAreForInformation) {
    writeMemory(
        "zoommax = 2000\nzoommaxreduced = 5\nzoomreducemaxparam = 90\n"
        "focusmaxreduced = 700\nfocusreducemaxparam = x\n");
    build();
    EXPECT_EQ(zoom->rangeMaxReduced(), 2000);
    EXPECT_EQ(zoom->reduceMaxParam(), 0);
    EXPECT_EQ(focus->rangeMaxReduced(), 0);
}

TEST_F(LensConfigRanges, MayEndBelowTheirBeginning) {
    writeMemory("zoommin = 500\nzoommax = 200\n");
    EXPECT_EQ(outputOf([this] { build(); }),
              "[LENSMEM] load lens config :: zoom: 500-500 (reduced from 200) "
              "focus: 0-0 (reduced from 0)\n");
}

TEST_F(LensConfigRanges, MustBeNumbers) {
    for (const std::string key : {"zoommin", "zoommax", "focusmin", "focusmax"}) {
        SCOPED_TRACE(key);
        writeMemory(key + " = many\n");
        EXPECT_THAT([this] { build(); }, ThrowsStoi<std::invalid_argument>());
        writeMemory(key + " = 99999999999\n");
        EXPECT_THAT([this] { build(); }, ThrowsStoi<std::out_of_range>());
    }
}

TEST_F(LensConfigRanges, CannotBeReadFromAMalformedFile) {
    writeMemory("zoommin = 1\nzoommax\n");
    EXPECT_THAT([this] { build(); }, testing::ThrowsMessage<std::runtime_error>(testing::StrEq(
                                         "[config] " + memoryPath + ", line 2: parse error")));
}

struct ReduceMaxCase {
    std::string text;
    int param;
};

TEST_F(LensConfigRanges, AreReducedByAPercentageOrBySteps) {
    const std::vector<ReduceMaxCase> cases{
        {"", 0},
        {"10%", 10},
        {"-10%", 10},
        {"+10%", 10},
        {"10 %", 10},
        {"10%20", 10},
        {"10%%", 10},
        {"7abc%", 7},
        {"100%", 100},
        {"0%", 0},
        {"50", -50},
        {"-50", -50},
        {"+50", -50},
        {"100", -100},
        {"12abc", -12},
        {"0", 0},
        {"2147483647", -2147483647},
        {"2147483647%", 2147483647},
        {"-2147483647%", 2147483647},
    };
    for (const auto& [text, param] : cases) {
        SCOPED_TRACE(text);
        build("abszoom.reducemax = " + text + "\n");
        EXPECT_EQ(zoom->reduceMaxParam(), param);
        EXPECT_EQ(focus->reduceMaxParam(), 0);
        build("absfocus.reducemax = " + text + "\n");
        EXPECT_EQ(zoom->reduceMaxParam(), 0);
        EXPECT_EQ(focus->reduceMaxParam(), param);
    }
}

TEST_F(LensConfigRanges, AreReducedByTheGreatestNumberOfSteps) {
    writeMemory("zoommin = 5\nzoommax = 2000\n");
    build("abszoom.reducemax = -2147483648\n");
    EXPECT_EQ(zoom->reduceMaxParam(), std::numeric_limits<int>::min());
    EXPECT_EQ(zoom->rangeMaxReduced(), 5);
}

TEST_F(LensConfigRanges, AreReducedAsTheyAreSet) {
    writeMemory("zoommax = 2000\n");
    build("abszoom.reducemax = 10%\n");
    EXPECT_EQ(zoom->rangeMaxReduced(), 1800);
    build("abszoom.reducemax = 100\n");
    EXPECT_EQ(zoom->rangeMaxReduced(), 1900);
}

TEST_F(LensConfigRanges, NeedNumbersInTheMainConfiguration) {
    for (const std::string axis : {"abszoom.", "absfocus."}) {
        for (const std::string key : {"reducemax", "resetonloadmem", "resetsteps", "lockinmode"}) {
            SCOPED_TRACE(axis + key);
            EXPECT_THAT([&] { build(axis + key + " = few\n"); },
                        ThrowsStoi<std::invalid_argument>());
            EXPECT_THAT([&] { build(axis + key + " = 2147483648\n"); },
                        ThrowsStoi<std::out_of_range>());
        }
        EXPECT_THAT([&] { build(axis + "reducemax = %\n"); }, ThrowsStoi<std::invalid_argument>());
        EXPECT_THAT([&] { build(axis + "reducemax = %10\n"); },
                    ThrowsStoi<std::invalid_argument>());
        EXPECT_THAT([&] { build(axis + "reducemax = 2147483648%\n"); },
                    ThrowsStoi<std::out_of_range>());
    }
}

TEST_F(LensConfigRanges, AreReachedWithTheConfiguredResetSteps) {
    build("abszoom.resetsteps = 2\n");
    zoom->reset(0);
    EXPECT_EQ(sent(), times(2, "Z-"));
    focus->reset(0);
    EXPECT_EQ(sent(), joined(times(2, "Z-"), times(50, "F-")));

    line.writes.clear();
    build("absfocus.resetsteps = 3\n");
    focus->reset(0);
    EXPECT_EQ(sent(), times(3, "F-"));
}

TEST_F(LensConfigRanges, AreReachedWithTheConfiguredLockIn) {
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    build("abszoom.lockinmode = 4\n");
    placeAt(10, 10);
    zoom->handleCommand(Command("ZOOMX 11"));
    zoom->moveStep();
    focus->handleCommand(Command("FOCUSX 11"));
    focus->moveStep();
    EXPECT_EQ(sent(), Lines({"AZ+", "AZ-", "AZ+", "AF+"}));

    line.writes.clear();
    build("absfocus.lockinmode = 4\n");
    focus->handleCommand(Command("FOCUSX 12"));
    focus->moveStep();
    EXPECT_EQ(sent(), Lines({"AF+", "AF-", "AF+"}));
}

TEST_F(LensConfigRanges, AreReferencedOnARecallUnlessConfiguredOtherwise) {
    struct Case {
        std::string mainSettings;
        bool zoomIsReset;
        bool focusIsReset;
    };
    const std::vector<Case> cases{
        {"", true, true},
        {"abszoom.resetonloadmem = 0\n", false, true},
        {"absfocus.resetonloadmem = 0\n", true, false},
        {"abszoom.resetonloadmem = 2\nabsfocus.resetonloadmem = -1\n", true, true},
        {"abszoom.resetonloadmem =\n", true, true},
    };
    const std::string oneStepResets = "abszoom.resetsteps = 1\nabsfocus.resetsteps = 1\n";
    writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    for (const auto& [mainSettings, zoomIsReset, focusIsReset] : cases) {
        SCOPED_TRACE(mainSettings);
        build(mainSettings + oneStepResets);
        placeAt(300, 400);
        zoom->gotoMemoryPosition(20);
        focus->gotoMemoryPosition(10);
        EXPECT_EQ(zoom->positionText(), zoomIsReset ? "0/2000>20" : "300/2000>20");
        EXPECT_EQ(focus->positionText(), focusIsReset ? "0/1000>10" : "400/1000>10");
    }
}

}  // namespace
}  // namespace orx::test
