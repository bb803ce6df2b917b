// What would surprise at run time, each with the exact line that reports it.
#include <gmock/gmock.h>

#include "Reading.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/Surprises.h"
#include "support/DefinitionImage.h"

namespace orx::orxdef {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

Lines surprisesIn(const DefinitionSet& definitions) {
    Mistakes mistakes({"m"});
    findSurprises(definitions, mistakes);
    return mistakes.lines();
}

Lines surprisesIn(const std::string& text) {
    EXPECT_THAT(mistakesIn(text), IsEmpty());
    return surprisesIn(definitionsOf(text));
}

Lines surprisesIn(const test::DefinitionImage& image) {
    Mistakes mistakes({"m"});
    const auto definitions = readBinary(image.bytes(), 0, mistakes);
    EXPECT_THAT(mistakes.lines(), IsEmpty());
    return surprisesIn(definitions);
}

struct Case {
    std::string name;
    std::string commands;  ///< they begin on line 5
    Lines lines;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.commands;
}

class SurpriseInACommand : public testing::TestWithParam<Case> {};

TEST_P(SurpriseInACommand, isReportedAtItsPlace) {
    EXPECT_THAT(surprisesIn(modelWith(GetParam().commands)), ElementsAreArray(GetParam().lines));
}

/// An entry of an argument list in which only these fields matter.
std::string verbatim(const std::string& fields) {
    return "{ number = 1, type = 'A', len = 1, min = 0, max = 9, " + fields + " }";
}

INSTANTIATE_TEST_SUITE_P(
    Each, SurpriseInACommand,
    testing::Values(
        Case{"nothing", "ON = 'x'\nINPUT = 'NEXT'", {}},
        Case{"placePastTheEnd",
             "INPUT = { send = 'abc', verbatim = [" + verbatim("pos = 4") + "] }",
             {R"(m:5:37: argument 1 of "INPUT" of "M" has its place at byte 4 of 3: sending it )"
              "ends the daemon"}},
        Case{"placeAtTheEnd",
             "INPUT = { send = 'abc', verbatim = [" + verbatim("pos = 3") + "] }",
             {}},
        Case{"decimalNumberOfAWholeNumberType",
             "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'A', len = 2, min = 0, max = 9 }] }",
             {R"(m:5:41: argument 1 of "KEYSTONEVERT" of "M" is a decimal number, which type "A" )"
              R"(cannot read: ".5" ends the daemon; use type "D")"}},
        Case{
            "commandOfTheDaemon",
            "ZOOM = 'z'\nMEMSAVE = 'm'",
            {R"(m:5:1: "ZOOM" of "M" is never sent: the daemon acts on that command by itself)",
             R"(m:6:1: "MEMSAVE" of "M" is never sent: the daemon acts on that command by itself)"}},
        Case{"noBytes", "ON = ''", {R"(m:5:1: "ON" of "M" has no bytes to send)"}},
        Case{"argumentsOfACommandWithoutArguments",
             "ON = { send = 'x', verbatim = [" + verbatim("pos = 0") + "] }",
             {R"(m:5:32: "ON" of "M" takes no argument: its descriptors are never used)"}},
        Case{"gapInTheNumbers",
             "TEST = { send = 'abc', verbatim = [" + verbatim("pos = 0") +
                 ", { number = 3, type = 'A', len = 1, min = 0, max = 9, pos = 1 }] }",
             {R"(m:5:100: "TEST" of "M" has no descriptor 2: that argument is dropped)"}},
        Case{"numberZero",
             "TEST = { send = 'abc', verbatim = [{ number = 0, type = 'A', len = 1, min = 0, "
             "max = 9, pos = 1 }] }",
             {R"(m:5:36: "TEST" of "M" has a descriptor number 0; they count from 1)"}},
        Case{"placesOutOfOrder",
             "TEST = { send = 'abc', verbatim = [" + verbatim("pos = 2") +
                 ", { number = 2, type = 'A', len = 1, min = 0, max = 9, pos = 1 }] }",
             {R"(m:5:100: argument 2 of "TEST" of "M" has its place ahead of argument 1: bytes of )"
              "the command are sent more than once"}},
        Case{"unknownType",
             "INPUT = { send = 'abc', verbatim = [{ number = 1, type = 'Q', len = 1, min = 0, "
             "max = 9, pos = 1 }] }",
             {R"(m:5:37: argument 1 of "INPUT" of "M" has the unknown type "Q" and is sent as a )"
              "plain number"}},
        Case{"decimalWithoutDigits",
             "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'D', digits = 0, decimals = 2, "
             "min = 0, max = 9 }] }",
             {R"(m:5:41: argument 1 of "KEYSTONEVERT" of "M" has no digits ahead of the point: it )"
              "is sent with 2 significant digits and without sign, with an exponent where it "
              "has more ahead of the point"}},
        Case{"decimalWithOneSignificantDigitAndTheSignOfTheArgumentAhead",
             "KEYSTONEVERT = { send = 'K', verbatim = [{ number = 1, type = 'B', len = 1, "
             "min = 0, max = 9, pos = 1 }, { number = 2, type = 'D', len = 0, min = 0, max = 9, "
             "pos = 1 }] }",
             {R"(m:5:42: argument 1 of "KEYSTONEVERT" of "M" is a decimal number, which type "B" )"
              R"(cannot read: ".5" ends the daemon; use type "D")",
              R"(m:5:106: argument 2 of "KEYSTONEVERT" of "M" has no digits ahead of the point: )"
              "it is sent with 1 significant digit and a sign, with an exponent where it has more "
              "ahead of the point"}},
        Case{"decimalWithoutDigitsBehindOneWithThem",
             "KEYSTONEVERT = { send = 'K{1}{2}', args = [{ type = 'D', digits = 1, decimals = 1, "
             "min = 0, max = 9 }, { type = 'D', digits = 0, decimals = 1, min = 0, max = 9 }] }",
             {R"(m:5:104: argument 2 of "KEYSTONEVERT" of "M" has no digits ahead of the point: )"
              "it is sent with sign and decimals, but not filled up, as the argument ahead of it "
              "is of type \"D\""}},
        Case{"decimalWithoutDecimals",
             "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'D', digits = 3, decimals = 0, "
             "min = -9999, max = 9 }] }",
             {R"(m:5:41: argument 1 of "KEYSTONEVERT" of "M" has no decimals: it is sent with 4 )"
              "digits"}},
        Case{"decimalLongerThanItsDigits",
             "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'D', digits = 1, decimals = 1, "
             "min = -10.0, max = 9.9 }] }",
             {R"(m:5:41: argument 1 of "KEYSTONEVERT" of "M" can have 2 digits ahead of the )"
              "point, more than its 1"}},
        Case{"wholeNumberOfTheDecimalType",
             "INPUT = { send = 'I{1}', args = [{ type = 'D', digits = 2, decimals = 1, min = 0, "
             "max = 9 }] }",
             {R"(m:5:34: argument 1 of "INPUT" of "M" is a whole number, which type "D" reads as )"
              R"(a decimal one: "1e999" ends the daemon; use another type)"}},
        Case{"numberLongerThanItsField",
             "TEST = { send = '{1}{2}{3}', args = [{ type = 'X', len = 2, min = 0, max = 256 }, "
             "{ type = 'A', len = 2, min = -10, max = 99 }, { type = 'B', len = 2, min = -100, "
             "max = 9 }] }",
             {R"(m:5:38: argument 1 of "TEST" of "M" can have 3 characters, more than its 2)",
              R"(m:5:83: argument 2 of "TEST" of "M" can have 3 characters, more than its 2)",
              R"(m:5:129: argument 3 of "TEST" of "M" can have 4 characters, more than its 3)"}},
        Case{"numberAsLongAsItsField",
             "TEST = { send = '{1}{2}{3}', args = [{ type = 'X', len = 2, min = 0, max = 255 }, "
             "{ type = 'A', len = 2, min = -9, max = 99 }, { type = 'B', len = 2, min = -99, "
             "max = 99 }] }",
             {}},
        Case{"numberOfAnyLength",
             "INPUT = { send = 'I{1}', args = [{ type = 'A', len = 1, min = -100, max = 99999 }] }",
             {}},
        Case{
            "severalNumbersMissing",
            "TEST = { send = 'abc', verbatim = [{ number = 65535, type = 'A', len = 1, min = 0, "
            "max = 9, pos = 1 }] }",
            {R"(m:5:36: "TEST" of "M" has no descriptors 1 to 65534: those arguments are dropped)"}},
        Case{"numberZeroWhoseOtherFieldsMeanNothing",
             "TEST = { send = 'abc', verbatim = [{ number = 0, type = 'Q', len = 1, min = 9, "
             "max = 0, pos = 9 }] }",
             {R"(m:5:36: "TEST" of "M" has a descriptor number 0; they count from 1)"}},
        Case{"plainNumberWithTheSignOfTheArgumentAhead",
             "TEST = { send = '', verbatim = [{ number = 1, type = 'B', len = 1, min = 0, max = 9, "
             "pos = 0 }, { number = 2, type = 'Q', len = 1, min = 0, max = 9, pos = 0 }] }",
             {R"(m:5:97: argument 2 of "TEST" of "M" has the unknown type "Q" and is sent as a )"
              "plain number",
              R"(m:5:97: argument 2 of "TEST" of "M" is sent with a sign, as the argument ahead )"
              "of it"}},
        Case{"noRawBytes",
             "INPUT = { send = 'K{1}', args = [{ type = 'I', len = 0, min = 0, max = 9 }] }",
             {R"(m:5:34: argument 1 of "INPUT" of "M" is 0 bytes long)"}},
        Case{"minAboveMax",
             "INPUT = { send = 'abc', verbatim = [{ number = 1, type = 'A', len = 1, min = 9, "
             "max = 0, pos = 1 }] }",
             {R"(m:5:37: argument 1 of "INPUT" of "M" has min above max: every value is sent as )"
              "min or max"}},
        Case{"boundsBeyondTheRawBytes",
             "INPUT = { send = 'K{1}', args = [{ type = 'I', len = 1, min = 0, max = 256 }] }",
             {R"(m:5:34: argument 1 of "INPUT" of "M" has bounds that do not fit into 1 bytes: )"
              "the highest bytes are left out"}},
        Case{"boundsWithinTheRawBytes",
             "INPUT = { send = 'K{1}', args = [{ type = 'I', len = 1, min = -128, max = 255 }] }",
             {}},
        Case{"negativeNumberFilledUp",
             "INPUT = { send = 'K{1}', args = [{ type = 'A', len = 3, min = -1, max = 9 }] }",
             {R"(m:5:34: argument 1 of "INPUT" of "M" can be negative, and type "A" fills with )"
              R"(zeros ahead of the sign: 0-1; use type "B")"}},
        Case{"negativeNumberNotFilledUp",
             "INPUT = { send = 'K{1}', args = [{ type = 'A', len = 2, min = -1, max = 9 }] }",
             {}},
        Case{"negativeHexadecimal",
             "INPUT = { send = 'K{1}', args = [{ type = 'X', len = 2, min = -1, max = 9 }] }",
             {R"(m:5:34: argument 1 of "INPUT" of "M" can be negative, and type "X" shows that as )"
              "32 bits: ffffffff"}},
        Case{"signOfTheArgumentAhead",
             "TEST = { send = '{1}{2}', args = [{ type = 'B', len = 2, min = 0, max = 9 }, "
             "{ type = 'A', len = 2, min = 0, max = 9 }] }",
             {R"(m:5:78: argument 2 of "TEST" of "M" is sent with a sign, as the argument ahead )"
              "of it"}}),
    [](const testing::TestParamInfo<Case>& each) { return each.param.name; });

TEST(Surprise, isALensWithoutStepsInOneDirection) {
    EXPECT_THAT(surprisesIn(modelWith("'AZ-' = 'a'\nZOOMRESET = 'b'")),
                ElementsAre(R"(m:2:8: the zoom of "M" has no steps up: "AZ+" is missing)"));
    EXPECT_THAT(surprisesIn(modelWith("'AF+' = 'a'\nFOCUSRESET = 'b'")),
                ElementsAre(R"(m:2:8: the focus of "M" has no steps down: "AF-" is missing)"));
}

TEST(Surprise, isALensWithoutSteps) {
    for (const auto* command : {"ZOOMRESET = 'x'", "'Z+' = 'x'", "'Z+++' = 'x'", "'Z--' = 'x'"})
        EXPECT_THAT(surprisesIn(modelWith(command)),
                    ElementsAre(R"(m:2:8: the zoom of "M" cannot be moved to a position: there is )"
                                R"(neither "AZ+" nor "AZ-")"))
            << command;
}

TEST(Surprise, isALensWithoutAnyReset) {
    const std::string steps = "'AF+' = 'a'\n'AF-' = 'b'\n";
    EXPECT_THAT(surprisesIn(modelWith(steps)),
                ElementsAre(R"(m:2:8: the focus of "M" cannot be reset, so it never knows its )"
                            R"(position: there is none of "FOCUSRESET", "F---", "F--" or "F-")"));
    for (const auto* reset : {"FOCUSRESET = 'r'", "'F---' = 'r'", "'F--' = 'r'", "'F-' = 'r'"})
        EXPECT_THAT(surprisesIn(modelWith(steps + reset)), IsEmpty()) << reset;
}

TEST(Surprise, isALensThatIsCountedAsMovedByNothing) {
    EXPECT_THAT(surprisesIn(modelWith("'AZ+' = ''\n'AZ-' = 'b'\nZOOMRESET = ''\n'Z-' = ''")),
                ElementsAre(R"(m:2:8: the zoom of "M" is counted as moved by "AZ+", which sends )"
                            "no bytes",
                            R"(m:2:8: the zoom of "M" is counted as moved by "ZOOMRESET", which )"
                            "sends no bytes",
                            HasSubstr("\"AZ+\" of \"M\" has no bytes"),
                            HasSubstr("\"ZOOMRESET\" of \"M\" has no bytes"),
                            HasSubstr("\"Z-\" of \"M\" has no bytes")));
    EXPECT_THAT(surprisesIn(modelWith("'AF+' = 'a'\n'AF-' = 'b'\n'F-' = 'c'\n'F--' = ''")),
                Contains(R"(m:2:8: the focus of "M" is counted as moved by "F--", which sends no )"
                         "bytes"));
}

TEST(Surprise, isALensWithTheSameBytesForBothDirections) {
    EXPECT_THAT(surprisesIn(modelWith("'AZ+' = 'a'\n'AZ-' = 'a'\nZOOMRESET = 'b'")),
                ElementsAre(R"(m:2:8: the zoom of "M" has the same bytes for "AZ+" and "AZ-")"));
}

TEST(Surprise, isAByteThatTheLineCannotCarry) {
    const auto lineOf = [](int bytesize, const std::string& commands) {
        return surprisesIn(modelWithKeys("bytesize = " + std::to_string(bytesize) +
                                         "\n[model.commands]\n" + commands));
    };
    EXPECT_THAT(lineOf(7, R"(ON = '\x80')"),
                ElementsAre(R"(m:6:1: "ON" of "M" has bytes that the line cannot carry: its )"
                            "characters have 7 bits"));
    EXPECT_THAT(lineOf(7, R"(ON = 'x\x7f')"), IsEmpty());
    EXPECT_THAT(lineOf(8, R"(ON = '\xff')"), IsEmpty());
    EXPECT_THAT(
        lineOf(7, "INPUT = { send = '{1}', args = [{ type = 'I', len = 1, min = 0, max = 128 }] }"),
        ElementsAre(R"(m:6:33: argument 1 of "INPUT" of "M" has bytes that the line cannot carry: )"
                    "its characters have 7 bits"));
    EXPECT_THAT(
        lineOf(7, "INPUT = { send = '{1}', args = [{ type = 'I', len = 1, min = 0, max = 127 }] }"),
        IsEmpty());
}

TEST(Surprise, isNothingMoreAboutACommandThatIsNeverSent) {
    const auto odd = " = { send = 'abc', verbatim = [" + verbatim("pos = 9") + "] }";
    EXPECT_THAT(surprisesIn(modelWith("MEMSAVE" + odd)),
                ElementsAre(HasSubstr("\"MEMSAVE\" of \"M\" is never sent")));
    test::DefinitionImage image;
    image.commands = {{1, "POWER"}};
    image.blocks = {{.name = "M", .strings = {{1, ""}}, .descriptors = {{1, 1, 0, 9, 7, 1, 'A'}}}};
    EXPECT_THAT(surprisesIn(image), ElementsAre(HasSubstr("no client can send \"POWER\"")));
}

TEST(Surprise, isABlockThatTwoModelsShare) {
    const auto model = [](const std::string& name) {
        return "[[model]]\nname = '" + name +
               "'\nbaudrate = 9600\n[model.commands]\nON = 'x'\n"
               "[model.verbatim]\noffset = 60\n";
    };
    EXPECT_THAT(surprisesIn(model("A") + model("B")),
                ElementsAre(R"(m:9:8: "B" has the same block as "A")"));
}

TEST(Surprise, isAnOddSerialLine) {
    const auto lineOf = [](const std::string& keys) {
        return surprisesIn(modelWithKeys(keys + "\n[model.commands]\nON = 'x'"));
    };
    EXPECT_THAT(
        lineOf("timeout = 99"),
        ElementsAre(R"(m:2:8: "M" has a timeout of 99 ms; below 100 no answer is waited for)"));
    EXPECT_THAT(lineOf("timeout = 25500"), IsEmpty());
    EXPECT_THAT(lineOf("timeout = 25599"),
                ElementsAre(R"(m:2:8: "M" has a timeout of 25599 ms, which counts as 25500)"));
    EXPECT_THAT(lineOf("bytesize = 7\nchecksum = 'sum8'"),
                ElementsAre(R"(m:2:8: "M" has a checksum of 8 bits, of which the line carries 7)"));
    EXPECT_THAT(
        lineOf("timeout = 25600"),
        ElementsAre(R"(m:2:8: "M" has a timeout of 25600 ms; above 25599 it begins again at 0)"));
    const auto verbatimLine = [](const std::string& keys) {
        return surprisesIn(modelWithKeys("[model.commands]\nON = 'x'\n[model.verbatim]\n" + keys));
    };
    EXPECT_THAT(verbatimLine("bytesize = 9"),
                ElementsAre(R"(m:2:8: "M" has the character size 9, which counts as 8)"));
    EXPECT_THAT(verbatimLine("stopbits = 3"),
                ElementsAre(R"(m:2:8: "M" has 3 stop bits, which count as 1)"));
    EXPECT_THAT(verbatimLine("parity = 3"),
                ElementsAre(R"(m:2:8: "M" has the parity code 3, which counts as none)"));
    EXPECT_THAT(verbatimLine("checksum = 2"),
                ElementsAre(R"(m:2:8: "M" has the checksum kind 2, which counts as none)"));
    EXPECT_THAT(surprisesIn("[[model]]\nname = 'M'\nbaudrate = 14400\n[model.commands]\nON='x'"),
                ElementsAre(R"(m:2:8: "M" has the baud rate 14400, which no serial line has: it )"
                            "would be dead"));
}

TEST(Surprise, isAModelWithoutCommandsAndAFileWithoutModels) {
    EXPECT_THAT(surprisesIn(modelWithKeys("")), ElementsAre(R"(m:2:8: "M" has no commands)"));
    EXPECT_THAT(surprisesIn(std::string("[verbatim]")), ElementsAre("m:1:1: there is no model"));
}

TEST(Surprise, isAModelNameThatDiffersInCaseOnlyOrCannotBeConfigured) {
    const auto model = [](const std::string& name) {
        return "[[model]]\nname = '" + name + "'\nbaudrate = 9600\n[model.commands]\nON = 'x'\n";
    };
    EXPECT_THAT(surprisesIn(model("Demo") + model("DEMO")),
                ElementsAre(R"(m:7:8: models "Demo" and "DEMO" differ in letter case only)"));
    EXPECT_THAT(
        surprisesIn(model(" A")),
        ElementsAre(R"(m:2:8: model " A" cannot be configured: its name is empty, begins or ends )"
                    "with a blank, or has a line feed"));
    EXPECT_THAT(surprisesIn("[[model]]\nname = \"A\\nB\"\nbaudrate = 9600\n"
                            "[model.commands]\nON = 'x'"),
                ElementsAre(HasSubstr(R"(model "A\x0aB" cannot be configured)")));
    EXPECT_THAT(surprisesIn("[[model]]\nname = \"A\\u000b\"\nbaudrate = 9600\n"
                            "[model.commands]\nON = 'x'"),
                IsEmpty());
}

TEST(Surprise, isAnIdOrANameUsedTwice) {
    test::DefinitionImage image;
    image.commands = {{1, "ON"}, {1, "OFF"}, {2, "MUTE"}, {3, "MUTE"}, {4, "UNMUTE"}};
    image.blocks = {{.name = "M",
                     .strings = {{2, "a"}, {3, "b"}, {2, "c"}, {4, "d"}},
                     .descriptors = {{9, 1, 0, 9, 0, 1, 'A'}, {9, 1, 0, 9, 0, 1, 'A'}}},
                    {.name = "M", .strings = {{1, "x"}}}};
    const auto lines = surprisesIn(image);
    EXPECT_THAT(lines,
                Contains(R"(m:byte 27: number 1 stands twice in the command list; "OFF" counts)"));
    EXPECT_THAT(lines, Contains(R"(m:byte 40: command "MUTE" stands twice in the command list)"));
    EXPECT_THAT(lines,
                Contains(HasSubstr(R"(the string of command "MUTE" of "M" stands twice; the )"
                                   "later one counts")));
    EXPECT_THAT(lines, Contains(HasSubstr("argument 1 of command number 9 of \"M\" has number 9, "
                                          "which is not in the command list; it is never used")));
    EXPECT_THAT(lines, Contains(HasSubstr("argument 1 of command number 9 of \"M\" stands twice")));
    EXPECT_THAT(lines, Contains(HasSubstr("\"\" of \"M\" has arguments but no bytes to send: they "
                                          "are never used")));
    EXPECT_THAT(lines, Contains(HasSubstr("model \"M\" stands twice; the later one counts")));
}

TEST(Surprise, isANameThatNoClientCanSend) {
    test::DefinitionImage image;
    image.commands = {{1, "on"}, {2, "ON"}, {3, "POWER"}};
    image.blocks = {{.name = "M", .strings = {{1, "a"}, {2, "b"}, {3, "c"}}}};
    EXPECT_THAT(
        surprisesIn(image),
        ElementsAre(
            R"(m:byte 22: no client can send "on": it is not in the vocabulary; is it "ON"?)",
            R"(m:byte 27: commands "on" and "ON" differ in letter case only)",
            R"(m:byte 32: no client can send "POWER": it is not in the vocabulary)"));
}

TEST(Surprise, isABeginningThatOnlyTheDaemonTakes) {
    test::DefinitionImage image;
    image.magic = "abcdef";
    image.commands = {{2, "ON"}};
    image.blocks = {{.name = "M", .strings = {{2, "b"}}}};
    EXPECT_THAT(surprisesIn(image),
                ElementsAre("m:byte 0: the file does not begin with the usual six bytes"));
}

TEST(Surprise, isNotInTheExample) {
    Mistakes mistakes({ORX_SOURCE_DIR "/definitions/demo.toml"});
    findSurprises(readToml(mistakes), mistakes);
    EXPECT_EQ(mistakes.count(), mistakes.count(Severity::note));
}

}  // namespace
}  // namespace orx::orxdef
