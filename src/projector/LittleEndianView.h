// Reads little-endian fields from bytes. What lies beyond the end reads as zero, so that a file
// that is cut short or lies about its counts can lead nobody outside of its buffer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "projector/DefinitionFormat.h"

namespace orx {

class LittleEndianView {
  public:
    /// `bytes` must outlive the view.
    explicit LittleEndianView(std::string_view bytes) noexcept : data(bytes) {}

    /// The unsigned value of the field in the record that begins at `record`.
    [[nodiscard]] std::uint32_t number(std::size_t record,
                                       definition_format::Field field) const noexcept;

    /// The same as an int; four bytes are taken as signed, as the format's signed fields are.
    [[nodiscard]] int integer(std::size_t record, definition_format::Field field) const noexcept;

    /// `size` bytes from `offset` on.
    [[nodiscard]] std::string text(std::size_t offset, std::size_t size) const;

  private:
    std::string_view data;
};

}  // namespace orx
