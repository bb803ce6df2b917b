// The fixed vocabulary of control commands.
//
// Every command has a short keyword, which clients send and definition files use, and a long
// symbolic name, which the `cmd.` aliases of the main configuration use. The vocabulary is closed:
// one table, fixed and checked when the program is compiled, from which every look-up is derived.
// Any thread may call anything here.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "commands/Keywords.h"

namespace orx {

/// What the words after a keyword have to be.
enum class ArgumentKind : std::uint8_t {
    none,     ///< the command takes no argument; words after the keyword are dropped
    integer,  ///< each word begins with a whole number in base 10 that fits 32 bits
    decimal,  ///< each word begins with a floating-point number that fits a double
    raw,      ///< the words are joined and must form pairs of hexadecimal digits
};

/// One command of the vocabulary.
struct VocabularyEntry {
    std::string_view keyword;
    std::string_view symbolicName;
    ArgumentKind argumentKind;
};

/// All commands, in ascending byte order of their keywords.
inline constexpr std::array<VocabularyEntry, 108> vocabulary{{
    {CMD_FOCUS_ABS_PLUS, "CMD_FOCUS_ABS_PLUS", ArgumentKind::none},
    {CMD_FOCUS_ABS_MINUS, "CMD_FOCUS_ABS_MINUS", ArgumentKind::none},
    {CMD_ARC_BOTTOM, "CMD_ARC_BOTTOM", ArgumentKind::integer},
    {CMD_ARC_LEFT, "CMD_ARC_LEFT", ArgumentKind::integer},
    {CMD_ARC_RESET, "CMD_ARC_RESET", ArgumentKind::none},
    {CMD_ARC_RIGHT, "CMD_ARC_RIGHT", ArgumentKind::integer},
    {CMD_ARC_TOP, "CMD_ARC_TOP", ArgumentKind::integer},
    {CMD_ASPECT_RATIO, "CMD_ASPECT_RATIO", ArgumentKind::integer},
    {CMD_AV_MUTE, "CMD_AV_MUTE", ArgumentKind::none},
    {CMD_AV_UNMUTE, "CMD_AV_UNMUTE", ArgumentKind::none},
    {CMD_ZOOM_ABS_PLUS, "CMD_ZOOM_ABS_PLUS", ArgumentKind::none},
    {CMD_ZOOM_ABS_MINUS, "CMD_ZOOM_ABS_MINUS", ArgumentKind::none},
    {CMD_PIN_BARREL_RESET, "CMD_PIN_BARREL_RESET", ArgumentKind::none},
    {CMD_BRIGHTNESS, "CMD_BRIGHTNESS", ArgumentKind::integer},
    {CMD_CLEAR_FLAGS, "CMD_CLEAR_FLAGS", ArgumentKind::none},
    {CMD_CONTRAST, "CMD_CONTRAST", ArgumentKind::integer},
    {CMD_CORNER_CORRECTION_RESET, "CMD_CORNER_CORRECTION_RESET", ArgumentKind::none},
    {CMD_CURVED_HORIZONTAL_ARC, "CMD_CURVED_HORIZONTAL_ARC", ArgumentKind::decimal},
    {CMD_CURVED_HORIZONTAL_BALANCE, "CMD_CURVED_HORIZONTAL_BALANCE", ArgumentKind::integer},
    {CMD_CURVED_HORIZONTAL_KEYSTONE, "CMD_CURVED_HORIZONTAL_KEYSTONE", ArgumentKind::decimal},
    {CMD_CURVED_MAINTAIN_ASPECT_RATIO, "CMD_CURVED_MAINTAIN_ASPECT_RATIO", ArgumentKind::integer},
    {CMD_CURVED_LENS_THROW_RATIO, "CMD_CURVED_LENS_THROW_RATIO", ArgumentKind::decimal},
    {CMD_CURVED_VERTICAL_ARC, "CMD_CURVED_VERTICAL_ARC", ArgumentKind::decimal},
    {CMD_CURVED_VERTICAL_BALANCE, "CMD_CURVED_VERTICAL_BALANCE", ArgumentKind::integer},
    {CMD_CURVED_VERTICAL_KEYSTONE, "CMD_CURVED_VERTICAL_KEYSTONE", ArgumentKind::decimal},
    {CMD_FOCUS_PLUS, "CMD_FOCUS_PLUS", ArgumentKind::none},
    {CMD_FOCUS_PLUS2, "CMD_FOCUS_PLUS2", ArgumentKind::none},
    {CMD_FOCUS_PLUS3, "CMD_FOCUS_PLUS3", ArgumentKind::none},
    {CMD_FOCUS_MINUS, "CMD_FOCUS_MINUS", ArgumentKind::none},
    {CMD_FOCUS_MINUS2, "CMD_FOCUS_MINUS2", ArgumentKind::none},
    {CMD_FOCUS_MINUS3, "CMD_FOCUS_MINUS3", ArgumentKind::none},
    {CMD_FOCUS_CALIBRATION_END, "CMD_FOCUS_CALIBRATION_END", ArgumentKind::integer},
    {CMD_FOCUS_CALIBRATION_START, "CMD_FOCUS_CALIBRATION_START", ArgumentKind::none},
    {CMD_FOCUS_ABS, "CMD_FOCUS_ABS", ArgumentKind::integer},
    {CMD_FOCUS_RESET, "CMD_FOCUS_RESET", ArgumentKind::none},
    {CMD_FOCUS_ABS_STEPS, "CMD_FOCUS_ABS_STEPS", ArgumentKind::integer},
    {CMD_FREEZE, "CMD_FREEZE", ArgumentKind::none},
    {CMD_GEOMETRY, "CMD_GEOMETRY", ArgumentKind::integer},
    {CMD_HORIZONTAL_PIN_BARREL, "CMD_HORIZONTAL_PIN_BARREL", ArgumentKind::integer},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LINEARITY, "CMD_HORIZONTAL_CORNER_CORRECTION_LINEARITY",
     ArgumentKind::integer},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_LEFT, "CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_LEFT",
     ArgumentKind::integer},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_RIGHT, "CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_RIGHT",
     ArgumentKind::integer},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_LEFT, "CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_LEFT",
     ArgumentKind::integer},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_RIGHT, "CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_RIGHT",
     ArgumentKind::integer},
    {CMD_IMAGE_ORIENTATION, "CMD_IMAGE_ORIENTATION", ArgumentKind::integer},
    {CMD_INFO, "CMD_INFO", ArgumentKind::none},
    {CMD_INPUT_SELECT, "CMD_INPUT_SELECT", ArgumentKind::integer},
    {CMD_INTENSITY, "CMD_INTENSITY", ArgumentKind::integer},
    {CMD_KEYSTONE_HORIZONTAL, "CMD_KEYSTONE_HORIZONTAL", ArgumentKind::decimal},
    {CMD_KEYSTONE_HORIZONTAL_BALANCE, "CMD_KEYSTONE_HORIZONTAL_BALANCE", ArgumentKind::integer},
    {CMD_KEYSTONE_RESET, "CMD_KEYSTONE_RESET", ArgumentKind::none},
    {CMD_KEYSTONE_LENS_THROW_RATIO, "CMD_KEYSTONE_LENS_THROW_RATIO", ArgumentKind::decimal},
    {CMD_KEYSTONE_VERTICAL, "CMD_KEYSTONE_VERTICAL", ArgumentKind::decimal},
    {CMD_KEYSTONE_VERTICAL_BALANCE, "CMD_KEYSTONE_VERTICAL_BALANCE", ArgumentKind::integer},
    {CMD_LENS_RESET, "CMD_LENS_RESET", ArgumentKind::none},
    {CMD_LIGHT_OUTPUT, "CMD_LIGHT_OUTPUT", ArgumentKind::integer},
    {CMD_MAX_LIGHT_OUTPUT, "CMD_MAX_LIGHT_OUTPUT", ArgumentKind::integer},
    {CMD_CLEAR_MEMORY, "CMD_CLEAR_MEMORY", ArgumentKind::none},
    {CMD_LOAD_MEMORY, "CMD_LOAD_MEMORY", ArgumentKind::integer},
    {CMD_SAVE_MEMORY, "CMD_SAVE_MEMORY", ArgumentKind::integer},
    {CMD_MUTE, "CMD_MUTE", ArgumentKind::none},
    {CMD_NATIVE_CLEAR_MEMORY, "CMD_NATIVE_CLEAR_MEMORY", ArgumentKind::integer},
    {CMD_NATIVE_LOAD_MEMORY, "CMD_NATIVE_LOAD_MEMORY", ArgumentKind::integer},
    {CMD_NATIVE_SAVE_MEMORY, "CMD_NATIVE_SAVE_MEMORY", ArgumentKind::integer},
    {CMD_POWER_OFF, "CMD_POWER_OFF", ArgumentKind::none},
    {CMD_POWER_ON, "CMD_POWER_ON", ArgumentKind::none},
    {CMD_OPERATING_MODE, "CMD_OPERATING_MODE", ArgumentKind::integer},
    {CMD_OVERRIDE_FOCUS_POSITION, "CMD_OVERRIDE_FOCUS_POSITION", ArgumentKind::integer},
    {CMD_OVERRIDE_ZOOM_POSITION, "CMD_OVERRIDE_ZOOM_POSITION", ArgumentKind::integer},
    {CMD_PICTURE_MUTE, "CMD_PICTURE_MUTE", ArgumentKind::none},
    {CMD_PICTURE_UNMUTE, "CMD_PICTURE_UNMUTE", ArgumentKind::none},
    {CMD_QUIT, "CMD_QUIT", ArgumentKind::none},
    {CMD_RAW, "CMD_RAW", ArgumentKind::raw},
    {CMD_RESTART, "CMD_RESTART", ArgumentKind::none},
    {CMD_ROTATION, "CMD_ROTATION", ArgumentKind::integer},
    {CMD_ROTATION_RESET, "CMD_ROTATION_RESET", ArgumentKind::none},
    {CMD_SET_DELAY, "CMD_SET_DELAY", ArgumentKind::integer},
    {CMD_SET_FOCUS_RESET_STEPS, "CMD_SET_FOCUS_RESET_STEPS", ArgumentKind::integer},
    {CMD_SET_ZOOM_RESET_STEPS, "CMD_SET_ZOOM_RESET_STEPS", ArgumentKind::integer},
    {CMD_SHARPNESS, "CMD_SHARPNESS", ArgumentKind::integer},
    {CMD_LENS_SHIFT_DOWN, "CMD_LENS_SHIFT_DOWN", ArgumentKind::none},
    {CMD_LENS_SHIFT_LEFT, "CMD_LENS_SHIFT_LEFT", ArgumentKind::none},
    {CMD_LENS_SHIFT_RESET, "CMD_LENS_SHIFT_RESET", ArgumentKind::none},
    {CMD_LENS_SHIFT_RIGHT, "CMD_LENS_SHIFT_RIGHT", ArgumentKind::none},
    {CMD_LENS_SHIFT_UP, "CMD_LENS_SHIFT_UP", ArgumentKind::none},
    {CMD_SHUTTER_OFF, "CMD_SHUTTER_OFF", ArgumentKind::none},
    {CMD_SHUTTER_ON, "CMD_SHUTTER_ON", ArgumentKind::none},
    {CMD_STATUS, "CMD_STATUS", ArgumentKind::none},
    {CMD_TEST_PATTERN, "CMD_TEST_PATTERN", ArgumentKind::integer},
    {CMD_UNFREEZE, "CMD_UNFREEZE", ArgumentKind::none},
    {CMD_UNMUTE, "CMD_UNMUTE", ArgumentKind::none},
    {CMD_VERTICAL_PIN_BARREL, "CMD_VERTICAL_PIN_BARREL", ArgumentKind::integer},
    {CMD_VERTICAL_CORNER_CORRECTION_LINEARITY, "CMD_VERTICAL_CORNER_CORRECTION_LINEARITY",
     ArgumentKind::integer},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_LEFT, "CMD_VERTICAL_CORNER_CORRECTION_LOWER_LEFT",
     ArgumentKind::integer},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_RIGHT, "CMD_VERTICAL_CORNER_CORRECTION_LOWER_RIGHT",
     ArgumentKind::integer},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_LEFT, "CMD_VERTICAL_CORNER_CORRECTION_UPPER_LEFT",
     ArgumentKind::integer},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_RIGHT, "CMD_VERTICAL_CORNER_CORRECTION_UPPER_RIGHT",
     ArgumentKind::integer},
    {CMD_ZOOM_PLUS, "CMD_ZOOM_PLUS", ArgumentKind::none},
    {CMD_ZOOM_PLUS2, "CMD_ZOOM_PLUS2", ArgumentKind::none},
    {CMD_ZOOM_PLUS3, "CMD_ZOOM_PLUS3", ArgumentKind::none},
    {CMD_ZOOM_MINUS, "CMD_ZOOM_MINUS", ArgumentKind::none},
    {CMD_ZOOM_MINUS2, "CMD_ZOOM_MINUS2", ArgumentKind::none},
    {CMD_ZOOM_MINUS3, "CMD_ZOOM_MINUS3", ArgumentKind::none},
    {CMD_ZOOM_CALIBRATION_END, "CMD_ZOOM_CALIBRATION_END", ArgumentKind::integer},
    {CMD_ZOOM_CALIBRATION_START, "CMD_ZOOM_CALIBRATION_START", ArgumentKind::none},
    {CMD_ZOOM_ABS, "CMD_ZOOM_ABS", ArgumentKind::integer},
    {CMD_ZOOM_RESET, "CMD_ZOOM_RESET", ArgumentKind::none},
    {CMD_ZOOM_ABS_STEPS, "CMD_ZOOM_ABS_STEPS", ArgumentKind::integer},
}};

namespace vocabulary_checks {

consteval bool keywordsAscend() {
    return std::ranges::adjacent_find(vocabulary, [](const auto& left, const auto& right) {
               return left.keyword >= right.keyword;
           }) == vocabulary.end();
}

consteval std::size_t countWithArgument() {
    return static_cast<std::size_t>(std::ranges::count_if(
        vocabulary, [](const auto& entry) { return entry.argumentKind != ArgumentKind::none; }));
}

consteval auto sortedBySymbolicName() {
    auto sorted = vocabulary;
    std::ranges::sort(sorted, {}, &VocabularyEntry::symbolicName);
    return sorted;
}

}  // namespace vocabulary_checks

/// The same commands in ascending byte order of their symbolic names: symbolic name -> keyword.
inline constexpr auto commandNames = vocabulary_checks::sortedBySymbolicName();

static_assert(vocabulary_checks::keywordsAscend(), "a keyword stands twice or out of order");
static_assert(vocabulary_checks::countWithArgument() == 59);
static_assert(std::ranges::adjacent_find(commandNames, {}, &VocabularyEntry::symbolicName) ==
                  commandNames.end(),
              "a symbolic name stands twice");

/// The command of that keyword, or null where there is none. Case counts; a symbolic name is no
/// keyword.
[[nodiscard]] const VocabularyEntry* findKeyword(std::string_view keyword) noexcept;

/// The keyword paired with `symbolicName`, or the empty text where there is no such command.
[[nodiscard]] std::string_view keywordFor(std::string_view symbolicName) noexcept;

/// The kind of argument that `keyword` takes: "integer", "decimal" or "raw"; nothing for a command
/// without argument and for a text that is no keyword.
[[nodiscard]] std::optional<std::string_view> argumentKindOf(std::string_view keyword) noexcept;

/// As `argumentKindOf`, as an enumerator; `ArgumentKind::none` where there is none.
[[nodiscard]] ArgumentKind argumentKind(std::string_view keyword) noexcept;

/// Whether `keyword` is in the vocabulary. Case counts; a symbolic name is no keyword.
[[nodiscard]] bool isKnownKeyword(std::string_view keyword) noexcept;

}  // namespace orx
