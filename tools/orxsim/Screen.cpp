#include "orxsim/Screen.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/Text.h"

namespace orx::orxsim {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t longestList = 200;
constexpr std::size_t linesOfValues = 4;
constexpr std::size_t leastHeard = 3;  ///< commands that are shown even on a small terminal
constexpr std::string_view indent = "       ";

std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

/// A position on a scale of `width` characters.
std::size_t column(int position, int travel, std::size_t width) {
    const auto within = static_cast<std::size_t>(std::clamp(position, 0, travel));
    return within * (width - 1) / static_cast<std::size_t>(travel);
}

/// The scale of an axis: # is the motor, o the lens where it stands elsewhere.
std::string scale(const AxisReading& axis, std::size_t width) {
    std::string marks(width, '-');
    marks[column(axis.lens, axis.travel, width)] = 'o';
    marks[column(axis.motor, axis.travel, width)] = '#';
    return "|" + marks + "|";
}

std::string counted(int count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string axisDetails(const AxisReading& axis) {
    const auto contacts = [&axis](Drive drive) {
        return axis.contacts[static_cast<std::size_t>(drive)];
    };
    return std::string(indent)
        .append("lens at ")
        .append(std::to_string(axis.lens))
        .append(", ")
        .append(counted(axis.lost, "lost step"))
        .append(", end stops met by ")
        .append(counted(contacts(Drive::step), "step"))
        .append(", ")
        .append(counted(contacts(Drive::jog), "jog"))
        .append(", ")
        .append(counted(contacts(Drive::reset), "reset"));
}

/// The scale, which keeps its width while the position gains and loses digits, and details.
Lines axisLines(std::string_view name, const AxisReading& axis, std::size_t columns) {
    constexpr std::size_t leastScale = 10;
    constexpr std::size_t ends = 3;  // the two ends of the scale and a blank
    const auto travel = std::to_string(axis.travel);
    const auto position = std::to_string(axis.motor) + "/" + travel;
    const auto others = indent.size() + ends + 2 * travel.size() + 1;
    const auto width = columns > others + leastScale ? columns - others : leastScale;
    return {
        padded(std::string(name), indent.size()).append(scale(axis, width)).append(" " + position),
        axisDetails(axis)};
}

/// Puts `words` into lines, three blanks between two of them, at most `limit` lines.
void addWords(Lines& lines, const std::vector<std::string>& words, std::size_t columns,
              std::size_t limit) {
    constexpr std::string_view gap = "   ";
    std::string line;
    for (const auto& word : words) {
        if (!line.empty() && line.size() + gap.size() + word.size() > columns) {
            lines.push_back(std::exchange(line, {}));
            if (--limit == 0) return;
        }
        if (!line.empty()) line += gap;
        line += word;
    }
    if (!line.empty()) lines.push_back(line);
}

std::string joined(const Arguments& arguments) {
    std::string text;
    for (const auto& argument : arguments)
        text.append(text.empty() ? "" : " ").append(argument);
    return text;
}

void addState(Lines& lines, const ProjectorState& state, std::size_t columns) {
    std::vector<std::string> words;
    for (const auto& [name, isOn] : state.switches())
        words.push_back(std::string(name).append(isOn ? " on" : " off"));
    words.push_back("input " + (state.input().empty() ? "none" : state.input()));
    addWords(lines, words, columns, words.size());
    std::vector<std::string> values;
    for (const auto& [command, arguments] : state.values())
        values.push_back(escapeBytes(command).append(" ").append(joined(arguments)));
    addWords(lines, values, columns, linesOfValues);
}

/// The projector between heading and footer.
class Picture {
  public:
    Picture(const SimulatedProjector& projector, std::size_t columns)
        : zoom(axisLines("zoom", projector.axes()[0], columns)),
          focus(axisLines("focus", projector.axes()[1], columns)) {
        addState(state, projector.state(), columns);
    }

    [[nodiscard]] Lines complete() const {
        Lines lines{""};
        lines.insert(lines.end(), zoom.begin(), zoom.end());
        lines.insert(lines.end(), focus.begin(), focus.end());
        lines.emplace_back();
        lines.insert(lines.end(), state.begin(), state.end());
        lines.emplace_back();
        return lines;
    }

    /// What matters most, where there is no room for all.
    [[nodiscard]] Lines brief() const { return {zoom.front(), focus.front(), state.front()}; }

  private:
    Lines zoom;
    Lines focus;
    Lines state;
};

std::string description(const Heard& heard) {
    if (heard.isCommand()) {
        const auto arguments = joined(heard.arguments);
        return escapeBytes(heard.command).append(arguments.empty() ? "" : " ").append(arguments);
    }
    return escapeBytes(heard.bytes).append("  ? ").append(escapeBytes(heard.reason));
}

std::string listed(const Report& report) {
    constexpr std::size_t answerColumn = 40;
    constexpr std::string_view noAnswer = "no answer";
    auto text = padded("  " + description(report.heard), answerColumn);
    text += "  ";
    text += report.answer ? escapeBytes(*report.answer) : std::string(noAnswer);
    if (report.metEndStop) text += "  end stop";
    return text;
}

std::string footer(const Totals& totals) {
    return std::to_string(totals.commands) + " commands, " + std::to_string(totals.unknown) +
           " unknown. Ctrl-C ends.";
}

}  // namespace

Screen::Screen(const Setup& setup)
    : heading("orxsim: " + escapeBytes(setup.model) + " at " + escapeBytes(setup.link) + " -> " +
              escapeBytes(setup.device)) {}

void Screen::add(const Report& report) {
    heard.push_front(listed(report));
    if (heard.size() > longestList) heard.pop_back();
}

std::vector<std::string> Screen::lines(const SimulatedProjector& projector, ScreenSize size) const {
    const Picture picture(projector, size.columns);
    const auto otherLines = 2 + std::min(heard.size(), leastHeard);  // heading and footer
    auto lines = picture.complete();
    if (lines.size() + otherLines > size.rows) lines = picture.brief();
    lines.insert(lines.begin(), heading);
    lines.push_back(footer(projector.totals()));
    lines.insert(lines.end(), heard.begin(), heard.end());
    if (lines.size() > size.rows) lines.resize(size.rows);
    for (auto& line : lines)
        line.resize(std::min(line.size(), size.columns));
    return lines;
}

}  // namespace orx::orxsim
