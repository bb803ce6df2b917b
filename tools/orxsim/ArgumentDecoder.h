// Reads one argument back from the bytes of a command, strictly: a text counts only where it is
// exactly what the argument's format makes of a value within the argument's bounds.
//
// The reader goes by the definition alone and shares nothing with the daemon's encoder, so that a
// mistake there shows as an argument that cannot be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "orxdef/Definition.h"
#include "orxdef/NumberStyle.h"

namespace orx::orxsim {

class ArgumentDecoder {
  public:
    /// What a text says: a value, or what is wrong with it.
    struct Reading {
        std::string value;
        std::string mistake;  ///< goes on after the name of the argument; empty with a value
    };

    /// `descriptor` must outlive the decoder; `numberStyle` already has its part in it.
    ArgumentDecoder(const orxdef::ArgumentDescriptor& descriptor, orxdef::NumberStyle numberStyle)
        : argument(descriptor), style(numberStyle) {}

    [[nodiscard]] unsigned number() const noexcept { return argument.number; }

    /// Whether the argument is a fixed count of bytes of any value, rather than a text.
    [[nodiscard]] bool isRaw() const noexcept { return argument.type == 'I'; }
    [[nodiscard]] std::size_t rawLength() const noexcept { return argument.len; }

    /// The characters that a text may hold.
    [[nodiscard]] std::string_view characters() const noexcept;
    /// No valid text is longer.
    [[nodiscard]] std::size_t greatestLength() const;

    [[nodiscard]] Reading read(std::string_view text) const;

  private:
    [[nodiscard]] bool isGeneral() const noexcept;
    [[nodiscard]] bool isWithinBounds(std::int64_t value) const noexcept;
    [[nodiscard]] std::string write(std::int64_t value) const;
    [[nodiscard]] std::string written(std::int64_t value, std::string_view digits, int width) const;
    [[nodiscard]] std::string writeFixed(std::int64_t units) const;
    [[nodiscard]] std::string writeGeneral(std::int64_t units) const;
    [[nodiscard]] Reading readRaw(std::string_view bytes) const;
    [[nodiscard]] Reading readNumber(std::string_view text) const;
    [[nodiscard]] Reading readGeneral(std::string_view text) const;
    [[nodiscard]] Reading outOfBounds(std::string_view text) const;

    const orxdef::ArgumentDescriptor& argument;
    orxdef::NumberStyle style;
};

}  // namespace orx::orxsim
