// How far a move has come, and the line on the terminal that shows it.
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "orxctl/MoveProgress.h"
#include "orxctl/Progress.h"

namespace orx::orxctl {
namespace {

client::DaemonStatus at(const std::string& zoom, const std::string& focus = "1/9") {
    return client::DaemonStatus::parse("IDLE; zoom: " + zoom + " focus: " + focus + ";\n").value();
}

TEST(MoveProgress, hasABarForEachAxisOnItsWay) {
    MoveProgress progress;
    EXPECT_EQ(progress.line(at("10/50>30")), "zoom [--------------------] 10/50>30  focus 1/9");
    EXPECT_EQ(progress.line(at("15/50>30")), "zoom [#####---------------] 15/50>30  focus 1/9");
    EXPECT_EQ(progress.line(at("29/50>30", "1/9>3")),
              "zoom [###################-] 29/50>30  focus [--------------------] 1/9>3");
    EXPECT_EQ(progress.line(at("30/50", "2/9>3")),
              "zoom 30/50  focus [##########----------] 2/9>3");
}

TEST(MoveProgress, goesDownwardsAsWell) {
    MoveProgress progress;
    static_cast<void>(progress.line(at("30/50>10")));
    EXPECT_EQ(progress.line(at("20/50>10")), "zoom [##########----------] 20/50>10  focus 1/9");
}

TEST(MoveProgress, beginsAnewWithANewTarget) {
    MoveProgress progress;
    static_cast<void>(progress.line(at("10/50>30")));
    EXPECT_EQ(progress.line(at("20/50>40")), "zoom [--------------------] 20/50>40  focus 1/9");
    static_cast<void>(progress.line(at("40/50")));
    EXPECT_EQ(progress.line(at("10/50>40")), "zoom [--------------------] 10/50>40  focus 1/9");
}

TEST(MoveProgress, hasAnEmptyBarWhileTheAxisIsReset) {
    EXPECT_EQ(MoveProgress().line(at("resetting>30", "undefined")),
              "zoom [--------------------] resetting>30  focus undefined");
}

TEST(MoveProgress, survivesPositionsFarApart) {
    MoveProgress progress;
    static_cast<void>(progress.line(at("-2147483648/50>2147483647")));
    EXPECT_EQ(progress.line(at("0/50>2147483647")).substr(0, 27), "zoom [##########----------]");
}

TEST(Progress, drawsOneLineOverAndOverAndTakesItAway) {
    std::ostringstream terminal;
    {
        Progress progress(terminal, 80, 1);
        progress.show(0, at("10/50>30"));
        progress.show(0, at("10/50>30"));  // nothing new
        progress.show(0, at("30/50"));
    }
    EXPECT_EQ(terminal.str(),
              "\rzoom [--------------------] 10/50>30  focus 1/9\033[K"
              "\rzoom 30/50  focus 1/9\033[K"
              "\r\033[K");
}

TEST(Progress, staysWithinTheLine) {
    std::ostringstream terminal;
    Progress(terminal, 11, 1).show(0, at("30/50"));
    EXPECT_EQ(terminal.str(), "\rzoom 30/50\033[K\r\033[K");
}

TEST(Progress, countsSeveralDaemons) {
    std::ostringstream terminal;
    Progress progress(terminal, 80, 3);
    progress.show(1, at("30/50"));
    progress.show(2, at("30/50"));
    progress.show(1, at("30/50>31"));
    EXPECT_EQ(terminal.str(), "\r1 of 3 at rest\033[K\r2 of 3 at rest\033[K\r1 of 3 at rest\033[K");
}

TEST(Progress, leavesATerminalAloneOnWhichItHasDrawnNothing) {
    std::ostringstream terminal;
    { const Progress progress(terminal, 80, 1); }
    EXPECT_EQ(terminal.str(), "");
}

}  // namespace
}  // namespace orx::orxctl
