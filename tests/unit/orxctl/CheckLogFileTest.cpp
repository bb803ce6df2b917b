// What is found about the log file, of whose trouble the daemon says nothing.
#include "CheckBench.h"
#include "CheckOrdinaryUser.h"
#include "orxctl/check/Person.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class CheckLogFile : public CheckBench {};

TEST_F(CheckLogFile, mayExistOrNot) {
    EXPECT_THAT(findings(""), IsEmpty());
    folder.write("orx.log", "old");
    EXPECT_THAT(findings(""), IsEmpty());
    EXPECT_EQ(test::contentOf(folder.file("orx.log")), "old");
}

TEST_F(CheckLogFile, isNotKeptUnderAnEmptyName) {
    EXPECT_THAT(findings("logfile ="),
                ElementsAre("orx.cfg:1: warning: no log is kept; give the path of a file, or "
                            "remove the line"));
    EXPECT_EQ(status, 0);
}

TEST_F(CheckLogFile, needsItsFolder) {
    EXPECT_THAT(findings("logfile = " + folder.file("run/orx.log")),
                ElementsAre("orx.cfg:1: warning: there is no folder \"run\", so no log is kept; "
                            "sudo install -d -o " +
                            userName() + " run"));
}

TEST_F(CheckLogFile, cannotBeAFolderOrBelowAFile) {
    EXPECT_THAT(findings("logfile = /etc"),
                ElementsAre("orx.cfg:1: warning: \"/etc\" is a folder, so no log is kept; name a "
                            "file"));
    folder.write("file", "");
    EXPECT_THAT(findings("logfile = " + folder.file("file/orx.log")),
                ElementsAre("orx.cfg:1: warning: \"file/orx.log\" cannot be reached: Not a "
                            "directory, so no log is kept; name another file, or mend the disk"));
}

TEST_F(CheckLogFile, mustBeWritableForTheUser) {
    folder.write("own/orx.log", "");
    std::filesystem::permissions(folder.path() / "own/orx.log", std::filesystem::perms(0444));
    std::filesystem::permissions(folder.path() / "own", std::filesystem::perms(0555));
    const auto file = configure("logfile = " + folder.file("own/orx.log"));
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn(file)),
                Contains("orx.cfg:1: warning: user \"" + userName() +
                         "\" cannot write \"own/orx.log\": Permission denied, so no log is kept; "
                         "sudo chown " +
                         userName() + " own/orx.log"));
}

TEST_F(CheckLogFile, mustBeAllowedToComeIntoBeing) {
    std::filesystem::create_directory(folder.path() / "own");
    std::filesystem::permissions(folder.path() / "own", std::filesystem::perms(0555));
    const auto file = configure("logfile = " + folder.file("own/orx.log"));
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn(file)),
                Contains("orx.cfg:1: warning: user \"" + userName() +
                         "\" cannot make files in the folder \"own\": Permission denied, so no "
                         "log is kept; sudo install -o " +
                         userName() + " /dev/null own/orx.log"));
}

}  // namespace
}  // namespace orx::orxctl
