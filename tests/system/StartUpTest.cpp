// What a start shows, and which files it takes.
#include <algorithm>

#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::StartsWith;

const std::string banner =
    "orx v" ORX_VERSION R"( "Quietpangolin" (build 2393 @ 2019-06-13, 16:23:26))";
const std::string internalVersion = ORX_VERSION "/Quietpangolin/2393/2019-06-13/16:23:26";

class StartUp : public Story {
  protected:
    /// A configuration that the daemon can only have taken from where it was put: its definition
    /// file is named after that place and does not exist.
    static std::string configurationOf(const std::string& place) {
        return "definitionfile = " + place + ".ccd\n";
    }
};

TEST_F(StartUp, PrintsTheInternalVersionAsOneLineAndDoesNothingElse) {
    install(motorModel());
    EXPECT_EQ(startAndWaitForEnd({.arguments = {"--internalversion"}}), "exit status 0");
    EXPECT_THAT(daemon->lines(), ElementsAre(internalVersion));
    EXPECT_FALSE(installation.has("var/run/orx.log"));
}

TEST_F(StartUp, PrintsTheInternalVersionWhateverFollows) {
    EXPECT_EQ(startAndWaitForEnd({.arguments = {"--internalversion", "more"}}), "exit status 0");
    EXPECT_THAT(daemon->lines(), ElementsAre(internalVersion));
}

TEST_F(StartUp, ShowsEveryStepInOrder) {
    startWith(motorModel());
    daemon->waitForText("start, waiting for commands");
    daemon->waitForLine("[PROJCTRL] start");
    const auto socket = daemon->socketNumbers().at(0);
    auto lines = daemon->lines();
    ASSERT_EQ(lines.size(), 7U);
    std::sort(lines.begin() + 4, lines.end());  // these come from three threads
    EXPECT_THAT(
        lines,
        ElementsAre(banner,
                    MatchesRegex(R"(\[RS232\] fd [0-9]+: serial init )" + line.device() +
                                 " @ 9600 baud, delay = 0ms"),
                    "[LENSMEM] load lens config :: zoom: 0-0 (reduced from 0) "
                    "focus: 0-0 (reduced from 0)",
                    StartsWith("[LISTENER] created socket #" + socket + " @ " + controlAddress()),
                    "[CMDQ] start", "[CTRLCHAN|#" + socket + "] start, waiting for commands",
                    "[PROJCTRL] start"));
}

TEST_F(StartUp, LogsItsSteps) {
    startWith(motorModel());
    EXPECT_THAT(installation.log(),
                ElementsAre("listening on " + controlAddress(),
                            "load lens config :: zoom: 0-0 (reduced from 0) "
                            "focus: 0-0 (reduced from 0)",
                            MatchesRegex(R"(\[RS232\] fd [0-9]+: serial init )" + line.device() +
                                         " @ 9600 baud, delay = 0ms"),
                            "-- ORX logging start --"));
}

TEST_F(StartUp, TakesTheDefaultFilesBelowThePrefix) {
    install(motorModel());
    start();
    EXPECT_TRUE(installation.has("var/run/orx.log"));
    EXPECT_THAT(status(), StartsWith("IDLE; zoom: undefined focus: undefined;"));
}

TEST_F(StartUp, TakesTheConfigurationThatIsGiven) {
    installation.writeConfiguration(configurationOf("default"));
    const auto given = installation.write("given.cfg", configurationOf("given"));
    EXPECT_EQ(startAndWaitForEnd({.arguments = {given}}), "exit status 1");
    EXPECT_THAT(daemon->lines(),
                ElementsAre(banner, "ERROR: projector definition file given.ccd not found"));
}

TEST_F(StartUp, TakesAnEmptyArgumentForNone) {
    installation.writeConfiguration(configurationOf("default"));
    EXPECT_EQ(startAndWaitForEnd({.arguments = {""}}), "exit status 1");
    EXPECT_THAT(daemon->lines(),
                ElementsAre(banner, "ERROR: projector definition file default.ccd not found"));
}

TEST_F(StartUp, IgnoresASecondArgument) {
    const auto first = installation.write("first.cfg", configurationOf("first"));
    const auto second = installation.write("second.cfg", configurationOf("second"));
    EXPECT_EQ(startAndWaitForEnd({.arguments = {first, second}}), "exit status 1");
    EXPECT_THAT(daemon->lines(),
                ElementsAre(banner, "ERROR: projector definition file first.ccd not found"));
}

TEST_F(StartUp, RefusesAGivenConfigurationThatIsMissing) {
    const auto missing = installation.file("missing.cfg");
    EXPECT_EQ(startAndWaitForEnd({.arguments = {missing}}), "exit status 1");
    EXPECT_THAT(daemon->lines(), ElementsAre(banner, "ERROR: config file not found: " + missing));
}

TEST_F(StartUp, TakesTheDefaultsWhereTheDefaultConfigurationIsMissing) {
    EXPECT_EQ(startAndWaitForEnd(), "exit status 1");
    EXPECT_THAT(daemon->lines(),
                ElementsAre(banner, "ERROR: projector definition file " +
                                        installation.file("lib/orx.ccd") + " not found"));
    EXPECT_THAT(installation.log(), ElementsAre("-- ORX logging start --"));
}

TEST_F(StartUp, RefusesALineThatIsNoSettingAndNamesIt) {
    installation.writeConfiguration("# comment\n\nprojector MOTOR\nprojector = MOTOR\n");
    EXPECT_EQ(startAndWaitForEnd(), "exit status 1");
    EXPECT_THAT(daemon->lines(),
                ElementsAre(banner, "ERROR: [config] " + installation.file("etc/orx.cfg") +
                                        ", line 3: parse error"));
    EXPECT_FALSE(installation.has("var/run/orx.log"));
}

}  // namespace
}  // namespace orx::test
