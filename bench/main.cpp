// orx_bench [--quick] [--json] [--only PATTERN]
// orx_bench --growth FOLDER
//
// Measures the daemon beside its limits and prints one table. Ends with 1 where a row is not within
// its bound.
#include <algorithm>
#include <exception>
#include <iostream>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "harness/Run.h"
#include "rows/Growth.h"

namespace orx::bench {
namespace {

struct Options {
    bool quick = false;
    bool json = false;
    std::string only = ".";
    std::string plots{};
};

/// Prints each row once it is measured, as the whole takes minutes.
std::vector<Row> measureAll(const Setup& setup, const Options& options) {
    std::vector<Row> rows;
    const Run run{setup, options.quick, [&](const Row& row) {
                      rows.push_back(row);
                      if (!options.json) std::cout << tableLine(row) << std::endl;
                  }};
    const std::regex wanted(options.only);
    if (!options.json) std::cout << tableTitles() << std::endl;
    for (const auto& measurement : measurements()) {
        if (std::regex_search(measurement.name, wanted)) measurement.measure(run);
    }
    if (rows.empty()) throw std::runtime_error("nothing is called " + options.only);
    return rows;
}

/// Gives whether all rows are within their bounds.
bool bench(const Options& options) {
    const Setup setup;
    if (!options.plots.empty()) {
        writeGrowth(setup, options.plots);
        return true;
    }
    const auto rows = measureAll(setup, options);
    const auto held = std::ranges::count_if(rows, &Row::holds);
    const auto missed = static_cast<std::ptrdiff_t>(rows.size()) - held;
    if (options.json) {
        std::cout << toJson(rows) << "\n";
    } else {
        std::cout << held << " passed, " << missed << " failed\n";
    }
    return missed == 0;
}

int run(int argc, char** argv) {
    Options options;
    CLI::App app("Measures the daemon beside the least that could do its work.");
    app.add_flag("--quick", options.quick, "A tenth of the samples, held against twice the bounds");
    app.add_flag("--json", options.json, "The table for machines");
    app.add_option("--only", options.only, "Only the measurements whose names match")
        ->option_text("PATTERN");
    app.add_option("--growth", options.plots, "Only how cost grows, as data into this folder")
        ->option_text("FOLDER");
    CLI11_PARSE(app, argc, argv);
    return bench(options) ? 0 : 1;
}

}  // namespace
}  // namespace orx::bench

int main(int argc, char** argv) {
    try {
        return orx::bench::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "orx_bench: " << error.what() << "\n";
        return 2;
    }
}
