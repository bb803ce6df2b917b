// A model, printed.
#include <string>

#include <gtest/gtest.h>

#include "unit/projector/ModelBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

TEST(ProjectorDump, ShowsTheChecksumOfAModelWithoutCommands) {
    EXPECT_EQ(dumpOf(Projector("DEMO", {}, {}, 0)), "  checksum: 0\n  commands: \n");
    EXPECT_EQ(dumpOf(Projector("DEMO", {}, {}, 1)), "  checksum: 1\n  commands: \n");
    EXPECT_EQ(dumpOf(Projector("DEMO", {}, {}, 255)), "  checksum: 255\n  commands: \n");
}

TEST(ProjectorDump, ShowsCommandsInTheOrderOfTheirNamesWithTheirArguments) {
    const Projector projector(
        "DEMO",
        {{"ZOOM",
          {{3, {.min = 0, .max = 65535, .pos = 255, .len = 2, .type = 'I'}},
           {1, {.min = -10, .max = 255, .pos = 5, .len = 3, .type = 'A'}},
           {2, {.min = -5000, .max = 5000, .pos = 0, .len = 0x23, .type = 'D'}}}},
         {"FOCUS", {{1, {.min = 0, .max = 99, .pos = 1, .len = 2, .type = 'X'}}}},
         {"INPUT", {{1, {.min = 0, .max = 9, .pos = 0, .len = 1, .type = 'B'}}}}},
        {{"ZOOM", "ZOOM=\r"}, {"", "nameless"}, {"FOCUS", "\x02\xFF \0"s}, {"F+", ""}}, 1);
    EXPECT_EQ(dumpOf(projector),
              "  checksum: 1\n"
              "  commands: \n"
              "     -> nameless\n"
              "    F+ -> \n"
              "    FOCUS -> \\x02\\xff \\x00\n"
              "                    arg: 1 type: X pos: 1 min: 0 max: 99 len: 2\n"
              "    ZOOM -> ZOOM=\\x0d\n"
              "                    arg: 1 type: A pos: 5 min: -10 max: 255 len: 3\n"
              "                    arg: 2 type: D pos: 0 min: -50 max: 50 len: 3.2\n"
              "                    arg: 3 type: I pos: 255 min: 0 max: 65535 len: 2\n");
}

std::string describe(const ArgumentDescriptor& descriptor) {
    const auto dump = dumpOf(modelWith("ZOOM", "", {{1, descriptor}}));
    const std::string before = "  checksum: 0\n  commands: \n    ZOOM -> \n                    ";
    EXPECT_EQ(dump.substr(0, before.size()), before);
    return dump.substr(before.size());
}

TEST(ProjectorDump, ShowsTheBoundsOfADecimalArgumentAsFloatingPointNumbers) {
    EXPECT_EQ(describe({.min = -1, .max = 15, .pos = 0, .len = 0x11, .type = 'D'}),
              "arg: 1 type: D pos: 0 min: -0.1 max: 1.5 len: 1.1\n");
    EXPECT_EQ(describe({.min = 1, .max = 12345678, .pos = 0, .len = 0x2F, .type = 'D'}),
              "arg: 1 type: D pos: 0 min: 0.01 max: 123457 len: 15.2\n");
    EXPECT_EQ(describe({.min = 1, .max = 2147483647, .pos = 0, .len = 0x60, .type = 'D'}),
              "arg: 1 type: D pos: 0 min: 1e-06 max: 2147.48 len: 0.6\n");
    EXPECT_EQ(describe({.min = -20000000, .max = 5, .pos = 0, .len = 0x04, .type = 'D'}),
              "arg: 1 type: D pos: 0 min: -2e+07 max: 5 len: 4.0\n");
    EXPECT_EQ(describe({.min = 0, .max = 1, .pos = 0, .len = 0xFF, .type = 'D'}),
              "arg: 1 type: D pos: 0 min: 0 max: 1e-15 len: 15.15\n");
}

TEST(ProjectorDump, ShowsTheTypeAsOneCharacter) {
    EXPECT_EQ(
        describe({.min = -2147483647 - 1, .max = 2147483647, .pos = 1, .len = 255, .type = 'd'}),
        "arg: 1 type: d pos: 1 min: -2147483648 max: 2147483647 len: 255\n");
    EXPECT_EQ(describe({.min = 0, .max = 0, .pos = 0, .len = 0, .type = 0}),
              "arg: 1 type: \0 pos: 0 min: 0 max: 0 len: 0\n"s);
    EXPECT_EQ(describe({.min = 0, .max = 0, .pos = 0, .len = 0, .type = 255}),
              "arg: 1 type: \xFF pos: 0 min: 0 max: 0 len: 0\n");
}

TEST(ProjectorDump, ShowsTheCommandsOfAliases) {
    auto projector = modelWith("ON", "PON");
    projector.applyAliases({{"CMD_POWER_OFF", "&CMD_POWER_ON"}});
    EXPECT_EQ(dumpOf(projector), "  checksum: 0\n  commands: \n    OFF -> PON\n    ON -> PON\n");
}

}  // namespace
}  // namespace orx::test
