// Show files: what they may say, and what becomes of them.
#include <sstream>
#include <stdexcept>

#include <gmock/gmock.h>

#include "orxctl/Show.h"
#include "support/FakeDaemon.h"

namespace orx::orxctl {
namespace {

using test::FakeDaemon;
using testing::ElementsAre;

const std::string resting = "IDLE; zoom: 5/9 focus: 0/3;\n";

FakeDaemon::Answer always(const std::string& reply) {
    return [reply](const std::string& text) {
        return text == "STATUS" ? std::vector{reply} : std::vector<std::string>();
    };
}

std::string mistakesOf(const std::string& text) {
    std::istringstream input(text);
    try {
        const Show show(input, "evening");
        return "";
    } catch (const std::invalid_argument& mistakes) {
        return mistakes.what();
    }
}

std::vector<Outcome> run(const std::string& text, const std::vector<Target>& targets) {
    std::istringstream input(text);
    Fleet fleet(targets);
    SendOptions options;
    options.waitTime = options.answerTime = std::chrono::milliseconds(500);
    return Show(input, "evening").run(fleet, options, [](std::size_t) {
        return client::Client::Observer();
    });
}

TEST(Show, mayHaveCommandsCommentsPausesAndWaits) {
    EXPECT_EQ(mistakesOf("# all of it\n\n  ZOOM 1 # half\r\nsleep 0.1\nwait\n\twait 5\nON"), "");
    EXPECT_EQ(mistakesOf(""), "");
}

TEST(Show, isRefusedWithAllItsMistakes) {
    EXPECT_EQ(mistakesOf("ON\nON 1\nsleep\nwait 1 2\nFOO BAR\nwait x\nsleep 1 x\nSTATUS\n"),
              "evening:2: ON takes no argument, not \"1\"\n"
              "evening:3: sleep takes a time\n"
              "evening:4: wait takes one time\n"
              "evening:5: unknown command \"FOO\"; \"orxctl commands\" lists them all\n"
              "evening:6: must be seconds from 0 to 86400, not x\n"
              "evening:7: sleep takes one time\n"
              "evening:8: a show has no place for STATUS; \"wait\" waits for the lens");
}

TEST(Show, isDoneLineByLineWithAllDaemons) {
    const FakeDaemon one(always(resting));
    const FakeDaemon two(always(resting));
    const auto outcomes = run("ZOOM 1\nsleep 0.01\nwait\nON\nwait\n",
                              {{"one", one.address()}, {"two", two.address()}});
    EXPECT_EQ(worstOf(outcomes), ExitStatus::done);
    EXPECT_THAT(one.commands(), ElementsAre("ZOOM 1", "ON"));
    EXPECT_THAT(two.commands(), ElementsAre("ZOOM 1", "ON"));
}

TEST(Show, endsForADaemonWithWhichALineFails) {
    const FakeDaemon good(always(resting));
    const FakeDaemon busy(always("BUSY; zoom: 4/9>5 focus: 0/3;\n"));
    const FakeDaemon dumb(always("IDLE;;DUMB \n"));
    const FakeDaemon silent([](const std::string&) { return std::vector<std::string>(); });
    const auto outcomes = run("ON\nwait 0.3\nOFF\nwait\n", {{"good", good.address()},
                                                            {"busy", busy.address()},
                                                            {"dumb", dumb.address()},
                                                            {"silent", silent.address()}});
    EXPECT_EQ(outcomes.at(0).status, ExitStatus::done);
    EXPECT_EQ(outcomes.at(1).status, ExitStatus::stillBusy);
    EXPECT_EQ(outcomes.at(1).text, "evening:2: not at rest within 0.3 s");
    EXPECT_EQ(outcomes.at(2).status, ExitStatus::refused);
    EXPECT_EQ(outcomes.at(3).status, ExitStatus::noAnswer);
    EXPECT_EQ(outcomes.at(3).text, "no answer within 0.5 s; nothing was sent");
    EXPECT_THAT(good.commands(), ElementsAre("ON", "OFF"));
    EXPECT_THAT(busy.commands(), ElementsAre("ON"));
    EXPECT_THAT(dumb.commands(), ElementsAre());
    EXPECT_THAT(silent.commands(), ElementsAre());
}

}  // namespace
}  // namespace orx::orxctl
