#include "system/simulated/Simulator.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

namespace orx::test {
namespace {

using Json = nlohmann::json;

ChildStart startOf(const std::string& link, const std::string& model,
                   const std::vector<std::string>& options) {
    ChildStart start{.command = {ORX_ORXSIM_EXECUTABLE, "--json", "--definitions",
                                 ORX_DEFINITION_FILE, "--model", model, "--link", link}};
    start.command.insert(start.command.end(), options.begin(), options.end());
    return start;
}

Simulator::Axis readAxis(const Json& axis) {
    return {.motor = axis.at("motor"),
            .lens = axis.at("lens"),
            .lost = axis.at("lost"),
            .contacts = axis.at("contacts")};
}

/// How many bytes a text stands for in which "\\x" and two digits are one.
std::size_t countBytes(const std::string& escaped) {
    constexpr std::size_t more = 3;
    std::size_t count = escaped.size();
    for (auto at = escaped.find("\\x"); at != std::string::npos; at = escaped.find("\\x", at + 1))
        count -= more;
    return count;
}

/// Nothing for the events that tell of no command.
std::optional<Simulator::Event> readEvent(const std::string& line) {
    const auto json = Json::parse(line);
    const std::string kind = json.at("event");
    if (kind != "command" && kind != "unknown") return std::nullopt;
    Simulator::Event event;
    if (kind == "command") {
        event.command = json.at("command");
        event.arguments = json.at("arguments").get<std::vector<std::string>>();
    }
    event.byteCount = countBytes(json.at("bytes"));
    event.axes = {readAxis(json.at("axes").at("zoom")), readAxis(json.at("axes").at("focus"))};
    event.endStop = json.value("endstop", false);
    return event;
}

/// The events of the complete lines, each with the place behind it.
std::vector<Simulator::Event> readEvents(const std::string& text, std::size_t& from) {
    std::vector<Simulator::Event> events;
    for (auto end = text.find('\n', from); end != std::string::npos; end = text.find('\n', from)) {
        if (auto event = readEvent(text.substr(from, end - from))) {
            events.push_back(std::move(*event));
        }
        from = end + 1;
    }
    return events;
}

}  // namespace

Simulator::Simulator(const std::string& link, const std::string& model,
                     const std::vector<std::string>& options)
    : linkPath(link), process(startOf(link, model, options)) {
    process.output().waitUntil(
        [](const std::string& lines) { return lines.find('\n') != std::string::npos; },
        "the simulated projector");
}

/// A line may have come in part.
std::size_t Simulator::place() const {
    return process.output().bytes().rfind('\n') + 1;
}

std::vector<Simulator::Event> Simulator::takeEvents(std::size_t& from) const {
    return readEvents(process.output().bytes(), from);
}

void Simulator::forget(std::size_t& before) {
    process.output().forget(before);
    before = 0;
}

std::size_t Simulator::countEvents(std::size_t from) const {
    const auto lines = process.output().bytes();
    return static_cast<std::size_t>(
        std::count(lines.begin() + static_cast<std::ptrdiff_t>(from), lines.end(), '\n'));
}

Simulator::Event Simulator::waitForCommand(const std::string& command, const std::string& argument,
                                           std::size_t from) const {
    return waitForEvent(
        [&](const Event& event) {
            return event.command == command && event.arguments == std::vector{argument};
        },
        command + " " + argument, from);
}

Simulator::Event Simulator::waitForCommand(const std::string& command, std::size_t from) const {
    return waitForEvent([&](const Event& event) { return event.command == command; }, command,
                        from);
}

Simulator::Event Simulator::waitForEvent(const Wanted& wanted, const std::string& what,
                                         std::size_t from) const {
    std::optional<Event> found;
    process.output().waitUntil(
        [&](const std::string& lines) {
            if (found) return true;
            for (auto& event : readEvents(lines, from)) {
                if (!wanted(event)) continue;
                found = std::move(event);
                break;
            }
            return found.has_value();
        },
        "the command " + what + " on the line");
    return *found;
}

void Simulator::waitForMore(std::size_t from) const {
    constexpr std::chrono::milliseconds notLong{5};
    process.output().waitForMore(from, notLong);
}

}  // namespace orx::test
