#include "orxsim/AnswerText.h"

#include <array>
#include <charconv>
#include <stdexcept>

namespace orx::orxsim {
namespace {

constexpr std::size_t hexEscapeLength = 4;  // \xNN

[[noreturn]] void refuse(std::string_view escape) {
    throw std::invalid_argument(std::string(escape).append(
        R"( is none of \xNN with two hexadecimal digits, \r, \n, \t and \\)"));
}

char hexByte(std::string_view escape) {
    constexpr int hexadecimal = 16;
    unsigned char value = 0;
    const auto* const end = escape.data() + escape.size();
    const auto result = std::from_chars(escape.data() + 2, end, value, hexadecimal);
    if (escape.size() != hexEscapeLength || result.ec != std::errc() || result.ptr != end) {
        refuse(escape);
    }
    return static_cast<char>(value);
}

char simpleByte(std::string_view escape) {
    constexpr std::array<std::array<char, 2>, 4> bytes{
        {{'r', '\r'}, {'n', '\n'}, {'t', '\t'}, {'\\', '\\'}}};
    for (const auto& [letter, byte] : bytes) {
        if (escape.size() == 2 && escape[1] == letter) return byte;
    }
    refuse(escape);
}

}  // namespace

std::string answerBytes(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const auto plain = text.substr(0, text.find('\\'));
        bytes += plain;
        text.remove_prefix(plain.size());
        if (text.empty()) break;
        const bool isHex = text.starts_with("\\x");
        const auto escape = text.substr(0, isHex ? hexEscapeLength : 2);
        bytes += isHex ? hexByte(escape) : simpleByte(escape);
        text.remove_prefix(escape.size());
    }
    return bytes;
}

}  // namespace orx::orxsim
