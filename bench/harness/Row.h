// One row of the table: what was measured, of the daemon and of its limit, and what is wanted.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "harness/Samples.h"

namespace orx::bench {

/// The figures of one side.
struct Figures {
    double median = 0;
    std::optional<double> p99{};
};

[[nodiscard]] Figures figuresOf(const Samples& samples);

/// What the judged figure of a row is to be.
struct Bound {
    enum class Kind { none, atMost, atLeast };

    Kind kind = Kind::none;
    double value = 0;
    bool exact = false;  ///< a count, of which there is nothing to be generous with

    /// The same, `slack` times as generous.
    [[nodiscard]] Bound loosened(double slack) const;
    [[nodiscard]] bool holds(double judged) const;
    [[nodiscard]] std::string text() const;
};

[[nodiscard]] inline Bound atMost(double value) {
    return {Bound::Kind::atMost, value};
}
[[nodiscard]] inline Bound atLeast(double value) {
    return {Bound::Kind::atLeast, value};
}

struct Row {
    std::string measure;
    std::string unit;
    std::optional<Figures> ours{};
    std::optional<Figures> limit{};
    double judged = 0;  ///< the ratio, or the figure itself where there is no limit
    Bound bound{};

    [[nodiscard]] bool holds() const { return bound.holds(judged); }
};

/// The ratio of the medians, judged by `bound`.
[[nodiscard]] Row medianRow(std::string measure, std::string unit, const Pair& pair, Bound bound);

/// The same figures, the ratio being that of the 99th percentiles.
[[nodiscard]] Row p99Row(std::string measure, std::string unit, const Pair& pair, Bound bound);

/// One figure of each side.
[[nodiscard]] Row ratioRow(std::string measure, std::string unit, double ours, double limit,
                           Bound bound);

/// One figure of the daemon, held against a bound of its own.
[[nodiscard]] Row figureRow(std::string measure, std::string unit, double figure, Bound bound);

/// The table, for people: a line a row under a line of titles.
[[nodiscard]] std::string tableTitles();
[[nodiscard]] std::string tableLine(const Row& row);

/// The table, for machines.
[[nodiscard]] std::string toJson(const std::vector<Row>& rows);

}  // namespace orx::bench
