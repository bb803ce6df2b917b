#include "orxsim/Chance.h"

namespace orx::orxsim {
namespace {

/// Far apart, so that the faults of one seed are not those of the next.
constexpr std::uint64_t betweenFaults = 0x9E3779B97F4A7C15;

}  // namespace

Chance::Chance(Ratio wanted, std::uint64_t seed, std::uint64_t fault)
    : ratio(wanted), generator(seed + fault * betweenFaults) {}

}  // namespace orx::orxsim
