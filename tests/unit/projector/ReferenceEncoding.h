// A second, slower way to write arguments into a command string: digit by digit, without a stream.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "projector/ArgumentDescriptor.h"

namespace orx::test {

class ReferenceEncoding {
  public:
    explicit ReferenceEncoding(std::string commandString) : base(std::move(commandString)) {}

    void insert(const std::string& argument, const ArgumentDescriptor& descriptor) {
        const auto pos = static_cast<std::size_t>(descriptor.pos);
        result += pos < last ? base.substr(last) : base.substr(last, pos - last);
        result += descriptor.type == 'D' ? decimal(argument, descriptor)
                                         : integer(std::atoi(argument.c_str()), descriptor);
        last = pos;
    }

    [[nodiscard]] std::string finish() const { return result + base.substr(last); }

  private:
    template <typename Number>
    static Number bounded(Number value, Number min, Number max) {
        return value < min ? min : value > max ? max : value;
    }

    static std::string zeros(int count) {
        return std::string(count > 0 ? static_cast<std::size_t>(count) : 0, '0');
    }

    /// Zeros go between sign and digits once that was asked for, ahead of the sign before.
    [[nodiscard]] std::string padded(bool negative, const std::string& digits, int width) const {
        const std::string sign = negative ? "-" : plus ? "+" : "";
        const auto padding = zeros(width - static_cast<int>(sign.size() + digits.size()));
        return signFirst ? sign + padding + digits : padding + sign + digits;
    }

    std::string integer(int value, const ArgumentDescriptor& descriptor) {
        value = bounded(value, descriptor.min, descriptor.max);
        const auto digits = std::to_string(std::abs(static_cast<std::int64_t>(value)));
        switch (descriptor.type) {
            case 'A':
                return padded(value < 0, digits, descriptor.len);
            case 'B':
                plus = signFirst = true;
                return padded(value < 0, digits, descriptor.len + 1);
            case 'I':
                return bytesOf(value, descriptor.len);
            case 'X':
                return hexadecimal(value, descriptor.len);
            default:
                return padded(value < 0, digits, 0);
        }
    }

    static std::string hexadecimal(int value, int width) {
        auto rest = static_cast<std::uint32_t>(value);
        std::string digits;
        do {
            digits.insert(digits.begin(), "0123456789abcdef"[rest % 16]);
            rest /= 16;
        } while (rest != 0);
        return zeros(width - static_cast<int>(digits.size())) + digits;
    }

    static std::string bytesOf(int value, int count) {
        auto rest = static_cast<std::uint32_t>(value);
        std::string bytes;
        for (int byte = 0; byte < count; ++byte) {
            const auto beyond = static_cast<char>(value < 0 ? 0xFF : 0x00);
            bytes.insert(bytes.begin(), byte < 4 ? static_cast<char>(rest % 256) : beyond);
            rest /= 256;
        }
        return bytes;
    }

    std::string decimal(std::string argument, const ArgumentDescriptor& descriptor) {
        for (auto& character : argument) {
            if (character == ',') character = '.';
        }
        const int decimals = descriptor.len >> 4;
        const int digits = descriptor.len & 0x0F;
        double scale = 1;
        for (int place = 0; place < decimals; ++place)
            scale *= 10;
        const double units = std::strtod(argument.c_str(), nullptr) * scale;
        const bool fits = units >= -0x1p63 && units < 0x1p63;
        const auto nearest = fits ? std::llround(units) : std::numeric_limits<std::int64_t>::min();
        const double value = bounded(static_cast<double>(nearest) / scale, descriptor.min / scale,
                                     descriptor.max / scale);
        if (digits != 0) plus = signFirst = fixedPoint = true;
        char text[400];
        std::snprintf(text, sizeof text, fixedPoint ? "%.*f" : "%.*g", decimals, std::fabs(value));
        return padded(value < 0, text, digits != 0 ? digits + decimals + 2 : 0);
    }

    std::string base;
    std::string result;
    std::size_t last = 0;
    bool plus = false;
    bool signFirst = false;
    bool fixedPoint = false;
};

}  // namespace orx::test
