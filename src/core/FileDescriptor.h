// The owner of one file descriptor: a socket, a serial line or a file. Move-only; closes what it
// holds when it goes.
#pragma once

#include <unistd.h>
#include <utility>

namespace orx {

class FileDescriptor {
  public:
    static constexpr int none = -1;

    FileDescriptor() = default;
    /// Takes over `descriptor`, or nothing where it is -1, as a failed system call returns it.
    explicit FileDescriptor(int descriptor) noexcept : number(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, none)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] int get() const noexcept { return number; }
    [[nodiscard]] bool isOpen() const noexcept { return number != none; }

    /// Closes the descriptor at once; nothing happens where none is held.
    void close() noexcept {
        if (isOpen()) ::close(std::exchange(number, none));
    }

  private:
    int number = none;
};

}  // namespace orx
