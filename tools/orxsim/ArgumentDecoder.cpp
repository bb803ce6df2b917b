#include "orxsim/ArgumentDecoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "core/Text.h"

namespace orx::orxsim {
namespace {

constexpr unsigned bitsPerByte = 8;
constexpr std::size_t bytesOfValue = 4;

std::string zeros(int count) {
    std::string text;
    text.resize(static_cast<std::size_t>(std::max(count, 0)), '0');
    return text;
}

/// The whole of `text` as a number without a sign.
std::optional<std::uint64_t> wholeNumber(std::string_view text, int base) {
    std::uint64_t value = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, base);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

/// The number behind a sign, which zeros may precede, with any decimal point left out.
std::optional<std::int64_t> signedNumber(std::string_view text) {
    constexpr std::uint64_t limit = 1'000'000'000'000'000'000;
    const auto sign = text.find_first_of("+-");
    std::string digits(sign == std::string_view::npos ? text : text.substr(sign + 1));
    std::erase(digits, '.');
    const auto number = wholeNumber(digits, 10);
    if (!number || *number > limit) return std::nullopt;
    const auto value = static_cast<std::int64_t>(*number);
    return sign != std::string_view::npos && text[sign] == '-' ? -value : value;
}

/// A hexadecimal number of 32 bits, the highest of which is the sign.
std::optional<std::int64_t> hexadecimalNumber(std::string_view text) {
    constexpr std::uint64_t greatest = 0xFFFFFFFF;
    const auto number = wholeNumber(text, 16);
    if (!number || *number > greatest) return std::nullopt;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(*number));
}

std::string hexadecimal(std::int64_t value, int width) {
    std::array<char, bytesOfValue * 2> digits{};
    const auto bits = static_cast<std::uint32_t>(value);
    const auto* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), bits, 16).ptr;
    const std::string text(digits.data(), static_cast<std::size_t>(end - digits.data()));
    return zeros(width - static_cast<int>(text.size())).append(text);
}

/// Bytes ahead of those of the value all carry its sign.
bool hasRightSign(std::string_view bytes, std::int64_t value) {
    if (bytes.size() <= bytesOfValue) return true;
    const auto ahead = bytes.substr(0, bytes.size() - bytesOfValue);
    const bool isNegative = ahead.front() != 0;
    return isNegative == (value < 0) &&
           ahead.find_first_not_of(ahead.front()) == std::string_view::npos;
}

std::int64_t powerOfTen(int exponent) {
    std::int64_t power = 1;
    for (; exponent > 0; --exponent)
        power *= 10;
    return power;
}

}  // namespace

bool ArgumentDecoder::isGeneral() const noexcept {
    return argument.type == 'D' && !style.fixedPoint;
}

std::string_view ArgumentDecoder::characters() const noexcept {
    if (argument.type == 'X') return "0123456789abcdef";
    if (isGeneral()) return "0123456789+-.e";
    return argument.type == 'D' ? "0123456789+-." : "0123456789+-";
}

std::size_t ArgumentDecoder::greatestLength() const {
    constexpr std::size_t signPointAndExponent = 8;
    if (isGeneral()) return static_cast<std::size_t>(argument.decimals()) + signPointAndExponent;
    return std::max(write(argument.min).size(), write(argument.max).size());
}

/// A bound itself is always taken: where a definition has them the wrong way round, no other value
/// is ever sent.
bool ArgumentDecoder::isWithinBounds(std::int64_t value) const noexcept {
    return value == argument.min || value == argument.max ||
           (value > argument.min && value < argument.max);
}

std::string ArgumentDecoder::write(std::int64_t value) const {
    if (argument.type == 'X') return hexadecimal(value, argument.len);
    if (argument.type == 'D') return style.fixedPoint ? writeFixed(value) : writeGeneral(value);
    const auto digits = std::to_string(std::abs(value));
    if (argument.type == 'A') return written(value, digits, argument.len);
    return written(value, digits, argument.type == 'B' ? argument.len + 1 : 0);
}

std::string ArgumentDecoder::written(std::int64_t value, std::string_view digits, int width) const {
    std::string sign = style.withSign ? "+" : "";
    if (value < 0) sign = "-";
    const auto filling = zeros(width - static_cast<int>(sign.size() + digits.size()));
    return style.withSign ? sign.append(filling).append(digits)
                          : std::string(filling).append(sign).append(digits);
}

std::string ArgumentDecoder::writeFixed(std::int64_t units) const {
    constexpr int signAndPoint = 2;
    const int decimals = argument.decimals();
    auto digits = std::to_string(std::abs(units));
    digits.insert(0, zeros(decimals + 1 - static_cast<int>(digits.size())));
    if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), ".");
    const int width = argument.digits() != 0 ? argument.digits() + decimals + signAndPoint : 0;
    return written(units, digits, width);
}

std::string ArgumentDecoder::writeGeneral(std::int64_t units) const {
    const int decimals = argument.decimals();
    const double value = static_cast<double>(units) / static_cast<double>(powerOfTen(decimals));
    std::array<char, 64> text{};
    const auto* const format = style.withSign ? "%+.*g" : "%.*g";
    const int size = std::snprintf(text.data(), text.size(), format, decimals, value);
    return {text.data(), static_cast<std::size_t>(std::max(size, 0))};
}

ArgumentDecoder::Reading ArgumentDecoder::read(std::string_view text) const {
    if (isRaw()) return readRaw(text);
    return isGeneral() ? readGeneral(text) : readNumber(text);
}

/// As many low bytes as are sent leave the value open by multiples of their range; the least value
/// from the lower bound on is taken.
ArgumentDecoder::Reading ArgumentDecoder::readRaw(std::string_view bytes) const {
    if (bytes.empty()) return {};
    std::uint64_t bits = 0;
    for (const char byte : bytes)
        bits = bits << bitsPerByte | static_cast<unsigned char>(byte);
    const std::uint64_t range = std::uint64_t{1}
                                << (bitsPerByte * std::min(bytes.size(), bytesOfValue));
    const auto above = [bits, range](std::int64_t bound) {
        return static_cast<std::int64_t>((bits - static_cast<std::uint64_t>(bound)) % range);
    };
    const std::int64_t value = argument.min + above(argument.min);
    if (isWithinBounds(value) && hasRightSign(bytes, value)) return {std::to_string(value), {}};
    if (above(argument.max) == 0) return {std::to_string(argument.max), {}};
    return outOfBounds(listBytes(bytes));
}

ArgumentDecoder::Reading ArgumentDecoder::readNumber(std::string_view text) const {
    const auto value = argument.type == 'X' ? hexadecimalNumber(text) : signedNumber(text);
    if (!value || !isWithinBounds(*value)) return outOfBounds(text);
    const auto expected = write(*value);
    if (text != expected) {
        return {{}, std::string("is written ").append(text).append(", not ").append(expected)};
    }
    return {argument.type == 'D' ? expected : std::to_string(*value), {}};
}

/// A bound may lose places as it is written, and then lie a little outside of itself.
ArgumentDecoder::Reading ArgumentDecoder::readGeneral(std::string_view text) const {
    constexpr double limit = 1e18;
    const auto scale = static_cast<double>(powerOfTen(argument.decimals()));
    const double units = std::strtod(std::string(text).c_str(), nullptr) * scale;
    if (!(std::abs(units) < limit)) return outOfBounds(text);
    const auto nearest = std::llround(units);
    const bool isBound = text == write(argument.min) || text == write(argument.max);
    if (!isBound && !isWithinBounds(nearest)) return outOfBounds(text);
    if (!isBound && text != write(nearest)) {
        return {{},
                std::string("is written ").append(text).append(", not ").append(write(nearest))};
    }
    return {std::string(text), {}};
}

ArgumentDecoder::Reading ArgumentDecoder::outOfBounds(std::string_view text) const {
    const auto bounds = isRaw()
                            ? std::to_string(argument.min) + " to " + std::to_string(argument.max)
                            : write(argument.min).append(" to ").append(write(argument.max));
    return {{}, std::string("is ").append(text).append(", not within ").append(bounds)};
}

}  // namespace orx::orxsim
