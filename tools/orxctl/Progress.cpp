#include "orxctl/Progress.h"

#include <algorithm>
#include <ostream>

namespace orx::orxctl {
namespace {

constexpr std::string_view toLineStart = "\r";
constexpr std::string_view clearToLineEnd = "\033[K";

}  // namespace

Progress::Progress(std::ostream& lineTerminal, std::size_t lineWidth, std::size_t daemons)
    : terminal(lineTerminal), width(lineWidth), atRest(daemons) {}

Progress::~Progress() {
    if (!drawn.empty()) terminal << toLineStart << clearToLineEnd << std::flush;
}

void Progress::show(std::size_t number, const client::DaemonStatus& status) {
    const std::lock_guard lock(mutex);
    atRest.at(number) = status.isAtRest();
    draw(atRest.size() == 1 ? move.line(status) : countLine());
}

std::string Progress::countLine() const {
    const auto count = std::ranges::count(atRest, true);
    return std::to_string(count) + " of " + std::to_string(atRest.size()) + " at rest";
}

/// A line that is full to the last column would go on in the next, and stay there.
void Progress::draw(const std::string& line) {
    const auto cut = line.substr(0, width - 1);
    if (cut == drawn) return;
    drawn = cut;
    terminal << toLineStart << cut << clearToLineEnd << std::flush;
}

}  // namespace orx::orxctl
