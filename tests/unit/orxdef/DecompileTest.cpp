// Definition files given back as TOML.
#include <sstream>

#include <gmock/gmock.h>

#include "GeneratedDefinitions.h"
#include "Reading.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/Decompile.h"
#include "orxdef/TomlWriter.h"
#include "support/DefinitionImage.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

/// The TOML for a definition file; reading it must show no damage.
std::string decompiled(const std::string& image) {
    Mistakes mistakes({"m.ccd"});
    const auto definitions = readBinary(image, 0, mistakes);
    EXPECT_THAT(mistakes.lines(), IsEmpty());
    return tomlText(definitions);
}

class DecompileFile : public testing::Test {
  protected:
    int run(const std::string& image) {
        const auto path = folder.write("orx.ccd", image);
        std::ostringstream out;
        std::ostringstream err;
        const auto status = decompile(path, out, err);
        output = out.str();
        errors = err.str();
        return status;
    }

    test::TemporaryFolder folder;
    std::string output;
    std::string errors;
};

TEST(DecompiledText, isWhatAPersonWouldHaveWritten) {
    const std::string text = R"([[model]]
name = "AB \"1\""
baudrate = 9600
bytesize = 7
parity = "even"
stopbits = 2
timeout = 300
delay = 20
checksum = "sum8"

[model.commands]
"AZ+" = '\x02Z>\\\t\x27{{\x03\r\n'
INPUT = { send = 'IN{1};', args = [{ type = "A", len = 2, min = 0, max = 99 }] }
KEYSTONEVERT = { send = 'K{1}', args = [
    { type = "D", digits = 3, decimals = 2, min = -50, max = 12.34 }] }
ON = 'P1'
TEST = { send = '{1}{2}', args = [
    { type = "X", len = 2, min = -1, max = 255 },
    { type = "I", len = 4, min = -2147483648, max = 2147483647 }] }

[[model]]
name = "C"
baudrate = 4294967295
parity = "odd"
)";
    EXPECT_EQ(decompiled(imageOf(text)), text);
}

TEST(DecompiledText, saysWhatThePlainFormCannotSayInTablesOfItsOwn) {
    test::DefinitionImage image;
    image.commands = {{9, "ON"}, {7, "POWER"}, {7, "\xFFX"}};
    image.blocks = {{.name = "M",
                     .strings = {{9, "on"}, {7, "p"}},
                     .descriptors = {{9, 2, 5, 3, 9, 0x23, 'D'}, {7, 1, 0, 1, 0, 1, '\x01'}},
                     .bytesize = 9,
                     .stopbits = 3,
                     .parity = 7,
                     .checksum = 5}};
    EXPECT_EQ(decompiled(image.bytes() + "end"), R"([verbatim]
endiancheck = 171
compiledate = 20190613
commands = [{ id = 9, name = 'ON' }, { id = 7, name = 'POWER' }, { id = 7, name = '\xffX' }]
fillers = [{ offset = 99, bytes = 'end' }]

[[model]]
name = "M"
baudrate = 9600
delay = 20

[model.verbatim]
bytesize = 9
parity = 7
stopbits = 3
checksum = 5
strings = [{ id = 9, bytes = 'on' }, { id = 7, bytes = 'p' }]
descriptors = [
    { id = 9, number = 2, type = "D", len = 35, pos = 9, min = 5, max = 3 },
    { id = 7, number = 1, type = 1, len = 1, pos = 0, min = 0, max = 1 }]
)");
}

TEST(DecompiledText, keepsTheOrderOfTheCommandsAndOddArgumentsBesidePlainOnes) {
    test::DefinitionImage image;
    image.endianCheck = usualEndianCheck;
    image.compileDate = 0;
    image.commands = {{1, "ON"}, {2, "INPUT"}};
    image.blocks = {
        {.name = "M", .strings = {{1, "on"}, {2, "in"}}, .descriptors = {{2, 3, 0, 9, 7, 1, 'A'}}}};
    EXPECT_THAT(decompiled(image.bytes()), HasSubstr(R"(
[model.commands]
ON = 'on'
INPUT = { send = 'in', verbatim = [{ number = 3, type = "A", len = 1, pos = 7, min = 0, max = 9 }] }

[model.verbatim]
order = ["ON", "INPUT"]
)"));
}

TEST(DecompiledText, compilesToTheSameBytesForGeneratedFiles) {
    int withVerbatim = 0;
    for (unsigned seed = 0; seed < 500; ++seed) {
        const auto image = DefinitionGenerator(seed).makeImage();
        ASSERT_NE(image, "") << seed;
        const auto text = decompiled(image);
        ASSERT_THAT(mistakesIn(text), IsEmpty()) << "seed " << seed << "\n" << text;
        ASSERT_EQ(imageOf(text), image) << "seed " << seed << "\n" << text;
        withVerbatim += text.find("verbatim") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(withVerbatim, 250);
    EXPECT_LT(withVerbatim, 500);
}

TEST(DecompiledText, isPlainForWhatTheCompilerMakesOfPlainText) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        const auto text = decompiled(DefinitionGenerator(seed).makeImage());
        if (text.starts_with("[verbatim]")) continue;
        const auto again = decompiled(imageOf(text));
        EXPECT_EQ(again, text) << seed;
    }
}

TEST(DecompiledText, saysWhereListsAndBlocksAreLongerThanTheirEntries) {
    DefinitionSet set;
    set.commandList = {{{}, 66, "ON"}};
    set.commandListLength = 9;
    set.projectorListLength = 20;
    set.models.resize(1);
    set.models[0].name = "M";
    set.models[0].strings = {{{}, 66, "x"}};
    set.models[0].blockLength = 40;
    set.fillers = {{{}, 28, "abc"}, {{}, 70, std::string(21, '\0')}};
    Mistakes mistakes({"m"});
    const auto image = binaryImage(set, mistakes);
    ASSERT_TRUE(image.has_value());
    ASSERT_EQ(image->size(), 91U);
    const auto text = decompiled(*image);
    EXPECT_THAT(text, HasSubstr("commandlistlength = 9\nprojectorlistlength = 20\n"));
    EXPECT_THAT(text, HasSubstr("length = 40\n"));
    EXPECT_EQ(imageOf(text), *image);
}

TEST(DecompiledText, letsTwoModelsShareABlock) {
    const auto image = imageOf(
        "[[model]]\nname = 'A'\nbaudrate = 1\n"
        "[[model]]\nname = 'B'\nbaudrate = 1\n[model.verbatim]\noffset = 34\n");
    ASSERT_EQ(image.size(), 22U + 12U + 14U);
    EXPECT_EQ(imageOf(decompiled(image)), image);
}

TEST(DecompiledText, repeatsModelNamesAndTakesNamesThatAreKeysOfTheForm) {
    test::DefinitionImage image;
    image.commands = {{1, "timeout"}, {2, "commands"}};
    image.blocks = {{.name = "M", .strings = {{1, "a"}, {2, "b"}}}, {.name = "M"}};
    const auto text = decompiled(image.bytes());
    EXPECT_THAT(text, HasSubstr("[model.commands]\ntimeout = 'a'\ncommands = 'b'\n"));
    EXPECT_THAT(text, HasSubstr("[model.verbatim]\nname = 'M'\n"));
    EXPECT_EQ(imageOf(text), image.bytes());
}

TEST(DecompiledText, keepsLongTails) {
    const auto image = imageOf("[[model]]\nname = 'A'\nbaudrate = 1\n");
    for (const char byte : {'\0', 'x'}) {
        const auto longImage = image + std::string(1'100'000, byte);
        EXPECT_TRUE(imageOf(decompiled(longImage)) == longImage) << static_cast<int>(byte);
    }
}

TEST(DecompiledText, keepsABlockThatBeginsWithinReachAndEndsBeyond) {
    DefinitionSet set;
    set.models.resize(2);
    set.models[0].name = "A";
    set.models[0].blockLength = 65480;
    set.models[1].name = "B";
    set.models[1].blockOffset = 22 + 2 * 6 + 65480;
    set.models[1].strings = {{{}, 1, std::string(200, 'x')}};
    Mistakes mistakes({"m"});
    const auto image = binaryImage(set, mistakes).value_or("");
    ASSERT_GT(image.size(), 65536U);
    EXPECT_EQ(imageOf(decompiled(image)), image);
}

TEST_F(DecompileFile, printsTheText) {
    EXPECT_EQ(run(imageOf("[[model]]\nname = 'A'\nbaudrate = 1\n")), 0);
    EXPECT_EQ(output, "[[model]]\nname = \"A\"\nbaudrate = 1\n");
    EXPECT_EQ(errors, "");
}

TEST_F(DecompileFile, refusesEveryFileThatIsCutShort) {
    const auto image = DefinitionGenerator(3).makeImage();
    ASSERT_GT(image.size(), 200U);
    for (std::size_t size = 0; size + 1 < image.size(); size += size < 200 ? 1 : 13) {
        EXPECT_EQ(run(image.substr(0, size)), 1) << size;
        EXPECT_EQ(output, "") << size;
        EXPECT_THAT(errors, HasSubstr("cut short")) << size;
    }
}

TEST_F(DecompileFile, givesBackOrRefusesWhateverTheBytes) {
    DefinitionGenerator random(1);
    int readable = 0;
    for (unsigned round = 0; round < 1500; ++round) {
        auto image = DefinitionGenerator(round % 50).makeImage();
        const auto changes = 1 + random.number(4);
        for (unsigned change = 0; change < changes; ++change)
            image[random.number(static_cast<unsigned>(image.size()))] =
                static_cast<char>(random.number(256));
        const auto status = run(image);
        if (status == 0) {
            ASSERT_EQ(imageOf(output), image) << round;
            ++readable;
            continue;
        }
        ASSERT_EQ(status, 1) << round;
        EXPECT_EQ(output, "") << round;
        EXPECT_THAT(errors, Not(IsEmpty())) << round;
    }
    EXPECT_GT(readable, 300);
    EXPECT_LT(readable, 1500);
}

TEST_F(DecompileFile, saysWhyAFileCannotBeRead) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(decompile(folder.file("none.ccd"), out, err), 1);
    EXPECT_THAT(err.str(),
                MatchesRegex(".*none.ccd:1:1: cannot be read: No such file or directory\n"));
}

}  // namespace
}  // namespace orx::orxdef
