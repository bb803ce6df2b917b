#include "limits/Floor.h"

#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace orx::bench {
namespace {

/// A limit that has left something out would be no limit.
void require(bool done) {
    if (!done) std::abort();
}

}  // namespace

int boundSocket(const std::string& port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(std::stoi(port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int number = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP);
    require(::bind(number, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
    return number;
}

int openLine(const std::string& path) {
    if (path == "-") return -1;
    const int line = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios attributes{};
    require(::tcgetattr(line, &attributes) == 0);
    ::cfmakeraw(&attributes);
    require(::tcsetattr(line, TCSANOW, &attributes) == 0);
    return line;
}

std::size_t receive(int socket, std::span<char> buffer) {
    const auto size = ::recv(socket, buffer.data(), buffer.size(), 0);
    require(size >= 0);
    return static_cast<std::size_t>(size);
}

void echo(int socket) {
    std::array<char, 2048> buffer;
    sockaddr_in sender;
    socklen_t length = sizeof sender;
    auto* peer = reinterpret_cast<sockaddr*>(&sender);
    const auto size = ::recvfrom(socket, buffer.data(), buffer.size(), 0, peer, &length);
    require(size >= 0);
    ::sendto(socket, buffer.data(), static_cast<std::size_t>(size), 0, peer, length);
}

void printLine(std::string_view line) {
    writeOnce(STDOUT_FILENO, std::string(line).append("\n"));
}

void writeOnce(int descriptor, std::string_view bytes) {
    require(::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
}

RewrittenLog::RewrittenLog(std::string logPath, std::size_t size, bool truncating)
    : path(std::move(logPath)),
      content(size, '.'),
      flags(O_WRONLY | O_CREAT | O_CLOEXEC | (truncating ? O_TRUNC : 0)) {}

void RewrittenLog::rewrite() const {
    constexpr mode_t readableByAll = 0666;
    const int file = ::open(path.c_str(), flags, readableByAll);
    require(file >= 0);
    writeOnce(file, content);
    ::close(file);
}

}  // namespace orx::bench
