// Completion of command lines by the shells themselves.
#include <sstream>
#include <unistd.h>

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"
#include "system/harness/ChildProcess.h"
#include "system/orxctl/Orxctl.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class OrxctlCompletion : public testing::Test {
  protected:
    /// The path of the shell; empty where there is none, and the test is not made.
    static std::string find(const std::string& shell) {
        for (const std::string folder : {"/usr/bin/", "/bin/"})
            if (::access((folder + shell).c_str(), X_OK) == 0) return folder + shell;
        return "";
    }
    void writeScript(const std::string& shell) {
        const auto result = resultOf("completion " + shell);
        EXPECT_EQ(result.ending, "exit status 0") << result.errors;
        script = folder.write("script", result.output);
    }
    /// The lines that the command writes. Nothing may go wrong.
    [[nodiscard]] std::vector<std::string> linesOf(const std::vector<std::string>& command) const {
        ChildProcess process({.command = command, .environment = {"HOME=" + folder.file("")}});
        EXPECT_EQ(process.waitForEnd(), "exit status 0");
        std::vector<std::string> lines;
        std::istringstream output(process.output().bytes());
        for (std::string line; std::getline(output, line);)
            lines.push_back(line);
        return lines;
    }
    /// What bash offers at the end of this line.
    [[nodiscard]] std::vector<std::string> bashOffers(const std::string& line) const {
        return linesOf({find("bash"), "--norc", "-c",
                        "source " + script + "; COMP_LINE='" + line +
                            "'; COMP_POINT=${#COMP_LINE}; _orxctl; "
                            R"(printf '%s\n' "${COMPREPLY[@]}")"});
    }
    /// What fish offers for the last word of this line, without what it says of it.
    [[nodiscard]] std::vector<std::string> fishOffers(const std::string& line) const {
        auto offers = linesOf({find("fish"), "--no-config", "-c",
                               "source " + script + "; complete -C '" + line + "'"});
        for (auto& offer : offers)
            offer.resize(std::min(offer.size(), offer.find('\t')));
        return offers;
    }

    TemporaryFolder folder;
    std::string script;  ///< its path
};

TEST_F(OrxctlCompletion, WorksInBash) {
    if (find("bash").empty()) GTEST_SKIP() << "there is no bash";
    writeScript("bash");
    EXPECT_THAT(bashOffers("orxctl ZO"),
                UnorderedElementsAre("ZOCALEND", "ZOCALSTART", "ZOOM", "ZOOMRESET", "ZOOMX"));
    EXPECT_THAT(bashOffers("orxctl sta"), ElementsAre("status"));
    EXPECT_THAT(bashOffers("orxctl -H x ME"),
                UnorderedElementsAre("MEMCLEAR", "MEMLOAD", "MEMSAVE"));
    EXPECT_THAT(bashOffers("orxctl -H 127.0.0.1:7782 --host=y sta"), ElementsAre("status"));
    EXPECT_THAT(bashOffers("orxctl ZOOM --wa"), ElementsAre("--wait"));
    EXPECT_THAT(bashOffers("orxctl status --w"), ElementsAre("--watch"));
    EXPECT_THAT(bashOffers("orxctl completion "),
                AllOf(Contains("bash"), Contains("zsh"), Contains("fish"), Not(Contains("ZOOM"))));
    EXPECT_THAT(bashOffers("orxctl run " + folder.file("scr")), ElementsAre(script));
    const auto withBlank = folder.write("a show", "");
    EXPECT_THAT(bashOffers("orxctl run " + folder.file("a")), ElementsAre(withBlank));
    EXPECT_THAT(bashOffers("orxctl --hosts " + folder.file("scr")), ElementsAre(script));
}

TEST_F(OrxctlCompletion, WorksInFish) {
    if (find("fish").empty()) GTEST_SKIP() << "there is no fish";
    writeScript("fish");
    EXPECT_THAT(linesOf({find("fish"), "--no-execute", script}), testing::IsEmpty());
    EXPECT_THAT(fishOffers("orxctl ZOO"), UnorderedElementsAre("ZOOM", "ZOOMRESET", "ZOOMX"));
    EXPECT_THAT(fishOffers("orxctl sta"), Contains("status"));
    EXPECT_THAT(fishOffers("orxctl -H x MEM"),
                UnorderedElementsAre("MEMCLEAR", "MEMLOAD", "MEMSAVE"));
    EXPECT_THAT(fishOffers("orxctl completion "), UnorderedElementsAre("bash", "zsh", "fish"));
    EXPECT_THAT(fishOffers("orxctl status --w"), ElementsAre("--watch"));
}

TEST_F(OrxctlCompletion, IsGoodZsh) {
    if (find("zsh").empty()) GTEST_SKIP() << "there is no zsh";
    writeScript("zsh");
    EXPECT_THAT(linesOf({find("zsh"), "-f", "-n", script}), testing::IsEmpty());
    EXPECT_THAT(linesOf({find("zsh"), "-f", "-c",
                         "autoload -U compinit && compinit -D && source " + script +
                             " && print $_comps[orxctl]"}),
                ElementsAre("_orxctl"));
}

}  // namespace
}  // namespace orx::test
