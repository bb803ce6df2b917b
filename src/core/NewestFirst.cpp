#include "core/NewestFirst.h"

#include <algorithm>

namespace orx {

void NewestFirst::add(std::string_view head, std::string_view tail) {
    const auto size = head.size() + tail.size() + 1;
    if (begin < size) makeRoom(size);
    begin -= size;
    length += size;
    head.copy(room.data() + begin, head.size());
    tail.copy(room.data() + begin + head.size(), tail.size());
    room[begin + size - 1] = '\n';
    lineSizes.push_front(size);
    if (lineSizes.size() <= maxLines) return;
    length -= lineSizes.back();
    lineSizes.pop_back();
}

/// Moves the text to the end of a room in which there are some lines' worth ahead of it.
void NewestFirst::makeRoom(std::size_t size) {
    constexpr std::size_t severalLines = 4096;
    const auto wanted = length + size + severalLines;
    if (room.size() < wanted) room.resize(2 * wanted);
    const auto end = room.size();
    std::copy_backward(room.begin() + static_cast<std::ptrdiff_t>(begin),
                       room.begin() + static_cast<std::ptrdiff_t>(begin + length), room.end());
    begin = end - length;
}

void NewestFirst::clear() noexcept {
    lineSizes.clear();
    begin += length;
    length = 0;
}

}  // namespace orx
