#include <type_traits>

#include <gtest/gtest.h>

#include "core/CopyableAtomic.h"

namespace orx::test {
namespace {

static_assert(!std::is_copy_assignable_v<CopyableAtomic<int>>);

TEST(CopyableAtomic, HoldsItsInitialValueUntilAnotherIsStored) {
    CopyableAtomic<int> value = 5;
    EXPECT_EQ(value.load(), 5);
    value.store(-7);
    EXPECT_EQ(value.load(), -7);
}

TEST(CopyableAtomic, IsCopiedByValue) {
    CopyableAtomic<int> original = 5;
    const auto copy = original;  // NOLINT(performance-unnecessary-copy-initialization)
    original.store(6);
    EXPECT_EQ(copy.load(), 5);
    EXPECT_EQ(original.load(), 6);
}

}  // namespace
}  // namespace orx::test
