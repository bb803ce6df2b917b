#include "core/Text.h"

namespace orx {
namespace {

void appendHex(std::string& text, char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    text += digits[value >> 4U];
    text += digits[value & 0x0FU];
}

bool isPrintable(char byte) {
    return byte >= 0x20 && byte <= 0x7E;
}

/// The byte that two characters name as the standard conversion reads them, which takes a leading
/// blank or sign and stops at the first character that is no digit.
char hexByte(std::string_view digits) {
    constexpr int hexadecimal = 16;
    return static_cast<char>(std::stoi(std::string(digits), nullptr, hexadecimal));
}

}  // namespace

std::string trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string escapeBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        if (isPrintable(byte)) {
            text += byte;
        } else {
            text += "\\x";
            appendHex(text, byte);
        }
    }
    return text;
}

std::string unescapeBytes(std::string_view text) {
    constexpr std::size_t escapeLength = 4;  // \xNN
    std::string bytes;
    for (auto backslash = text.find('\\');
         backslash != std::string_view::npos && text.size() - backslash >= escapeLength;
         backslash = text.find('\\')) {
        bytes += text.substr(0, backslash);
        const char kind = text[backslash + 1];
        if (kind == 'x' || kind == 'X') {
            bytes += hexByte(text.substr(backslash + 2, 2));
            text.remove_prefix(backslash + escapeLength);
        } else {
            bytes += '\\';
            text.remove_prefix(backslash + 1);
        }
    }
    return bytes.append(text);
}

std::string listBytes(std::string_view bytes) {
    std::string text = "[";
    for (const char byte : bytes) {
        if (text.size() > 1) text += ' ';
        appendHex(text, byte);
    }
    return text + "]";
}

}  // namespace orx
