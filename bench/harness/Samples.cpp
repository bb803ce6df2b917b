#include "harness/Samples.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace orx::bench {

Samples Samples::operator/(double divisor) const {
    auto scaled = *this;
    for (auto& sample : scaled.samples)
        sample /= divisor;
    return scaled;
}

double Samples::quantile(double share) const {
    if (samples.empty()) throw std::logic_error("nothing was measured");
    auto sorted = samples;
    const auto rank = static_cast<std::ptrdiff_t>(share * static_cast<double>(sorted.size() - 1));
    std::nth_element(sorted.begin(), sorted.begin() + rank, sorted.end());
    return sorted[static_cast<std::size_t>(rank)];
}

}  // namespace orx::bench
