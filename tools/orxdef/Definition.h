// The content of a projector definition file as plain values: the models, their line settings,
// their commands and the arguments of these.
//
// A reader fills them, `binaryImage` writes them out. Sequences stand in the order in which the
// binary file has them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// How one argument is formatted, bounded and placed in the bytes of its command.
struct ArgumentDescriptor {
    std::int32_t min = 0;  ///< for type 'D' in units of 10^-decimals
    std::int32_t max = 0;  ///< as `min`
    std::uint8_t pos = 0;  ///< index in the command's bytes before which the argument stands
    std::uint8_t len = 0;  ///< width; for 'D' decimals in the high nibble, digits in the low one
    char type = 'A';       ///< 'A', 'B', 'D', 'I' or 'X'
};

/// What one model is sent for one command of the vocabulary.
struct CommandDefinition {
    std::uint16_t id = 0;                       ///< the command's number within the file
    std::string keyword;                        ///< at most 255 bytes
    std::string bytes;                          ///< at most 255, without the arguments
    std::vector<ArgumentDescriptor> arguments;  ///< the first one belongs to argument 1
};

/// The parity of a serial line, with its code in the binary file.
enum class Parity : std::uint8_t { none = 0, odd = 1, even = 2 };

/// What a model expects after each command, with its code in the binary file.
enum class Checksum : std::uint8_t {
    none = 0,
    sum8 = 1,  ///< the sum of all bytes, modulo 256, as one more byte
};

/// How long a model may take to answer, in milliseconds, unless its definition says otherwise.
inline constexpr std::uint16_t usualTimeout = 100;

/// The check value of every file, fixed so that the same models always give the same bytes.
inline constexpr std::uint16_t usualEndianCheck = 0xA5;

/// The serial line as a model wants it, before the main configuration has its say.
struct LineSettings {
    std::uint32_t baudrate = 0;            ///< bit/s
    std::uint16_t timeout = usualTimeout;  ///< milliseconds
    std::uint16_t delay = 0;               ///< milliseconds between two commands
    std::uint8_t bytesize = 8;             ///< bits a character, 5 to 8
    std::uint8_t stopbits = 1;             ///< 1 or 2
    Parity parity = Parity::none;
};

/// One projector model.
struct ModelDefinition {
    Place place;       ///< where the model gets its name, for mistakes found later on
    std::string name;  ///< 1 to 255 bytes
    LineSettings line;
    Checksum checksum = Checksum::none;
    std::vector<CommandDefinition> commands;
};

/// Everything that one definition file holds.
struct DefinitionSet {
    std::uint16_t endianCheck = usualEndianCheck;
    std::int32_t compileDate = 0;  ///< 0 for the same reason as `usualEndianCheck`
    std::vector<ModelDefinition> models;
};

}  // namespace orx::orxdef
