// How a report is shown, and that making one leaves no trace.
#include <nlohmann/json.hpp>

#include "CheckBench.h"
#include "orxctl/check/Report.h"
#include "orxctl/check/ReportWriter.h"
#include "orxctl/check/ShellWord.h"
#include "support/CapturedOutput.h"

namespace orx::orxctl {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

std::string textOf(const Report& report) {
    std::ostringstream output;
    printText(report, output);
    return output.str();
}

TEST(CheckReport, namesThePlaceByTheFileOrElseByTheSubject) {
    EXPECT_EQ(describe({.subject = "key"}), "key");
    EXPECT_EQ(describe({.subject = "key", .file = "a.cfg"}), "a.cfg");
    EXPECT_EQ(describe({.subject = "key", .file = "a.cfg", .line = 3}), "a.cfg:3");
    EXPECT_EQ(describe({.subject = "key", .file = "a.ccd", .byte = 7}), "a.ccd:byte 7");
}

TEST(CheckReport, keepsEveryFindingOnOneLine) {
    Report report;
    report.ends({.subject = "key", .file = "a\nb\xc3\xa4"}, "odd\r\xc3\xa4", "rea\tson");
    EXPECT_THAT(textOf(report), testing::StartsWith("a\\x0ab\xc3\xa4: error: the daemon ends with "
                                                    "\"ERROR: odd\\x0d\xc3\xa4\": rea\\x09son\n"));
}

TEST(CheckReport, givesPathsToAShellAsOneWord) {
    EXPECT_EQ(shellWord("/dev/ttyUSB0"), "/dev/ttyUSB0");
    EXPECT_EQ(shellWord("/a b"), "'/a b'");
    EXPECT_EQ(shellWord("it's"), R"('it'\''s')");
    EXPECT_EQ(shellWord(""), "''");
}

TEST(CheckReport, hasAVerdictForEveryEnd) {
    Report report;
    EXPECT_THAT(textOf(report),
                EndsWith("0 errors, 0 warnings, 0 notes\n"
                         "The daemon would start in dumb mode: without a projector it takes "
                         "commands and sends nothing.\n"));
    report.ends({.subject = "key"}, "stoi", "reason", Stage::withProjector);
    EXPECT_THAT(textOf(report), HasSubstr("key: error: as soon as it has a projector, the daemon "
                                          "ends with \"ERROR: stoi\": reason\n"));
    EXPECT_TRUE(report.wouldStart());
    report.foundModel("DEMO-1");
    EXPECT_THAT(textOf(report),
                EndsWith("The daemon would start with projector DEMO-1, but not drive it.\n"));
    report.ends({.subject = "key"}, "stoi", "reason", Stage::withProjector);
    EXPECT_THAT(textOf(report), EndsWith("2 errors, 0 warnings, 0 notes\n"
                                         "The daemon would not start.\n"));
    EXPECT_EQ(report.projector(), std::nullopt);
}

class CheckedStart : public CheckBench {};

TEST_F(CheckedStart, isSoundWithoutErrors) {
    EXPECT_THAT(report("abszoom.lockinmode = 9"),
                EndsWith("The daemon would start with projector M.\n"));
    EXPECT_EQ(status, 0) << "warnings do not count";
}

TEST_F(CheckedStart, isShownToMachines) {
    const auto json = nlohmann::json::parse(report(
        "abszoom.lockinmode = 9\nlogfile = /none/orx.log\nserial.debug = 2", CheckFormat::json));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(json["errors"], 0);
    EXPECT_EQ(json["warnings"], 2);
    EXPECT_EQ(json["notes"], 1);
    EXPECT_EQ(json["wouldStart"], true);
    EXPECT_EQ(json["projector"], "M");
    ASSERT_EQ(json["findings"].size(), 3U);
    EXPECT_EQ(json["findings"][2], (nlohmann::json{{"severity", "warning"},
                                                   {"place", "orx.cfg:1"},
                                                   {"subject", "abszoom.lockinmode"},
                                                   {"file", "orx.cfg"},
                                                   {"line", 1},
                                                   {"message", "9 does nothing; give 0 to 6"}}));
}

TEST_F(CheckedStart, isShownToMachinesWithoutAProjector) {
    for (const auto& [lines, wouldStart] : std::vector<std::pair<std::string, bool>>{
             {"projector = none", true}, {"serial.debug = x", false}}) {
        const auto json = nlohmann::json::parse(report(lines, CheckFormat::json));
        EXPECT_EQ(status, 1);
        EXPECT_EQ(json["wouldStart"], wouldStart) << lines;
        EXPECT_TRUE(json["projector"].is_null()) << lines;
    }
}

TEST_F(CheckedStart, showsOddNamesToMachinesToo) {
    const auto json =
        nlohmann::json::parse(report("projector = \xff\xfe\nodd\xff = 1", CheckFormat::json));
    EXPECT_GE(json["findings"].size(), 2U);
    EXPECT_EQ(json["findings"][0]["subject"], "odd\xef\xbf\xbd");
}

TEST_F(CheckedStart, leavesNoTrace) {
    const auto files = [this] {
        Lines names;
        for (const auto& root : {folder.path(), std::filesystem::path(INSTALL_PREFIX)})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
                names.push_back(entry.path().string());
        std::ranges::sort(names);
        return names;
    };
    const auto config = configure("");
    const auto before = files();
    const auto attributes = line.attributes();
    const auto output = test::outputOf([&] { reportOn(config); });
    EXPECT_EQ(output, "");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(line.attributes().c_cflag, attributes.c_cflag);
    EXPECT_EQ(line.attributes().c_lflag, attributes.c_lflag);
}

}  // namespace
}  // namespace orx::orxctl
