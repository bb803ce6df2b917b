// Functions measured inside of this program, by Google Benchmark.
#pragma once

#include <map>
#include <string>

#include "harness/Samples.h"

namespace orx::bench {

/// The nanoseconds of a call, by the name of the benchmark.
using FunctionTimes = std::map<std::string, Samples>;

/// Runs the benchmarks whose names match the regular expression, repeatedly and in random order, so
/// that what is compared is measured in turns. Standard output is nobody's meanwhile. Throws where
/// no name matches.
[[nodiscard]] FunctionTimes timeFunctions(const std::string& pattern, bool quick);

}  // namespace orx::bench
