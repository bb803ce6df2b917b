// The newest lines as one text, the newest first.
//
// Lines come in at the front, which costs no more than copying the line: the text moves towards the
// beginning of its room, and back to the end of it once there is no room ahead of it. Not locked.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace orx {

class NewestFirst {
  public:
    /// Keeps so many lines at most.
    explicit NewestFirst(std::size_t count) : maxLines(count) {}

    /// Puts a line of `head` and `tail` and a line feed ahead of the others; the oldest goes where
    /// there are too many.
    void add(std::string_view head, std::string_view tail);

    void clear() noexcept;

    [[nodiscard]] std::string_view text() const noexcept { return {room.data() + begin, length}; }

  private:
    void makeRoom(std::size_t size);

    std::size_t maxLines;
    std::string room;
    std::size_t begin = 0;   ///< of the text in the room
    std::size_t length = 0;  ///< of the text
    std::deque<std::size_t> lineSizes;
};

}  // namespace orx
