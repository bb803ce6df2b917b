#include "orxctl/check/ReportWriter.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

using orxdef::counted;

std::string verdict(const Report& report) {
    if (!report.wouldStart()) return "The daemon would not start.";
    const auto projector = report.projector();
    if (!projector)
        return "The daemon would start in dumb mode: without a projector it takes commands and "
               "sends nothing.";
    std::string text("The daemon would start with projector ");
    text.append(*projector);
    return text.append(report.count(Severity::error) == 0 ? "." : ", but not drive it.");
}

nlohmann::ordered_json asJson(const Finding& finding) {
    const auto& place = finding.place;
    nlohmann::ordered_json json{{"severity", nameOf(finding.severity)},
                                {"place", describe(place)},
                                {"subject", place.subject}};
    if (!place.file.empty()) json["file"] = place.file;
    if (place.line) json["line"] = *place.line;
    if (place.byte) json["byte"] = *place.byte;
    json["message"] = finding.message;
    return json;
}

}  // namespace

void printText(const Report& report, std::ostream& output) {
    for (const auto& finding : report.findings())
        output << describe(finding.place) << ": " << nameOf(finding.severity) << ": "
               << finding.message << '\n';
    output << counted(report.count(Severity::error), "error") << ", "
           << counted(report.count(Severity::warning), "warning") << ", "
           << counted(report.count(Severity::note), "note") << '\n'
           << verdict(report) << '\n';
}

void printJson(const Report& report, std::ostream& output) {
    auto findings = nlohmann::ordered_json::array();
    for (const auto& finding : report.findings())
        findings.push_back(asJson(finding));
    nlohmann::ordered_json json{{"findings", findings},
                                {"errors", report.count(Severity::error)},
                                {"warnings", report.count(Severity::warning)},
                                {"notes", report.count(Severity::note)},
                                {"wouldStart", report.wouldStart()},
                                {"projector", nullptr}};
    if (const auto projector = report.projector()) json["projector"] = *projector;
    // Names may be any bytes; JSON is UTF-8.
    output << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace orx::orxctl
