#include "core/NewestFirst.h"

#include <algorithm>
#include <utility>

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
    const auto wanted = std::max(room.size(), length + size + severalLines);
    std::string larger(wanted, '\0');
    text().copy(larger.data() + (wanted - length), length);
    room = std::move(larger);
    begin = wanted - length;
}

void NewestFirst::clear() noexcept {
    lineSizes.clear();
    begin += length;
    length = 0;
}

}  // namespace orx
