// Every mistake that a definition can hold, with the exact line that reports it.
#include <gmock/gmock.h>

#include "Reading.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::MatchesRegex;

struct Case {
    std::string name;
    std::string text;
    Lines lines;
};

class MistakeInADefinition : public testing::TestWithParam<Case> {};

TEST_P(MistakeInADefinition, isReportedAtItsPlace) {
    EXPECT_THAT(mistakesIn(GetParam().text), ElementsAreArray(GetParam().lines));
}

/// Shown when a case fails.
void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.text;
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

/// A command whose one argument, described by `table`, begins in column 34 of line 5.
std::string argument(const std::string& table) {
    return modelWith("INPUT = { send = '{1}', args = [ " + table + " ] }");
}

/// A command with the bytes `send`, in column 18 of line 5, and `count` arguments, each on one of
/// the lines that follow.
std::string sending(const std::string& send, int count) {
    auto command = "INPUT = { send = '" + send + "', args = [\n";
    for (int number = 1; number <= count; ++number)
        command += "  { type = 'A', len = 1, min = 0, max = 1 },\n";
    return modelWith(command + "] }");
}

const auto files = testing::Values(
    Case{"emptyFile", "", {"m.toml:1:1: the file has no [[model]]"}},
    Case{"onlyAComment", "# [[model]]\n", {"m.toml:1:1: the file has no [[model]]"}},
    Case{"emptyModelArray", "model = []", {"m.toml:1:9: the file has no [[model]]"}},
    Case{"unknownKeyOfTheFile",
         "[[modle]]\nname = 'M'\n",
         {R"(m.toml:1:3: unknown key "modle" in the file; allowed: model, verbatim)"}},
    Case{"singleModelTable",
         "[model]\nname = 'M'\nbaudrate = 1\n",
         {"m.toml:1:1: model must be an array of tables, written [[model]], not a table"}},
    Case{"modelThatIsNoTable",
         "model = [ 1979-05-27 ]",
         {"m.toml:1:11: a model must be a table, not a date or time"}});

const auto models = testing::Values(
    Case{"missingName",
         "# one\n\n  [[model]]\nbaudrate = 1\n",
         {"m.toml:3:3: the model has no name"}},
    Case{"missingBaudrate", "[[model]]\nname = 'M'\n", {"m.toml:1:1: the model has no baudrate"}},
    Case{"unknownKeyOfTheModel",
         modelWithKeys("  baud = 9600"),
         {R"(m.toml:4:3: unknown key "baud" in the model; allowed: name, baudrate, bytesize, )"
          "parity, stopbits, timeout, delay, checksum, commands, verbatim"}},
    Case{"nameOfAnotherType",
         "[[model]]\nname = 7\nbaudrate = 1\n",
         {"m.toml:2:8: name must be a string, not an integer"}},
    Case{"emptyName",
         "[[model]]\nname = ''\nbaudrate = 1\n",
         {"m.toml:2:8: name must have 1 to 255 bytes, not 0"}},
    Case{"nameTooLong",
         "[[model]]\nname = '" + std::string(256, 'n') + "'\nbaudrate = 1\n",
         {"m.toml:2:8: name must have 1 to 255 bytes, not 256"}},
    Case{"nameTwice",
         "[[model]]\nname = 'M'\nbaudrate = 1\n[[model]]\nbaudrate = 1\n  name = 'M'\n",
         {R"(m.toml:6:10: model "M" is already defined at m.toml:2:8)"}},
    Case{"baudrateOfAnotherType",
         "[[model]]\nname = 'M'\nbaudrate = 9600.0\n",
         {"m.toml:3:12: baudrate must be an integer, not a floating-point number"}},
    Case{"baudrateTooGreat",
         "[[model]]\nname = 'M'\nbaudrate = 4294967296\n",
         {"m.toml:3:12: baudrate must be from 0 to 4294967295, not 4294967296"}},
    Case{"baudrateNegative",
         "[[model]]\nname = 'M'\nbaudrate = -1\n",
         {"m.toml:3:12: baudrate must be from 0 to 4294967295, not -1"}},
    Case{"bytesizeTooSmall",
         modelWithKeys("bytesize = 4"),
         {"m.toml:4:12: bytesize must be from 5 to 8, not 4"}},
    Case{"bytesizeTooGreat",
         modelWithKeys("bytesize = 9"),
         {"m.toml:4:12: bytesize must be from 5 to 8, not 9"}},
    Case{"unknownParity",
         modelWithKeys("parity = \"Even\\n\""),
         {R"(m.toml:4:10: parity must be "none", "odd" or "even", not "Even\x0a")"}},
    Case{"parityOfAnotherType",
         modelWithKeys("parity = 0"),
         {R"(m.toml:4:10: parity must be "none", "odd" or "even", not an integer)"}},
    Case{"stopbitsTooSmall",
         modelWithKeys("stopbits = 0"),
         {"m.toml:4:12: stopbits must be from 1 to 2, not 0"}},
    Case{"stopbitsTooGreat",
         modelWithKeys("stopbits = 3"),
         {"m.toml:4:12: stopbits must be from 1 to 2, not 3"}},
    Case{"timeoutTooGreat",
         modelWithKeys("timeout = 65536"),
         {"m.toml:4:11: timeout must be from 0 to 65535, not 65536"}},
    Case{"timeoutOfAnotherType",
         modelWithKeys("timeout = true"),
         {"m.toml:4:11: timeout must be an integer, not a boolean"}},
    Case{"delayNegative",
         modelWithKeys("delay = -1"),
         {"m.toml:4:9: delay must be from 0 to 65535, not -1"}},
    Case{"unknownChecksum",
         modelWithKeys("checksum = 'crc'"),
         {R"(m.toml:4:12: checksum must be "none" or "sum8", not "crc")"}},
    Case{"commandsOfAnotherType",
         modelWithKeys("commands = ['ON']"),
         {"m.toml:4:12: commands must be a table, not an array"}});

const auto commands = testing::Values(
    Case{"unknownCommand", modelWith("PWR = 'a'"), {R"(m.toml:5:1: unknown command "PWR")"}},
    Case{"unknownCommandWithArgs",
         modelWith("PWR = { send = '{1}', args = [ { type = 'A', len = 1, min = 0, max = 1 } ] }"),
         {R"(m.toml:5:1: unknown command "PWR")"}},
    Case{"mistypedCommand",
         modelWith("zoomreset = 'a'"),
         {R"(m.toml:5:1: unknown command "zoomreset"; did you mean "ZOOMRESET"?)"}},
    Case{"symbolicName",
         modelWith("CMD_POWER_ON = 'a'"),
         {R"(m.toml:5:1: unknown command "CMD_POWER_ON"; did you mean "ON"?)"}},
    Case{"modelKeyBelowTheCommands",
         modelWith("delay = 20"),
         {R"(m.toml:5:1: unknown command "delay"; as a key of the model it stands above )"
          "[model.commands]"}},
    Case{"commandOfAnotherType",
         modelWith("ON = 1"),
         {"m.toml:5:6: ON must be a string or a table of send and args, not an integer"}},
    Case{"missingSend", modelWith("ON = {}"), {"m.toml:5:6: ON has no send"}},
    Case{"sendOfAnotherType",
         modelWith("ON = { send = 1 }"),
         {"m.toml:5:15: send must be a string, not an integer"}},
    Case{"unknownKeyOfTheCommand",
         modelWith("ON = { send = 'a', arg = 1 }"),
         {R"(m.toml:5:20: unknown key "arg" in ON; allowed: send, args, verbatim)"}},
    Case{"argsOfAnotherType",
         modelWith("INPUT = { send = '{1}', args = 1 }"),
         {"m.toml:5:32: args must be an array, not an integer"}},
    Case{"argumentOfAnotherType",
         modelWith("INPUT = { send = '{1}', args = [ 'A' ] }"),
         {"m.toml:5:34: argument 1 of INPUT must be a table, not a string"}},
    Case{"stringOf256Bytes",
         modelWith("ON = '" + std::string(256, 'x') + "'"),
         {"m.toml:5:6: ON is 256 bytes long, at most 255 are possible"}},
    Case{"argsForACommandWithoutArgument",
         modelWith("ON = { send = '{1}', args = [ { type = 'A', len = 1, min = 0, max = 1 } ] }"),
         {"m.toml:5:29: ON takes no argument, so its args would never be sent"}},
    Case{"unknownEscape",
         modelWith(R"(ON = 'a\q')"),
         {R"(m.toml:5:6: unknown escape "\q"; known are \xNN \r \n \t \\)"}},
    Case{"loneBrace",
         modelWith("ON = { send = 'a{b' }"),
         {"m.toml:5:15: lone {; write {{ for the character"}},
    Case{"placeholderInAString",
         modelWith("INPUT = 'a{1}'"),
         {"m.toml:5:9: placeholder {1} has no argument in args"}},
    Case{"placeholderTwice", sending("{1}{1}", 1), {"m.toml:5:18: placeholder {1} stands twice"}},
    Case{"placeholderBeyondTheArguments",
         sending("{1}{2}", 1),
         {"m.toml:5:18: placeholder {2} has no argument in args"}},
    Case{"placeholdersDescend",
         sending("{2}{1}", 2),
         {"m.toml:5:18: placeholder {1} stands behind {2}; placeholders must ascend"}},
    Case{"placeholderTwiceAndBehindAGreaterOne",
         sending("{1}{2}{1}", 2),
         {"m.toml:5:18: placeholder {1} stands twice"}},
    Case{"argumentWithoutPlaceholder",
         sending("{1}", 2),
         {"m.toml:7:3: argument 2 of INPUT has no placeholder {2} in send"}},
    Case{"argumentsWithoutAnyPlaceholder",
         sending("", 2),
         {"m.toml:6:3: argument 1 of INPUT has no placeholder {1} in send",
          "m.toml:7:3: argument 2 of INPUT has no placeholder {2} in send"}});

const auto arguments = testing::Values(
    Case{"missingType",
         argument("{ len = 1, min = 0, max = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no type"}},
    Case{"unknownType",
         argument("{ type = 'C', len = 1, min = 0, max = 1 }"),
         {R"(m.toml:5:43: type must be "A", "B", "D", "I" or "X", not "C")"}},
    Case{"missingLen",
         argument("{ type = 'A', min = 0, max = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no len"}},
    Case{"missingMin",
         argument("{ type = 'B', len = 1, max = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no min"}},
    Case{"missingMax",
         argument("{ type = 'X', len = 1, min = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no max"}},
    Case{"missingDigits",
         argument("{ type = 'D', decimals = 1, min = 1, max = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no digits"}},
    Case{"missingDecimals",
         argument("{ type = 'D', digits = 1, min = 1, max = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no decimals"}},
    Case{"missingDecimalBounds",
         argument("{ type = 'D', digits = 1, decimals = 1 }"),
         {"m.toml:5:34: argument 1 of INPUT has no min",
          "m.toml:5:34: argument 1 of INPUT has no max"}},
    Case{"unknownKeyOfAnArgument",
         argument("{ type = 'A', len = 1, min = 0, max = 1, pos = 3 }"),
         {R"(m.toml:5:75: unknown key "pos" in argument 1 of INPUT; allowed: type, len, min, )"
          "max"}},
    Case{"decimalWithLen",
         argument("{ type = 'D', len = 3, digits = 1, decimals = 1, min = 1, max = 1 }"),
         {R"(m.toml:5:48: unknown key "len" in argument 1 of INPUT; allowed: type, digits, )"
          "decimals, min, max"}},
    Case{"unknownKeyBesideAnUnknownType",
         argument("{ type = 'C', length = 1 }"),
         {R"(m.toml:5:43: type must be "A", "B", "D", "I" or "X", not "C")",
          R"(m.toml:5:48: unknown key "length" in argument 1 of INPUT; allowed: type, len, )"
          "digits, decimals, min, max"}},
    Case{"lenTooGreat",
         argument("{ type = 'I', len = 256, min = 0, max = 1 }"),
         {"m.toml:5:54: len must be from 0 to 255, not 256"}},
    Case{"digitsTooGreat",
         argument("{ type = 'D', digits = 16, decimals = 1, min = 1, max = 1 }"),
         {"m.toml:5:57: digits must be from 0 to 15, not 16"}},
    Case{"decimalsNegative",
         argument("{ type = 'D', digits = 1, decimals = -1, min = 1, max = 1 }"),
         {"m.toml:5:71: decimals must be from 0 to 15, not -1"}},
    Case{"wholeBoundWithAFraction",
         argument("{ type = 'A', len = 1, min = 0.5, max = 1 }"),
         {"m.toml:5:63: min must be an integer, not a floating-point number"}},
    Case{"wholeBoundsBeyond32Bits",
         argument("{ type = 'A', len = 1, min = -2147483649, max = 2147483648 }"),
         {"m.toml:5:63: min must be from -2147483648 to 2147483647, not -2147483649",
          "m.toml:5:82: max must be from -2147483648 to 2147483647, not 2147483648"}},
    Case{"minAboveMax",
         argument("{ type = 'A', len = 1, min = 2, max = 1 }"),
         {"m.toml:5:63: min must not be above max"}},
    Case{"decimalBoundOfAnotherType",
         argument("{ type = 'D', digits = 1, decimals = 1, min = '0', max = 1 }"),
         {"m.toml:5:80: min must be a number, not a string"}},
    Case{"decimalBoundFinerThanItsDecimals",
         argument("{ type = 'D', digits = 1, decimals = 1, min = 0, max = 1.25 }"),
         {"m.toml:5:89: max must be a multiple of 0.1, not 1.25"}},
    Case{
        "decimalBoundsBeyond32Bits",
        argument("{ type = 'D', digits = 1, decimals = 2, min = -inf, max = 9223372036854775807 }"),
        {"m.toml:5:80: min must fit 32 bits in units of 0.01, unlike -inf",
         "m.toml:5:92: max must fit 32 bits in units of 0.01, unlike 9223372036854775808"}},
    Case{"decimalMinAboveMax",
         argument("{ type = 'D', digits = 1, decimals = 2, min = 0.02, max = 0.01 }"),
         {"m.toml:5:80: min must not be above max"}});

INSTANTIATE_TEST_SUITE_P(File, MistakeInADefinition, files, nameOf);
INSTANTIATE_TEST_SUITE_P(Model, MistakeInADefinition, models, nameOf);
INSTANTIATE_TEST_SUITE_P(Command, MistakeInADefinition, commands, nameOf);
INSTANTIATE_TEST_SUITE_P(Argument, MistakeInADefinition, arguments, nameOf);

/// What TOML itself says of its mistakes is its own; the place and the single line are ours.
TEST(MistakesInADefinition, areFoundByTomlItselfToo) {
    const std::vector<std::pair<std::string, std::string>> placesAndTexts{
        {"2:10", "[[model]]\nname = 'M\n"},
        {"2:7", "[[model]]\n'\xc3\xa9' = \x01\n"},
        {"2:8", "[[model]]\nname = '\xff'\n"},
        {"1:9", "[[model]\n"},
        {"2:1", "[[model]]\n\xc3\xa9 = 1\n"},
        {"3:13", "[[model]]\nname = 'M'\nbaudrate = 1x\n"},
        {"6:6", modelWith("ON = 'a'\nON = 'b'")},
        {"5:2", modelWith("Z+ = 'a'")},
    };
    for (const auto& [place, text] : placesAndTexts)
        EXPECT_THAT(mistakesIn(text), ElementsAre(MatchesRegex("m.toml:" + place + ": [ -~]+")))
            << text;
}

TEST(MistakesInADefinition, areAllReportedInTheOrderOfTheFile) {
    EXPECT_THAT(
        mistakesIn("colour = 'red'\n"
                   "[[model]]\n"
                   "bytesize = 9\n"
                   "[model.commands]\n"
                   "ON = { args = 1 }\n"
                   "OF = 'a}b\\q'\n"
                   "INPUT = { send = '{2}', args = [ { type = 'A', max = 1.5 } ] }\n"
                   "[[model]]\n"
                   "name = ''\n"),
        ElementsAre(R"(m.toml:1:1: unknown key "colour" in the file; allowed: model, verbatim)",
                    "m.toml:2:1: the model has no name", "m.toml:2:1: the model has no baudrate",
                    "m.toml:3:12: bytesize must be from 5 to 8, not 9",
                    "m.toml:5:6: ON has no send",
                    "m.toml:5:15: args must be an array, not an integer",
                    R"(m.toml:6:1: unknown command "OF"; did you mean "OFF"?)",
                    "m.toml:6:6: lone }; write }} for the character",
                    R"(m.toml:6:6: unknown escape "\q"; known are \xNN \r \n \t \\)",
                    "m.toml:7:18: placeholder {2} has no argument in args",
                    "m.toml:7:34: argument 1 of INPUT has no len",
                    "m.toml:7:34: argument 1 of INPUT has no min",
                    "m.toml:7:34: argument 1 of INPUT has no placeholder {1} in send",
                    "m.toml:7:54: max must be an integer, not a floating-point number",
                    "m.toml:8:1: the model has no baudrate",
                    "m.toml:9:8: name must have 1 to 255 bytes, not 0"));
}

TEST(MistakesInADefinition, includeTheLimitsOfTheFile) {
    std::string args;
    std::string placeholders;
    for (int number = 1; number <= 256; ++number) {
        args += "{ type = 'A', len = 1, min = 0, max = 1 },\n";
        placeholders += "{" + std::to_string(number) + "}";
    }
    EXPECT_THAT(
        mistakesIn(modelWith("TEST = { send = '" + placeholders + "', args = [" + args + "] }")),
        ElementsAre(R"(m.toml:2:8: "M" has 256 arguments in all, at most 255 are possible)"));
}

}  // namespace
}  // namespace orx::orxdef
