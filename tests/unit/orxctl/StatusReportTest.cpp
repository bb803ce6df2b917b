// How results are shown, for people and for machines.
#include <nlohmann/json.hpp>
#include <sstream>

#include <gmock/gmock.h>

#include "orxctl/StatusReport.h"

namespace orx::orxctl {
namespace {

Outcome answered(const std::string& reply) {
    return {ExitStatus::done, "", client::DaemonStatus::parse(reply + "\n").value()};
}

const Fleet fleet({{"hall", {}}, {"planetarium", {}}, {"dark", {}}});
const std::vector<Outcome> outcomes{answered("BUSY; zoom: 20/40>30 focus: undefined;HELO LCU "),
                                    answered("IDLE;;DUMB "),
                                    {ExitStatus::noAnswer, "no answer within 2 s"}};

TEST(StatusReport, isATableForPeople) {
    EXPECT_EQ(statusTable(fleet, outcomes), R"(DAEMON       STATE  ZOOM      FOCUS      FLAGS
hall         BUSY   20/40>30  undefined  HELO LCU
planetarium  IDLE   -         -          DUMB
dark         no answer within 2 s
)");
}

TEST(StatusReport, isJsonForMachines) {
    const auto json = nlohmann::json::parse(statusJson(fleet, outcomes, JsonForm::indented));
    EXPECT_EQ(json, nlohmann::json::parse(R"([
        {"daemon": "hall", "answered": true, "busy": true, "atRest": false,
         "axes": [{"name": "zoom", "position": 20, "upperEnd": 40, "target": 30,
                   "resetting": false},
                  {"name": "focus", "position": null, "upperEnd": null, "target": null,
                   "resetting": false}],
         "flags": {"hello": true, "lensMemoryWritten": true, "dumbMode": false,
                   "debugMode": false}},
        {"daemon": "planetarium", "answered": true, "busy": false, "atRest": true, "axes": [],
         "flags": {"hello": false, "lensMemoryWritten": false, "dumbMode": true,
                   "debugMode": false}},
        {"daemon": "dark", "answered": false, "error": "no answer within 2 s"}])"));
}

TEST(StatusReport, isOneLineOfJsonWhereItIsWatched) {
    const auto text = statusJson(fleet, outcomes, JsonForm::oneLine);
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_EQ(nlohmann::json::parse(text),
              nlohmann::json::parse(statusJson(fleet, outcomes, JsonForm::indented)));
}

TEST(StatusReport, isJsonWhateverADaemonIsCalled) {
    const Fleet odd(std::vector<Target>{{"h\xFFll", {}}});
    const auto text = statusJson(odd, {outcomes.front()}, JsonForm::oneLine);
    EXPECT_TRUE(nlohmann::json::accept(text)) << text;
}

/// What goes to standard output and to standard error.
std::pair<std::string, std::string> printed(const Fleet& daemons,
                                            const std::vector<Outcome>& results) {
    std::ostringstream output;
    std::ostringstream errors;
    printOutcomes(daemons, results, "sent", output, errors);
    return {output.str(), errors.str()};
}

TEST(Outcomes, ofOneDaemonAreToldOnlyWhereThereIsSomethingToTell) {
    const Fleet one(std::vector<Target>{{"hall", {}}});
    EXPECT_EQ(printed(one, {{}}), (std::pair<std::string, std::string>{}));
    EXPECT_EQ(printed(one, {{ExitStatus::done, "confirmed"}}),
              (std::pair<std::string, std::string>{"confirmed\n", ""}));
    EXPECT_EQ(printed(one, {{ExitStatus::stillBusy, "not at rest"}}),
              (std::pair<std::string, std::string>{"", "orxctl: hall: not at rest\n"}));
}

TEST(Outcomes, ofSeveralDaemonsAreATable) {
    EXPECT_EQ(printed(fleet, {{}, {ExitStatus::done, "confirmed"}, outcomes.back()}).first,
              "DAEMON       RESULT\nhall         sent\nplanetarium  confirmed\n"
              "dark         no answer within 2 s\n");
}

TEST(Outcomes, areAsBadAsTheWorstOfThem) {
    EXPECT_EQ(worstOf({}), ExitStatus::done);
    EXPECT_EQ(worstOf(outcomes), ExitStatus::noAnswer);
    EXPECT_EQ(worstOf({{ExitStatus::stillBusy}, {ExitStatus::refused}, {ExitStatus::usage}}),
              ExitStatus::refused);
}

}  // namespace
}  // namespace orx::orxctl
