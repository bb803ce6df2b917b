// Definitions as bytes, and the limits of what the bytes can say.
#include <algorithm>
#include <cctype>

#include <gmock/gmock.h>

#include "Reading.h"
#include "orxdef/BinaryWriter.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The bytes that the pairs of hexadecimal digits in `text` say; everything else is layout.
std::string bytes(std::string_view text) {
    std::string digits;
    for (const char letter : text)
        if (std::isxdigit(static_cast<unsigned char>(letter)) != 0) digits += letter;
    std::string result;
    for (std::size_t index = 0; index + 1 < digits.size(); index += 2)
        result += static_cast<char>(std::stoi(digits.substr(index, 2), nullptr, 16));
    return result;
}

std::string hex(std::string_view image) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char letter : image) {
        const auto byte = static_cast<unsigned char>(letter);
        text.append({digits[byte >> 4], digits[byte & 0xF], ' '});
    }
    return text;
}

TEST(BinaryImage, hasEveryByteInItsPlace) {
    const auto image = imageOf(R"(
[[model]]
name = "AB"
baudrate = 115200
bytesize = 7
parity = "even"
stopbits = 2
timeout = 300
delay = 20
checksum = "sum8"
[model.commands]
ON = 'P1\r'
"F+++" = '\x00\xff'
TEST = { send = 'T{1},{2};', args = [
    { type = "A", len = 2, min = 0, max = 99 },
    { type = "X", len = 255, min = -2147483648, max = 2147483647 } ] }
KEYSTONEVERT = { send = 'K{1}', args = [
    { type = "D", digits = 3, decimals = 2, min = -50.0, max = 50 } ] }
[[model]]
name = "C"
baudrate = 4294967295
parity = "odd"
[model.commands]
OFF = 'P0'
ON = ''
)");
    const auto expected = bytes(
        // header
        "77 81 6A CD CC DF  A5 00  0D 00  00 00 00 00  28 00  05 00  0D 00  02 00"
        // command list: F+++, KEYSTONEVERT, OFF, ON, TEST
        "1C 00 04 46 2B 2B 2B"
        "35 00 0C 4B 45 59 53 54 4F 4E 45 56 45 52 54"
        "41 00 03 4F 46 46"
        "42 00 02 4F 4E"
        "59 00 04 54 45 53 54"
        // projector list: AB at 75 with 80 bytes, C at 155 with 22 bytes
        "4B 00  50 00  02 41 42"
        "9B 00  16 00  01 43"
        // block of AB: 115200, 300, 20, 4 strings, 3 descriptors, 7 bits, 2 stop bits even, sum8
        "00 C2 01 00  2C 01  14 00  04 00  03  07  22  01"
        "1C 00 02 00 FF"
        "35 00 01 4B"
        "42 00 03 50 31 0D"
        "59 00 03 54 2C 3B"
        "35 00  01 00  78 EC FF FF  88 13 00 00  01  23  44"
        "59 00  01 00  00 00 00 00  63 00 00 00  01  02  41"
        "59 00  02 00  00 00 00 80  FF FF FF 7F  02  FF  58"
        // block of C: fastest, 100, 0, 2 strings, none, 8 bits, 1 stop bit odd, no checksum
        "FF FF FF FF  64 00  00 00  02 00  00  08  11  00"
        "41 00 02 50 30"
        "42 00 00");
    EXPECT_EQ(hex(image), hex(expected));
}

TEST(BinaryImage, isTheSameForTheSameModelsInAnotherLayout) {
    const auto spread = modelWith("ON = 'a'\nOFF = 'b'");
    const auto packed = "model=[{commands={OFF='b',ON='a'},baudrate=9600,name='M'}] # as above\n";
    EXPECT_EQ(hex(imageOf(spread)), hex(imageOf(packed)));
}

TEST(BinaryImage, keepsTheModelsInTheOrderGiven) {
    const auto image = imageOf(
        "[[model]]\nname = 'Z'\nbaudrate = 1\n"
        "[[model]]\nname = 'A'\nbaudrate = 2\n");
    EXPECT_EQ(hex(image.substr(22, 12)), hex(bytes("22 00 0E 00 01 5A  30 00 0E 00 01 41")));
}

/// A model without a mistake, its place telling it from others.
ModelDefinition model(std::string name, std::uint32_t line) {
    ModelDefinition model;
    model.place = {0, line, 8};
    model.name = std::move(name);
    return model;
}

Lines limitsPassedBy(std::vector<ModelDefinition> models) {
    Mistakes mistakes({"m.toml"});
    DefinitionSet definitions;
    definitions.models = std::move(models);
    const auto image = binaryImage(definitions, mistakes);
    EXPECT_EQ(image.has_value(), mistakes.empty());
    return mistakes.lines();
}

ModelDefinition modelWithArguments(std::size_t count) {
    auto result = model("M", 2);
    result.descriptors.resize(count);
    return result;
}

TEST(BinaryImage, takes255ArgumentsAModelAndNotOneMore) {
    EXPECT_THAT(limitsPassedBy({modelWithArguments(255)}), IsEmpty());
    EXPECT_THAT(
        limitsPassedBy({modelWithArguments(256)}),
        ElementsAre(R"(m.toml:2:8: "M" has 256 arguments in all, at most 255 are possible)"));
}

/// A block of exactly `size` bytes: 14 of header, 3 and the text for each command.
ModelDefinition blockOf(std::string name, std::uint32_t line, std::size_t size) {
    auto result = model(std::move(name), line);
    for (auto rest = size - 14; rest > 0;) {
        const auto piece = std::min<std::size_t>(rest > 258 && rest < 261 ? 200 : 258, rest);
        result.strings.push_back({{}, 1, std::string(piece - 3, 'x')});
        rest -= piece;
    }
    return result;
}

TEST(BinaryImage, hasNoBlockLongerThan65535Bytes) {
    EXPECT_THAT(limitsPassedBy({blockOf("M", 2, 65536)}),
                testing::Contains("m.toml:2:8: \"M\" has 65536 bytes of commands and arguments, at "
                                  "most 65535 are possible"));
    EXPECT_THAT(limitsPassedBy({blockOf("M", 2, 65535)}),
                testing::Not(testing::Contains(testing::HasSubstr("commands and arguments"))));
}

TEST(BinaryImage, hasNoBlockBeyondTheFirst64KiBytes) {
    // 22 bytes of header and 3 times 6 of the models go before the blocks.
    constexpr std::size_t room = 65536 - 22 - 18;
    const auto fill = [](std::size_t third) {
        return limitsPassedBy(
            {blockOf("A", 1, 20000), blockOf("B", 2, 20000), blockOf("C", 3, third)});
    };
    EXPECT_THAT(fill(room - 40000), IsEmpty());
    EXPECT_THAT(fill(room - 40000 + 1),
                ElementsAre(R"(m.toml:3:8: "C" would end at byte 65537 of the file, )"
                            "at most 65536 are possible"));
}

TEST(BinaryImage, namesOnlyTheFirstModelThatLiesTooFarOut) {
    EXPECT_THAT(
        limitsPassedBy({blockOf("A", 1, 60000), blockOf("B", 2, 20000), blockOf("C", 3, 20000)}),
        ElementsAre(R"(m.toml:2:8: "B" would end at byte 80040 of the file, )"
                    "at most 65536 are possible"));
}

TEST(BinaryImage, hasNoProjectorListLongerThan65535Bytes) {
    std::vector<ModelDefinition> models;
    for (std::uint32_t line = 1; line <= 253; ++line)
        models.push_back(model(std::string(255, 'n'), line));
    const auto lines = limitsPassedBy(models);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "m.toml:253:8: the projector list grows beyond 65535 bytes with \"" +
                            std::string(255, 'n') + "\"");
}

TEST(BinaryImage, hasNoCommandListLongerThan65535Bytes) {
    DefinitionSet definitions;
    definitions.models = {model("M", 2)};
    for (std::uint16_t number = 0; number < 255; ++number)
        definitions.commandList.push_back({{}, number, std::string(255, 'k')});
    Mistakes mistakes({"m.toml"});
    EXPECT_FALSE(binaryImage(definitions, mistakes).has_value());
    EXPECT_THAT(mistakes.lines(),
                testing::Contains("m.toml:2:8: the command list takes 65790 bytes, at most 65535 "
                                  "can be said"));
}

}  // namespace
}  // namespace orx::orxdef
