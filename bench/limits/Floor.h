// What the limit programs are made of: the system calls that no daemon can avoid, one function
// each, with nothing around them. Each ends the process where the system refuses.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orx::bench {

/// A UDP socket on 127.0.0.1.
[[nodiscard]] int boundSocket(const std::string& port);

/// The serial line, raw, as the daemon sets it up. None for a path that is "-".
[[nodiscard]] int openLine(const std::string& path);

/// Blocks until a datagram is there; gives its size.
std::size_t receive(int socket, std::span<char> buffer);

/// Blocks for a datagram and sends it back.
void echo(int socket);

/// One line on standard output, in one write.
void printLine(std::string_view line);

/// One `write` of all of `bytes`.
void writeOnce(int descriptor, std::string_view bytes);

/// A file that is written anew with each message.
class RewrittenLog {
  public:
    /// `size` bytes make up the content. `truncating` empties the file ahead of it.
    RewrittenLog(std::string path, std::size_t size, bool truncating);

    void rewrite() const;

  private:
    std::string path;
    std::string content;
    int flags;
};

}  // namespace orx::bench
