// four_threads PORT
//
// What a C++ program with four threads and a socket takes of a machine: one thread waits for
// another, which waits to be woken, one sleeps, and one answers datagrams.
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unistd.h>

#include "limits/Floor.h"

int main(int, char* argv[]) {
    const int socket = orx::bench::boundSocket(argv[1]);
    std::thread([socket] {
        orx::bench::printLine("ready");
        for (;;)
            orx::bench::echo(socket);
    }).detach();
    std::thread([] {
        for (;;)
            ::pause();
    }).detach();
    std::thread([] {
        std::mutex mutex;
        std::condition_variable never;
        std::unique_lock lock(mutex);
        for (;;)
            never.wait(lock);
    }).join();
}
