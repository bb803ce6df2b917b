// The bytes that would be sent, shown without a daemon.
#include <gmock/gmock.h>

#include "Reading.h"
#include "ToolOutput.h"
#include "orxdef/Encode.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

class EncodeSubcommand : public testing::Test {
  protected:
    EncodeSubcommand() {
        folder.write("orx.ccd", imageOf(R"(
[[model]]
name = "M"
baudrate = 9600
checksum = "sum8"
[model.commands]
ON = '\x02P\x03'
INPUT = { send = 'I{1};', args = [{ type = "A", len = 3, min = 0, max = 255 }] }
TEST = { send = 'T', verbatim = [{ number = 1, type = "A", len = 1, pos = 9, min = 0, max = 9 }] }
KEYSTONEVERT = { send = 'K{1}', args = [{ type = "A", len = 1, min = 0, max = 9 }] }
[[model]]
name = "N"
baudrate = 9600
)"));
    }

    ToolOutput run(const std::string& model, const std::string& keyword,
                   const std::vector<std::string>& arguments = {}) {
        return outputOf([&](std::ostream& output, std::ostream& errors) {
            return encode({folder.file("orx.ccd"), model, keyword, arguments}, output, errors);
        });
    }

    /// Why nothing is shown.
    std::string refusal(const std::string& model, const std::string& keyword,
                        const std::vector<std::string>& arguments = {}) {
        const auto result = run(model, keyword, arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        auto text = result.errors;
        const auto path = text.find(folder.file(""));
        if (path != std::string::npos) text.erase(path, folder.file("").size());
        return text;
    }

    test::TemporaryFolder folder;
};

TEST_F(EncodeSubcommand, showsTheBytesEscapedAndInHexadecimal) {
    const auto result = run("M", "ON");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "\\x02P\\x03U\n[02 50 03 55]\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(EncodeSubcommand, insertsArgumentsAsTheDaemonDoes) {
    EXPECT_EQ(run("M", "INPUT", {"42"}).output, "I042;\\x1a\n[49 30 34 32 3b 1a]\n");
    EXPECT_EQ(run("M", "INPUT", {"300"}).output, "I255; \n[49 32 35 35 3b 20]\n") << "clamped";
    EXPECT_EQ(run("M", "INPUT", {"7x"}).output, "I007;\\x1b\n[49 30 30 37 3b 1b]\n");
    EXPECT_EQ(run("M", "INPUT").output, "I;\\x84\n[49 3b 84]\n") << "nothing inserted";
}

TEST_F(EncodeSubcommand, saysWhyNothingWouldBeSent) {
    EXPECT_EQ(refusal("M", "OFF"), "orxdef: M has no OFF: nothing would be sent\n");
    EXPECT_EQ(refusal("M", "Input", {"1"}),
              "orxdef: unknown command \"Input\"; did you mean \"INPUT\"?\n");
    EXPECT_EQ(refusal("M", "XYZZY"), "orxdef: unknown command \"XYZZY\"\n");
    EXPECT_EQ(refusal("m", "ON"), "orxdef: no model \"m\" in orx.ccd; it has \"M\", \"N\"\n");
    EXPECT_EQ(refusal("M", "MEMSAVE", {"1"}),
              "orxdef: the daemon acts on MEMSAVE by itself and never sends it as such\n");
}

TEST_F(EncodeSubcommand, refusesWordsThatTheDaemonWouldDrop) {
    EXPECT_EQ(refusal("M", "INPUT", {"seven"}),
              "orxdef: INPUT takes words of the kind \"integer\"; the daemon drops any other\n");
    EXPECT_EQ(refusal("M", "ON", {"1"}), "orxdef: ON takes no argument\n");
}

TEST_F(EncodeSubcommand, saysWhatWouldEndTheDaemon) {
    EXPECT_EQ(refusal("M", "KEYSTONEVERT", {".5"}), "orxdef: this would end the daemon: stoi\n");
    EXPECT_THAT(refusal("M", "TEST", {"1"}),
                testing::StartsWith("orxdef: this would end the daemon: "));
}

TEST_F(EncodeSubcommand, saysWhyTheFileCannotBeRead) {
    folder.write("orx.ccd", std::string(30, 'x'));
    EXPECT_EQ(refusal("M", "ON"), "orxdef: wrong endianness in projector definition file\n");
}

}  // namespace
}  // namespace orx::orxdef
