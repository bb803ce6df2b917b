#include "orxdef/TomlText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>

#include <toml++/toml.h>

#include "orxdef/CommandTemplate.h"

namespace orx::orxdef {
namespace {

constexpr std::size_t lineWidth = 100;

bool isBareKeyLetter(char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
           (letter >= '0' && letter <= '9') || letter == '-' || letter == '_';
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string text;
    for (const auto& part : parts)
        text.append(text.empty() ? "" : separator).append(part);
    return text;
}

std::string unicodeEscape(unsigned char control) {
    std::array<char, sizeof "\\u0000"> text{};
    std::snprintf(text.data(), text.size(), "\\u%04X", static_cast<unsigned>(control));
    return text.data();
}

}  // namespace

std::string keyText(std::string_view text) {
    const bool isBare = !text.empty() && std::ranges::all_of(text, isBareKeyLetter);
    return isBare ? std::string(text) : stringText(text);
}

std::string stringText(std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7F;
    std::string quoted = "\"";
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (code < firstPrintable || code == deleteCharacter)
            quoted += unicodeEscape(code);
        else if (letter == '"' || letter == '\\')
            quoted.append("\\").append(1, letter);
        else
            quoted += letter;
    }
    return quoted + '"';
}

std::string bytesText(std::string_view bytes) {
    CommandTemplate text;
    text.bytes = bytes;
    return "'" + text.text() + "'";
}

bool isTomlText(std::string_view text) {
    try {
        const auto table = toml::parse(pairText("text", stringText(text)));
        return table["text"].value<std::string>() == text;
    } catch (const toml::parse_error&) {
        return false;
    }
}

std::string pairText(std::string_view key, std::string_view value) {
    return std::string(key).append(" = ").append(value);
}

std::string pairText(std::string_view key, long long value) {
    return pairText(key, std::to_string(value));
}

std::string inlineTable(const std::vector<std::string>& pairs) {
    return "{ " + joined(pairs, ", ") + " }";
}

std::string arrayLine(const std::string& prefix, const std::vector<std::string>& elements,
                      const std::string& suffix) {
    auto line = prefix + "[" + joined(elements, ", ") + "]" + suffix;
    if (line.size() <= lineWidth) return line;
    return prefix + "[\n    " + joined(elements, ",\n    ") + "]" + suffix;
}

}  // namespace orx::orxdef
