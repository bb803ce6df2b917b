#include "harness/Cores.h"

#include <cstddef>
#include <sched.h>
#include <stdexcept>
#include <vector>

namespace orx::bench {
namespace {

std::vector<int> allowedCores() {
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    ::sched_getaffinity(0, sizeof allowed, &allowed);
    std::vector<int> cores;
    for (std::size_t core = 0; core < CPU_SETSIZE; ++core) {
        if (CPU_ISSET(core, &allowed)) cores.push_back(static_cast<int>(core));
    }
    return cores;
}

bool useScheduling(int policy) {
    const sched_param withoutPriority{};
    return ::sched_setscheduler(0, policy, &withoutPriority) == 0;
}

}  // namespace

Unhurried::Unhurried() {
    if (!useScheduling(SCHED_BATCH)) throw std::runtime_error("cannot change the scheduling");
}

Unhurried::~Unhurried() {
    useScheduling(SCHED_OTHER);
}

std::array<Placement, 2> placements() {
    // Once, as this program pins itself from then on.
    static const auto cores = allowedCores();
    if (cores.size() < 2) throw std::runtime_error("needs two processor cores");
    return {{{"one core", cores[0], cores[0]}, {"two cores", cores[0], cores[1]}}};
}

void stayOn(int core) {
    cpu_set_t only;
    CPU_ZERO(&only);
    CPU_SET(static_cast<std::size_t>(core), &only);
    if (::sched_setaffinity(0, sizeof only, &only) != 0) {
        throw std::runtime_error("cannot stay on processor core " + std::to_string(core));
    }
}

}  // namespace orx::bench
