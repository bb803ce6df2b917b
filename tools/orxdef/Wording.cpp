#include "orxdef/Wording.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "commands/Vocabulary.h"
#include "core/Text.h"

namespace orx::orxdef {
namespace {

char upper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

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

/// Only those are measured whose length leaves them a chance: a damaged file names thousands.
std::optional<std::string_view> nearestKeyword(std::string_view name) {
    if (const auto keyword = keywordFor(name); !keyword.empty()) return keyword;
    const auto allowed = std::max<std::size_t>(1, name.size() / 3);
    std::optional<std::string_view> nearest;
    auto tooFar = allowed + 1;
    for (const auto& entry : vocabulary) {
        const auto [shorter, longer] = std::minmax({name.size(), entry.keyword.size()});
        if (longer - shorter >= tooFar) continue;
        const auto distance = editDistance(name, entry.keyword);
        if (distance >= tooFar) continue;
        tooFar = distance;
        nearest = entry.keyword;
    }
    return nearest;
}

}  // namespace orx::orxdef
