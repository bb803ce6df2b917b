#include "orxctl/check/Report.h"

#include <algorithm>

#include "core/Text.h"

namespace orx::orxctl {
namespace {

/// Only what would break the line, or a terminal, is escaped: the text of the daemon is to be found
/// again on its console.
std::string onOneLine(std::string_view text) {
    std::string line;
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (code < ' ' || code == '\x7f')
            line += escapeBytes({&letter, 1});
        else
            line += letter;
    }
    return line;
}

}  // namespace

std::string describe(const Place& place) {
    if (place.file.empty()) return place.subject;
    const auto file = onOneLine(place.file);
    if (place.byte) return file + ":byte " + std::to_string(*place.byte);
    return place.line ? file + ":" + std::to_string(*place.line) : file;
}

void Report::error(const Place& place, const std::string& message) {
    add(Severity::error, place, message);
}

void Report::warn(const Place& place, const std::string& message) {
    add(Severity::warning, place, message);
}

void Report::note(const Place& place, const std::string& message) {
    add(Severity::note, place, message);
}

void Report::ends(const Place& place, std::string_view daemonText, const std::string& reason,
                  Stage stage) {
    const bool isMet = stage == Stage::always || hasModel();
    isEnded = isEnded || isMet;
    std::string message(isMet ? "the daemon ends with \"ERROR: "
                              : "as soon as it has a projector, the daemon ends with \"ERROR: ");
    error(place, message.append(daemonText).append("\": ").append(reason));
}

std::size_t Report::count(Severity severity) const noexcept {
    return static_cast<std::size_t>(std::ranges::count(all, severity, &Finding::severity));
}

std::optional<std::string> Report::projector() const {
    return wouldStart() ? modelName : std::nullopt;
}

void Report::add(Severity severity, const Place& place, const std::string& message) {
    all.push_back({severity, place, onOneLine(message)});
}

}  // namespace orx::orxctl
