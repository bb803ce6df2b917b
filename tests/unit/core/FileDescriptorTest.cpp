#include <fcntl.h>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "core/FileDescriptor.h"

namespace orx::test {
namespace {

static_assert(!std::is_copy_constructible_v<FileDescriptor>);
static_assert(!std::is_copy_assignable_v<FileDescriptor>);
static_assert(std::is_nothrow_move_constructible_v<FileDescriptor>);
static_assert(std::is_nothrow_move_assignable_v<FileDescriptor>);

int newDescriptor() {
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool isOpenInTheSystem(int descriptor) {
    return ::fcntl(descriptor, F_GETFD) != -1;
}

TEST(FileDescriptor, HoldsNothingAtFirst) {
    const FileDescriptor descriptor;
    EXPECT_FALSE(descriptor.isOpen());
    EXPECT_EQ(descriptor.get(), -1);
}

TEST(FileDescriptor, HoldsNothingOfAFailedCall) {
    FileDescriptor descriptor(-1);
    EXPECT_FALSE(descriptor.isOpen());
    descriptor.close();
    EXPECT_EQ(descriptor.get(), -1);
}

TEST(FileDescriptor, ClosesWhatItHoldsWhenItGoes) {
    const int number = newDescriptor();
    {
        const FileDescriptor descriptor(number);
        EXPECT_TRUE(descriptor.isOpen());
        EXPECT_EQ(descriptor.get(), number);
        EXPECT_TRUE(isOpenInTheSystem(number));
    }
    EXPECT_FALSE(isOpenInTheSystem(number));
}

TEST(FileDescriptor, HoldsTheLowestDescriptorToo) {
    const FileDescriptor input(::dup(STDIN_FILENO));
    ASSERT_EQ(::dup2(FileDescriptor(newDescriptor()).get(), 0), 0);
    FileDescriptor lowest(0);
    EXPECT_TRUE(lowest.isOpen());
    lowest.close();
    EXPECT_FALSE(isOpenInTheSystem(0));
    ::dup2(input.get(), STDIN_FILENO);
}

TEST(FileDescriptor, ClosesOnceOnly) {
    FileDescriptor descriptor(newDescriptor());
    const int number = descriptor.get();
    descriptor.close();
    EXPECT_FALSE(descriptor.isOpen());
    EXPECT_FALSE(isOpenInTheSystem(number));
    const FileDescriptor other(newDescriptor());  // takes the number that has become free
    ASSERT_EQ(other.get(), number);
    descriptor.close();
    EXPECT_TRUE(isOpenInTheSystem(number));
}

TEST(FileDescriptor, HandsOverWhatItHolds) {
    FileDescriptor first(newDescriptor());
    const int number = first.get();
    const FileDescriptor second(std::move(first));
    EXPECT_EQ(second.get(), number);
    EXPECT_FALSE(first.isOpen());  // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(isOpenInTheSystem(number));
}

TEST(FileDescriptor, ClosesWhatItHeldWhenItTakesOverANewOne) {
    FileDescriptor descriptor(newDescriptor());
    const int former = descriptor.get();
    const int latter = newDescriptor();
    descriptor = FileDescriptor(latter);
    EXPECT_EQ(descriptor.get(), latter);
    EXPECT_FALSE(isOpenInTheSystem(former));
    EXPECT_TRUE(isOpenInTheSystem(latter));
}

TEST(FileDescriptor, ClosesWhatItHeldWhenItTakesOverNone) {
    FileDescriptor descriptor(newDescriptor());
    const int former = descriptor.get();
    descriptor = FileDescriptor();
    EXPECT_FALSE(descriptor.isOpen());
    EXPECT_FALSE(isOpenInTheSystem(former));
}

}  // namespace
}  // namespace orx::test
