// What STATUS must show once a command has been carried out.
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "orxctl/VisibleEffect.h"

namespace orx::orxctl {
namespace {

using client::DaemonStatus;
using client::Request;

DaemonStatus statusOf(const std::string& reply) {
    return DaemonStatus::parse(reply + "\n").value();
}

/// Whether there is an effect, and whether it has to be shown.
std::string kindOf(const std::string& command, const std::string& before) {
    const auto effect = visibleEffect(Request(command), statusOf(before));
    if (!effect) return "none";
    return effect->mustShow ? "must show" : "may show";
}

bool shows(const std::string& command, const std::string& before, const std::string& after) {
    return visibleEffect(Request(command), statusOf(before)).value().isShown(statusOf(after));
}

struct Case {
    std::string command;
    std::string before;
    std::string kind;
    std::string with{};     ///< a status that shows the effect
    std::string without{};  ///< one that does not
};

void PrintTo(const Case& test, std::ostream* output) {
    *output << test.command << " at " << test.before;
}

class Effect : public testing::TestWithParam<Case> {};

TEST(MovedAxis, isTheOneThatIsSentToAPosition) {
    const auto status = statusOf("IDLE; zoom: 20/40 focus: 5/9;");
    EXPECT_EQ(movedAxis(Request("ZOOM 1"), status), &status.axes[0]);
    EXPECT_EQ(movedAxis(Request("FOCUSX 1"), status), &status.axes[1]);
    EXPECT_EQ(movedAxis(Request("ZOOMRESET"), status), nullptr);
    EXPECT_EQ(movedAxis(Request("ZOOM 1"), statusOf("IDLE;;")), nullptr);
}

TEST_P(Effect, isTold) {
    const auto& test = GetParam();
    EXPECT_EQ(kindOf(test.command, test.before), test.kind);
    if (test.kind == "none") return;
    EXPECT_TRUE(shows(test.command, test.before, test.with)) << test.with;
    EXPECT_FALSE(shows(test.command, test.before, test.without)) << test.without;
}

const std::string idle = "IDLE; zoom: 20/40 focus: 5/9;";
const std::string unknown = "IDLE; zoom: undefined focus: undefined;";

INSTANTIATE_TEST_SUITE_P(
    OfAMove, Effect,
    testing::Values(Case{"ZOOMX 30", idle, "must show", "IDLE; zoom: 20/40>30 focus: 5/9;", idle},
                    Case{"ZOOMX 30", idle, "must show", "IDLE; zoom: 30/40 focus: 5/9;",
                         "IDLE; zoom: 29/40 focus: 30/40;"},
                    Case{"FOCUSX 1", idle, "must show", "BUSY; zoom: 20/40 focus: 4/9>1;",
                         "BUSY; zoom: 1/40 focus: 5/9>6;"},
                    Case{"ZOOMX 3", idle, "must show", "IDLE; zoom: 20/40>10 focus: 5/9;", idle},
                    Case{"AZ+", "IDLE; zoom: 3/3>-1 focus: 5/9;", "none"},
                    Case{"ZOOMX 1", "IDLE; zoom: 3/3>-1 focus: 5/9;", "none"},
                    Case{"ZOOMX 20", idle, "none"},
                    Case{"ZOOMX 99", idle, "must show", "IDLE; zoom: 40/40 focus: 5/9;", idle},
                    Case{"ZOOMX -7", idle, "must show", "IDLE; zoom: 0/40 focus: 5/9;", idle},
                    Case{"ZOOM 65536", idle, "must show", "IDLE; zoom: 40/40 focus: 5/9;", idle},
                    Case{"ZOOM 49152", idle, "must show", "IDLE; zoom: 30/40 focus: 5/9;", idle},
                    Case{"ZOOM 32768", idle, "none"},
                    Case{"ZOOMX 30", "BUSY; zoom: 20/40>30 focus: 5/9;", "none"},
                    Case{"ZOOMX 20", "BUSY; zoom: 20/40>30 focus: 5/9;", "must show", idle,
                         "BUSY; zoom: 21/40>30 focus: 5/9;"},
                    Case{"ZOOMX 30", unknown, "may show",
                         "BUSY; zoom: resetting>30 focus: undefined;", unknown},
                    Case{"AZ+", idle, "must show", "IDLE; zoom: 21/40 focus: 5/9;", idle},
                    Case{"AF-", idle, "must show", "IDLE; zoom: 20/40 focus: 5/9>4;", idle},
                    Case{"AZ+", "IDLE; zoom: 40/40 focus: 5/9;", "none"},
                    Case{"AZ+", unknown, "none"}, Case{"ZOOMX 1", "IDLE;;DUMB ", "none"}));

INSTANTIATE_TEST_SUITE_P(
    OfACalibration, Effect,
    testing::Values(Case{"AZ+", "IDLE; zoom: 7 focus: 5/9;", "must show",
                         "IDLE; zoom: 8 focus: 5/9;", "IDLE; zoom: 7 focus: 5/9;"},
                    Case{"AZ-", "IDLE; zoom: 0 focus: 5/9;", "may show",
                         "IDLE; zoom: -1 focus: 5/9;", "IDLE; zoom: 0 focus: 5/9;"},
                    Case{"ZOCALSTART", idle, "must show", "IDLE; zoom: 0 focus: 5/9;", idle},
                    Case{"ZOCALSTART", unknown, "may show", "IDLE; zoom: 0 focus: undefined;",
                         unknown},
                    Case{"ZOCALSTART", "IDLE; zoom: 7 focus: 5/9;", "none"},
                    Case{"ZOCALEND", "IDLE; zoom: 7 focus: 5/9;", "must show",
                         "IDLE; zoom: 0/7 focus: 5/9;LCU ", "IDLE; zoom: 7 focus: 5/9;"},
                    Case{"FOCALEND 9", idle + "LCU ", "none"}));

INSTANTIATE_TEST_SUITE_P(
    OfAReset, Effect,
    testing::Values(
        Case{"ZOOMRESET", idle, "must show", "BUSY; zoom: resetting>0 focus: 5/9;", idle},
        Case{"FOCUSRESET", idle, "must show", "IDLE; zoom: 20/40 focus: 0/9;", idle},
        Case{"ZOOMRESET", "IDLE; zoom: 0/40 focus: 5/9;", "may show",
             "BUSY; zoom: resetting>0 focus: 5/9;", "IDLE; zoom: 0/40 focus: 5/9;"},
        Case{"LENSRESET", idle, "must show", "BUSY; zoom: resetting>0 focus: 5/9;", idle},
        Case{"LENSRESET", unknown, "may show", "BUSY; zoom: resetting>0 focus: resetting>0;",
             unknown},
        Case{"LENSRESET", "IDLE;;DUMB ", "may show", idle, "IDLE;;"}));

INSTANTIATE_TEST_SUITE_P(
    OfTheMemory, Effect,
    testing::Values(Case{"MEMSAVE 1", idle, "must show", idle + "LCU ", idle + "HELO "},
                    Case{"MEMSAVE 1", idle + "LCU ", "none"},
                    Case{"MEMCLEAR", idle, "must show", idle + "LCU ", idle},
                    Case{"MEMLOAD 1", idle, "may show", "IDLE; zoom: 20/40>3 focus: 5/9;", idle},
                    Case{"MEMLOAD 1", "BUSY; zoom: 20/40>30 focus: 5/9;", "none"},
                    Case{"OVERRIDEZOPOS 3", idle, "must show", "IDLE; zoom: 3/40 focus: 5/9;",
                         idle},
                    Case{"OVERRIDEZOPOS 3", unknown, "may show",
                         "IDLE; zoom: 3/40 focus: undefined;", unknown}));

INSTANTIATE_TEST_SUITE_P(
    OfAnythingElse, Effect,
    testing::Values(Case{"CLEARFLAGS", idle + "HELO LCU ", "must show", idle, idle + "HELO "},
                    Case{"CLEARFLAGS", idle, "none"}, Case{"ON", idle, "none"},
                    Case{"SETZORSTSTEPS 5", idle, "none"}, Case{"RESTART", idle, "none"}));

}  // namespace
}  // namespace orx::orxctl
