// How cost grows with what a daemon is given.
#pragma once

#include <string>

#include "harness/Setup.h"

namespace orx::bench {

/// Measures, and writes one file of data a plot into the folder: lines of a size and the
/// microseconds that it costs. Throws where a file cannot be written.
void writeGrowth(const Setup& setup, const std::string& folder);

}  // namespace orx::bench
