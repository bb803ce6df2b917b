// The names of all keys that the daemon asks its configuration and its lens memory file for.
//
// Other code asks by these constants, never by a literal, and what has to know all keys (the check
// of a configuration, the test of the manual pages) goes by the lists: a new key is added here, and
// to the list that it belongs to.
#pragma once

#include <array>
#include <string_view>

namespace orx::config_key {

inline constexpr std::string_view controlChannel = "controlchannel";
inline constexpr std::string_view definitionFile = "definitionfile";
inline constexpr std::string_view logFile = "logfile";
inline constexpr std::string_view projector = "projector";
inline constexpr std::string_view serialDevice = "serial.device";
inline constexpr std::string_view serialParity = "serial.parity";

/// The keys whose values are read as text, all of it.
inline constexpr std::array<std::string_view, 6> texts{
    controlChannel, definitionFile, logFile, projector, serialDevice, serialParity};

// Whole numbers; `serial_range::all` lists them.
inline constexpr std::string_view serialBaudrate = "serial.baudrate";
inline constexpr std::string_view serialBytesize = "serial.bytesize";
inline constexpr std::string_view serialDebug = "serial.debug";
inline constexpr std::string_view serialDelay = "serial.delay";
inline constexpr std::string_view serialStopbits = "serial.stopbits";
inline constexpr std::string_view serialTimeout = "serial.timeout";

/// What an alias begins with; a command's symbolic name follows.
inline constexpr std::string_view aliasPrefix = "cmd.";

// Of each lens axis, see `axisKey`.
inline constexpr std::string_view reduceMax = "reducemax";
inline constexpr std::string_view resetOnLoadMem = "resetonloadmem";
inline constexpr std::string_view resetSteps = "resetsteps";
inline constexpr std::string_view lockInMode = "lockinmode";

/// How an axis moves: in the main configuration.
inline constexpr std::array<std::string_view, 4> motion{reduceMax, resetOnLoadMem, resetSteps,
                                                        lockInMode};

// Of each lens axis, see `axisKey`.
inline constexpr std::string_view rangeMin = "min";
inline constexpr std::string_view rangeMax = "max";
inline constexpr std::string_view rangeMaxReduced = "maxreduced";
inline constexpr std::string_view rangeReduceMaxParam = "reducemaxparam";

/// The range of an axis: in the lens memory file.
inline constexpr std::array<std::string_view, 4> range{rangeMin, rangeMax, rangeMaxReduced,
                                                       rangeReduceMaxParam};

/// The slots, in the lens memory file.
inline constexpr std::string_view memorySlots = "mem";

}  // namespace orx::config_key
