#include "orxdef/Wording.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <numeric>
#include <vector>

#include "commands/Vocabulary.h"
#include "core/Text.h"

namespace orx::orxdef {
namespace {

/// How many characters must be put in, left out or exchanged to turn one text into the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : from) {
        auto diagonal = row[0]++;
        for (std::size_t column = 0; column < to.size(); ++column) {
            const auto exchanged = diagonal + (upper(letter) == upper(to[column]) ? 0 : 1);
            diagonal = row[column + 1];
            row[column + 1] = std::min({exchanged, diagonal + 1, row[column] + 1});
        }
    }
    return row.back();
}

}  // namespace

char upper(char letter) noexcept {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

std::string quoted(std::string_view text) {
    return '"' + escapeBytes(text) + '"';
}

std::string listed(std::span<const std::string_view> names) {
    std::string text;
    for (const auto name : names)
        text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

std::string alternatives(std::span<const std::string_view> names) {
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (index > 0) text += index + 1 == names.size() ? " or " : ", ";
        text += quoted(names[index]);
    }
    return text;
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count).append(" ").append(what).append(count == 1 ? "" : "s");
}

/// Only those are measured whose length leaves them a chance: a damaged file names thousands.
std::vector<std::string_view> nearest(std::string_view name,
                                      std::span<const std::string_view> candidates) {
    constexpr std::size_t most = 3;
    auto tooFar = std::max<std::size_t>(1, name.size() / 3) + 1;
    std::multimap<std::size_t, std::string_view> found;  // by distance; equals in their order
    for (const auto candidate : candidates) {
        const auto [shorter, longer] = std::minmax({name.size(), candidate.size()});
        if (longer - shorter >= tooFar) continue;
        const auto distance = editDistance(name, candidate);
        if (distance >= tooFar) continue;
        found.emplace(distance, candidate);
        if (found.size() > most) found.erase(std::prev(found.end()));
        tooFar = std::min(tooFar, found.size() == most ? std::prev(found.end())->first
                                                       : found.begin()->first + 2);
    }
    if (!found.empty()) found.erase(found.upper_bound(found.begin()->first + 1), found.end());
    std::vector<std::string_view> names;
    names.reserve(found.size());
    for (const auto& [distance, candidate] : found)
        names.push_back(candidate);
    return names;
}

std::optional<std::string_view> nearestKeyword(std::string_view name) {
    if (const auto keyword = keywordFor(name); !keyword.empty()) return keyword;
    std::array<std::string_view, vocabulary.size()> keywords{};
    std::ranges::transform(vocabulary, keywords.begin(), &VocabularyEntry::keyword);
    const auto names = nearest(name, keywords);
    if (names.empty()) return std::nullopt;
    return names.front();
}

}  // namespace orx::orxdef
