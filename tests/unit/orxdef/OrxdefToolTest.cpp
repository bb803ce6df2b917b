// The tool as it is called: exit status, standard output and standard error.
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

using testing::HasSubstr;

class OrxdefTool : public testing::Test {
  protected:
    /// Runs the tool within the folder; gives its exit status.
    int run(const std::string& arguments) {
        const auto command = "cd '" + folder.path().string() + "' && '" ORX_ORXDEF_EXECUTABLE "' " +
                             arguments + " >output 2>errors";
        const auto status = std::system(command.c_str());
        output = test::contentOf(folder.file("output"));
        errors = test::contentOf(folder.file("errors"));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    test::TemporaryFolder folder;
    std::string output;
    std::string errors;
};

TEST_F(OrxdefTool, compilesInSilence) {
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = 9600\n");
    folder.write("b.toml", "[[model]]\nname = 'B'\nbaudrate = 9600\n");
    EXPECT_EQ(run("compile a.toml b.toml -o orx.ccd"), 0);
    EXPECT_EQ(output, "");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(test::contentOf(folder.file("orx.ccd")).size(), 22U + 2 * (6U + 14U));
}

TEST_F(OrxdefTool, takesTheOutputAheadOfTheDefinitionsToo) {
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = 9600\n");
    EXPECT_EQ(run("compile --output=orx.ccd a.toml"), 0);
    EXPECT_EQ(test::contentOf(folder.file("orx.ccd")).size(), 22U + 6U + 14U);
}

TEST_F(OrxdefTool, reportsMistakesUnderTheNamesItWasGiven) {
    folder.write("a.toml", "[[model]]\nname = 'A'\n[model.commands]\nON = 3\n");
    folder.write("orx.ccd", "old");
    EXPECT_EQ(run("compile ./a.toml -o orx.ccd"), 1);
    EXPECT_EQ(output, "");
    EXPECT_EQ(errors,
              "./a.toml:1:1: the model has no baudrate\n"
              "./a.toml:4:6: ON must be a string or a table of send and args, not an integer\n");
    EXPECT_EQ(test::contentOf(folder.file("orx.ccd")), "old");
}

TEST_F(OrxdefTool, endsWithStatusOneOnAWrongCommandLine) {
    for (const auto* arguments : {"", "compile", "compile a.toml", "compile a.toml -o", "link",
                                  "check", "encode orx.ccd", "compile a.toml -o orx.ccd --fast"}) {
        EXPECT_EQ(run(arguments), 1) << arguments;
        EXPECT_EQ(output, "") << arguments;
        EXPECT_THAT(errors, HasSubstr("Run with --help for more information.")) << arguments;
    }
}

TEST_F(OrxdefTool, explainsItself) {
    EXPECT_EQ(run("--help"), 0);
    EXPECT_THAT(output, HasSubstr("compile"));
    EXPECT_EQ(run("compile --help"), 0);
    EXPECT_THAT(output, HasSubstr("MODEL.toml"));
    EXPECT_THAT(output, HasSubstr("--output"));
}

TEST_F(OrxdefTool, tellsItsVersion) {
    EXPECT_EQ(run("--version"), 0);
    EXPECT_THAT(output, testing::MatchesRegex("orxdef [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_EQ(errors, "");
}

TEST_F(OrxdefTool, passesDefinitionsThroughAPipe) {
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = 9600\n[model.commands]\nON = 'x'\n");
    ASSERT_EQ(run("compile a.toml -o a.ccd"), 0);
    EXPECT_EQ(run("decompile a.ccd | '" ORX_ORXDEF_EXECUTABLE "' compile -o b.ccd"), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(test::contentOf(folder.file("b.ccd")), test::contentOf(folder.file("a.ccd")));
    EXPECT_EQ(run("compile - -o - <a.toml"), 0);
    EXPECT_EQ(output, test::contentOf(folder.file("a.ccd")));
    EXPECT_EQ(run("list - <a.ccd"), 0);
    EXPECT_THAT(output, HasSubstr("MODEL  BAUD RATE"));
}

TEST_F(OrxdefTool, readsStandardInputInEverySubcommand) {
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = 9600\n[model.commands]\nON = 'x'\n");
    ASSERT_EQ(run("compile - -o orx.ccd <a.toml"), 0);
    EXPECT_EQ(run("check - <a.toml"), 0) << output;
    for (const std::string subcommand : {"check -", "list -", "decompile -", "encode - A ON"}) {
        EXPECT_EQ(run(subcommand + " <orx.ccd"), 0) << output << errors;
        EXPECT_EQ(run("--version; cat orx.ccd | '" ORX_ORXDEF_EXECUTABLE "' " + subcommand), 0)
            << output << errors;
    }
}

TEST_F(OrxdefTool, checksForPeopleAndMachines) {
    folder.write("a.toml",
                 "[[model]]\nname = 'A'\nbaudrate = 9600\n[model.commands]\nZOOM = 'x'\n");
    EXPECT_EQ(run("check a.toml"), 1);
    EXPECT_THAT(output, HasSubstr("a.toml:5:1: warning: "));
    EXPECT_EQ(run("check --json a.toml"), 1);
    EXPECT_THAT(output, HasSubstr("\"severity\": \"warning\""));
}

TEST_F(OrxdefTool, encodesWordsThatLookLikeOptions) {
    folder.write(
        "a.toml",
        "[[model]]\nname = 'A'\nbaudrate = 9600\n[model.commands]\n'Z-' = 'z'\n"
        "CONTRAST = { send = 'C{1}', args = [{ type = 'B', len = 2, min = -9, max = 9 }] }\n"
        "KEYSTONEVERT = { send = 'K{1}', args = [{ type = 'D', digits = 1, decimals = 1, "
        "min = -9, max = 9 }] }\n");
    ASSERT_EQ(run("compile a.toml -o a.ccd"), 0);
    EXPECT_EQ(run("encode a.ccd A CONTRAST -7"), 0);
    EXPECT_EQ(output, "C-07\n[43 2d 30 37]\n");
    EXPECT_EQ(run("encode a.ccd A CONTRAST -- -7"), 0);
    EXPECT_EQ(output, "C-07\n[43 2d 30 37]\n");
    EXPECT_EQ(run("encode a.ccd A KEYSTONEVERT -.5"), 0);
    EXPECT_EQ(output, "K-0.5\n[4b 2d 30 2e 35]\n");
    EXPECT_EQ(run("encode a.ccd A Z-"), 0);
    EXPECT_EQ(output, "z\n[7a]\n");
}

TEST_F(OrxdefTool, endsWithStatusOneOnADamagedFile) {
    folder.write("a.ccd", "not a definition file at all");
    for (const auto* arguments : {"decompile a.ccd", "list a.ccd", "check a.ccd",
                                  "encode a.ccd A ON", "decompile none.ccd", "list ."}) {
        EXPECT_EQ(run(arguments), 1) << arguments;
        EXPECT_NE(output + errors, "") << arguments;
    }
}

TEST_F(OrxdefTool, tellsThatDefinitionsHaveToBeCompiled) {
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = 9600\n");
    for (const auto* subcommand : {"list", "decompile"}) {
        EXPECT_EQ(run(std::string(subcommand) + " a.toml"), 1);
        EXPECT_EQ(errors,
                  "a.toml:byte 0: this is text and no definition file; orxdef compile makes one of "
                  "TOML\n");
    }
}

TEST_F(OrxdefTool, noticesThatItsOutputIsLost) {
    EXPECT_EQ(run("schema >/dev/full 2>lost; echo $? >status; true"), 0);
    EXPECT_EQ(test::contentOf(folder.file("status")), "1\n");
}

}  // namespace
}  // namespace orx::orxdef
