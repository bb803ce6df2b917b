// Any text wherever the daemon reads a number: configuration values, lens memory, arguments. Each
// must come to what the standard conversions make of it, and be printed as printf prints it.
//
// The input: where the number is read in one byte; for an argument minimum and maximum in 4
// bytes each and its format code in one; then the text.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "common/Check.h"
#include "common/InputBytes.h"
#include "common/Numbers.h"
#include "config/ConfigFile.h"
#include "lens/LensConfig.h"
#include "projector/ArgumentInsertion.h"

namespace orx::fuzz {
namespace {

template <typename... Values>
std::string printed(const char* format, Values... values) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

template <typename Number>
Number within(Number value, Number min, Number max) {
    if (value < min) return min;
    return value > max ? max : value;
}

std::string paddedWithZeros(std::string text, int width) {
    const auto size = static_cast<int>(text.size());
    if (size < width) text.insert(0, static_cast<std::size_t>(width - size), '0');
    return text;
}

/// The lowest bytes of `value`, the highest of them first.
std::string bytesOf(std::int64_t value, int count) {
    std::string bytes;
    for (int byte = 0; byte < count; ++byte, value >>= 8)
        bytes.insert(bytes.begin(), static_cast<char>(value));
    return bytes;
}

std::string printedWhole(int value, const ArgumentDescriptor& descriptor) {
    switch (descriptor.type) {
        case 'A':
            return paddedWithZeros(printed("%d", value), descriptor.len);
        case 'B':
            return printed("%+0*d", descriptor.len + 1, value);
        case 'I':
            return bytesOf(value, descriptor.len);
        case 'X':
            return printed("%0*x", descriptor.len, static_cast<unsigned>(value));
        default:
            return printed("%d", value);
    }
}

std::string printedDecimal(double value, const ArgumentDescriptor& descriptor) {
    const double scale = std::pow(10.0, descriptor.len >> 4);
    const double units = std::round(value * scale) + 0.0;  // whole numbers have no negative zero
    const bool fits = units >= -0x1p63 && units < 0x1p63;
    const double sent = within(fits ? units / scale : -0x1p63 / scale, descriptor.min / scale,
                               descriptor.max / scale);
    const int decimals = descriptor.len >> 4;
    const int digits = descriptor.len & 0x0F;
    return digits != 0 ? printed("%+0*.*f", digits + decimals + 2, decimals, sent)
                       : printed("%.*g", decimals, sent);
}

Outcome<std::string> expectedArgument(std::string text, const ArgumentDescriptor& descriptor) {
    if (descriptor.type == 'D') {
        std::ranges::replace(text, ',', '.');
        const auto number = decimalNumber(text);
        if (!number.value) return {{}, number.error};
        return {printedDecimal(*number.value, descriptor), {}};
    }
    const auto number = wholeNumber(text);
    if (!number.value) return {{}, number.error};
    return {printedWhole(within(*number.value, descriptor.min, descriptor.max), descriptor), {}};
}

void checkArgument(const std::string& text, const ArgumentDescriptor& descriptor) {
    const auto inserted = outcomeOf([&] {
        ArgumentInsertion insertion("");
        insertion.insert(text, descriptor);
        return insertion.finish();
    });
    expectSame(inserted, expectedArgument(text, descriptor), "an argument");
}

void checkConfigValue(const std::string& text) {
    constexpr int fallback = 4711;
    const ConfigFile config({{"key", text}});
    expectSame(outcomeOf([&] { return config.getInt("key", fallback); }),
               text.empty() ? Outcome<int>{fallback, {}} : wholeNumber(text),
               "a configuration value");
}

/// A percentage counts up, steps count down; the sign of the text means nothing.
Outcome<int> expectedReduction(const std::string& text) {
    if (text.empty()) return {0, {}};
    const bool percent = text.find('%') != std::string::npos;
    auto number = wholeNumber(text.substr(0, text.find('%')));
    if (!number.value) return number;
    const std::int64_t size = std::abs(std::int64_t{*number.value});
    number.value = static_cast<int>(percent ? std::min<std::int64_t>(size, 0x7FFFFFFF) : -size);
    return number;
}

/// What stands behind the first `mark`.
std::string behind(const std::string& text, char mark) {
    return text.substr(text.find(mark) + 1);
}

void checkMemorySlot(const std::string& text) {
    const auto slot = outcomeOf([&] { return parseMemorySlot(text); });
    if (text.find(':') == std::string::npos || text.find(';') == std::string::npos)
        return expect(slot.value && !*slot.value, "a piece of the lens memory without marks");
    const std::array<Outcome<int>, 3> numbers{wholeNumber(text), wholeNumber(behind(text, ':')),
                                              wholeNumber(behind(text, ';'))};
    const auto* const wrong =
        std::ranges::find_if(numbers, [](const auto& number) { return !number.value.has_value(); });
    expectEqual(slot.error, wrong != numbers.end() ? wrong->error : "", "a lens memory slot");
    if (!slot.value) return;
    const auto& [number, position] = slot.value->value();
    expectEqual(number, *numbers[0].value, "the number of a slot");
    expectEqual(position.focus, *numbers[1].value, "the focus of a slot");
    expectEqual(position.zoom, *numbers[2].value, "the zoom of a slot");
}

void checkReduction(const std::string& text) {
    expectSame(outcomeOf([&] { return parseReduceMax(text); }), expectedReduction(text),
               "a reduction");
}

void check(InputBytes input) {
    constexpr std::string_view types = "ABDIX?";
    const auto place = static_cast<std::size_t>(input.byte()) % (types.size() + 3);
    if (place < types.size()) {
        const ArgumentDescriptor descriptor{.min = input.integer(),
                                            .max = input.integer(),
                                            .pos = 0,
                                            .len = input.byte(),
                                            .type = types[place]};
        checkArgument(input.rest(), descriptor);
    } else if (place == types.size()) {
        checkConfigValue(input.rest());
    } else if (place == types.size() + 1) {
        checkReduction(input.rest());
    } else {
        checkMemorySlot(input.rest());
    }
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({data, size});
    return 0;
}
