// What every measurement is given, and where its rows go.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "harness/Row.h"
#include "harness/Setup.h"

namespace orx::bench {

struct Run {
    const Setup& setup;
    bool quick;                              ///< fewer samples, twice the bounds
    std::function<void(const Row&)> report;  ///< takes each row once it is measured

    /// So many samples, or some of them where it has to be quick.
    [[nodiscard]] int samples(int count) const { return quick ? count / 10 : count; }

    void add(Row row) const {
        if (quick) row.bound = row.bound.loosened(2);
        report(row);
    }
};

/// A group of rows that are measured together.
struct Measurement {
    const char* name;
    void (*measure)(const Run& run);
};

/// All of them, in the order of the table.
[[nodiscard]] const std::vector<Measurement>& measurements();

}  // namespace orx::bench
