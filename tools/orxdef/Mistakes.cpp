#include "orxdef/Mistakes.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orx::orxdef {

Mistakes::Mistakes(std::vector<std::string> fileNames) : files(std::move(fileNames)) {}

void Mistakes::add(const Place& place, std::string message) {
    mistakes.push_back({place, std::move(message)});
}

std::string Mistakes::describe(const Place& place) const {
    return fileName(place.file) + ":" + std::to_string(place.line) + ":" +
           std::to_string(place.column);
}

std::vector<std::string> Mistakes::lines() const {
    auto sorted = mistakes;
    std::ranges::stable_sort(sorted, {}, [](const Mistake& mistake) {
        return std::tuple(mistake.place.file, mistake.place.line, mistake.place.column);
    });
    std::vector<std::string> lines;
    lines.reserve(sorted.size());
    for (const auto& mistake : sorted)
        lines.push_back(describe(mistake.place) + ": " + mistake.message);
    return lines;
}

}  // namespace orx::orxdef
