#include "projector/LittleEndianView.h"

#include <algorithm>

namespace orx {

std::uint32_t LittleEndianView::number(std::size_t record,
                                       definition_format::Field field) const noexcept {
    constexpr unsigned bitsPerByte = 8;
    std::uint32_t value = 0;
    for (auto byte = field.size; byte-- > 0;) {
        const auto index = record + field.offset + byte;
        const auto digit = index < data.size() ? static_cast<unsigned char>(data[index]) : 0U;
        value = value << bitsPerByte | digit;
    }
    return value;
}

int LittleEndianView::integer(std::size_t record, definition_format::Field field) const noexcept {
    return static_cast<int>(number(record, field));
}

std::string LittleEndianView::text(std::size_t offset, std::size_t size) const {
    std::string bytes(data.substr(std::min(offset, data.size()), size));
    bytes.resize(size);
    return bytes;
}

}  // namespace orx
