// udp_echo PORT
//
// The least that can answer a datagram: receive it, send it back.
#include "limits/Floor.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    orx::bench::printLine("ready");
    for (;;)
        orx::bench::echo(socket);
}
