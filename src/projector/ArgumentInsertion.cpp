#include "projector/ArgumentInsertion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iomanip>
#include <limits>

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

}  // namespace

double ArgumentDescriptor::unitsPerOne() const noexcept {
    return std::pow(10.0, decimals());
}

void ArgumentInsertion::insert(const std::string& argument, const ArgumentDescriptor& descriptor) {
    const auto pos = static_cast<std::size_t>(descriptor.pos);
    output << base.substr(last, pos - last);
    if (descriptor.type == 'D') {
        appendDecimal(argument, descriptor);
    } else {
        appendInteger(clamped(std::stoi(argument), descriptor.min, descriptor.max), descriptor);
    }
    last = pos;
}

std::string ArgumentInsertion::finish() {
    output << base.substr(last);
    return output.str();
}

void ArgumentInsertion::appendDecimal(std::string argument, const ArgumentDescriptor& descriptor) {
    constexpr int signAndPoint = 2;
    std::ranges::replace(argument, ',', '.');
    const double scale = descriptor.unitsPerOne();
    const double nearest = static_cast<double>(rounded(std::stod(argument) * scale)) / scale;
    output << std::setprecision(descriptor.decimals());
    if (descriptor.digits() != 0) {
        output << std::showpos << std::internal << std::fixed << std::setfill('0')
               << std::setw(descriptor.digits() + descriptor.decimals() + signAndPoint);
    }
    output << clamped(nearest, descriptor.min / scale, descriptor.max / scale);
}

void ArgumentInsertion::appendInteger(int value, const ArgumentDescriptor& descriptor) {
    switch (descriptor.type) {
        case 'A':
            output << std::setw(descriptor.len) << std::setfill('0') << value;
            break;
        case 'B':
            output << std::showpos << std::internal << std::setfill('0')
                   << std::setw(descriptor.len + 1) << value;
            break;
        case 'I':
            appendBytes(value, descriptor.len);
            break;
        case 'X':
            output << std::setw(descriptor.len) << std::setfill('0') << std::hex << value
                   << std::dec;
            break;
        default:
            output << value;
    }
}

void ArgumentInsertion::appendBytes(int value, int count) {
    constexpr int lastValueByte = 3;
    constexpr int bitsPerByte = 8;
    constexpr int signOnly = 31;  // beyond the value's four bytes stands its sign
    for (int byte = count - 1; byte >= 0; --byte) {
        const int shift = byte <= lastValueByte ? byte * bitsPerByte : signOnly;
        output.put(static_cast<char>(value >> shift));
    }
}

}  // namespace orx
