// A fault that happens by chance, the same way in every run from the same seed.
//
// Each fault draws from a generator of its own: how often one fault is asked for never moves
// another. Numbers are reduced by modulo, as the distributions of the standard library differ from
// one library to the next.
#pragma once

#include <cstdint>
#include <random>

namespace orx::orxsim {

/// `count` times in `of`; `of` is at least 1.
struct Ratio {
    std::uint32_t count = 0;
    std::uint32_t of = 1;
};

class Chance {
  public:
    /// `fault` tells the faults of one run apart.
    Chance(Ratio wanted, std::uint64_t seed, std::uint64_t fault);

    /// Draws once: whether the fault happens this time.
    [[nodiscard]] bool happens() { return draw(ratio.of) < ratio.count; }

    /// A number below `limit`, which is at least 1.
    [[nodiscard]] std::uint64_t draw(std::uint64_t limit) { return generator() % limit; }

  private:
    Ratio ratio;
    std::mt19937_64 generator;
};

}  // namespace orx::orxsim
