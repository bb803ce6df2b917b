// The tables called `verbatim`: what they bring into the file, and every mistake in them.
#include <gmock/gmock.h>

#include "Reading.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Verbatim, bringsACommandListWithNumbersAndNamesOfItsOwn) {
    const auto set = definitionsOf(
        "[verbatim]\ncommands = [{ id = 9, name = 'POWER' }, { id = 4, name = 'ON' }]\n" +
        modelWith("POWER = 'p'\nON = 'o'"));
    ASSERT_THAT(set.commandList, SizeIs(2));
    EXPECT_EQ(set.commandList[0].id, 9);
    EXPECT_EQ(set.commandList[0].name, "POWER");
    ASSERT_THAT(set.models, SizeIs(1));
    const auto commands = commandsOf(set, set.models[0]);
    ASSERT_THAT(commands, SizeIs(2));
    EXPECT_EQ(commands[0].keyword, "ON");
    EXPECT_EQ(commands[0].id, 4);
    EXPECT_EQ(commands[1].id, 9);
}

TEST(Verbatim, holdsForTheModelsOfAllFiles) {
    Mistakes mistakes({"a", "b"});
    const auto set = parseToml(
        {modelWith("POWER = 'p'"), "[verbatim]\ncommands = [{ id = 3, name = 'POWER' }]\n"},
        mistakes);
    EXPECT_THAT(mistakes.lines(), IsEmpty());
    EXPECT_EQ(set.models.at(0).strings.at(0).id, 3);
}

TEST(Verbatim, standsInOneFileOnly) {
    Mistakes mistakes({"a", "b"});
    static_cast<void>(parseToml({"[verbatim]\n", "\n[verbatim]\n"}, mistakes));
    EXPECT_THAT(mistakes.lines(), ElementsAre("b:2:1: verbatim already stands at a:1:1"));
}

TEST(Verbatim, ordersTheCommandsOfAModel) {
    const auto set = definitionsOf(modelWith("OFF = 'a'\nON = 'b'\nMUTE = 'c'\nINFO = 'd'") +
                                   "[model.verbatim]\norder = ['ON', 'MUTE']\n");
    std::vector<std::string> keywords;
    for (const auto& command : commandsOf(set, set.models.at(0)))
        keywords.push_back(command.keyword);
    EXPECT_THAT(keywords, ElementsAre("ON", "MUTE", "INFO", "OFF"));
}

TEST(Verbatim, putsItsOwnEntriesBehindThoseOfTheCommands) {
    const auto set = definitionsOf(modelWith("ON = 'on'") +
                                   "[model.verbatim]\nstrings = [{ id = 200, bytes = 'x' }]\n");
    const auto& strings = set.models.at(0).strings;
    ASSERT_THAT(strings, SizeIs(2));
    EXPECT_EQ(strings[0].bytes, "on");
    EXPECT_EQ(strings[1].id, 200);
}

TEST(Verbatim, givesAnArgumentEveryFieldOfItsOwn) {
    const auto set = definitionsOf(modelWith(
        "INPUT = { send = 'abc', verbatim = [{ number = 300, type = 'Q', len = 7, pos = 99, "
        "min = 5, max = -5 }] }"));
    const auto& argument = set.models.at(0).descriptors.at(0);
    EXPECT_EQ(argument.number, 300);
    EXPECT_EQ(argument.type, 'Q');
    EXPECT_EQ(argument.len, 7);
    EXPECT_EQ(argument.pos, 99);
    EXPECT_EQ(argument.min, 5);
    EXPECT_EQ(argument.max, -5);
    EXPECT_EQ(argument.id, set.models.at(0).strings.at(0).id);
}

TEST(Verbatim, namesAModelWithAnyBytes) {
    const auto set =
        definitionsOf("[[model]]\nbaudrate = 1\n[model.verbatim]\nname = 'a\\x00\\xff'\n");
    EXPECT_EQ(set.models.at(0).name, std::string("a\0\xff", 3));
}

struct Case {
    std::string name;
    std::string text;
    Lines lines;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.text;
}

class MistakeInVerbatim : public testing::TestWithParam<Case> {};

TEST_P(MistakeInVerbatim, isReportedAtItsPlace) {
    EXPECT_THAT(mistakesIn(GetParam().text), ElementsAreArray(GetParam().lines));
}

/// A model whose `verbatim` has `keys`, on line 5.
std::string modelVerbatim(const std::string& keys) {
    return "[[model]]\nname = 'M'\nbaudrate = 1\n[model.verbatim]\n" + keys + "\n";
}

INSTANTIATE_TEST_SUITE_P(
    Each, MistakeInVerbatim,
    testing::Values(
        Case{"noTable", "verbatim = 3", {"m.toml:1:12: verbatim must be a table, not an integer"}},
        Case{"unknownKey",
             "[verbatim]\nmagick = ''",
             {R"(m.toml:2:1: unknown key "magick" in verbatim; allowed: magic, endiancheck, )"
              "compiledate, commands, fillers, commandlistlength, projectorlistlength"}},
        Case{"shortMagic",
             "[verbatim]\nmagic = 'abc'",
             {"m.toml:2:9: magic must have 6 bytes, not 3"}},
        Case{"greatEndianCheck",
             "[verbatim]\nendiancheck = 256",
             {"m.toml:2:15: endiancheck must be from 0 to 255, not 256"}},
        Case{"commandsOfAnotherKind",
             "[verbatim]\ncommands = 'ON'",
             {"m.toml:2:12: commands must be an array, not a string"}},
        Case{"commandOfAnotherKind",
             "[verbatim]\ncommands = [3]",
             {"m.toml:2:13: entry 1 of commands must be a table, not an integer"}},
        Case{"commandWithoutAName",
             "[verbatim]\ncommands = [{ id = 1 }]",
             {"m.toml:2:13: entry 1 of commands has no name"}},
        Case{"placeholderInAName",
             "[verbatim]\ncommands = [{ id = 1, name = '{1}' }]",
             {"m.toml:2:30: name has no arguments; write {{ and }} for braces"}},
        Case{"unknownEscapeInAName",
             "[verbatim]\ncommands = [{ id = 1, name = '\\q' }]",
             {R"(m.toml:2:30: unknown escape "\q"; known are \xNN \r \n \t \\)"}},
        Case{"longName",
             "[verbatim]\ncommands = [{ id = 1, name = '" + std::string(256, 'n') + "' }]",
             {"m.toml:2:30: name must have at most 255 bytes, not 256"}},
        Case{"farFiller",
             "[verbatim]\nfillers = [{ offset = 1048577, bytes = 'w' }]",
             {"m.toml:2:23: offset must be from 0 to 1048576, not 1048577"}},
        Case{"fillerOverOtherBytes",
             "[verbatim]\nfillers = [{ offset = 0, bytes = 'x' }]",
             {"m.toml:2:12: a filler overlaps with other bytes and differs from them"}},
        Case{"commandThatIsNotListed",
             "[verbatim]\ncommands = [{ id = 1, name = 'OFF' }]\n" + modelWith("ON = 'x'"),
             {R"(m.toml:7:1: unknown command "ON": it is not among the commands of [verbatim])"}},
        Case{"modelVerbatimOfAnotherKind",
             "[[model]]\nname = 'M'\nbaudrate = 1\nverbatim = 1\n",
             {"m.toml:4:12: verbatim must be a table, not an integer"}},
        Case{"unknownKeyOfAModel",
             modelVerbatim("baudrate = 5"),
             {R"(m.toml:5:1: unknown key "baudrate" in verbatim; allowed: name, bytesize, )"
              "stopbits, parity, checksum, order, strings, descriptors, offset, length"}},
        Case{"greatParity",
             modelVerbatim("parity = 16"),
             {"m.toml:5:10: parity must be from 0 to 15, not 16"}},
        Case{"orderOfAnotherKind",
             modelVerbatim("order = ['ON', 3]"),
             {"m.toml:5:9: order must be an array of names"}},
        Case{"orderOfNamesThatAreNotThereOrStandTwice",
             "[[model]]\nname = 'M'\nbaudrate = 1\n[model.commands]\nON = 'x'\n"
             "[model.verbatim]\norder = ['ON', 'OF', 'ON']\n",
             {R"(m.toml:7:9: "OF" in order is not among the commands of the model)",
              R"(m.toml:7:9: "ON" stands twice in order)"}},
        Case{"stringWithoutBytes",
             modelVerbatim("strings = [{ id = 1 }]"),
             {"m.toml:5:12: entry 1 of strings has no bytes"}},
        Case{"descriptorOfAModelWithoutId",
             modelVerbatim("descriptors = [{ number = 1, type = 'A', len = 1, pos = 0, min = 0, "
                           "max = 1 }]"),
             {"m.toml:5:16: entry 1 of descriptors has no id"}},
        Case{"typeOfTwoLetters",
             modelVerbatim("descriptors = [{ id = 1, number = 1, type = 'AB', len = 1, pos = 0, "
                           "min = 0, max = 1 }]"),
             {"m.toml:5:45: type must be one letter or its code"}},
        Case{"argsAndVerbatim",
             modelWith("INPUT = { send = 'x', args = [], verbatim = [] }"),
             {"m.toml:5:45: INPUT must have only one of args and verbatim"}}),
    [](const testing::TestParamInfo<Case>& each) { return each.param.name; });

}  // namespace
}  // namespace orx::orxdef
