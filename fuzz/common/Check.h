// How a fuzz target says that something does not hold: what it saw goes to standard error and the
// process ends, which the fuzzer takes for a finding and a replayed corpus for a failure.
#pragma once

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/Text.h"

namespace orx::fuzz {

[[noreturn]] inline void fail(std::string_view what) {
    std::cerr << what << '\n';
    std::abort();
}

inline void expect(bool holds, std::string_view what) {
    if (!holds) fail(what);
}

/// `value` for people; bytes that are not printable are escaped.
template <typename Value>
std::string shown(const Value& value) {
    if constexpr (std::is_arithmetic_v<Value>) {
        return std::to_string(value);
    } else {
        return '"' + escapeBytes(value) + '"';
    }
}

/// Both are numbers or texts.
template <typename Value>
void expectEqual(const Value& actual, const std::type_identity_t<Value>& expected,
                 std::string_view what) {
    if (actual == expected) return;
    fail(std::string(what) + "\n  is       " + shown(actual) + "\n  expected " + shown(expected));
}

/// The elements one by one, behind their number.
template <typename List>
void expectEqualLists(const List& actual, const List& expected, std::string_view what) {
    expectEqual(actual.size(), expected.size(), std::string("the size of ").append(what));
    for (std::size_t index = 0; index < actual.size(); ++index)
        expectEqual(actual[index], expected[index], what);
}

}  // namespace orx::fuzz
