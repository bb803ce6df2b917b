// full_floor PORT LINE LOG LOG_BYTES keep|truncate
//
// Everything that can be seen of a command's way to the line, and nothing else: receive, one log
// rewrite, one console line, hand-off, one console line, one log rewrite, write.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>

#include "limits/Floor.h"
#include "limits/HandOff.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    const int line = orx::bench::openLine(argv[2]);
    const orx::bench::RewrittenLog log(argv[3], std::stoul(argv[4]),
                                       std::string_view(argv[5]) == "truncate");
    orx::bench::HandOff handOff;
    const std::jthread writer([&] {
        for (;;) {
            const auto datagram = handOff.take();
            orx::bench::printLine("[CMDQ] executing cmd: ON (rcvd from ctrlchan)");
            log.rewrite();
            orx::bench::writeOnce(line, datagram);
        }
    });
    orx::bench::printLine("ready");
    std::array<char, 2048> buffer;
    for (;;) {
        const auto size = orx::bench::receive(socket, buffer);
        log.rewrite();
        orx::bench::printLine("src=127.0.0.1 cmd=ON");
        handOff.give({buffer.data(), size});
    }
}
