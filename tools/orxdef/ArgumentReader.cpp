#include "orxdef/ArgumentReader.h"

#include <array>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "orxdef/DecimalBound.h"
#include "orxdef/TableReader.h"

namespace orx::orxdef {
namespace {

using Bound = std::optional<std::int32_t>;

constexpr std::array<std::string_view, 5> typeNames{"A", "B", "D", "I", "X"};
constexpr std::array<std::string_view, 4> integerKeys{"type", "len", "min", "max"};
constexpr std::array<std::string_view, 5> decimalKeys{"type", "digits", "decimals", "min", "max"};
constexpr std::array<std::string_view, 6> allKeys{"type",     "len", "digits",
                                                  "decimals", "min", "max"};
constexpr Range byteRange{0, 255};
constexpr Range nibbleRange{0, 15};
constexpr Range boundRange{std::numeric_limits<std::int32_t>::min(),
                           std::numeric_limits<std::int32_t>::max()};

Bound readIntegerBound(const TableReader& reader, std::string_view key) {
    const auto bound = reader.integer(key, boundRange);
    return bound ? Bound(static_cast<std::int32_t>(*bound)) : std::nullopt;
}

Bound readDecimalBound(const TableReader& reader, std::string_view key,
                       std::optional<std::int64_t> decimals) {
    const auto bound = reader.number(key);
    if (!bound || !decimals) return std::nullopt;
    try {
        return inUnits(*bound, static_cast<int>(*decimals));
    } catch (const std::range_error& error) {
        reader.refuse(*reader.find(key), key, error.what());
        return std::nullopt;
    }
}

void storeBounds(const TableReader& reader, Bound min, Bound max, ArgumentDescriptor& argument) {
    if (min && max && *min > *max)
        reader.refuse(*reader.find("min"), "min", "must not be above max");
    argument.min = min.value_or(0);
    argument.max = max.value_or(0);
}

void readIntegerArgument(const TableReader& reader, ArgumentDescriptor& argument) {
    reader.allowOnly(integerKeys);
    argument.len = static_cast<std::uint8_t>(reader.integer("len", byteRange).value_or(0));
    const auto min = readIntegerBound(reader, "min");
    const auto max = readIntegerBound(reader, "max");
    storeBounds(reader, min, max, argument);
}

void readDecimalArgument(const TableReader& reader, ArgumentDescriptor& argument) {
    reader.allowOnly(decimalKeys);
    const auto digits = reader.integer("digits", nibbleRange);
    const auto decimals = reader.integer("decimals", nibbleRange);
    argument.len = static_cast<std::uint8_t>(decimals.value_or(0) << 4 | digits.value_or(0));
    const auto min = readDecimalBound(reader, "min", decimals);
    const auto max = readDecimalBound(reader, "max", decimals);
    storeBounds(reader, min, max, argument);
}

}  // namespace

ArgumentDescriptor readArgument(const toml::table& table, const std::string& title,
                                FileReport& report) {
    const TableReader reader(table, title, report);
    ArgumentDescriptor argument;
    const auto type = reader.choice("type", typeNames);
    if (!type) {
        reader.allowOnly(allKeys);
        return argument;
    }
    argument.type = static_cast<std::uint8_t>(typeNames.at(*type).front());
    if (argument.type == 'D')
        readDecimalArgument(reader, argument);
    else
        readIntegerArgument(reader, argument);
    return argument;
}

}  // namespace orx::orxdef
