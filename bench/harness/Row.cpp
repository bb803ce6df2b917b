#include "harness/Row.h"

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

namespace orx::bench {
namespace {

/// Three digits that count, and never fewer than the whole number.
std::string number(double value) {
    const int decimals = value >= 100 ? 0 : value >= 10 ? 1 : 2;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string numberOrNone(std::optional<double> value) {
    return value ? number(*value) : "";
}

std::string line(const std::string& measure, const std::array<std::string, 7>& fields) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), "%-43s%5s%8s%7s%8s%7s%7s %-8s", measure.c_str(),
                  fields[0].c_str(), fields[1].c_str(), fields[2].c_str(), fields[3].c_str(),
                  fields[4].c_str(), fields[5].c_str(), fields[6].c_str());
    return text.data();
}

nlohmann::json json(const std::optional<Figures>& figures) {
    if (!figures) return nullptr;
    nlohmann::json object{{"median", figures->median}};
    if (figures->p99) object["p99"] = *figures->p99;
    return object;
}

nlohmann::json json(const Row& row) {
    nlohmann::json object{{"measure", row.measure}, {"unit", row.unit},
                          {"orx", json(row.ours)},  {"limit", json(row.limit)},
                          {"judged", row.judged},   {"holds", row.holds()}};
    if (row.bound.kind == Bound::Kind::atMost) object["at_most"] = row.bound.value;
    if (row.bound.kind == Bound::Kind::atLeast) object["at_least"] = row.bound.value;
    return object;
}

}  // namespace

Figures figuresOf(const Samples& samples) {
    return {samples.median(), samples.areMany() ? std::optional(samples.p99()) : std::nullopt};
}

Bound Bound::loosened(double slack) const {
    if (exact) return *this;
    return {kind, kind == Kind::atLeast ? value / slack : value * slack};
}

bool Bound::holds(double judged) const {
    switch (kind) {
        case Kind::atMost:
            return judged <= value;
        case Kind::atLeast:
            return judged >= value;
        case Kind::none:
            break;
    }
    return true;
}

std::string Bound::text() const {
    if (kind == Kind::none) return "";
    return (kind == Kind::atMost ? "<= " : ">= ") + number(value);
}

Row medianRow(std::string measure, std::string unit, const Pair& pair, Bound bound) {
    return {std::move(measure),
            std::move(unit),
            figuresOf(pair.ours),
            figuresOf(pair.limit),
            pair.ours.median() / pair.limit.median(),
            bound};
}

Row p99Row(std::string measure, std::string unit, const Pair& pair, Bound bound) {
    auto row = medianRow(std::move(measure), std::move(unit), pair, bound);
    row.judged = pair.ours.p99() / pair.limit.p99();
    return row;
}

Row ratioRow(std::string measure, std::string unit, double ours, double limit, Bound bound) {
    return {std::move(measure), std::move(unit), Figures{ours},
            Figures{limit},     ours / limit,    bound};
}

Row figureRow(std::string measure, std::string unit, double figure, Bound bound) {
    return {std::move(measure), std::move(unit), Figures{figure}, std::nullopt, figure, bound};
}

std::string tableTitles() {
    return line("", {"", "orx", "p99", "limit", "p99", "ratio", "wanted"});
}

std::string tableLine(const Row& row) {
    const auto median = [](const auto& side) { return side ? number(side->median) : ""; };
    const auto p99 = [](const auto& side) { return side ? numberOrNone(side->p99) : ""; };
    return line(row.measure,
                {row.unit, median(row.ours), p99(row.ours), median(row.limit), p99(row.limit),
                 row.limit ? number(row.judged) : "", row.bound.text()}) +
           (row.holds() ? "" : " MISSED");
}

std::string toJson(const std::vector<Row>& rows) {
    auto list = nlohmann::json::array();
    for (const auto& row : rows)
        list.push_back(json(row));
    constexpr int indent = 2;
    return list.dump(indent);
}

}  // namespace orx::bench
