// What each command of the vocabulary does, in a line of words for people, and what its argument is
// called. Usage texts, command lists and completions are made of it; the daemon needs none of it.
//
// Of the commands that the daemon only passes on, the text says what projectors commonly do for
// them; what a projector really does is up to its definition. Any thread may call anything here.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "commands/Keywords.h"
#include "commands/Vocabulary.h"

namespace orx::orxctl {

struct CommandText {
    std::string_view keyword;
    std::string_view argument;  ///< its name, in [] where it may be left out; empty for none
    std::string_view text;      ///< imperative, at most `longestCommandText` bytes of ASCII
};

inline constexpr std::size_t longestCommandText = 60;

/// One for each command, in the order of `vocabulary`.
inline constexpr std::array<CommandText, vocabulary.size()> commandTexts{{
    {CMD_FOCUS_ABS_PLUS, "", "move the focus one step up"},
    {CMD_FOCUS_ABS_MINUS, "", "move the focus one step down"},
    {CMD_ARC_BOTTOM, "VALUE", "bend the lower edge of the picture"},
    {CMD_ARC_LEFT, "VALUE", "bend the left edge of the picture"},
    {CMD_ARC_RESET, "", "make all edges of the picture straight again"},
    {CMD_ARC_RIGHT, "VALUE", "bend the right edge of the picture"},
    {CMD_ARC_TOP, "VALUE", "bend the upper edge of the picture"},
    {CMD_ASPECT_RATIO, "NUMBER", "choose the aspect ratio of the picture"},
    {CMD_AV_MUTE, "", "blank the picture and mute the sound"},
    {CMD_AV_UNMUTE, "", "show the picture and let the sound be heard again"},
    {CMD_ZOOM_ABS_PLUS, "", "move the zoom one step up"},
    {CMD_ZOOM_ABS_MINUS, "", "move the zoom one step down"},
    {CMD_PIN_BARREL_RESET, "", "take back the pincushion and barrel correction"},
    {CMD_BRIGHTNESS, "VALUE", "set the brightness of the picture"},
    {CMD_CLEAR_FLAGS, "", "take back the flags HELO and LCU of the status"},
    {CMD_CONTRAST, "VALUE", "set the contrast of the picture"},
    {CMD_CORNER_CORRECTION_RESET, "", "put all corners of the picture back in their places"},
    {CMD_CURVED_HORIZONTAL_ARC, "VALUE", "set how far a curved screen bends horizontally"},
    {CMD_CURVED_HORIZONTAL_BALANCE, "VALUE", "balance the horizontal bend for a curved screen"},
    {CMD_CURVED_HORIZONTAL_KEYSTONE, "VALUE", "set the horizontal keystone on a curved screen"},
    {CMD_CURVED_MAINTAIN_ASPECT_RATIO, "VALUE", "keep the aspect ratio on a curved screen or not"},
    {CMD_CURVED_LENS_THROW_RATIO, "VALUE",
     "tell the curved-screen correction the lens throw ratio"},
    {CMD_CURVED_VERTICAL_ARC, "VALUE", "set how far a curved screen bends vertically"},
    {CMD_CURVED_VERTICAL_BALANCE, "VALUE", "balance the vertical bend for a curved screen"},
    {CMD_CURVED_VERTICAL_KEYSTONE, "VALUE", "set the vertical keystone on a curved screen"},
    {CMD_FOCUS_PLUS, "", "jog the focus up a little, without counting it"},
    {CMD_FOCUS_PLUS2, "", "jog the focus up some way, without counting it"},
    {CMD_FOCUS_PLUS3, "", "jog the focus up a long way, without counting it"},
    {CMD_FOCUS_MINUS, "", "jog the focus down a little, without counting it"},
    {CMD_FOCUS_MINUS2, "", "jog the focus down some way, without counting it"},
    {CMD_FOCUS_MINUS3, "", "jog the focus down a long way, without counting it"},
    {CMD_FOCUS_CALIBRATION_END, "[STEPS]",
     "take the steps counted, or these, for the focus travel"},
    {CMD_FOCUS_CALIBRATION_START, "", "begin to learn the focus travel; jog up with AF+ then"},
    {CMD_FOCUS_ABS, "FRACTION", "move the focus to a fraction of its range, 65536 being all"},
    {CMD_FOCUS_RESET, "", "drive the focus into its end stop and count from there"},
    {CMD_FOCUS_ABS_STEPS, "STEPS", "move the focus to a position in motor steps"},
    {CMD_FREEZE, "", "hold the picture as it is now"},
    {CMD_GEOMETRY, "NUMBER", "choose which kind of geometry correction applies"},
    {CMD_HORIZONTAL_PIN_BARREL, "VALUE", "correct horizontal pincushion or barrel distortion"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LINEARITY, "VALUE",
     "set the horizontal linearity between corrected corners"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_LEFT, "VALUE",
     "move the lower left corner of the picture horizontally"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_RIGHT, "VALUE",
     "move the lower right corner of the picture horizontally"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_LEFT, "VALUE",
     "move the upper left corner of the picture horizontally"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_RIGHT, "VALUE",
     "move the upper right corner of the picture horizontally"},
    {CMD_IMAGE_ORIENTATION, "NUMBER", "choose front, rear, table or ceiling projection"},
    {CMD_INFO, "", "ask the projector for information, which is not passed back"},
    {CMD_INPUT_SELECT, "NUMBER", "choose the input whose picture is shown"},
    {CMD_INTENSITY, "VALUE", "set the intensity of the colours"},
    {CMD_KEYSTONE_HORIZONTAL, "VALUE", "set the horizontal keystone correction"},
    {CMD_KEYSTONE_HORIZONTAL_BALANCE, "VALUE", "balance the horizontal keystone correction"},
    {CMD_KEYSTONE_RESET, "", "take back the keystone correction"},
    {CMD_KEYSTONE_LENS_THROW_RATIO, "VALUE", "tell the keystone correction the lens throw ratio"},
    {CMD_KEYSTONE_VERTICAL, "VALUE", "set the vertical keystone correction"},
    {CMD_KEYSTONE_VERTICAL_BALANCE, "VALUE", "balance the vertical keystone correction"},
    {CMD_LENS_RESET, "", "drive zoom and focus into their end stops, count from there"},
    {CMD_LIGHT_OUTPUT, "VALUE", "set the light output"},
    {CMD_MAX_LIGHT_OUTPUT, "VALUE", "set the limit of the light output"},
    {CMD_CLEAR_MEMORY, "", "forget the lens positions of all memory slots"},
    {CMD_LOAD_MEMORY, "SLOT", "move the lens to the positions of a memory slot"},
    {CMD_SAVE_MEMORY, "SLOT", "store the lens positions in a memory slot"},
    {CMD_MUTE, "", "mute the sound"},
    {CMD_NATIVE_CLEAR_MEMORY, "SLOT", "clear one of the projector's own memory slots"},
    {CMD_NATIVE_LOAD_MEMORY, "SLOT", "recall one of the projector's own memory slots"},
    {CMD_NATIVE_SAVE_MEMORY, "SLOT", "store into one of the projector's own memory slots"},
    {CMD_POWER_OFF, "", "switch the projector off"},
    {CMD_POWER_ON, "", "switch the projector on"},
    {CMD_OPERATING_MODE, "NUMBER", "choose the operating mode of the projector"},
    {CMD_OVERRIDE_FOCUS_POSITION, "STEPS", "take the focus to be at this position; move nothing"},
    {CMD_OVERRIDE_ZOOM_POSITION, "STEPS", "take the zoom to be at this position; move nothing"},
    {CMD_PICTURE_MUTE, "", "blank the picture"},
    {CMD_PICTURE_UNMUTE, "", "show the picture again"},
    {CMD_QUIT, "", "end the daemon"},
    {CMD_RAW, "HEX...", "send these bytes to the projector as they are"},
    {CMD_RESTART, "", "restart the daemon, with its configuration read anew"},
    {CMD_ROTATION, "VALUE", "rotate the picture"},
    {CMD_ROTATION_RESET, "", "take back the rotation of the picture"},
    {CMD_SET_DELAY, "MS", "wait so many milliseconds after each command, until RESTART"},
    {CMD_SET_FOCUS_RESET_STEPS, "STEPS", "set the fast steps of a focus reset, until RESTART"},
    {CMD_SET_ZOOM_RESET_STEPS, "STEPS", "set the fast steps of a zoom reset, until RESTART"},
    {CMD_SHARPNESS, "VALUE", "set the sharpness of the picture"},
    {CMD_LENS_SHIFT_DOWN, "", "shift the picture down"},
    {CMD_LENS_SHIFT_LEFT, "", "shift the picture to the left"},
    {CMD_LENS_SHIFT_RESET, "", "shift the picture back to the middle"},
    {CMD_LENS_SHIFT_RIGHT, "", "shift the picture to the right"},
    {CMD_LENS_SHIFT_UP, "", "shift the picture up"},
    {CMD_SHUTTER_OFF, "", "open the shutter"},
    {CMD_SHUTTER_ON, "", "close the shutter"},
    {CMD_STATUS, "", "ask where the lens is and which flags are set"},
    {CMD_TEST_PATTERN, "NUMBER", "show a test pattern"},
    {CMD_UNFREEZE, "", "let a frozen picture move again"},
    {CMD_UNMUTE, "", "let the sound be heard again"},
    {CMD_VERTICAL_PIN_BARREL, "VALUE", "correct vertical pincushion or barrel distortion"},
    {CMD_VERTICAL_CORNER_CORRECTION_LINEARITY, "VALUE",
     "set the vertical linearity between corrected corners"},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_LEFT, "VALUE",
     "move the lower left corner of the picture vertically"},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_RIGHT, "VALUE",
     "move the lower right corner of the picture vertically"},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_LEFT, "VALUE",
     "move the upper left corner of the picture vertically"},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_RIGHT, "VALUE",
     "move the upper right corner of the picture vertically"},
    {CMD_ZOOM_PLUS, "", "jog the zoom up a little, without counting it"},
    {CMD_ZOOM_PLUS2, "", "jog the zoom up some way, without counting it"},
    {CMD_ZOOM_PLUS3, "", "jog the zoom up a long way, without counting it"},
    {CMD_ZOOM_MINUS, "", "jog the zoom down a little, without counting it"},
    {CMD_ZOOM_MINUS2, "", "jog the zoom down some way, without counting it"},
    {CMD_ZOOM_MINUS3, "", "jog the zoom down a long way, without counting it"},
    {CMD_ZOOM_CALIBRATION_END, "[STEPS]", "take the steps counted, or these, for the zoom travel"},
    {CMD_ZOOM_CALIBRATION_START, "", "begin to learn the zoom travel; jog up with AZ+ then"},
    {CMD_ZOOM_ABS, "FRACTION", "move the zoom to a fraction of its range, 65536 being all"},
    {CMD_ZOOM_RESET, "", "drive the zoom into its end stop and count from there"},
    {CMD_ZOOM_ABS_STEPS, "STEPS", "move the zoom to a position in motor steps"},
}};

namespace command_text_checks {

consteval bool matchesVocabulary() {
    return std::ranges::equal(commandTexts, vocabulary, [](const auto& text, const auto& entry) {
        return text.keyword == entry.keyword &&
               text.argument.empty() == (entry.argumentKind == ArgumentKind::none);
    });
}

consteval bool isOneLine(std::string_view text) {
    return !text.empty() && text.size() <= longestCommandText && !text.ends_with('.') &&
           std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

consteval bool areOneLineEach() {
    return std::ranges::all_of(commandTexts, isOneLine, &CommandText::text);
}

}  // namespace command_text_checks

static_assert(command_text_checks::matchesVocabulary(),
              "a command is missing or out of order, or has an argument here or there only");
static_assert(command_text_checks::areOneLineEach(),
              "a text is missing, too long or ends in a stop");

/// The text of `keyword`, which has to be in the vocabulary: else throws `std::invalid_argument`.
/// Case counts, as everywhere.
[[nodiscard]] constexpr const CommandText& textFor(std::string_view keyword) {
    const auto* const row =
        std::ranges::lower_bound(commandTexts, keyword, {}, &CommandText::keyword);
    if (row == commandTexts.end() || row->keyword != keyword) {
        throw std::invalid_argument(std::string("no such command: ").append(keyword));
    }
    return *row;
}

}  // namespace orx::orxctl
