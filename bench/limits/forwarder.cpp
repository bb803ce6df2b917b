// forwarder PORT LINE
//
// The least that brings a datagram to the serial line: receive it, write it.
#include <array>

#include "limits/Floor.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    const int line = orx::bench::openLine(argv[2]);
    orx::bench::printLine("ready");
    std::array<char, 2048> buffer;
    for (;;) {
        const auto size = orx::bench::receive(socket, buffer);
        orx::bench::writeOnce(line, {buffer.data(), size});
    }
}
