// The board between a test and the fault shim in a process that the test has started: one file that
// both have mapped. The test writes what is to go wrong; the shim looks at every call and notes
// what it has seen. A killed process leaves its notes behind.
//
// A plan is never changed once it is in force: a new one is written to the next place and then
// becomes the current one, so that no thread of the process ever reads half of a plan.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orx::test {

/// A text of a fixed place; what does not fit is cut off.
template <std::size_t capacity>
class FixedText {
  public:
    void set(std::string_view text) noexcept {
        size = std::min(text.size(), capacity);
        std::copy_n(text.begin(), size, bytes.begin());
    }
    [[nodiscard]] std::string_view view() const noexcept { return {bytes.data(), size}; }

  private:
    std::size_t size = 0;
    std::array<char, capacity> bytes{};
};

using CallName = FixedText<24>;
using PlaceName = FixedText<232>;

/// What becomes of a call that a plan means.
enum class Deed : std::uint32_t {
    pass,     ///< it is only noted
    fail,     ///< it reports an error
    shorten,  ///< a write takes half of the bytes
    kill,     ///< the process is killed before it
};

/// Means the calls of one name at one place, by their number since the plan is in force.
struct FaultPlan {
    CallName call;    ///< empty: every call
    PlaceName place;  ///< a part of the path, of the device or of "socket:[N]"; empty: everywhere
    Deed deed = Deed::pass;
    std::int32_t error = 0;     ///< what `Deed::fail` sets as errno
    std::uint32_t first = 1;    ///< the number of the first call that goes wrong
    std::uint32_t times = 1;    ///< how many do in a row
    std::atomic_uint32_t met;   ///< how many calls it has meant so far
    std::atomic_uint32_t done;  ///< how many of them went wrong
};

/// A call that the current plan meant.
struct NotedCall {
    CallName call;
    PlaceName place;
    std::atomic_bool complete;
};

struct FaultBoard {
    static constexpr std::size_t maxPlans = 1024;
    static constexpr std::size_t maxNotes = 16384;

    std::array<FaultPlan, maxPlans> plans;  ///< the first stays empty: nothing goes wrong
    std::atomic_uint32_t current;           ///< which plan is in force
    std::array<NotedCall, maxNotes> notes;
    std::atomic_uint32_t noted;  ///< how many calls were noted, by all plans; more may not fit
    std::atomic_uint32_t calls;  ///< how many calls the process has made, but for its sleeps
    std::atomic_uint32_t sleeps;
    std::atomic_int64_t clockShift;  ///< seconds that the wall clock of the process is ahead
};

/// The variable that names the file of the board to the shim.
inline constexpr const char* faultBoardVariable = "ORX_TEST_FAULTS";

}  // namespace orx::test
