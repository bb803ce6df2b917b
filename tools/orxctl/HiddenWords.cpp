#include "orxctl/HiddenWords.h"

#include <algorithm>

namespace orx::orxctl {
namespace {

constexpr char hidden = '\x01';

bool isNegativeNumber(const std::string& word) {
    return word.size() > 1 && word[0] == '-' &&
           word.find_first_of("0123456789.iInN", 1) == 1;  // -5, -.5, -inf, -nan
}

/// The parser takes the words between brackets for a list.
bool isBracketed(const std::string& word) {
    return word.starts_with('[');
}

}  // namespace

std::vector<std::string> hideFromParser(std::vector<std::string> words) {
    for (auto& word : words)
        if (isNegativeNumber(word) || isBracketed(word)) word.insert(word.begin(), hidden);
    std::ranges::reverse(words);
    return words;
}

std::string asWritten(std::string text) {
    std::erase(text, hidden);
    return text;
}

void letBeAsWritten(CLI::App& command) {
    const auto show = [](std::string& value) {
        value = asWritten(value);
        return std::string();
    };
    for (auto* const option : command.get_options())
        if (option->get_items_expected_max() > 0) option->transform(CLI::Validator(show, ""));
    for (auto* const next : command.get_subcommands({}))
        letBeAsWritten(*next);
}

}  // namespace orx::orxctl
