// The names under which the system's functions are linked. On 32-bit machines the headers give some
// of them another one, so that offsets and seconds have 64 bits.
#pragma once

#include <array>
#include <features.h>
#include <string_view>

namespace orx::test {

struct LinkName {
    const char* called;
    const char* linked;
};

inline constexpr std::array linkNames{
    LinkName{"open", "open64"},
    LinkName{"lseek", "lseek64"},
    LinkName{"ftruncate", "ftruncate64"},
    LinkName{"fstat", "__fstat64_time64"},
    LinkName{"lstat", "__lstat64_time64"},
    LinkName{"nanosleep", "__nanosleep64"},
    LinkName{"gettimeofday", "__gettimeofday64"},
    LinkName{"clock_gettime", "__clock_gettime64"},
};

#if defined(__USE_TIME_BITS64) && __WORDSIZE == 32
inline constexpr bool linksUnderOtherNames = true;
#else
inline constexpr bool linksUnderOtherNames = false;
#endif

inline const char* linkName(const char* name) noexcept {
    if (linksUnderOtherNames) {
        for (const auto& [called, linked] : linkNames) {
            if (std::string_view(name) == called) return linked;
        }
    }
    return name;
}

}  // namespace orx::test
