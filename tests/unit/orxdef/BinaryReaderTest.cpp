// Definition files as they are read for the tools: every entry in its place, every damage reported.
#include <gmock/gmock.h>

#include "Reading.h"
#include "orxdef/BinaryReader.h"
#include "support/DefinitionImage.h"

namespace orx::orxdef {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// A file with two commands and one model: command list at 22, projector list at 33, block at 39.
test::DefinitionImage smallImage() {
    test::DefinitionImage image;
    image.commands = {{5, "ON"}, {6, "INP"}};
    image.blocks = {{.name = "M",
                     .strings = {{5, "on"}, {6, "i"}},
                     .descriptors = {{6, 1, -2, 300, 1, 3, 'B'}}}};
    return image;
}

Lines damageOf(const std::string& image) {
    Mistakes mistakes({"m.ccd"});
    static_cast<void>(readBinary(image, 0, mistakes));
    return mistakes.lines();
}

/// The image with one byte of it changed.
std::string changed(std::string image, std::size_t offset, int value) {
    image.at(offset) = static_cast<char>(value);
    return image;
}

TEST(BinaryReader, readsEveryFieldWithItsPlace) {
    Mistakes mistakes({"m.ccd"});
    const auto set = readBinary(smallImage().bytes(), 0, mistakes);
    EXPECT_THAT(mistakes.lines(), IsEmpty());
    EXPECT_EQ(set.endianCheck, 0xAB);
    EXPECT_EQ(set.compileDate, 20190613);
    EXPECT_EQ(set.commandListLength, 11);
    EXPECT_EQ(set.projectorListLength, 6);
    ASSERT_THAT(set.commandList, SizeIs(2));
    EXPECT_EQ(set.commandList[1].id, 6);
    EXPECT_EQ(set.commandList[1].name, "INP");
    EXPECT_EQ(set.commandList[1].place.byte, 27U);
    ASSERT_THAT(set.models, SizeIs(1));
    const auto& model = set.models[0];
    EXPECT_EQ(model.name, "M");
    EXPECT_EQ(model.place.byte, 33U);
    EXPECT_EQ(model.blockOffset, 39);
    EXPECT_EQ(model.blockLength, 14 + 5 + 4 + 15);
    ASSERT_THAT(model.strings, SizeIs(2));
    EXPECT_EQ(model.strings[1].bytes, "i");
    EXPECT_EQ(model.strings[1].place.byte, 58U);
    ASSERT_THAT(model.descriptors, SizeIs(1));
    const auto& argument = model.descriptors[0];
    EXPECT_EQ(argument.id, 6);
    EXPECT_EQ(argument.number, 1);
    EXPECT_EQ(argument.min, -2);
    EXPECT_EQ(argument.max, 300);
    EXPECT_EQ(argument.pos, 1);
    EXPECT_EQ(argument.len, 3);
    EXPECT_EQ(argument.type, 'B');
    EXPECT_EQ(argument.place.byte, 62U);
    EXPECT_THAT(set.fillers, IsEmpty());
}

TEST(BinaryReader, readsTheLineSettings) {
    auto image = smallImage();
    image.blocks[0].baudrate = 0xFFFFFFFF;
    image.blocks[0].timeout = 65535;
    image.blocks[0].delay = 258;
    image.blocks[0].bytesize = 200;
    image.blocks[0].stopbits = 15;
    image.blocks[0].parity = 14;
    image.blocks[0].checksum = 255;
    Mistakes mistakes({"m.ccd"});
    const auto model = readBinary(image.bytes(), 0, mistakes).models.at(0);
    EXPECT_EQ(model.line.baudrate, 0xFFFFFFFF);
    EXPECT_EQ(model.line.timeout, 65535);
    EXPECT_EQ(model.line.delay, 258);
    EXPECT_EQ(model.line.bytesize, 200);
    EXPECT_EQ(model.line.stopbits, 15);
    EXPECT_EQ(static_cast<int>(model.line.parity), 14);
    EXPECT_EQ(static_cast<int>(model.checksum), 255);
}

TEST(BinaryReader, reportsEveryDamageAtItsPlace) {
    const auto image = smallImage().bytes();
    ASSERT_EQ(image.size(), 77U);
    EXPECT_THAT(damageOf(image.substr(0, 21)),
                ElementsAre("m.ccd:byte 0: the header is cut short: 21 bytes of 22"));
    EXPECT_THAT(damageOf(changed(image, 7, 1)),
                ElementsAre("m.ccd:byte 6: wrong byte order: the check value is 427, at most 255 "
                            "can be"));
    EXPECT_THAT(damageOf(changed(image, 8, 12)),
                ElementsAre("m.ccd:byte 8: revision 12; only 13 can be read"));
    EXPECT_THAT(damageOf(changed(image, 16, 3)),
                ElementsAre("m.ccd:byte 33: entry 3 of 3 of the command list is cut short"));
    EXPECT_THAT(damageOf(changed(image, 29, 4)),
                ElementsAre("m.ccd:byte 27: entry 2 of 2 of the command list is cut short"));
    EXPECT_THAT(damageOf(changed(image, 20, 2)),
                ElementsAre("m.ccd:byte 39: entry 2 of 2 of the projector list is cut short"));
    EXPECT_THAT(damageOf(changed(image, 35, 13)),
                ElementsAre("m.ccd:byte 39: the block of \"M\" has no room for its header"));
    EXPECT_THAT(damageOf(changed(image, 35, 39)),
                ElementsAre("m.ccd:byte 39: the block of \"M\" is cut short: bytes 39 to 78 of a "
                            "file of 77"));
    EXPECT_THAT(damageOf(changed(image, 35, 22)),
                ElementsAre("m.ccd:byte 58: entry 2 of 2 with the strings of \"M\" is cut short"));
    EXPECT_THAT(
        damageOf(changed(image, 49, 2)),
        ElementsAre("m.ccd:byte 77: entry 2 of 2 with the arguments of \"M\" is cut short"));
}

TEST(BinaryReader, reportsWhatLiesBehindTheEndOfTheFile) {
    const auto image = smallImage().bytes();
    EXPECT_THAT(damageOf(image.substr(0, 30)),
                ElementsAre("m.ccd:byte 22: the command list is cut short: bytes 22 to 33 of a "
                            "file of 30",
                            "m.ccd:byte 27: entry 2 of 2 of the command list is cut short",
                            "m.ccd:byte 30: the projector list is cut short: bytes 33 to 39 of a "
                            "file of 30",
                            "m.ccd:byte 33: entry 1 of 1 of the projector list is cut short"));
}

TEST(BinaryReader, reportsACutAtAnyLength) {
    const auto image = smallImage().bytes();
    for (std::size_t size = 0; size < image.size(); ++size)
        EXPECT_THAT(damageOf(image.substr(0, size)), Contains(StartsWith("m.ccd:byte "))) << size;
}

TEST(BinaryReader, reportsAnyCountThatIsTooHigh) {
    const auto image = smallImage().bytes();
    struct Count {
        std::size_t lowByte;
        int bytes;
        std::string message;
    };
    for (const auto& [lowByte, bytes, message] :
         std::vector<Count>{{16, 2, " of the command list is cut short"},
                            {20, 2, " of the projector list is cut short"},
                            {39 + 8, 2, " with the strings of \"M\" is cut short"},
                            {39 + 10, 1, " with the arguments of \"M\" is cut short"}}) {
        for (const int value : {127, 128, 255})
            EXPECT_THAT(damageOf(changed(image, lowByte, value)), Contains(HasSubstr(message)));
        if (bytes == 1) continue;
        for (const int value : {1, 128, 255})
            EXPECT_THAT(damageOf(changed(image, lowByte + 1, value)), Contains(HasSubstr(message)));
    }
}

TEST(BinaryReader, goesOnBehindADamagedBlock) {
    auto damaged = smallImage();
    damaged.blocks.push_back({.name = "N", .strings = {{5, "on"}}});
    // Model N begins at byte 39 of the projector list; its length stands two bytes on.
    Mistakes mistakes({"m.ccd"});
    const auto set = readBinary(changed(damaged.bytes(), 35, 22), 0, mistakes);
    EXPECT_THAT(mistakes.lines(), SizeIs(1));
    ASSERT_THAT(set.models, SizeIs(2));
    EXPECT_THAT(set.models[1].strings, SizeIs(1));
}

TEST(BinaryReader, keepsBytesThatBelongToNothing) {
    Mistakes mistakes({"m.ccd"});
    const auto set = readBinary(smallImage().bytes() + std::string(3, '\0'), 0, mistakes);
    ASSERT_THAT(set.fillers, SizeIs(1));
    EXPECT_EQ(set.fillers[0].offset, 77U);
    EXPECT_EQ(set.fillers[0].bytes, std::string(3, '\0'));
}

}  // namespace
}  // namespace orx::orxdef
