#include "projector/ArgumentInsertion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace orx {
namespace {

/// The rule of all bounds. Where a file has min above max, min wins, which `std::clamp` forbids.
template <typename Number>
Number clamped(Number value, Number min, Number max) {
    if (value < min) return min;
    return value > max ? max : value;
}

/// Rounds half away from zero. What does not fit (infinity, no number) becomes the lowest value, so
/// that the minimum is sent, on every compiler and board alike.
std::int64_t rounded(double value) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(value >= -limit && value < limit)) return std::numeric_limits<std::int64_t>::min();
    return std::llround(value);
}

/// Room for the longest number: the least of 32 bits with 15 decimals, and a sign.
using Digits = std::array<char, 32>;

/// `value` as the standard conversion with these parameters writes it, behind a plus where asked
/// for.
std::string_view written(Digits& room, bool plus, auto value, auto... parameters) noexcept {
    room.front() = '+';
    char* const begin = room.data() + 1;
    const char* const end =
        std::to_chars(begin, room.data() + room.size(), value, parameters...).ptr;
    return {plus ? room.data() : begin, end};
}

}  // namespace

double ArgumentDescriptor::unitsPerOne() const noexcept {
    return std::pow(10.0, decimals());
}

ArgumentInsertion::ArgumentInsertion(std::string_view commandString) : base(commandString) {
    constexpr std::size_t roomForArguments = 32;
    output.reserve(base.size() + roomForArguments);
}

void ArgumentInsertion::insert(const std::string& argument, const ArgumentDescriptor& descriptor) {
    const auto pos = static_cast<std::size_t>(descriptor.pos);
    output += base.substr(last, pos - last);
    if (descriptor.type == 'D') {
        appendDecimal(argument, descriptor);
    } else {
        appendInteger(clamped(std::stoi(argument), descriptor.min, descriptor.max), descriptor);
    }
    last = pos;
}

std::string ArgumentInsertion::finish() {
    output += base.substr(last);
    return std::move(output);
}

void ArgumentInsertion::appendDecimal(std::string argument, const ArgumentDescriptor& descriptor) {
    constexpr int signAndPoint = 2;
    std::ranges::replace(argument, ',', '.');
    const double scale = descriptor.unitsPerOne();
    const double nearest = static_cast<double>(rounded(std::stod(argument) * scale)) / scale;
    int width = 0;
    if (descriptor.digits() != 0) {
        showsPlus = padsBehindSign = hasFixedPoint = true;
        width = descriptor.digits() + descriptor.decimals() + signAndPoint;
    }
    appendNumber(clamped(nearest, descriptor.min / scale, descriptor.max / scale),
                 descriptor.decimals(), width);
}

void ArgumentInsertion::appendInteger(int value, const ArgumentDescriptor& descriptor) {
    switch (descriptor.type) {
        case 'A':
            appendNumber(value, descriptor.len);
            break;
        case 'B':
            showsPlus = padsBehindSign = true;
            appendNumber(value, descriptor.len + 1);
            break;
        case 'I':
            appendBytes(value, descriptor.len);
            break;
        case 'X':
            appendHexadecimal(value, descriptor.len);
            break;
        default:
            appendNumber(value, 0);
    }
}

void ArgumentInsertion::appendBytes(int value, int count) {
    constexpr int lastValueByte = 3;
    constexpr int bitsPerByte = 8;
    constexpr int signOnly = 31;  // beyond the value's four bytes stands its sign
    for (int byte = count - 1; byte >= 0; --byte) {
        const int shift = byte <= lastValueByte ? byte * bitsPerByte : signOnly;
        output += static_cast<char>(value >> shift);
    }
}

void ArgumentInsertion::appendNumber(double value, int decimals, int width) {
    Digits room;
    const auto format = hasFixedPoint ? std::chars_format::fixed : std::chars_format::general;
    appendPadded(written(room, showsPlus && value >= 0, value, format, decimals), width);
}

void ArgumentInsertion::appendNumber(int value, int width) {
    Digits room;
    appendPadded(written(room, showsPlus && value >= 0, value), width);
}

void ArgumentInsertion::appendHexadecimal(int value, int width) {
    constexpr int base16 = 16;
    Digits room;
    appendPadded(written(room, false, static_cast<unsigned>(value), base16), width);
}

/// Fills up with zeros to `width` characters.
void ArgumentInsertion::appendPadded(std::string_view number, int width) {
    const bool hasSign = number.front() == '-' || number.front() == '+';
    const auto wanted = static_cast<std::size_t>(width);
    if (hasSign && padsBehindSign) output += number.front();
    output.append(wanted > number.size() ? wanted - number.size() : 0, '0');
    output += number.substr(hasSign && padsBehindSign ? 1 : 0);
}

}  // namespace orx
