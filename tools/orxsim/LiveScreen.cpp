#include "orxsim/LiveScreen.h"

#include <string_view>
#include <sys/ioctl.h>
#include <system_error>
#include <utility>

namespace orx::orxsim {
namespace {

constexpr std::string_view enter = "\x1b[?1049h\x1b[?25l";  // second page, no cursor
constexpr std::string_view leaveAgain = "\x1b[?25h\x1b[?1049l";
constexpr std::string_view home = "\x1b[H";
constexpr std::string_view restOfLine = "\x1b[K";
constexpr std::string_view restOfScreen = "\x1b[J";

}  // namespace

LiveScreen::LiveScreen(Output& terminal, StopSignals& stopSignals)
    : output(terminal), signals(stopSignals) {}

/// On the way out after an error the terminal may be what has failed.
LiveScreen::~LiveScreen() {
    try {
        leave({});
    } catch (const std::system_error&) {
        return;
    }
}

void LiveScreen::begin(const Setup& setup, const SimulatedProjector&) {
    screen.emplace(setup);
    output.write(enter);
}

void LiveScreen::show(const Report& report) {
    screen->add(report);
}

std::optional<Instant> LiveScreen::refresh(const SimulatedProjector& projector, Instant now) {
    if (signals.takeResize()) drawn.clear();
    if (now < lastDrawing + leastInterval) return lastDrawing + leastInterval;
    auto lines = screen->lines(projector, size());
    if (lines == drawn) return std::nullopt;
    draw(lines);
    drawn = std::move(lines);
    lastDrawing = now;
    return std::nullopt;
}

void LiveScreen::draw(const std::vector<std::string>& lines) {
    std::string text(home);
    std::string_view lineEnd;
    for (const auto& line : lines) {
        text.append(lineEnd).append(line).append(restOfLine);
        lineEnd = "\r\n";
    }
    output.write(text.append(restOfScreen));
}

ScreenSize LiveScreen::size() const {
    winsize window{};
    const bool isKnown = ::ioctl(output.get(), TIOCGWINSZ, &window) == 0;
    if (!isKnown || window.ws_col == 0 || window.ws_row == 0) return {};
    return {window.ws_col, window.ws_row};
}

void LiveScreen::unplugged() {
    leave("orxsim: unplugged\n");
}

void LiveScreen::end(const Totals& totals) {
    leave("orxsim: " + std::to_string(totals.commands) + " commands, " +
          std::to_string(totals.unknown) + " unknown\n");
}

void LiveScreen::leave(const std::string& lastWords) {
    if (!screen) return;
    screen.reset();
    output.write(std::string(leaveAgain).append(lastWords));
}

}  // namespace orx::orxsim
