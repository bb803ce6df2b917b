// Little-endian fields, also where the bytes end too early.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "projector/LittleEndianView.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using definition_format::Field;

TEST(LittleEndianView, ReadsTheLowestByteFirst) {
    const LittleEndianView view("\x12\x34\x56\x78\x9A");
    EXPECT_EQ(view.number(0, Field{0, 1}), 0x12U);
    EXPECT_EQ(view.number(0, Field{0, 2}), 0x3412U);
    EXPECT_EQ(view.number(0, Field{0, 4}), 0x78563412U);
    EXPECT_EQ(view.number(0, Field{1, 4}), 0x9A785634U);
    EXPECT_EQ(view.number(0, Field{0, 0}), 0U);
}

TEST(LittleEndianView, ReadsFieldsOfARecordAnywhere) {
    const LittleEndianView view("\x01\x02\x03\x04\x05");
    EXPECT_EQ(view.number(1, Field{0, 2}), 0x0302U);
    EXPECT_EQ(view.number(1, Field{2, 2}), 0x0504U);
    EXPECT_EQ(view.number(3, Field{1, 1}), 0x05U);
}

TEST(LittleEndianView, TakesBytesAsUnsigned) {
    const LittleEndianView view("\xFF\xFE\xFD\xFC");
    EXPECT_EQ(view.number(0, Field{0, 1}), 255U);
    EXPECT_EQ(view.integer(0, Field{0, 1}), 255);
    EXPECT_EQ(view.integer(0, Field{0, 2}), 0xFEFF);
    EXPECT_EQ(view.number(0, Field{0, 4}), 0xFCFDFEFFU);
}

TEST(LittleEndianView, TakesFourBytesAsSignedWhereAskedTo) {
    EXPECT_EQ(LittleEndianView("\xFF\xFF\xFF\xFF").integer(0, Field{0, 4}), -1);
    EXPECT_EQ(LittleEndianView("\x78\xEC\xFF\xFF").integer(0, Field{0, 4}), -5000);
    EXPECT_EQ(LittleEndianView("\0\0\0\x80"s).integer(0, Field{0, 4}), -2147483647 - 1);
    EXPECT_EQ(LittleEndianView("\xFF\xFF\xFF\x7F").integer(0, Field{0, 4}), 2147483647);
}

TEST(LittleEndianView, ReadsZeroBeyondTheEnd) {
    const LittleEndianView view("\x11\x22\x33");
    EXPECT_EQ(view.number(0, Field{2, 2}), 0x33U);
    EXPECT_EQ(view.number(0, Field{0, 4}), 0x332211U);
    EXPECT_EQ(view.number(2, Field{0, 4}), 0x33U);
    EXPECT_EQ(view.number(0, Field{3, 4}), 0U);
    EXPECT_EQ(view.number(100'000'000, Field{13, 2}), 0U);
    EXPECT_EQ(view.integer(3, Field{0, 1}), 0);
    EXPECT_EQ(LittleEndianView("").number(0, Field{0, 4}), 0U);
}

TEST(LittleEndianView, ReadsNothingOfTheBytesBehindItsOwn) {
    constexpr std::string_view bytes = "\x11\x22\x33\x44";
    const LittleEndianView view(bytes.substr(0, 2));
    EXPECT_EQ(view.number(0, Field{0, 4}), 0x2211U);
    EXPECT_EQ(view.text(1, 3), "\x22\0\0"s);
}

TEST(LittleEndianView, GivesTextOfAnyBytes) {
    const auto bytes =
        "ab\0\xFF"
        "cd"s;
    const LittleEndianView view(bytes);
    EXPECT_EQ(view.text(0, 6), bytes);
    EXPECT_EQ(view.text(1, 3), "b\0\xFF"s);
    EXPECT_EQ(view.text(2, 0), "");
}

TEST(LittleEndianView, FillsTextWithZerosBeyondTheEnd) {
    const LittleEndianView view("abc");
    EXPECT_EQ(view.text(1, 4), "bc\0\0"s);
    EXPECT_EQ(view.text(3, 2), "\0\0"s);
    EXPECT_EQ(view.text(4, 2), "\0\0"s);
    EXPECT_EQ(view.text(100'000'000, 255), std::string(255, '\0'));
    EXPECT_EQ(view.text(100'000'000, 0), "");
    EXPECT_EQ(LittleEndianView("").text(0, 1), "\0"s);
}

}  // namespace
}  // namespace orx::test
