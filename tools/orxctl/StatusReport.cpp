#include "orxctl/StatusReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "core/Text.h"
#include "orxdef/TextTable.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

using client::AxisStatus;
using Json = nlohmann::ordered_json;
using orxdef::Row;

/// The names of all axes that any of the daemons has, in the order in which they are met.
std::vector<std::string> axisNames(const std::vector<Outcome>& outcomes) {
    std::vector<std::string> names;
    for (const auto& outcome : outcomes) {
        if (!outcome.daemon) continue;
        for (const auto& axis : outcome.daemon->axes)
            if (std::ranges::find(names, axis.name) == names.end()) names.push_back(axis.name);
    }
    return names;
}

Row heading(const std::vector<std::string>& axes) {
    Row row{"DAEMON", "STATE"};
    for (auto name : axes) {
        std::ranges::transform(name, name.begin(), orxdef::upper);
        row.push_back(escapeBytes(name));
    }
    row.emplace_back("FLAGS");
    return row;
}

Row statusRow(const std::string& name, const Outcome& outcome,
              const std::vector<std::string>& axes) {
    Row row{escapeBytes(name)};
    if (!outcome.daemon) {
        row.push_back(outcome.text);
        return row;
    }
    row.emplace_back(outcome.daemon->busy ? "BUSY" : "IDLE");
    for (const auto& wanted : axes) {
        const auto* const axis = outcome.daemon->axis(wanted);
        row.push_back(axis != nullptr ? axis->positionText() : "-");
    }
    row.push_back(outcome.daemon->flagsText());
    return row;
}

Json orNull(const std::optional<int>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json asJson(const AxisStatus& axis) {
    return {{"name", axis.name},
            {"position", orNull(axis.position)},
            {"upperEnd", orNull(axis.upperEnd)},
            {"target", orNull(axis.target)},
            {"resetting", axis.resetting}};
}

Json asJson(const std::string& name, const Outcome& outcome) {
    Json json{{"daemon", name}, {"answered", outcome.daemon.has_value()}};
    if (!outcome.daemon) {
        json["error"] = outcome.text;
        return json;
    }
    const auto& status = *outcome.daemon;
    json["busy"] = status.busy;
    json["atRest"] = status.isAtRest();
    json["axes"] = Json::array();
    for (const auto& axis : status.axes)
        json["axes"].push_back(asJson(axis));
    json["flags"] = {{"hello", status.hello},
                     {"lensMemoryWritten", status.lensConfigLoaded},
                     {"dumbMode", status.dumbMode},
                     {"debugMode", status.debugMode}};
    return json;
}

}  // namespace

std::string statusTable(const Fleet& fleet, const std::vector<Outcome>& outcomes) {
    const auto axes = axisNames(outcomes);
    std::vector<Row> rows{heading(axes)};
    for (std::size_t number = 0; number < outcomes.size(); ++number)
        rows.push_back(statusRow(fleet.name(number), outcomes[number], axes));
    return orxdef::tableText(rows);
}

std::string statusJson(const Fleet& fleet, const std::vector<Outcome>& outcomes, JsonForm form) {
    auto json = Json::array();
    for (std::size_t number = 0; number < outcomes.size(); ++number)
        json.push_back(asJson(fleet.name(number), outcomes[number]));
    // What a host sends, or a hosts file names, may be any bytes; JSON is UTF-8.
    return json.dump(form == JsonForm::oneLine ? -1 : 2, ' ', false,
                     Json::error_handler_t::replace) +
           "\n";
}

void printOutcomes(const Fleet& fleet, const std::vector<Outcome>& outcomes, std::string_view done,
                   std::ostream& output, std::ostream& errors) {
    if (fleet.size() == 1) {
        const auto& outcome = outcomes.front();
        if (outcome.text.empty()) return;
        if (outcome.status == ExitStatus::done)
            output << outcome.text << '\n';
        else
            errors << "orxctl: " << fleet.name(0) << ": " << outcome.text << '\n';
        return;
    }
    std::vector<Row> rows{{"DAEMON", "RESULT"}};
    for (std::size_t number = 0; number < outcomes.size(); ++number) {
        const auto& text = outcomes[number].text;
        rows.push_back({escapeBytes(fleet.name(number)), text.empty() ? std::string(done) : text});
    }
    output << orxdef::tableText(rows);
}

}  // namespace orx::orxctl
