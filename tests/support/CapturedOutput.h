// What a piece of code writes to standard output, descriptor and all.
#pragma once

#include <string>

#include <gtest/gtest.h>

namespace orx::test {

/// Runs `action` and gives what it wrote to standard output.
template <typename Action>
std::string outputOf(Action action) {
    testing::internal::CaptureStdout();
    try {
        action();
    } catch (...) {
        testing::internal::GetCapturedStdout();
        throw;
    }
    return testing::internal::GetCapturedStdout();
}

}  // namespace orx::test
