// Definition files that are refused, cut short, or whose counts lie.
#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/projector/DefinitionBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

class DefinitionDamage : public DefinitionBench {};

const std::string missingMagic =
    "insufficient mana (wrong or missing magic in projector definition file)";
const std::string wrongByteOrder = "wrong endianness in projector definition file";
const std::string wrongRevision = "projector definition file has wrong revision";

DefinitionImage soundImage() {
    return {.commands = {{1, "ON"}, {300, "ZOOM"}},
            .blocks = {{.name = "ONE",
                        .strings = {{1, "PON\r"}, {300, "Z=\r"}},
                        .descriptors = {{300, 1, -5, 255, 2, 3, 'A'}, {300, 2, 0, 9, 3, 0x23, 'D'}},
                        .checksum = 1},
                       {.name = "TWO", .strings = {{1, "on"}}, .baudrate = 300}}};
}

/// `bytes` with `value` in place of `size` of them.
std::string patched(std::string bytes, std::size_t offset, std::size_t size, std::uint32_t value) {
    return bytes.replace(offset, size, littleEndian(value, size));
}

TEST_F(DefinitionDamage, NeverTouchesTheMagicOfAFullHeader) {
    DefinitionImage image;
    for (const auto& magic : {"\x77\x81\x6A\xCD\xCC\xDF"s, "abcdef"s, std::string(6, '\0')}) {
        image.magic = magic;
        EXPECT_EQ(refusal(image.bytes()), "");
        EXPECT_EQ(image.bytes().size(), 22U);
    }
}

TEST_F(DefinitionDamage, LooksAtTheMagicOfAShortHeader) {
    DefinitionImage image;
    EXPECT_EQ(refusal(image.bytes().substr(0, 21)), "");
    image.magic.back() = '\xDE';
    EXPECT_EQ(refusal(image.bytes().substr(0, 21)), missingMagic);
    image.magic = "\x76\x81\x6A\xCD\xCC\xDF";
    EXPECT_EQ(refusal(image.bytes().substr(0, 21)), missingMagic);
    EXPECT_EQ(refusal(""), missingMagic);
    EXPECT_EQ(refusal(std::string(21, '\0')), missingMagic);
}

TEST_F(DefinitionDamage, ReadsTheMissingPartOfAShortHeaderAsZeros) {
    const std::string magic = DefinitionImage{}.magic;
    EXPECT_EQ(refusal(magic), wrongRevision);
    EXPECT_EQ(refusal(magic + "\0\0\0\0"s), wrongRevision);
    EXPECT_EQ(refusal(magic + "\xAB\0"s), wrongRevision);
    EXPECT_EQ(refusal(magic + "\xAB\x01"s), wrongByteOrder);
    auto file = open(magic + "\xAB\0\x0D"s);
    EXPECT_EQ(file.projector(""), nullptr);
    EXPECT_EQ(fileDump(file),
              "[HEADER]\n"
              "                  magic: [77 81 6a cd cc df ab]\n"
              "endiancheck 8bit random: 171\n"
              "               revision: 13\n"
              "           compile date: 0\n"
              "        cmd list length: 0\n"
              "                 # cmds: 0\n"
              "  projector list length: 0\n"
              "           # projectors: 0\n"
              "\n[COMMAND LIST]\n"
              "\n[PROJECTOR LIST]\n");
}

TEST_F(DefinitionDamage, ChecksTheByteOrder) {
    DefinitionImage image;
    for (const std::uint32_t check : {0U, 1U, 0xABU, 0xFFU}) {
        image.endianCheck = check;
        EXPECT_EQ(refusal(image.bytes()), "") << check;
    }
    for (const std::uint32_t check : {0x100U, 0xAB00U, 0x01FFU, 0xFFFFU}) {
        image.endianCheck = check;
        EXPECT_EQ(refusal(image.bytes()), wrongByteOrder) << check;
    }
}

TEST_F(DefinitionDamage, ChecksTheRevision) {
    DefinitionImage image;
    for (const std::uint32_t revision : {0U, 1U, 12U, 14U, 0x0D00U, 0x010DU, 0xFFFFU}) {
        image.revision = revision;
        EXPECT_EQ(refusal(image.bytes()), wrongRevision) << revision;
    }
    image.endianCheck = 0x100;
    EXPECT_EQ(refusal(image.bytes()), wrongByteOrder);  // the first of two mistakes
    EXPECT_EQ(refusal("x" + image.bytes().substr(1, 20)), missingMagic);
}

TEST_F(DefinitionDamage, TakesAFolderForAFileWithoutContent) {
    try {
        const ProjectorDefinitionFile file(folder.path().string());
        FAIL() << "opened";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), missingMagic);
    }
}

TEST_F(DefinitionDamage, ReadsAFileCutAtAnyLengthAsIfZerosFollowed) {
    const auto sound = soundImage().bytes();
    constexpr std::size_t magicSize = 6;
    constexpr std::size_t upToRevision = 9;
    for (std::size_t size = 0; size < sound.size(); ++size) {
        SCOPED_TRACE(size);
        const auto cut = sound.substr(0, size);
        if (size < magicSize) {
            EXPECT_EQ(refusal(cut), missingMagic);
        } else if (size < upToRevision) {
            EXPECT_EQ(refusal(cut), wrongRevision);
        } else {
            const auto padded = cut + std::string(70'000, '\0');
            auto file = open(cut);
            auto filled = open(padded);
            for (const std::string name : {"ONE", "TWO", ""})
                EXPECT_EQ(modelDump(file, name), modelDump(filled, name));
            EXPECT_EQ(fileDump(file), fileDump(filled));
        }
    }
}

TEST_F(DefinitionDamage, ReadsABlockBeyondTheEndAsZeros) {
    auto image = soundImage();
    const auto sound = image.bytes();
    const auto firstBlock =
        sound.size() - image.blocks[0].bytes().size() - image.blocks[1].bytes().size();
    auto file = open(sound.substr(0, firstBlock + 4));
    EXPECT_EQ(modelDump(file, "ONE"),
              "  baudrate: 9600\n"
              "  bytesize: 0\n"
              "     delay: 0\n"
              "    parity: 0\n"
              "  stopbits: 0\n"
              "   timeout: 0\n"
              "  checksum: 0\n"
              "  commands: \n");
    EXPECT_THAT(modelDump(file, "TWO"), HasSubstr("  baudrate: 0\n"));
}

TEST_F(DefinitionDamage, OfOneBlockLeavesTheOthersReadable) {
    const auto sound = soundImage().bytes();
    const auto list = sound.find("\x03ONE") - 4;
    for (const std::uint32_t offset : {0xFFFFU, static_cast<std::uint32_t>(sound.size())}) {
        auto file = open(patched(sound, list, 2, offset));
        EXPECT_EQ(file.serialSettings("ONE")->baudrate(), 0);
        EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 300);
        EXPECT_TRUE(file.projector("TWO")->supports("ON"));
    }
    // A list that claims to go on beyond the end of the file.
    auto file = open(patched(sound, 18, 2, 0xFFFF));
    EXPECT_EQ(file.serialSettings("TWO")->baudrate(), 300);
    EXPECT_EQ(file.serialSettings("ONE")->baudrate(), 9600);
}

TEST_F(DefinitionDamage, BeyondARegionIsZeroThoughTheFileGoesOn) {
    const auto sound = soundImage().bytes();
    // Two bytes short: the name ends in zeros, and the projector list begins within it.
    auto file = open(patched(patched(sound, 14, 2, 10), 20, 2, 0));
    EXPECT_THAT(fileDump(file), HasSubstr("  id: 01  cmd string: ON\n"
                                          "  id: 300  cmd string: ZO\0\0\n\n"s));
    // A block cut within its first string.
    const auto list = sound.find("\x03ONE") - 4;
    auto block = open(patched(sound, list + 2, 2, 14 + 5));
    EXPECT_THAT(modelDump(block, "ONE"),
                HasSubstr("     -> \n"
                          "                    arg: 0 type: \0 pos: 0 min: 0 max: 0 len: 0\n"
                          "    ON -> PO\\x00\\x00\n"s));
}

TEST_F(DefinitionDamage, OfACountGivesEmptyEntries) {
    const auto sound = soundImage().bytes();
    const auto block = sound.size() - soundImage().blocks[1].bytes().size();
    auto strings = open(patched(sound, block + 8, 2, 0xFFFF));
    EXPECT_THAT(modelDump(strings, "TWO"),
                testing::EndsWith("  commands: \n     -> \n    ON -> on\n"));
    auto descriptors = open(patched(sound, block + 10, 1, 0xFF));
    EXPECT_THAT(modelDump(descriptors, "TWO"), testing::EndsWith("  commands: \n    ON -> on\n"));
    auto commands = open(patched(sound, 16, 2, 0xFFFF));
    EXPECT_THAT(fileDump(commands), HasSubstr("[COMMAND LIST]\n"
                                              "  id: 00  cmd string: \n"
                                              "  id: 01  cmd string: ON\n"));
    auto projectors = open(patched(sound, 20, 2, 0xFFFF));
    EXPECT_NE(projectors.projector(""), nullptr);
    EXPECT_THAT(fileDump(projectors), HasSubstr("  name:   offset: 0 length: 0\n"
                                                "  name: ONE  offset: "));
}

TEST_F(DefinitionDamage, AnywhereInTheFileIsSurvived) {
    const auto sound = soundImage().bytes();
    const std::vector<char> values{'\0', '\x01', '\x7F', '\x80', '\xFF'};
    int opened = 0;
    for (std::size_t place = 0; place < sound.size(); ++place) {
        for (const char value : values) {
            auto bytes = sound;
            bytes[place] = value;
            if (!refusal(bytes).empty()) continue;
            ++opened;
            auto file = open(bytes);
            for (const std::string name : {"ONE", "TWO", ""})
                modelDump(file, name);
            EXPECT_THAT(fileDump(file), HasSubstr("\n[PROJECTOR LIST]\n")) << place;
        }
    }
    // Only two bytes of the header can have a file refused: the high one of the check value, and
    // the revision.
    const auto all = static_cast<int>(sound.size() * values.size());
    EXPECT_EQ(opened, all - 4 - 5 - 4);
}

}  // namespace
}  // namespace orx::test
