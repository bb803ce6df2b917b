#include "orxdef/Mistakes.h"

#include <algorithm>
#include <ostream>
#include <tuple>
#include <utility>

namespace orx::orxdef {

std::string_view nameOf(Severity severity) noexcept {
    switch (severity) {
        case Severity::error:
            return "error";
        case Severity::warning:
            return "warning";
        case Severity::note:
            break;
    }
    return "note";
}

Mistakes::Mistakes(std::vector<std::string> fileNames) : files(std::move(fileNames)) {}

void Mistakes::add(const Place& place, std::string message, Severity severity) {
    mistakes.push_back({place, std::move(message), severity});
}

void Mistakes::addUnreadable(std::size_t file, const std::string& reason) {
    add({.file = file}, "cannot be read: " + reason);
}

std::size_t Mistakes::count(Severity severity) const noexcept {
    return static_cast<std::size_t>(std::ranges::count(mistakes, severity, &Mistake::severity));
}

std::string Mistakes::describe(const Place& place) const {
    if (place.byte) return fileName(place.file) + ":byte " + std::to_string(*place.byte);
    return fileName(place.file) + ":" + std::to_string(place.line) + ":" +
           std::to_string(place.column);
}

std::vector<Mistake> Mistakes::sorted() const {
    auto sorted = mistakes;
    std::ranges::stable_sort(sorted, {}, [](const Mistake& mistake) {
        const auto& place = mistake.place;
        return std::tuple(place.file, place.line, place.column, place.byte);
    });
    return sorted;
}

std::vector<std::string> Mistakes::lines() const {
    std::vector<std::string> lines;
    lines.reserve(mistakes.size());
    for (const auto& mistake : sorted())
        lines.push_back(describe(mistake.place) + ": " + mistake.message);
    return lines;
}

void Mistakes::print(std::ostream& output) const {
    for (const auto& line : lines())
        output << line << '\n';
}

}  // namespace orx::orxdef
