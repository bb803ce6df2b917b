// The fixed part of an entry of the binary file, filled field by field.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "projector/DefinitionFormat.h"

namespace orx::orxdef {

class Record {
  public:
    using Field = definition_format::Field;

    /// `size` zero bytes.
    explicit Record(std::size_t size) : bytes(size, '\0') {}

    /// Writes the lowest bytes of `value`, as many as `field` has, in little-endian order.
    Record& put(Field field, std::uint64_t value) {
        for (std::size_t index = 0; index < field.size; ++index, value >>= 8)
            bytes.at(field.offset + index) = static_cast<char>(static_cast<std::uint8_t>(value));
        return *this;
    }

    Record& putSigned(Field field, std::int32_t value) {
        return put(field, static_cast<std::uint32_t>(value));
    }

    template <std::size_t count>
    Record& putBytes(Field field, const std::array<std::uint8_t, count>& values) {
        for (std::size_t index = 0; index < count; ++index)
            put({field.offset + index, 1}, values[index]);
        return *this;
    }

    /// The bytes; the record is empty afterwards.
    [[nodiscard]] std::string take() { return std::exchange(bytes, {}); }

  private:
    std::string bytes;
};

}  // namespace orx::orxdef
