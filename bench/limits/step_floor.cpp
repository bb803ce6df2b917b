// step_floor PORT LINE LOG LOG_BYTES STEPS MILLISECONDS
//
// Answers each datagram with STEPS steps on the line: one log rewrite, one write, one sleep each.
#include <array>
#include <cstddef>
#include <ctime>
#include <string>

#include "limits/Floor.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    const int line = orx::bench::openLine(argv[2]);
    const orx::bench::RewrittenLog log(argv[3], std::stoul(argv[4]), false);
    const int steps = std::stoi(argv[5]);
    constexpr long nsPerMs = 1'000'000;
    const timespec pause{0, std::stol(argv[6]) * nsPerMs};
    orx::bench::printLine("ready");
    std::array<char, 2048> buffer;
    for (;;) {
        orx::bench::receive(socket, buffer);
        for (int step = 0; step < steps; ++step) {
            log.rewrite();
            orx::bench::writeOnce(line, "AZ+\r");
            ::nanosleep(&pause, nullptr);
        }
    }
}
