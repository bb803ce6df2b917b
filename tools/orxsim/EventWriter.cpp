#include "orxsim/EventWriter.h"

#include <nlohmann/json.hpp>

#include "core/Text.h"

namespace orx::orxsim {
namespace {

using Json = nlohmann::ordered_json;

Json axisObject(const AxisReading& axis) {
    const auto contacts = [&axis](Drive drive) {
        return axis.contacts[static_cast<std::size_t>(drive)];
    };
    return {{"motor", axis.motor},
            {"lens", axis.lens},
            {"lost", axis.lost},
            {"contacts", contacts(Drive::step)},
            {"jogcontacts", contacts(Drive::jog)},
            {"resetcontacts", contacts(Drive::reset)},
            {"travel", axis.travel}};
}

Json axesObject(const AxisReadings& axes) {
    return {{"zoom", axisObject(axes[0])}, {"focus", axisObject(axes[1])}};
}

Json stateObject(const ProjectorState& state) {
    auto object = Json::object();
    for (const auto& [name, isOn] : state.switches())
        object[std::string(name)] = isOn;
    object["input"] = state.input().empty() ? Json() : Json(state.input());
    auto values = Json::object();
    for (const auto& [command, arguments] : state.values())
        values[command] = arguments;
    object["values"] = values;
    return object;
}

Json eventCalled(const char* name) {
    Json event;
    event["event"] = name;
    return event;
}

/// JSON is text and cannot hold any bytes: each becomes the character of its number.
std::string oneCharacterAByte(std::string_view bytes) {
    constexpr unsigned greatestOfOneByte = 0x7F;
    constexpr unsigned leadOfTwo = 0xC0;
    constexpr unsigned following = 0x80;
    constexpr unsigned bitsOfFollowing = 6;
    std::string text;
    for (const char byte : bytes) {
        const unsigned value = static_cast<unsigned char>(byte);
        if (value <= greatestOfOneByte) {
            text += byte;
        } else {
            text += static_cast<char>(leadOfTwo | value >> bitsOfFollowing);
            text += static_cast<char>(following | (value & (following / 2 - 1)));
        }
    }
    return text;
}

Json answerValue(const std::optional<std::string>& answer) {
    return answer ? Json(oneCharacterAByte(*answer)) : Json();
}

Json commandEvent(const Report& report) {
    auto event = eventCalled("command");
    event["command"] = report.heard.command;
    event["arguments"] = report.heard.arguments;
    event["bytes"] = escapeBytes(report.heard.bytes);
    if (report.metEndStop) event["endstop"] = true;
    return event;
}

Json unknownEvent(const Report& report) {
    auto event = eventCalled("unknown");
    event["bytes"] = escapeBytes(report.heard.bytes);
    event["reason"] = report.heard.reason;
    if (!report.heard.command.empty()) event["command"] = report.heard.command;
    return event;
}

/// Names come from files and command lines and may be no valid text.
std::string line(const Json& event) {
    return event.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

void EventWriter::begin(const Setup& setup, const SimulatedProjector& projector) {
    auto event = eventCalled("ready");
    event["device"] = setup.device;
    event["link"] = setup.link;
    event["model"] = setup.model;
    event["axes"] = axesObject(projector.axes());
    event["state"] = stateObject(projector.state());
    output.write(line(event));
}

void EventWriter::show(const Report& report) {
    auto event = report.heard.isCommand() ? commandEvent(report) : unknownEvent(report);
    event["axes"] = axesObject(report.axes);
    if (report.changedState) event["state"] = stateObject(*report.changedState);
    event["answer"] = answerValue(report.answer);
    output.write(line(event));
}

std::optional<Instant> EventWriter::refresh(const SimulatedProjector&, Instant) {
    return std::nullopt;
}

void EventWriter::unplugged() {
    output.write(line(eventCalled("unplugged")));
}

void EventWriter::end(const Totals& totals) {
    auto event = eventCalled("end");
    event["commands"] = totals.commands;
    event["unknown"] = totals.unknown;
    output.write(line(event));
}

}  // namespace orx::orxsim
