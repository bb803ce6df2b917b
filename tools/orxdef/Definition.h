// The content of a projector definition file as plain values: header, command list, models with
// their command strings and argument descriptors, each in the order in which the file has them.
//
// A reader, from TOML or from the binary form, fills them; `binaryImage` and `tomlText` write them
// out. They can say whatever the binary form can, also what the daemon would stumble over, so that
// any readable file can be shown, checked and made again. `CommandTable.h` has the view of one
// model that the daemon takes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/Mistakes.h"
#include "projector/DefinitionFormat.h"
#include "serial/SerialSettings.h"

namespace orx::orxdef {

/// An entry of the command list.
struct ListedCommand {
    Place place;
    std::uint16_t id = 0;  ///< the command's number within the file
    std::string name;      ///< the keyword that clients send, at most 255 bytes
};

/// What one model is sent for one command.
struct CommandString {
    Place place;
    std::uint16_t id = 0;  ///< the number that the command list gives the command
    std::string bytes;     ///< at most 255, without the arguments
};

/// How one argument is formatted, bounded and placed in the bytes of its command.
struct ArgumentDescriptor {
    Place place;
    std::uint16_t id = 0;      ///< of the command
    std::uint16_t number = 1;  ///< of the argument, counted from 1
    std::int32_t min = 0;      ///< for type 'D' in units of 10^-decimals
    std::int32_t max = 0;      ///< as `min`
    std::uint8_t pos = 0;      ///< index in the command's bytes before which the argument stands
    std::uint8_t len = 0;     ///< width; for 'D' decimals in the high nibble, digits in the low one
    std::uint8_t type = 'A';  ///< 'A', 'B', 'D', 'I' or 'X'; any other is sent as plain decimal

    [[nodiscard]] bool hasKnownType() const noexcept {
        return std::string_view("ABDIX").find(static_cast<char>(type)) != std::string_view::npos;
    }
    /// Type 'D': digits after the decimal point.
    [[nodiscard]] int decimals() const noexcept { return len / 16; }
    /// Type 'D': digits ahead of the decimal point; with 0 the number has neither sign nor filling.
    [[nodiscard]] int digits() const noexcept { return len % 16; }
};

/// The parity of a serial line, with its code in the binary file; other codes mean none.
enum class Parity : std::uint8_t { none = 0, odd = 1, even = 2 };
/// How TOML calls them, by code.
inline constexpr auto parityNames = parityTexts;

/// What a model expects after each command, with its code in the binary file; other codes mean
/// none.
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
    std::uint8_t stopbits = 1;             ///< 1 or 2; the file has room for 15
    Parity parity = Parity::none;

    /// The bits that a character really has: sizes that no line has count as 8.
    [[nodiscard]] int characterSize() const noexcept {
        constexpr int usual = 8;
        return bytesize >= 5 && bytesize < usual ? bytesize : usual;
    }
};

/// One projector model. Where its block stands, and how long it is, follow from what comes before
/// and what is in it, unless that is said here.
struct ModelDefinition {
    Place place;       ///< where the model gets its name, for mistakes found later on
    std::string name;  ///< at most 255 bytes
    LineSettings line;
    Checksum checksum = Checksum::none;
    std::vector<CommandString> strings;
    std::vector<ArgumentDescriptor> descriptors;
    std::optional<std::uint16_t> blockOffset;
    std::optional<std::uint16_t> blockLength;
};

/// Bytes at a place of the file that belong to none of its parts.
struct Filler {
    Place place;
    std::size_t offset = 0;
    std::string bytes;
};

/// Everything that one definition file holds.
struct DefinitionSet {
    Place place;  ///< the beginning of the file
    std::array<std::uint8_t, 6> magic = definition_format::magic;
    std::uint16_t endianCheck = usualEndianCheck;
    std::int32_t compileDate = 0;  ///< 0 for the same reason as `usualEndianCheck`
    std::vector<ListedCommand> commandList;
    std::vector<ModelDefinition> models;
    std::vector<Filler> fillers;
    /// The sizes of the two lists as the header has them, where they are not those of their
    /// entries.
    std::optional<std::uint16_t> commandListLength;
    std::optional<std::uint16_t> projectorListLength;
};

}  // namespace orx::orxdef
