#include "commands/Vocabulary.h"

namespace orx {
namespace {

/// As `one < other`; the first bytes mostly tell, and save the call of a comparison.
bool isLess(std::string_view one, std::string_view other) noexcept {
    if (one.empty() || other.empty() || one.front() == other.front()) return one < other;
    return std::char_traits<char>::lt(one.front(), other.front());
}

/// The row of `table` whose `member` is `name`, or null. The table is sorted by that member.
const VocabularyEntry* find(const auto& table, std::string_view VocabularyEntry::*member,
                            std::string_view name) noexcept {
    const auto row = std::ranges::lower_bound(table, name, isLess, member);
    return row != table.end() && (*row).*member == name ? &*row : nullptr;
}

}  // namespace

const VocabularyEntry* findKeyword(std::string_view keyword) noexcept {
    return find(vocabulary, &VocabularyEntry::keyword, keyword);
}

std::string_view keywordFor(std::string_view symbolicName) noexcept {
    const auto* entry = find(commandNames, &VocabularyEntry::symbolicName, symbolicName);
    return entry != nullptr ? entry->keyword : std::string_view();
}

ArgumentKind argumentKind(std::string_view keyword) noexcept {
    const auto* entry = findKeyword(keyword);
    return entry != nullptr ? entry->argumentKind : ArgumentKind::none;
}

std::optional<std::string_view> argumentKindOf(std::string_view keyword) noexcept {
    switch (argumentKind(keyword)) {
        case ArgumentKind::integer:
            return "integer";
        case ArgumentKind::decimal:
            return "decimal";
        case ArgumentKind::raw:
            return "raw";
        case ArgumentKind::none:
            break;
    }
    return std::nullopt;
}

bool isKnownKeyword(std::string_view keyword) noexcept {
    return findKeyword(keyword) != nullptr;
}

}  // namespace orx
