// The conversions of texts to numbers a second time, to compare with: whole numbers digit by digit,
// floating-point numbers by the conversion of C with its error number.
#pragma once

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include "common/Outcome.h"

namespace orx::fuzz {

/// White space as the "C" locale has it.
inline bool isWhiteSpace(char character) {
    return std::string_view(" \t\n\v\f\r").find(character) != std::string_view::npos;
}

/// The value of a digit of any base; 99 for a character that is none.
inline int digitValue(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'z') return character - 'a' + 10;
    if (character >= 'A' && character <= 'Z') return character - 'A' + 10;
    return 99;
}

/// A hexadecimal number may begin with "0x", but only ahead of a digit.
inline bool hasHexPrefix(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') &&
           digitValue(text[2]) < 16;
}

/// The number that begins `text`, as std::stoi reads it: white space and a sign may stand ahead of
/// it, and anything behind it.
inline Outcome<int> wholeNumber(std::string_view text, int base = 10) {
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (base == 16 && hasHexPrefix(text)) text.remove_prefix(2);
    if (text.empty() || digitValue(text.front()) >= base) return {{}, noNumber("stoi")};
    constexpr std::int64_t limit = std::int64_t{1} << 40;
    std::int64_t value = 0;
    for (; !text.empty() && digitValue(text.front()) < base; text.remove_prefix(1))
        value = std::min(limit, value * base + digitValue(text.front()));
    if (negative) value = -value;
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        return {{}, tooGreat("stoi")};
    return {static_cast<int>(value), {}};
}

/// As std::stod reads it.
inline Outcome<double> decimalNumber(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (end == text.c_str()) return {{}, noNumber("stod")};
    if (errno == ERANGE) return {{}, tooGreat("stod")};
    return {value, {}};
}

}  // namespace orx::fuzz
