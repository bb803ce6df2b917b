// The example definition: it compiles, and shows everything that a definition can say.
#include <algorithm>
#include <set>

#include <gmock/gmock.h>

#include "Reading.h"

namespace orx::orxdef {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class DemoDefinition : public testing::Test {
  protected:
    [[nodiscard]] const ModelDefinition& model(const std::string& name) const {
        return *findModel(definitions, name);
    }

    [[nodiscard]] std::vector<ReadCommand> commandsOfModel(const std::string& name) const {
        return commandsOf(definitions, model(name));
    }

    [[nodiscard]] std::vector<std::string> keywordsOf(const std::string& name) const {
        std::vector<std::string> keywords;
        for (const auto& command : commandsOfModel(name))
            keywords.push_back(command.keyword);
        return keywords;
    }

    Mistakes mistakes{{ORX_SOURCE_DIR "/definitions/demo.toml"}};
    DefinitionSet definitions = readToml(mistakes);
};

/// Everything but what the daemon does by itself.
const std::vector<std::string> commandsOfProjectors{
    "AF+",
    "AF-",
    "ARCBOTTOM",
    "ARCLEFT",
    "ARCRESET",
    "ARCRIGHT",
    "ARCTOP",
    "ASPECTRATIO",
    "AVMUTE",
    "AVUNMUTE",
    "AZ+",
    "AZ-",
    "BARRELRESET",
    "BRIGHTNESS",
    "CONTRAST",
    "CORCORRESET",
    "CURVEDHORIARC",
    "CURVEDHORIBAL",
    "CURVEDHORIKEYSTONE",
    "CURVEDMAINTASPRATIO",
    "CURVEDTHROWRATIO",
    "CURVEDVERTARC",
    "CURVEDVERTBAL",
    "CURVEDVERTKEYSTONE",
    "F+",
    "F++",
    "F+++",
    "F-",
    "F--",
    "F---",
    "FOCUSRESET",
    "FREEZE",
    "GEOMETRY",
    "HORIBARREL",
    "HORICORCORLIN",
    "HORICORCORLL",
    "HORICORCORLR",
    "HORICORCORUL",
    "HORICORCORUR",
    "IMGORIENT",
    "INFO",
    "INPUT",
    "INTENSITY",
    "KEYSTONEHORI",
    "KEYSTONEHORIBAL",
    "KEYSTONERESET",
    "KEYSTONETHROWRATIO",
    "KEYSTONEVERT",
    "KEYSTONEVERTBAL",
    "LIGHTOUT",
    "MAXLIGHTOUT",
    "MUTE",
    "NATMEMCLEAR",
    "NATMEMLOAD",
    "NATMEMSAVE",
    "OFF",
    "ON",
    "OPMODE",
    "PICMUTE",
    "PICUNMUTE",
    "ROTATION",
    "ROTATIONRESET",
    "SHARPNESS",
    "SHIFTDOWN",
    "SHIFTLEFT",
    "SHIFTRESET",
    "SHIFTRIGHT",
    "SHIFTUP",
    "SHOFF",
    "SHON",
    "TEST",
    "UNFREEZE",
    "UNMUTE",
    "VERTBARREL",
    "VERTCORCORLIN",
    "VERTCORCORLL",
    "VERTCORCORLR",
    "VERTCORCORUL",
    "VERTCORCORUR",
    "Z+",
    "Z++",
    "Z+++",
    "Z-",
    "Z--",
    "Z---",
    "ZOOMRESET",
};

const std::vector<std::string> stepsOfTheLens{
    "AF+", "AF-",  "AZ+", "AZ-", "F+",   "F++", "F+++", "F-",
    "F--", "F---", "Z+",  "Z++", "Z+++", "Z-",  "Z--",  "Z---",
};

TEST_F(DemoDefinition, compiles) {
    EXPECT_TRUE(binaryImage(definitions, mistakes).has_value());
    EXPECT_THAT(mistakes.lines(), IsEmpty());
}

TEST_F(DemoDefinition, showsEveryCommandThatAProjectorCanBeSent) {
    ASSERT_EQ(commandsOfProjectors.size(), 86U);
    EXPECT_EQ(keywordsOf("DEMO-1"), commandsOfProjectors);
}

TEST_F(DemoDefinition, tellsEveryCommandOfAModelApart) {
    for (const auto& each : definitions.models) {
        std::set<std::string> sent;
        for (const auto& command : commandsOf(definitions, each)) {
            EXPECT_NE(command.bytes, "") << command.keyword;
            EXPECT_TRUE(sent.insert(command.bytes).second) << each.name << " " << command.keyword;
        }
    }
}

TEST_F(DemoDefinition, showsEveryTypeOfArgument) {
    std::set<char> types;
    for (const auto& argument : model("DEMO-1").descriptors)
        types.insert(static_cast<char>(argument.type));
    EXPECT_THAT(types, ElementsAre('A', 'B', 'D', 'I', 'X'));
}

TEST_F(DemoDefinition, showsACommandWithTwoArguments) {
    const auto commands = commandsOfModel("DEMO-1");
    EXPECT_TRUE(std::ranges::any_of(
        commands, [](const auto& command) { return command.arguments.size() == 2; }));
}

TEST_F(DemoDefinition, showsAModelWithFramesParityAndChecksum) {
    const auto& demo = model("DEMO-2");
    EXPECT_EQ(demo.line.baudrate, 19200U);
    EXPECT_EQ(demo.line.bytesize, 7);
    EXPECT_EQ(demo.line.parity, Parity::even);
    EXPECT_EQ(demo.checksum, Checksum::sum8);
    EXPECT_GE(demo.strings.size(), 24U);
    EXPECT_THAT(keywordsOf("DEMO-2"), IsSupersetOf(stepsOfTheLens));
    for (const auto& command : commandsOfModel("DEMO-2")) {
        EXPECT_EQ(command.bytes.front(), '\x02') << command.keyword;
        EXPECT_EQ(command.bytes.back(), '\x03') << command.keyword;
    }
}

TEST_F(DemoDefinition, showsAModelThatIsResetByFastSteps) {
    const auto keywords = keywordsOf("DEMO-3");
    EXPECT_THAT(keywords, IsSupersetOf(stepsOfTheLens));
    EXPECT_THAT(keywords, Not(Contains("ZOOMRESET")));
    EXPECT_THAT(keywords, Not(Contains("FOCUSRESET")));
}

TEST_F(DemoDefinition, waitsNeverLong) {
    for (const auto& each : definitions.models) {
        EXPECT_LE(each.line.timeout, 100) << each.name;
        EXPECT_GE(each.line.delay, 10) << each.name;
        EXPECT_LE(each.line.delay, 20) << each.name;
    }
}

}  // namespace
}  // namespace orx::orxdef
