// What a definition in TOML means.
#include <gmock/gmock.h>

#include "Reading.h"
#include "orxdef/TomlReader.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

DefinitionSet onlyDefinitionOf(std::string_view text) {
    EXPECT_THAT(mistakesIn(text), IsEmpty());
    auto definitions = definitionsOf(text);
    EXPECT_THAT(definitions.models, SizeIs(1));
    definitions.models.resize(1);
    return definitions;
}

ModelDefinition onlyModelOf(std::string_view text) {
    return onlyDefinitionOf(text).models.front();
}

std::vector<ReadCommand> commandsIn(const std::string& commands) {
    const auto definitions = onlyDefinitionOf(modelWith(commands));
    return commandsOf(definitions, definitions.models.front());
}

ReadCommand onlyCommandOf(const std::string& command) {
    auto commands = commandsIn(command);
    EXPECT_THAT(commands, SizeIs(1));
    commands.resize(1);
    return commands.front();
}

ArgumentDescriptor onlyArgumentOf(const std::string& keyword, const std::string& argument) {
    const auto command =
        onlyCommandOf(keyword + " = { send = 'AB{1}C', args = [" + argument + "] }");
    EXPECT_THAT(command.arguments, SizeIs(1));
    return command.arguments.empty() ? ArgumentDescriptor() : command.arguments.front();
}

TEST(TomlReader, takesTheLineSettingsOfAModel) {
    const auto model =
        onlyModelOf(modelWithKeys("bytesize = 5\nparity = 'odd'\nstopbits = 2\n"
                                  "timeout = 65535\ndelay = 1\nchecksum = 'sum8'"));
    EXPECT_EQ(model.name, "M");
    EXPECT_EQ(model.line.baudrate, 9600U);
    EXPECT_EQ(model.line.bytesize, 5);
    EXPECT_EQ(model.line.parity, Parity::odd);
    EXPECT_EQ(model.line.stopbits, 2);
    EXPECT_EQ(model.line.timeout, 65535);
    EXPECT_EQ(model.line.delay, 1);
    EXPECT_EQ(model.checksum, Checksum::sum8);
}

TEST(TomlReader, leavesTheUsualLineSettingsOut) {
    const auto model = onlyModelOf(modelWithKeys(""));
    EXPECT_EQ(model.line.bytesize, 8);
    EXPECT_EQ(model.line.parity, Parity::none);
    EXPECT_EQ(model.line.stopbits, 1);
    EXPECT_EQ(model.line.timeout, 100);
    EXPECT_EQ(model.line.delay, 0);
    EXPECT_EQ(model.checksum, Checksum::none);
    EXPECT_THAT(model.strings, IsEmpty());
}

TEST(TomlReader, takesTheBoundsOfEveryLineSetting) {
    const auto low = onlyModelOf("[[model]]\nname = 'M'\nbaudrate = 0\ntimeout = 0\ndelay = 0\n");
    EXPECT_EQ(low.line.baudrate, 0U);
    EXPECT_EQ(low.line.timeout, 0);
    const auto high = onlyModelOf("[[model]]\nname = 'M'\nbaudrate = 4294967295\ndelay = 65535\n");
    EXPECT_EQ(high.line.baudrate, 4294967295U);
    EXPECT_EQ(high.line.delay, 65535);
}

TEST(TomlReader, takesANameOf255Bytes) {
    const std::string name(255, 'n');
    EXPECT_EQ(onlyModelOf("[[model]]\nname = '" + name + "'\nbaudrate = 1\n").name, name);
}

TEST(TomlReader, takesACommandWithoutArgumentsAsAString) {
    const auto command = onlyCommandOf("\"F+++\" = 'FOC +++\\x0d'");
    EXPECT_EQ(command.keyword, "F+++");
    EXPECT_EQ(command.bytes, "FOC +++\r");
    EXPECT_THAT(command.arguments, IsEmpty());
}

TEST(TomlReader, takesControlCharactersThatTomlItselfHasUnescaped) {
    EXPECT_EQ(onlyCommandOf(R"(ON = "\u0002A\\x0d\r\n\u0000")").bytes, std::string("\x02"
                                                                                   "A\r\r\n\0",
                                                                                   6));
}

TEST(TomlReader, takesACommandAsATableInEveryFormOfToml) {
    for (const auto* text : {"ON = { send = 'a' }", "ON.send = 'a'",
                             "[model.commands.ON]\nsend = 'a'", "ON = { send = 'a', args = [] }"})
        EXPECT_EQ(onlyCommandOf(text).bytes, "a") << text;
}

TEST(TomlReader, takesArgumentsAsTablesOfTheirOwn) {
    const auto command = onlyCommandOf(
        "[model.commands.INPUT]\nsend = 'I{1}'\n"
        "[[model.commands.INPUT.args]]\n"
        "type = 'A'\nlen = 2\nmin = 0\nmax = 9\n");
    EXPECT_THAT(command.arguments, SizeIs(1));
}

TEST(TomlReader, numbersCommandsByTheirPlaceInTheVocabulary) {
    EXPECT_EQ(onlyCommandOf("\"AF+\" = ''").id, 1);
    EXPECT_EQ(onlyCommandOf("ON = ''").id, 66);
    EXPECT_EQ(onlyCommandOf("ZOOMX = ''").id, 108);
}

TEST(TomlReader, putsCommandsInTheOrderOfTheirKeywords) {
    std::vector<std::string> keywords;
    for (const auto& command : commandsIn("ZOOMX = ''\n'F-' = ''\nFOCUS = ''\n'F+' = ''\nON = ''"))
        keywords.push_back(command.keyword);
    EXPECT_THAT(keywords, ElementsAre("F+", "F-", "FOCUS", "ON", "ZOOMX"));
}

TEST(TomlReader, takesTheWholeNumberTypesWithWidthAndBounds) {
    for (const std::string type : {"A", "B", "I", "X"}) {
        const auto argument = onlyArgumentOf(
            "INPUT", "{ type = '" + type + "', len = 255, min = -2147483648, max = 2147483647 }");
        EXPECT_EQ(argument.type, type.front());
        EXPECT_EQ(argument.len, 255);
        EXPECT_EQ(argument.min, -2147483647 - 1);
        EXPECT_EQ(argument.max, 2147483647);
        EXPECT_EQ(argument.pos, 2);
    }
}

TEST(TomlReader, takesDecimalsInRealUnits) {
    const auto argument = onlyArgumentOf(
        "KEYSTONEVERT", "{ type = 'D', digits = 3, decimals = 2, min = -50, max = 12.34 }");
    EXPECT_EQ(argument.type, 'D');
    EXPECT_EQ(argument.len, 0x23);
    EXPECT_EQ(argument.min, -5000);
    EXPECT_EQ(argument.max, 1234);
    EXPECT_EQ(argument.pos, 2);
}

TEST(TomlReader, keepsDigitsAndDecimalsInHalfAByteEach) {
    const auto least = onlyArgumentOf("KEYSTONEVERT",
                                      "{ type = 'D', digits = 0, decimals = 0, min = 0, max = 0 }");
    EXPECT_EQ(least.len, 0x00);
    const auto most = onlyArgumentOf(
        "KEYSTONEVERT", "{ type = 'D', digits = 15, decimals = 15, min = 0, max = 0.000001 }");
    EXPECT_EQ(most.len, 0xFF);
    EXPECT_EQ(most.max, 1000000000);
}

TEST(TomlReader, takesEqualBounds) {
    EXPECT_EQ(onlyArgumentOf("INPUT", "{ type = 'A', len = 0, min = 7, max = 7 }").min, 7);
}

TEST(TomlReader, givesEachArgumentThePlaceOfItsPlaceholder) {
    const auto command = onlyCommandOf(
        "TEST = { send = '{1}\\x02{2}AB{3}', args = ["
        "{ type = 'A', len = 1, min = 0, max = 1 },"
        "{ type = 'B', len = 2, min = 0, max = 2 },"
        "{ type = 'X', len = 3, min = 0, max = 3 }] }");
    ASSERT_THAT(command.arguments, SizeIs(3));
    EXPECT_EQ(command.bytes,
              "\x02"
              "AB");
    EXPECT_EQ(command.arguments[0].pos, 0);
    EXPECT_EQ(command.arguments[1].pos, 1);
    EXPECT_EQ(command.arguments[2].pos, 3);
    EXPECT_EQ(command.arguments[2].type, 'X');
}

TEST(TomlReader, takes255BytesWithAnArgumentBehindTheLast) {
    const auto command =
        onlyCommandOf("INPUT = { send = '" + std::string(255, 'x') +
                      "{1}', args = [{ type = 'A', len = 1, min = 0, max = 1 }] }");
    EXPECT_EQ(command.bytes.size(), 255U);
    ASSERT_THAT(command.arguments, SizeIs(1));
    EXPECT_EQ(command.arguments[0].pos, 255);
}

TEST(TomlReader, takesACommandThatHasArgumentsButDescribesNone) {
    EXPECT_EQ(onlyCommandOf("INPUT = 'NEXT SOURCE'").bytes, "NEXT SOURCE");
}

TEST(TomlReader, addsUpTheModelsOfAllFilesInOrder) {
    const test::TemporaryFolder folder;
    Mistakes mistakes({folder.write("b.toml", "[[model]]\nname = 'B'\nbaudrate = 1\n"),
                       folder.write("a.toml",
                                    "[[model]]\nname = 'A2'\nbaudrate = 1\n"
                                    "[[model]]\nname = 'A1'\nbaudrate = 1\n")});
    std::vector<std::string> names;
    for (const auto& model : readToml(mistakes).models)
        names.push_back(model.name);
    EXPECT_THAT(mistakes.lines(), IsEmpty());
    EXPECT_THAT(names, ElementsAre("B", "A2", "A1"));
}

}  // namespace
}  // namespace orx::orxdef
