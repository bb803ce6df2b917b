// Any text as a command: the parser of the daemon must read it as its rules, written down here a
// second time, have it, and what it has read it must read again alike.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "commands/Vocabulary.h"
#include "common/Check.h"
#include "common/Numbers.h"

namespace orx::fuzz {
namespace {

using Words = std::vector<std::string>;

Words wordsOf(std::string_view text) {
    Words words;
    bool within = false;
    for (const char character : text) {
        const bool blank = isWhiteSpace(character);
        if (!blank && !within) words.emplace_back();
        if (!blank) words.back() += character;
        within = !blank;
    }
    return words;
}

const VocabularyEntry* entryOf(std::string_view keyword) {
    for (const auto& entry : vocabulary)
        if (entry.keyword == keyword) return &entry;
    return nullptr;
}

bool isAccepted(const std::string& word, ArgumentKind kind) {
    if (kind == ArgumentKind::integer) return wholeNumber(word).value.has_value();
    if (kind == ArgumentKind::decimal) return decimalNumber(word).value.has_value();
    return kind == ArgumentKind::raw;
}

/// All words in one, if they make whole bytes.
Words hexDigits(const Words& words) {
    std::string digits;
    for (const auto& word : words)
        digits += word;
    const bool valid = !digits.empty() && digits.size() % 2 == 0 &&
                       std::ranges::all_of(digits, [](char c) { return digitValue(c) < 16; });
    return valid ? Words{digits} : Words{};
}

Words argumentsOf(const Words& words, const VocabularyEntry* entry) {
    if (entry == nullptr) return {};
    Words arguments;
    std::copy_if(words.begin() + 1, words.end(), std::back_inserter(arguments),
                 [entry](const auto& word) { return isAccepted(word, entry->argumentKind); });
    return entry->keyword == CMD_RAW ? hexDigits(arguments) : arguments;
}

std::string joined(const Words& words, char separator) {
    std::string text;
    for (const auto& word : words)
        text += word + separator;
    if (!text.empty()) text.pop_back();
    return text;
}

void checkParts(const Command& command, const std::string& name, const Words& arguments) {
    const auto* const entry = entryOf(name);
    expectEqual(command.text(false), name, "the name");
    expectEqualLists(command.arguments(), arguments, "the arguments");
    expectEqual(command.text(true),
                arguments.empty() ? name : name + " (" + joined(arguments, ',') + ")",
                "the display text");
    expectEqual(command.isValid(), entry != nullptr, "whether it is valid");
    expectEqual(command.takesArgument(),
                entry != nullptr && entry->argumentKind != ArgumentKind::none,
                "whether it takes an argument");
}

void check(const std::string& source) {
    const auto words = wordsOf(source);
    const auto name = words.empty() ? std::string() : words.front();
    const Command command(source);
    checkParts(command, name, argumentsOf(words, entryOf(name)));
    checkParts(Command(name + " " + joined(command.arguments(), ' ')), name, command.arguments());
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({reinterpret_cast<const char*>(data), size});
    return 0;
}
