// Where arguments go in the command string.
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "projector/ArgumentInsertion.h"

namespace orx::test {
namespace {

ArgumentDescriptor at(int pos) {
    return {.min = 0, .max = 9, .pos = pos, .len = 1, .type = 'A'};
}

/// Inserts the digits 1, 2 ... at the places.
std::string insertAt(std::string_view base, std::initializer_list<int> places) {
    ArgumentInsertion insertion(base);
    int digit = 0;
    for (const int place : places)
        insertion.insert(std::to_string(++digit), at(place));
    return insertion.finish();
}

TEST(ArgumentPlace, IsAheadOfTheCharacterAtItsIndex) {
    EXPECT_EQ(insertAt("ABC", {0}), "1ABC");
    EXPECT_EQ(insertAt("ABC", {1}), "A1BC");
    EXPECT_EQ(insertAt("ABC", {3}), "ABC1");
}

TEST(ArgumentPlace, LeavesACommandStringWithoutArgumentsAlone) {
    EXPECT_EQ(insertAt("ABC", {}), "ABC");
    EXPECT_EQ(insertAt("", {}), "");
}

TEST(ArgumentPlace, CountsEveryByte) {
    const std::string base("\0\xFF\r\0", 4);
    EXPECT_EQ(insertAt(base, {2}), std::string("\0\xFF", 2) + "1" + std::string("\r\0", 2));
}

TEST(ArgumentPlace, OfTwoArgumentsMayBeTheSame) {
    EXPECT_EQ(insertAt("ABC", {1, 1}), "A12BC");
    EXPECT_EQ(insertAt("", {0, 0}), "12");
}

TEST(ArgumentPlace, FollowsTheOneBefore) {
    EXPECT_EQ(insertAt("ABCDEF", {1, 3, 6}), "A1BC2DEF3");
}

TEST(ArgumentPlace, AheadOfTheOneBeforeRepeatsTheRest) {
    EXPECT_EQ(insertAt("ABCDEF", {4, 2}), "ABCD1EF2CDEF");
    EXPECT_EQ(insertAt("ABCDEF", {6, 0}), "ABCDEF12ABCDEF");
    EXPECT_EQ(insertAt("ABCDEF", {3, 2, 4}), "ABC1DEF2CD3EF");
}

TEST(ArgumentPlace, BeyondTheEndIsRefusedWhenTheRestIsTaken) {
    ArgumentInsertion insertion("ABC");
    insertion.insert("1", at(4));
    EXPECT_THROW(static_cast<void>(insertion.finish()), std::out_of_range);
    EXPECT_THROW(insertAt("", {255}), std::out_of_range);
}

TEST(ArgumentPlace, BeyondTheEndIsRefusedByTheNextArgument) {
    ArgumentInsertion insertion("ABC");
    insertion.insert("1", at(4));
    EXPECT_THROW(insertion.insert("2", at(4)), std::out_of_range);
    EXPECT_THROW(insertion.insert("2", at(0)), std::out_of_range);
}

}  // namespace
}  // namespace orx::test
