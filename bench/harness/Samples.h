// The figures of one thing measured many times over.
#pragma once

#include <vector>

namespace orx::bench {

class Samples {
  public:
    void add(double sample) { samples.push_back(sample); }

    /// The same in a unit `divisor` times as large.
    [[nodiscard]] Samples operator/(double divisor) const;

    /// The sample that as many are above as below. Throws where there is none.
    [[nodiscard]] double median() const { return quantile(0.5); }

    /// The sample that one in a hundred exceeds. Throws where there is none.
    [[nodiscard]] double p99() const { return quantile(0.99); }

    /// Whether there are so many that one in a hundred says something.
    [[nodiscard]] bool areMany() const noexcept { return samples.size() >= 100; }

  private:
    [[nodiscard]] double quantile(double share) const;

    std::vector<double> samples;
};

/// The same thing measured of the daemon and, in turns with it, of its limit.
struct Pair {
    Samples ours;
    Samples limit;
};

}  // namespace orx::bench
