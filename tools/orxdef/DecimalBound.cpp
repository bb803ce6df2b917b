#include "orxdef/DecimalBound.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace orx::orxdef {
namespace {

/// Far above the error of one multiplication, far below half a unit at the ends of the range.
constexpr long double relativeNoise = 1e-12L;

constexpr long double decimalBase = 10;

/// More characters than any double needs.
constexpr std::size_t longestNumber = 32;

using Limits = std::numeric_limits<std::int32_t>;

std::string unitText(int decimals) {
    if (decimals == 0) return "1";
    return "0." + std::string(static_cast<std::size_t>(decimals - 1), '0') + "1";
}

/// The shortest text that reads back as `value`.
std::string numberText(double value) {
    std::array<char, longestNumber> buffer{};
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

long double scaled(double value, int decimals) {
    long double result = value;
    for (int place = 0; place < decimals; ++place)
        result *= decimalBase;
    return result;
}

}  // namespace

std::int32_t inUnits(double value, int decimals) {
    const auto exact = scaled(value, decimals);
    const auto whole = std::round(exact);
    // Written so that "not a number" is refused here too.
    if (!(whole >= Limits::min() && whole <= Limits::max()))
        throw std::range_error("must fit 32 bits in units of " + unitText(decimals) + ", unlike " +
                               numberText(value));
    if (std::abs(exact - whole) > relativeNoise * std::abs(exact))
        throw std::range_error("must be a multiple of " + unitText(decimals) + ", not " +
                               numberText(value));
    return static_cast<std::int32_t>(whole);
}

std::string unitsText(std::int32_t units, int decimals) {
    const auto places = static_cast<std::size_t>(decimals);
    auto digits = std::to_string(std::abs(std::int64_t{units}));
    if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
    auto fraction = digits.substr(digits.size() - places);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    auto text = (units < 0 ? "-" : "") + digits.substr(0, digits.size() - places);
    if (!fraction.empty()) text.append(".").append(fraction);
    return text;
}

}  // namespace orx::orxdef
