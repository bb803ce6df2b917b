// How much more memory a daemon may have written to in the end, in kilobytes: stacks and heaps of
// its threads that a backlog has filled for the first time. What grows without end is more than
// that.
#pragma once

namespace orx::test {

inline constexpr long mostGrowth = 250;

}  // namespace orx::test
