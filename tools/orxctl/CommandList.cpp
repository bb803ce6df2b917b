#include "orxctl/CommandList.h"

#include <algorithm>
#include <fnmatch.h>
#include <string_view>
#include <vector>

#include "commands/Vocabulary.h"
#include "orxctl/CommandTexts.h"
#include "orxdef/TextTable.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

orxdef::Row rowOf(const CommandText& text) {
    return {std::string(text.keyword), std::string(argumentKindOf(text.keyword).value_or("-")),
            std::string(text.text)};
}

bool holds(const std::string& text, const std::string& pattern) {
    const auto isSame = [](char left, char right) {
        return orxdef::upper(left) == orxdef::upper(right);
    };
    return std::search(text.begin(), text.end(), pattern.begin(), pattern.end(), isSame) !=
           text.end();
}

bool isMeant(const CommandText& text, const orxdef::Row& row, const std::string& pattern) {
    if (pattern.find_first_of("*?[") == std::string::npos)
        return std::ranges::any_of(row, [&](const auto& cell) { return holds(cell, pattern); });
    return ::fnmatch(pattern.c_str(), std::string(text.keyword).c_str(), FNM_CASEFOLD) == 0;
}

}  // namespace

std::string commandList(const std::string& pattern) {
    std::vector<orxdef::Row> rows;
    for (const auto& text : commandTexts)
        if (auto row = rowOf(text); isMeant(text, row, pattern)) rows.push_back(std::move(row));
    return rows.empty() ? "" : orxdef::tableText(rows);
}

}  // namespace orx::orxctl
