#include "core/InputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace orx {
namespace {

/// A signal is no reason to give up.
ssize_t readSome(int descriptor, char* place, std::size_t size) {
    ssize_t received = 0;
    do {
        received = ::read(descriptor, place, size);
    } while (received == -1 && errno == EINTR);
    return received;
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}

std::string InputFile::read(std::size_t size) {
    std::string bytes(size, '\0');
    std::size_t filled = 0;
    ssize_t received = 0;
    while (filled < size &&
           (received = readSome(descriptor.get(), bytes.data() + filled, size - filled)) > 0) {
        filled += static_cast<std::size_t>(received);
    }
    if (received == -1) cutOff = true;
    bytes.resize(filled);
    return bytes;
}

std::string InputFile::readAll() {
    constexpr std::size_t pieceSize = 4096;
    std::string bytes;
    for (auto piece = read(pieceSize); !piece.empty(); piece = read(pieceSize))
        bytes += piece;
    return bytes;
}

void InputFile::seek(std::size_t offset) {
    if (::lseek(descriptor.get(), static_cast<off_t>(offset), SEEK_SET) == -1) descriptor.close();
}

}  // namespace orx
