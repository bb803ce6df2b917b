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

/// As long as this lives, the calling thread and what it starts run until they wait: being woken is
/// no reason to take the core from another. Else each answer may stop the server that has more of
/// them to give; how often is up to the system, and makes half of the rate.
class Unhurried {
  public:
    Unhurried();
    Unhurried(const Unhurried&) = delete;
    Unhurried& operator=(const Unhurried&) = delete;
    ~Unhurried();
};

}  // namespace orx::bench
