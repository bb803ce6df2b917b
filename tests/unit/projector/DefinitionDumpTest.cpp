// A definition file, printed.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/projector/DefinitionBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

class DefinitionDump : public DefinitionBench {};

const BlockImage plainBlock{.name = "DEMO"};

TEST_F(DefinitionDump, ShowsAFileWithoutContent) {
    EXPECT_EQ(fileDump(DefinitionImage{}.bytes()),
              "[HEADER]\n"
              "                  magic: [77 81 6a cd cc df ab]\n"
              "endiancheck 8bit random: 171\n"
              "               revision: 13\n"
              "           compile date: 20190613\n"
              "        cmd list length: 0\n"
              "                 # cmds: 0\n"
              "  projector list length: 0\n"
              "           # projectors: 0\n"
              "\n"
              "[COMMAND LIST]\n"
              "\n"
              "[PROJECTOR LIST]\n");
}

TEST_F(DefinitionDump, ShowsTheMagicUpToTheFirstZeroByte) {
    DefinitionImage image;
    image.endianCheck = 0;
    EXPECT_THAT(fileDump(image.bytes()), HasSubstr("magic: [77 81 6a cd cc df]\n"));
    image.magic = "ab\0cde"s;
    EXPECT_THAT(fileDump(image.bytes()), HasSubstr("magic: [61 62]\n"));
    image.magic = "\0bcdef"s;
    EXPECT_THAT(fileDump(image.bytes()), HasSubstr("magic: []\n"));
    image.endianCheck = 1;
    image.magic = "abcdef";
    EXPECT_THAT(fileDump(image.bytes()), HasSubstr("magic: [61 62 63 64 65 66 01]\n"));
}

TEST_F(DefinitionDump, ShowsTheCompileDateWithItsSign) {
    DefinitionImage image;
    for (const auto& [date, text] :
         {std::pair(0, "0"), std::pair(-1, "-1"), std::pair(2147483647, "2147483647"),
          std::pair(-2147483647 - 1, "-2147483648")}) {
        image.compileDate = date;
        EXPECT_THAT(fileDump(image.bytes()), HasSubstr("           compile date: "s + text + "\n"));
    }
}

TEST_F(DefinitionDump, ShowsCommandsInTheOrderOfTheirNumbersWithAtLeastTwoDigits) {
    const DefinitionImage image{
        .commands = {
            {107, "FOCUS"}, {7, "POWER"}, {0, ""}, {65535, "last"}, {10, "TEN"}, {9, "9"}}};
    EXPECT_THAT(fileDump(image.bytes()), HasSubstr("\n[COMMAND LIST]\n"
                                                   "  id: 00  cmd string: \n"
                                                   "  id: 07  cmd string: POWER\n"
                                                   "  id: 09  cmd string: 9\n"
                                                   "  id: 10  cmd string: TEN\n"
                                                   "  id: 107  cmd string: FOCUS\n"
                                                   "  id: 65535  cmd string: last\n"
                                                   "\n[PROJECTOR LIST]\n"));
}

TEST_F(DefinitionDump, ShowsTheNumberAndPlaceOfASmallFile) {
    DefinitionImage image{.commands = {{7, "POWER"}}};
    image.blocks = {{.name = "demo", .strings = {{7, "1234567890123"}}}};
    const auto dump = fileDump(image.bytes());
    EXPECT_THAT(dump, HasSubstr("  id: 07  cmd string: POWER\n"));
    EXPECT_THAT(dump, HasSubstr("  name: demo  offset: 39 length: 30\n"));
}

TEST_F(DefinitionDump, ShowsProjectorsInTheOrderOfTheirNames) {
    auto second = plainBlock;
    second.name = "A DEMO";
    second.baudrate = 300;
    auto third = plainBlock;
    third.name = "demo";
    third.baudrate = 600;
    DefinitionImage image;
    image.blocks = {third, plainBlock, second};
    const auto dump = fileDump(image.bytes());
    const std::string list =
        "\n[PROJECTOR LIST]\n"
        "  name: A DEMO  offset: 79 length: 14\n"
        "  name: DEMO  offset: 65 length: 14\n"
        "  name: demo  offset: 51 length: 14\n";
    const auto model = [](const std::string& name, const std::string& baudrate) {
        return "\n[PROJECTOR: " + name + "]\n  baudrate: " + baudrate +
               "\n  bytesize: 8\n     delay: 20\n    parity: 0\n  stopbits: 1\n   timeout: 100\n"
               "  checksum: 0\n  commands: \n";
    };
    EXPECT_THAT(dump, testing::EndsWith(list + model("A DEMO", "300") + model("DEMO", "9600") +
                                        model("demo", "600")));
}

TEST_F(DefinitionDump, ListsANumberThatABlockAddsOnceTheBlockWasRead) {
    DefinitionImage image{.commands = {{1, "ON"}}};
    image.blocks = {{.name = "DEMO",
                     .strings = {{1, "on"}, {42, "a"}, {5, "b"}},
                     .descriptors = {{6, 1, 0, 9, 0, 1, 'A'}}}};
    auto file = open(image.bytes());
    const std::string before = "\n[COMMAND LIST]\n  id: 01  cmd string: ON\n\n";
    const std::string after =
        "\n[COMMAND LIST]\n"
        "  id: 01  cmd string: ON\n"
        "  id: 05  cmd string: \n"
        "  id: 06  cmd string: \n"
        "  id: 42  cmd string: \n"
        "\n";
    const auto first = fileDump(file);  // reads the block after it has shown the command list
    EXPECT_THAT(first, HasSubstr(before));
    EXPECT_THAT(first, HasSubstr("  commands: \n"
                                 "     -> b\n"
                                 "                    arg: 1 type: A pos: 0 min: 0 max: 9 len: 1\n"
                                 "    ON -> on\n"));
    EXPECT_THAT(fileDump(file), HasSubstr(after));
    auto lookedUp = open(image.bytes());
    static_cast<void>(lookedUp.projector("DEMO"));
    EXPECT_THAT(fileDump(lookedUp), HasSubstr(after));
}

TEST_F(DefinitionDump, ShowsTheSameEveryTime) {
    DefinitionImage image{.commands = {{1, "ON"}}};
    image.blocks = {{.name = "DEMO", .strings = {{1, "on"}}}};
    auto file = open(image.bytes());
    const auto first = fileDump(file);
    EXPECT_EQ(fileDump(file), first);
}

TEST_F(DefinitionDump, LoadsEveryModel) {
    DefinitionImage image;
    image.blocks = {plainBlock};
    auto file = open(image.bytes());
    fileDump(file);
    folder.write("orx.ccd", "");  // nothing is left to be read
    EXPECT_EQ(file.serialSettings("DEMO")->baudrate(), 9600);
    EXPECT_NE(file.projector("DEMO"), nullptr);
}

}  // namespace
}  // namespace orx::test
