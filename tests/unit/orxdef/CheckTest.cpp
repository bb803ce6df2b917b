// Checking files: which of them is read how, what is printed, and the exit status.
#include <nlohmann/json.hpp>

#include <gmock/gmock.h>

#include "Reading.h"
#include "ToolOutput.h"
#include "orxdef/Check.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class CheckSubcommand : public testing::Test {
  protected:
    ToolOutput run(const std::vector<std::string>& names, CheckFormat format = CheckFormat::text) {
        std::vector<std::string> paths;
        for (const auto& name : names)
            paths.push_back(folder.file(name));
        auto result = outputOf(
            [&](std::ostream& output, std::ostream&) { return check(paths, format, output); });
        const auto prefix = folder.file("");
        for (auto at = result.output.find(prefix); at != std::string::npos;
             at = result.output.find(prefix))
            result.output.erase(at, prefix.size());
        return result;
    }

    /// A model with one warning and, on line 6, one error.
    static std::string oddModel() {
        return modelWith(
            "ZOOM = 'z'\n"
            "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'A', len = 1, min = 0, max = 9 }] }");
    }

    test::TemporaryFolder folder;
};

TEST_F(CheckSubcommand, findsNothingInAGoodFileOfEitherForm) {
    const auto text = modelWith("ON = 'x'");
    folder.write("m.toml", text);
    folder.write("m.ccd", imageOf(text));
    for (const auto* name : {"m.toml", "m.ccd"}) {
        const auto result = run({name});
        EXPECT_EQ(result.status, 0) << name;
        EXPECT_EQ(result.output, "0 errors, 0 warnings, 0 notes\n") << name;
    }
}

TEST_F(CheckSubcommand, printsEveryFindingWithItsPlaceAndWeight) {
    folder.write("m.toml", oddModel());
    const auto result = run({"m.toml"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.output,
        "m.toml:5:1: warning: \"ZOOM\" of \"M\" is never sent: the daemon acts on that command "
        "by itself\n"
        "m.toml:6:41: error: argument 1 of \"KEYSTONEVERT\" of \"M\" is a decimal number, "
        "which type \"A\" cannot read: \".5\" ends the daemon; use type \"D\"\n"
        "1 error, 1 warning, 0 notes\n");
}

TEST_F(CheckSubcommand, doesNotMindNotes) {
    folder.write("m.toml", modelWith("ON = ''"));
    const auto result = run({"m.toml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              "m.toml:5:1: note: \"ON\" of \"M\" has no bytes to send\n"
              "0 errors, 0 warnings, 1 note\n");
}

TEST_F(CheckSubcommand, mindsWarnings) {
    folder.write("m.toml", modelWith("ZOOM = 'z'"));
    EXPECT_EQ(run({"m.toml"}).status, 1);
}

TEST_F(CheckSubcommand, reportsMistakesOfTheTextAndLimitsOfTheForm) {
    folder.write("m.toml", "[[model]]\nname = 'A'\n");
    EXPECT_EQ(run({"m.toml"}).output,
              "m.toml:1:1: error: the model has no baudrate\n"
              "m.toml:2:8: warning: \"A\" has no commands\n"
              "m.toml:2:8: warning: \"A\" has the baud rate 0, which no serial line has: it would "
              "be dead\n"
              "1 error, 2 warnings, 0 notes\n");
}

TEST_F(CheckSubcommand, saysNothingMoreOfAnUnknownCommand) {
    folder.write("m.toml", modelWith("ON = 'x'\nPWR = 'x'"));
    EXPECT_EQ(run({"m.toml"}).output,
              "m.toml:6:1: error: unknown command \"PWR\"\n"
              "1 error, 0 warnings, 0 notes\n");
}

TEST_F(CheckSubcommand, checksDefinitionsTogether) {
    folder.write("a.toml", modelWith("ON = 'x'"));
    folder.write("b.toml", modelWith("ON = 'x'"));
    EXPECT_THAT(run({"a.toml", "b.toml"}).output,
                StartsWith("b.toml:2:8: error: model \"M\" is already defined at a.toml:2:8\n"));
}

TEST_F(CheckSubcommand, checksBinaryFilesEachByItself) {
    folder.write("a.ccd", imageOf(modelWith("ON = 'x'")));
    folder.write("b.ccd", imageOf(modelWith("ZOOM = 'x'")));
    folder.write("c.toml", modelWith("MEMSAVE = 'x'"));
    EXPECT_EQ(run({"a.ccd", "b.ccd", "none.ccd", "c.toml"}).output,
              "b.ccd:byte 49: warning: \"ZOOM\" of \"M\" is never sent: the daemon acts on that "
              "command by itself\n"
              "none.ccd:1:1: error: cannot be read: No such file or directory\n"
              "c.toml:5:1: warning: \"MEMSAVE\" of \"M\" is never sent: the daemon acts on that "
              "command by itself\n"
              "1 error, 2 warnings, 0 notes\n");
}

TEST_F(CheckSubcommand, knowsABinaryFileByItsNameOrItsContent) {
    const auto image = imageOf(modelWith("ON = 'x'"));
    folder.write("short.ccd", image.substr(0, 5));
    EXPECT_THAT(run({"short.ccd"}).output,
                StartsWith("short.ccd:byte 0: error: the header is cut"));
    folder.write("backup", image);
    EXPECT_EQ(run({"backup"}).output, "0 errors, 0 warnings, 0 notes\n");
    folder.write("zeros", std::string(30, '\0'));
    EXPECT_THAT(run({"zeros"}).output, StartsWith("zeros:byte 8: error: revision 0"));
    folder.write("text", "[[model]]\n");
    EXPECT_THAT(run({"text"}).output, StartsWith("text:1:1: error: the model has no name"));
}

TEST_F(CheckSubcommand, saysWhatItCannotRead) {
    EXPECT_EQ(run({"none.ccd"}).output,
              "none.ccd:1:1: error: cannot be read: No such file or directory\n"
              "1 error, 0 warnings, 0 notes\n");
    EXPECT_EQ(run({"none.toml"}).status, 1);
}

TEST_F(CheckSubcommand, printsJsonForMachines) {
    folder.write("m.toml", oddModel());
    const auto result = run({"m.toml"}, CheckFormat::json);
    EXPECT_EQ(result.status, 1);
    const auto json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json["errors"], 1);
    EXPECT_EQ(json["warnings"], 1);
    EXPECT_EQ(json["notes"], 0);
    ASSERT_EQ(json["findings"].size(), 2U);
    const auto& finding = json["findings"][1];
    EXPECT_EQ(finding["severity"], "error");
    EXPECT_EQ(finding["file"], "m.toml");
    EXPECT_EQ(finding["line"], 6);
    EXPECT_EQ(finding["column"], 41);
    EXPECT_THAT(std::string(finding["message"]), HasSubstr("KEYSTONEVERT"));
}

TEST_F(CheckSubcommand, printsJsonWithPlacesInABinaryFile) {
    folder.write("m.ccd", imageOf(modelWith("ZOOM = 'z'")));
    const auto finding =
        nlohmann::json::parse(run({"m.ccd"}, CheckFormat::json).output)["findings"][0];
    EXPECT_EQ(finding["byte"], 22 + 7 + 6 + 14);
    EXPECT_FALSE(finding.contains("line"));
}

}  // namespace
}  // namespace orx::orxdef
