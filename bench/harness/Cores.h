// Which processor cores measure and are measured. Left to itself, the system moves programs about,
// and the same measurement gives five times as much from one run to the next.
#pragma once

#include <array>
#include <string>

namespace orx::bench {

/// Where the client, which is this program, and the server have to stay.
struct Placement {
    const char* name;
    int client;
    int server;
};

/// Client and server on one core, and on two. Throws on a machine that gives this program one
/// alone.
[[nodiscard]] std::array<Placement, 2> placements();

/// Keeps the calling thread, and what it starts from now on, on `core`.
void stayOn(int core);

}  // namespace orx::bench
