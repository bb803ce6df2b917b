// Opening a definition file and looking up its models.
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "unit/projector/DefinitionBench.h"
#include "unit/projector/ModelBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

class DefinitionFile : public DefinitionBench {};

/// Two commands and two models, byte by byte.
const std::string handmade =
    "\x77\x81\x6A\xCD\xCC\xDF"  // magic
    "\xAB\x00"                  // byte order
    "\x0D\x00"                  // revision
    "\xE5\x13\x34\x01"          // compile date
    "\x0E\x00\x02\x00"          // command list: 14 bytes, 2 entries
    "\x10\x00\x02\x00"          // projector list: 16 bytes, 2 entries
    "\x07\x00\x04ZOOM"
    "\x2C\x01\x04LAMP"
    "\x34\x00\x2A\x00\x03ONE"  // at 52, 42 bytes
    "\x5E\x00\x0E\x00\x03TWO"  // at 94, 14 bytes
    // ONE
    "\x00\xC2\x01\x00"  // 115200 baud
    "\x2C\x01\x2D\x00"  // timeout 300, delay 45
    "\x02\x00\x01"      // 2 strings, 1 descriptor
    "\x07\x21\x01"      // 7 bits, 2 stop bits, odd parity, checksum
    "\x2C\x01\x00"      // LAMP: nothing
    "\x07\x00\x07Z\x00\r\xFF!;;"
    "\x07\x00\x01\x00\x78\xEC\xFF\xFF\x88\x13\x00\x00\x02\x23\x44"
    // TWO
    "\x80\x25\x00\x00\x32\x00\x14\x00\x00\x00\x00\x08\x12\x00"s;

TEST_F(DefinitionFile, IsReadByteByByte) {
    ASSERT_EQ(handmade.size(), 52U + 42U + 14U);
    EXPECT_EQ(fileDump(handmade),
              "[HEADER]\n"
              "                  magic: [77 81 6a cd cc df ab]\n"
              "endiancheck 8bit random: 171\n"
              "               revision: 13\n"
              "           compile date: 20190181\n"
              "        cmd list length: 14\n"
              "                 # cmds: 2\n"
              "  projector list length: 16\n"
              "           # projectors: 2\n"
              "\n"
              "[COMMAND LIST]\n"
              "  id: 07  cmd string: ZOOM\n"
              "  id: 300  cmd string: LAMP\n"
              "\n"
              "[PROJECTOR LIST]\n"
              "  name: ONE  offset: 52 length: 42\n"
              "  name: TWO  offset: 94 length: 14\n"
              "\n"
              "[PROJECTOR: ONE]\n"
              "  baudrate: 115200\n"
              "  bytesize: 7\n"
              "     delay: 45\n"
              "    parity: 1\n"
              "  stopbits: 2\n"
              "   timeout: 300\n"
              "  checksum: 1\n"
              "  commands: \n"
              "    LAMP -> \n"
              "    ZOOM -> Z\\x00\\x0d\\xff!;;\n"
              "                    arg: 1 type: D pos: 2 min: -50 max: 50 len: 3.2\n"
              "\n"
              "[PROJECTOR: TWO]\n"
              "  baudrate: 9600\n"
              "  bytesize: 8\n"
              "     delay: 20\n"
              "    parity: 2\n"
              "  stopbits: 1\n"
              "   timeout: 50\n"
              "  checksum: 0\n"
              "  commands: \n");
}

TEST_F(DefinitionFile, GivesTheModelOfAName) {
    auto file = open(handmade);
    const auto projector = file.projector("ONE");
    ASSERT_NE(projector, nullptr);
    EXPECT_EQ(bytesFor(*projector, "ZOOM 1,5"), "Z\0+001.50\r\xFF!;;L"s);
    EXPECT_TRUE(projector->supports("LAMP"));
    EXPECT_FALSE(projector->supports("ON"));
    const auto settings = file.serialSettings("ONE");
    ASSERT_NE(settings, nullptr);
    EXPECT_EQ(settings->baudrate(), 115200);
    EXPECT_EQ(settings->delay(), 45);
    EXPECT_EQ(settings->debug(), 0);
    EXPECT_EQ(settings->device(), "");
}

TEST_F(DefinitionFile, HasNothingForANameThatIsNotListed) {
    auto file = open(handmade);
    for (const std::string& name :
         {""s, "one"s, "One"s, "ONE "s, " ONE"s, "ON"s, "ONES"s, "ONE\0"s}) {
        EXPECT_EQ(file.projector(name), nullptr) << name;
        EXPECT_EQ(file.serialSettings(name), nullptr) << name;
    }
}

TEST_F(DefinitionFile, IsReadTheSameWhicheverIsAskedForFirst) {
    auto settingsFirst = open(handmade);
    auto projectorFirst = open(handmade);
    const auto settings = settingsFirst.serialSettings("ONE");
    const auto projector = projectorFirst.projector("ONE");
    EXPECT_EQ(dumpOf(*settingsFirst.projector("ONE")), dumpOf(*projector));
    EXPECT_EQ(outputOf([&] { settings->dump(); }),
              outputOf([&] { projectorFirst.serialSettings("ONE")->dump(); }));
}

TEST_F(DefinitionFile, GivesModelsInAnyOrder) {
    auto file = open(handmade);
    EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 9600);
    EXPECT_EQ(file.serialSettings("ONE")->baudrate(), 115200);
    EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 9600);
}

TEST_F(DefinitionFile, HandsOutCopies) {
    auto file = open(handmade);
    const auto before = fileDump(file);
    const auto projector = file.projector("ONE");
    const auto settings = file.serialSettings("ONE");
    projector->applyAliases({{"CMD_POWER_ON", "&CMD_ZOOM_ABS"}});
    settings->setDelay(9);
    settings->readConfiguration(MainConfig(folder.write("orx.cfg", "serial.baudrate = 300")));
    EXPECT_EQ(fileDump(file), before);
    EXPECT_NE(file.projector("ONE"), projector);
    EXPECT_FALSE(file.projector("ONE")->supports("ON"));
    EXPECT_NE(file.serialSettings("ONE"), settings);
    EXPECT_EQ(file.serialSettings("ONE")->delay(), 45);
    EXPECT_EQ(file.serialSettings("ONE")->baudrate(), 115200);
}

TEST_F(DefinitionFile, ReadsABlockOnlyOnce) {
    auto file = open(handmade);
    const auto first = modelDump(file, "ONE");
    // In place, so that the open file sees it.
    std::fstream changed(folder.path() / "orx.ccd",
                         std::ios::in | std::ios::out | std::ios::binary);
    changed.seekp(52);
    changed << std::string(handmade.size() - 52, '\0') << std::flush;
    EXPECT_EQ(modelDump(file, "ONE"), first);
    EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 0);  // was not read before the change
}

TEST_F(DefinitionFile, KeepsTheFileOpen) {
    auto file = open(handmade);
    std::filesystem::remove(folder.path() / "orx.ccd");
    EXPECT_EQ(file.serialSettings("ONE")->baudrate(), 115200);
    EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 9600);
}

TEST_F(DefinitionFile, IsMissingWhereItCannotBeOpened) {
    for (const auto& path : {folder.file("none.ccd"), folder.file("no/orx.ccd"), ""s}) {
        try {
            const ProjectorDefinitionFile file(path);
            FAIL() << "opened " << path;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), "projector definition file " + path + " not found");
        }
    }
}

TEST_F(DefinitionFile, TakesTheLaterOfTwoEntriesOfAName) {
    DefinitionImage image{.commands = {{1, "ON"}, {1, "OFF"}, {2, "ZOOM"}, {3, "ZOOM"}}};
    image.blocks = {
        {.name = "DEMO", .baudrate = 300},
        {.name = "DEMO",
         .strings = {{1, "first"}, {2, "two"}, {1, "second"}, {3, "three"}},
         .descriptors = {{2, 1, 0, 1, 2, 3, 'A'}, {3, 1, 4, 5, 6, 7, 'B'}, {2, 2, 8, 9, 0, 1, 'X'}},
         .baudrate = 600},
    };
    auto file = open(image.bytes());
    EXPECT_EQ(file.serialSettings("DEMO")->baudrate(), 600);
    EXPECT_EQ(dumpOf(*file.projector("DEMO")),
              "  checksum: 0\n"
              "  commands: \n"
              "    OFF -> second\n"
              "    ZOOM -> three\n"
              "                    arg: 1 type: B pos: 6 min: 4 max: 5 len: 7\n"
              "                    arg: 2 type: X pos: 0 min: 8 max: 9 len: 1\n");
}

TEST_F(DefinitionFile, ReadsEveryFieldToItsFullWidth) {
    DefinitionImage image{.commands = {{65535, "ZOOM"}}};
    image.blocks = {{.name = std::string(255, 'n'),
                     .strings = {{65535, std::string(255, '\x80')}},
                     .descriptors = {{65535, 65535, -2147483647 - 1, 2147483647, 255, 255, 'I'}},
                     .baudrate = 4'000'000,
                     .timeout = 65535,
                     .delay = 65535,
                     .bytesize = 255,
                     .stopbits = 15,
                     .parity = 15,
                     .checksum = 255}};
    auto file = open(image.bytes());
    std::string escaped;
    for (int count = 0; count < 255; ++count)
        escaped += "\\x80";
    EXPECT_EQ(modelDump(file, std::string(255, 'n')),
              "  baudrate: 4000000\n"
              "  bytesize: 255\n"
              "     delay: 65535\n"
              "    parity: 15\n"
              "  stopbits: 15\n"
              "   timeout: 65535\n"
              "  checksum: 255\n"
              "  commands: \n"
              "    ZOOM -> " +
                  escaped +
                  "\n                    arg: 65535 type: I pos: 255 min: -2147483648 max: "
                  "2147483647 len: 255\n");
}

TEST_F(DefinitionFile, HoldsAsManyStringsAndDescriptorsAsItSays) {
    DefinitionImage image;
    BlockImage block{.name = "DEMO"};
    for (int id = 0; id < 300; ++id) {
        image.commands.emplace_back(id, "C" + std::to_string(1000 + id));
        block.strings.emplace_back(id, std::to_string(id));
        if (id < 255) block.descriptors.push_back({id, 1, id, 1000, 1, 2, 'A'});
    }
    image.blocks = {block};
    auto file = open(image.bytes());
    std::string expected = "  checksum: 0\n  commands: \n";
    for (int id = 0; id < 300; ++id) {
        const auto number = std::to_string(id);
        expected.append("    C").append(std::to_string(1000 + id)).append(" -> ");
        expected.append(number).append("\n");
        if (id >= 255) continue;
        expected.append("                    arg: 1 type: A pos: 1 min: ").append(number);
        expected.append(" max: 1000 len: 2\n");
    }
    EXPECT_EQ(dumpOf(*file.projector("DEMO")), expected);
}

}  // namespace
}  // namespace orx::test
