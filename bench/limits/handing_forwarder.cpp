// handing_forwarder PORT LINE
//
// A forwarder whose second thread writes what the first has received.
#include <array>
#include <thread>

#include "limits/Floor.h"
#include "limits/HandOff.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    const int line = orx::bench::openLine(argv[2]);
    orx::bench::HandOff handOff;
    const std::jthread writer([&] {
        for (;;)
            orx::bench::writeOnce(line, handOff.take());
    });
    orx::bench::printLine("ready");
    std::array<char, 2048> buffer;
    for (;;)
        handOff.give({buffer.data(), orx::bench::receive(socket, buffer)});
}
