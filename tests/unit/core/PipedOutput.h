// Standard output as a service manager has it: a pipe that someone else reads.
#pragma once

#include <cstdio>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

#include "core/FileDescriptor.h"

namespace orx::test {

/// Makes a descriptor the standard output for as long as it lives.
class StandardOutputTo {
  public:
    explicit StandardOutputTo(int descriptor) : saved(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        ::dup2(descriptor, STDOUT_FILENO);
    }
    StandardOutputTo(const StandardOutputTo&) = delete;
    StandardOutputTo& operator=(const StandardOutputTo&) = delete;
    ~StandardOutputTo() { ::dup2(saved.get(), STDOUT_FILENO); }

  private:
    FileDescriptor saved;
};

struct Pipe {
    explicit Pipe(int flags = 0) {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC | flags) != 0) return;
        output = FileDescriptor(ends[0]);
        input = FileDescriptor(ends[1]);
    }

    /// What waits in the pipe, in bytes.
    [[nodiscard]] std::size_t fill() const {
        int bytes = 0;
        ::ioctl(output.get(), FIONREAD, &bytes);
        return static_cast<std::size_t>(bytes);
    }

    /// What waits in the pipe.
    [[nodiscard]] std::string read() const {
        std::string bytes(fill(), '\0');
        const auto count = ::read(output.get(), bytes.data(), bytes.size());
        bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return bytes;
    }

    /// Everything up to the moment that nobody can write to the pipe any more.
    [[nodiscard]] std::string readToTheEnd() const {
        std::string all;
        std::string bytes(4096, '\0');
        for (;;) {
            const auto count = ::read(output.get(), bytes.data(), bytes.size());
            if (count <= 0) return all;
            all.append(bytes, 0, static_cast<std::size_t>(count));
        }
    }

    FileDescriptor output;  ///< where the bytes come out
    FileDescriptor input;   ///< where they go in
};

}  // namespace orx::test
