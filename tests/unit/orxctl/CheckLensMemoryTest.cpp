// What is found about the lens memory file.
#include "CheckBench.h"
#include "CheckOrdinaryUser.h"
#include "orxctl/check/Person.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

void writeMemory(const std::string& content) {
    std::ofstream(LensConfig::filePath()) << content;
}

constexpr const char* aSlot = "; a slot is NUMBER:FOCUS;ZOOM";

/// Here the lines are those of the lens memory.
class CheckLensMemory : public CheckTable {};

TEST_P(CheckLensMemory, findsExactlyThat) {
    writeMemory(GetParam().lines);
    EXPECT_THAT(findings(""), ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    Each, CheckLensMemory,
    testing::Values(
        Case{"sound",
             "focusmax = 1000\nfocusmaxreduced = 950\nfocusmin = 0\nmem = 1:340;1200,2:500;800,\n"
             "zoommax = 2000\nzoommin = 0\nzoomreducemaxparam = 10\n\n",
             {}},
        Case{"emptySlots", "mem =\nzoommax =\n", {}},
        Case{"parseError",
             "zoommax = 5\nzoommin\n",
             {R"(var/lensmemory.cfg:2: error: the daemon ends with "ERROR: [config] )"
              R"(var/lensmemory.cfg, line 2: parse error": the line has no "="; write )"
              R"("key = value", or "#" ahead of a comment)"}},
        Case{"noNumbers",
             "focusmin = low\nzoommax = 12 steps\n",
             {R"(var/lensmemory.cfg:2: warning: "12 steps" is read as 12; leave out "steps")",
              R"(var/lensmemory.cfg:1: error: the daemon ends with "ERROR: stoi": "low" is no )"
              "number; give a number of motor steps"}},
        Case{"upperEndBelowTheLowerOne",
             "zoommin = 100\nzoommax = 20\n",
             {"var/lensmemory.cfg:2: warning: 20 lies below the lower end 100, so the zoom cannot "
              "move to a position; calibrate it again"}},
        Case{"slotsThatArePassedOver",
             "mem = 4:100,7,1:2;3,\n",
             {std::string(R"(var/lensmemory.cfg:1: warning: "4:100" is passed over)") + aSlot,
              std::string(R"(var/lensmemory.cfg:1: warning: "7" is passed over)") + aSlot}},
        Case{"slotsWithoutNumbers",
             "mem = x:1;2,1:;2\n",
             {std::string(R"(var/lensmemory.cfg:1: error: the daemon ends with "ERROR: stoi": )"
                          R"("x:1;2" has a number that is none)") +
                  aSlot,
              std::string(R"(var/lensmemory.cfg:1: error: the daemon ends with "ERROR: stoi": )"
                          R"("1:;2" has a number that is none)") +
                  aSlot}},
        Case{"slotsThatAreReadInAnotherWay",
             "mem = 1;2:3,4:5x;6\n",
             {std::string(R"(var/lensmemory.cfg:1: warning: "1;2:3" is read as 1:3;2)") + aSlot,
              std::string(R"(var/lensmemory.cfg:1: warning: "4:5x;6" is read as 4:5;6)") + aSlot}},
        Case{"slotGivenTwice",
             "mem = 1:2;3,2:2;2,1:4;5,\n",
             {"var/lensmemory.cfg:1: warning: slot 1 stands twice, and the later one counts; "
              "remove one"}},
        Case{"keyGivenTwice",
             "zoommax = 5\nzoommax = 6\n",
             {R"(var/lensmemory.cfg:1: warning: "zoommax" stands again on line 2, and the later )"
              "one counts; remove one of them"}}),
    nameOf);

class CheckLensMemoryFile : public CheckBench {
  protected:
    CheckLensMemoryFile() {
        std::filesystem::permissions(INSTALL_PREFIX, std::filesystem::perms(0755));
    }
    ~CheckLensMemoryFile() override {
        std::filesystem::permissions(INSTALL_PREFIX + "/var", std::filesystem::perms(0755));
    }
};

TEST_F(CheckLensMemoryFile, withoutAProjectorEndsNothing) {
    writeMemory("zoommax = far\n");
    EXPECT_THAT(report("projector ="), HasSubstr("as soon as it has a projector, the daemon ends"));
    EXPECT_THAT(report("projector ="), HasSubstr("would start in dumb mode"));
}

TEST_F(CheckLensMemoryFile, needsItsFolder) {
    std::filesystem::remove_all(INSTALL_PREFIX + "/var");
    const auto lines = findings("");
    std::filesystem::create_directory(INSTALL_PREFIX + "/var");
    EXPECT_THAT(lines, ElementsAre("var/lensmemory.cfg: warning: there is no folder \"" +
                                   shortened(INSTALL_PREFIX + "/var") +
                                   "\", and the first calibration or MEMSAVE ends the daemon; "
                                   "sudo install -d -o " +
                                   userName() + " var"));
    EXPECT_EQ(status, 0);
}

TEST_F(CheckLensMemoryFile, mustBeReadableAndWritable) {
    writeMemory("zoommax = 5\n");
    std::filesystem::permissions(LensConfig::filePath(), std::filesystem::perms::none);
    const auto file = configure("");
    const OrdinaryUser user;
    const auto lines = findingsIn(reportOn(file));
    EXPECT_THAT(lines, Contains("var/lensmemory.cfg: warning: the file cannot be read, so the lens "
                                "has neither ranges nor slots; let the user of the daemon read "
                                "it"));
    EXPECT_THAT(lines, Contains("var/lensmemory.cfg: warning: user \"" + userName() +
                                "\" cannot write \"var/lensmemory.cfg\": Permission denied, and "
                                "the first calibration or MEMSAVE ends the daemon; sudo chown " +
                                userName() + " var/lensmemory.cfg"));
}

TEST_F(CheckLensMemoryFile, mustBeAllowedToComeIntoBeing) {
    std::filesystem::permissions(INSTALL_PREFIX + "/var", std::filesystem::perms(0555));
    const auto file = configure("");
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn(file)),
                Contains(HasSubstr("cannot make files in the folder \"var\": Permission denied, "
                                   "and the first calibration or MEMSAVE ends the daemon")));
}

}  // namespace
}  // namespace orx::orxctl
