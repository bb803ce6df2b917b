#include "commands/Command.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace orx {
namespace {

/// Whether `convert`, one of the standard text-to-number conversions, takes the word.
bool converts(const std::string& word, auto convert) {
    try {
        static_cast<void>(convert(word));
        return true;
    } catch (const std::logic_error&) {  // invalid_argument and out_of_range
        return false;
    }
}

bool isAccepted(const std::string& word, ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::integer:
            return converts(word, [](const std::string& text) { return std::stoi(text); });
        case ArgumentKind::decimal:
            return converts(word, [](const std::string& text) { return std::stod(text); });
        case ArgumentKind::raw:
            return true;
        case ArgumentKind::none:
            break;
    }
    return false;
}

/// Takes the next word off `text`; an empty one where there is none. Words are separated by what
/// the standard streams take for white space.
std::string_view nextWord(std::string_view& text) {
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    const auto word = text.substr(0, text.find_first_of(whiteSpace));
    text.remove_prefix(word.size());
    return word;
}

bool isHexDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

/// `RAW` words may be cut anywhere; only together do they have to form whole bytes.
std::vector<std::string> joinRawWords(const std::vector<std::string>& words) {
    const auto joined = std::accumulate(words.begin(), words.end(), std::string());
    const bool wholeBytes =
        !joined.empty() && joined.size() % 2 == 0 && std::ranges::all_of(joined, isHexDigit);
    return wholeBytes ? std::vector<std::string>{joined} : std::vector<std::string>{};
}

std::string displayText(const std::string& name, const std::vector<std::string>& arguments) {
    if (arguments.empty()) return name;
    std::string text = name + " (" + arguments.front();
    std::for_each(arguments.begin() + 1, arguments.end(),
                  [&text](const std::string& argument) { text += "," + argument; });
    return text + ")";
}

}  // namespace

Command::Command(std::string_view source) : name(nextWord(source)), entry(findKeyword(name)) {
    const auto kind = isValid() ? entry->argumentKind : ArgumentKind::none;
    for (std::string word(nextWord(source)); !word.empty(); word = nextWord(source)) {
        if (isAccepted(word, kind)) argumentList.push_back(word);
    }
    if (is(CMD_RAW)) argumentList = joinRawWords(argumentList);
    display = displayText(name, argumentList);
}

const std::string& Command::text(bool forDisplay) const noexcept {
    return forDisplay ? display : name;
}

bool Command::takesArgument() const noexcept {
    return isValid() && entry->argumentKind != ArgumentKind::none;
}

}  // namespace orx
