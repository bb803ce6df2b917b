// The bytes of one input, taken from the front as numbers and texts. Where the bytes have ended all
// numbers are zero and all texts empty, so that every input is a whole one.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace orx::fuzz {

class InputBytes {
  public:
    InputBytes(const std::uint8_t* data, std::size_t size)
        : bytes(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool isEmpty() const noexcept { return bytes.empty(); }

    [[nodiscard]] int byte() {
        if (bytes.empty()) return 0;
        const auto value = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        return value;
    }

    /// Four bytes, the lowest first.
    [[nodiscard]] std::int32_t integer() {
        std::uint32_t value = 0;
        for (unsigned shift = 0; shift < 32; shift += 8)
            value |= static_cast<std::uint32_t>(byte()) << shift;
        return static_cast<std::int32_t>(value);
    }

    /// The length in one byte, then the text, which ends with the input at the latest.
    [[nodiscard]] std::string text() { return take(static_cast<std::size_t>(byte())); }

    /// Up to the next line feed, which is taken too, or to the end.
    [[nodiscard]] std::string line() {
        auto text = take(std::min(bytes.find('\n'), bytes.size()));
        if (!bytes.empty()) bytes.remove_prefix(1);
        return text;
    }

    [[nodiscard]] std::string rest() { return take(bytes.size()); }

    template <typename Value, std::size_t count>
    [[nodiscard]] const Value& oneOf(const std::array<Value, count>& values) {
        return values[static_cast<std::size_t>(byte()) % count];
    }

  private:
    std::string take(std::size_t size) {
        std::string taken(bytes.substr(0, size));
        bytes.remove_prefix(taken.size());
        return taken;
    }

    std::string_view bytes;
};

}  // namespace orx::fuzz
