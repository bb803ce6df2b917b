// What each command of the vocabulary does, in a line of words for people. The list of commands and
// completions are made of it; the daemon needs none of it.
//
// Of the commands that the daemon only passes on, the text says what projectors commonly do for
// them; what a projector really does is up to its definition. Any thread may call anything here.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "commands/Keywords.h"
#include "commands/Vocabulary.h"

namespace orx::orxctl {

struct CommandText {
    std::string_view keyword;
    std::string_view text;  ///< imperative, at most `longestCommandText` bytes of ASCII
};

/// With keyword and kind of argument ahead of it, a line of a terminal.
inline constexpr std::size_t longestCommandText = 50;

/// One for each command, in the order of `vocabulary`.
inline constexpr std::array<CommandText, vocabulary.size()> commandTexts{{
    {CMD_FOCUS_ABS_PLUS, "move the focus one step up"},
    {CMD_FOCUS_ABS_MINUS, "move the focus one step down"},
    {CMD_ARC_BOTTOM, "bend the lower edge of the picture"},
    {CMD_ARC_LEFT, "bend the left edge of the picture"},
    {CMD_ARC_RESET, "make all edges of the picture straight again"},
    {CMD_ARC_RIGHT, "bend the right edge of the picture"},
    {CMD_ARC_TOP, "bend the upper edge of the picture"},
    {CMD_ASPECT_RATIO, "choose the aspect ratio of the picture"},
    {CMD_AV_MUTE, "blank the picture and mute the sound"},
    {CMD_AV_UNMUTE, "show the picture and let the sound be heard again"},
    {CMD_ZOOM_ABS_PLUS, "move the zoom one step up"},
    {CMD_ZOOM_ABS_MINUS, "move the zoom one step down"},
    {CMD_PIN_BARREL_RESET, "take back the pincushion and barrel correction"},
    {CMD_BRIGHTNESS, "set the brightness of the picture"},
    {CMD_CLEAR_FLAGS, "take back the flags HELO and LCU of the status"},
    {CMD_CONTRAST, "set the contrast of the picture"},
    {CMD_CORNER_CORRECTION_RESET, "put all corners of the picture back"},
    {CMD_CURVED_HORIZONTAL_ARC, "set how far a curved screen bends horizontally"},
    {CMD_CURVED_HORIZONTAL_BALANCE, "balance the horizontal bend for a curved screen"},
    {CMD_CURVED_HORIZONTAL_KEYSTONE, "set the horizontal keystone on a curved screen"},
    {CMD_CURVED_MAINTAIN_ASPECT_RATIO, "keep the aspect ratio on a curved screen or not"},
    {CMD_CURVED_LENS_THROW_RATIO, "set the lens throw ratio for a curved screen"},
    {CMD_CURVED_VERTICAL_ARC, "set how far a curved screen bends vertically"},
    {CMD_CURVED_VERTICAL_BALANCE, "balance the vertical bend for a curved screen"},
    {CMD_CURVED_VERTICAL_KEYSTONE, "set the vertical keystone on a curved screen"},
    {CMD_FOCUS_PLUS, "jog the focus up a little, without counting it"},
    {CMD_FOCUS_PLUS2, "jog the focus up some way, without counting it"},
    {CMD_FOCUS_PLUS3, "jog the focus up a long way, without counting it"},
    {CMD_FOCUS_MINUS, "jog the focus down a little, without counting it"},
    {CMD_FOCUS_MINUS2, "jog the focus down some way, without counting it"},
    {CMD_FOCUS_MINUS3, "jog the focus down a long way, without counting it"},
    {CMD_FOCUS_CALIBRATION_END, "end it; the travel is this, or what was counted"},
    {CMD_FOCUS_CALIBRATION_START, "begin to count the focus travel, by AF+"},
    {CMD_FOCUS_ABS, "move the focus in its range, 65536 being all"},
    {CMD_FOCUS_RESET, "drive the focus into its end stop: 0"},
    {CMD_FOCUS_ABS_STEPS, "move the focus to a position in motor steps"},
    {CMD_FREEZE, "hold the picture as it is now"},
    {CMD_GEOMETRY, "choose which kind of geometry correction applies"},
    {CMD_HORIZONTAL_PIN_BARREL, "correct horizontal pincushion or barrel distortion"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LINEARITY, "set the linearity between corners, sideways"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_LEFT, "move the lower left corner sideways"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_LOWER_RIGHT, "move the lower right corner sideways"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_LEFT, "move the upper left corner sideways"},
    {CMD_HORIZONTAL_CORNER_CORRECTION_UPPER_RIGHT, "move the upper right corner sideways"},
    {CMD_IMAGE_ORIENTATION, "choose front, rear, table or ceiling projection"},
    {CMD_INFO, "ask the projector for information, and drop it"},
    {CMD_INPUT_SELECT, "choose the input whose picture is shown"},
    {CMD_INTENSITY, "set the intensity of the colours"},
    {CMD_KEYSTONE_HORIZONTAL, "set the horizontal keystone correction"},
    {CMD_KEYSTONE_HORIZONTAL_BALANCE, "balance the horizontal keystone correction"},
    {CMD_KEYSTONE_RESET, "take back the keystone correction"},
    {CMD_KEYSTONE_LENS_THROW_RATIO, "tell the keystone correction the lens throw ratio"},
    {CMD_KEYSTONE_VERTICAL, "set the vertical keystone correction"},
    {CMD_KEYSTONE_VERTICAL_BALANCE, "balance the vertical keystone correction"},
    {CMD_LENS_RESET, "drive zoom and focus into their end stops: 0"},
    {CMD_LIGHT_OUTPUT, "set the light output"},
    {CMD_MAX_LIGHT_OUTPUT, "set the limit of the light output"},
    {CMD_CLEAR_MEMORY, "forget the lens positions of all memory slots"},
    {CMD_LOAD_MEMORY, "move the lens to the positions of a memory slot"},
    {CMD_SAVE_MEMORY, "store the lens positions in a memory slot"},
    {CMD_MUTE, "mute the sound"},
    {CMD_NATIVE_CLEAR_MEMORY, "clear one of the projector's own memory slots"},
    {CMD_NATIVE_LOAD_MEMORY, "recall one of the projector's own memory slots"},
    {CMD_NATIVE_SAVE_MEMORY, "store into one of the projector's own memory slots"},
    {CMD_POWER_OFF, "switch the projector off"},
    {CMD_POWER_ON, "switch the projector on"},
    {CMD_OPERATING_MODE, "choose the operating mode of the projector"},
    {CMD_OVERRIDE_FOCUS_POSITION, "say where the focus stands, without moving it"},
    {CMD_OVERRIDE_ZOOM_POSITION, "say where the zoom stands, without moving it"},
    {CMD_PICTURE_MUTE, "blank the picture"},
    {CMD_PICTURE_UNMUTE, "show the picture again"},
    {CMD_QUIT, "end the daemon"},
    {CMD_RAW, "send these bytes to the projector as they are"},
    {CMD_RESTART, "let the daemon read all its files anew"},
    {CMD_ROTATION, "rotate the picture"},
    {CMD_ROTATION_RESET, "take back the rotation of the picture"},
    {CMD_SET_DELAY, "pause so many ms behind commands, until RESTART"},
    {CMD_SET_FOCUS_RESET_STEPS, "set the fast steps of a focus reset, until RESTART"},
    {CMD_SET_ZOOM_RESET_STEPS, "set the fast steps of a zoom reset, until RESTART"},
    {CMD_SHARPNESS, "set the sharpness of the picture"},
    {CMD_LENS_SHIFT_DOWN, "shift the picture down"},
    {CMD_LENS_SHIFT_LEFT, "shift the picture to the left"},
    {CMD_LENS_SHIFT_RESET, "shift the picture back to the middle"},
    {CMD_LENS_SHIFT_RIGHT, "shift the picture to the right"},
    {CMD_LENS_SHIFT_UP, "shift the picture up"},
    {CMD_SHUTTER_OFF, "open the shutter"},
    {CMD_SHUTTER_ON, "close the shutter"},
    {CMD_STATUS, "ask where the lens is and which flags are set"},
    {CMD_TEST_PATTERN, "show a test pattern"},
    {CMD_UNFREEZE, "let a frozen picture move again"},
    {CMD_UNMUTE, "let the sound be heard again"},
    {CMD_VERTICAL_PIN_BARREL, "correct vertical pincushion or barrel distortion"},
    {CMD_VERTICAL_CORNER_CORRECTION_LINEARITY, "set the linearity between corners, up and down"},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_LEFT, "move the lower left corner up or down"},
    {CMD_VERTICAL_CORNER_CORRECTION_LOWER_RIGHT, "move the lower right corner up or down"},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_LEFT, "move the upper left corner up or down"},
    {CMD_VERTICAL_CORNER_CORRECTION_UPPER_RIGHT, "move the upper right corner up or down"},
    {CMD_ZOOM_PLUS, "jog the zoom up a little, without counting it"},
    {CMD_ZOOM_PLUS2, "jog the zoom up some way, without counting it"},
    {CMD_ZOOM_PLUS3, "jog the zoom up a long way, without counting it"},
    {CMD_ZOOM_MINUS, "jog the zoom down a little, without counting it"},
    {CMD_ZOOM_MINUS2, "jog the zoom down some way, without counting it"},
    {CMD_ZOOM_MINUS3, "jog the zoom down a long way, without counting it"},
    {CMD_ZOOM_CALIBRATION_END, "end it; the travel is this, or what was counted"},
    {CMD_ZOOM_CALIBRATION_START, "begin to count the zoom travel, by AZ+"},
    {CMD_ZOOM_ABS, "move the zoom in its range, 65536 being all"},
    {CMD_ZOOM_RESET, "drive the zoom into its end stop: 0"},
    {CMD_ZOOM_ABS_STEPS, "move the zoom to a position in motor steps"},
}};

namespace command_text_checks {

consteval bool matchesVocabulary() {
    return std::ranges::equal(commandTexts, vocabulary, {}, &CommandText::keyword,
                              &VocabularyEntry::keyword);
}

consteval bool isOneLine(std::string_view text) {
    return !text.empty() && text.size() <= longestCommandText && !text.ends_with('.') &&
           std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

consteval bool areOneLineEach() {
    return std::ranges::all_of(commandTexts, isOneLine, &CommandText::text);
}

}  // namespace command_text_checks

static_assert(command_text_checks::matchesVocabulary(), "a command is missing or out of order");
static_assert(command_text_checks::areOneLineEach(),
              "a text is missing, too long or ends in a stop");

}  // namespace orx::orxctl
