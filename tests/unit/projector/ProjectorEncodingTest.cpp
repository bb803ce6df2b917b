// The bytes that a model makes of a command.
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "unit/projector/ModelBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

constexpr ArgumentDescriptor width(int pos, int len) {
    return {.min = 0, .max = 255, .pos = pos, .len = len, .type = 'A'};
}

TEST(ProjectorEncoding, InsertsAnArgumentWithinItsBounds) {
    const auto projector = modelWith("ZOOM", "ZOOM=\r", {{1, width(5, 3)}});
    EXPECT_EQ(bytesFor(projector, "ZOOM 42"), "ZOOM=042\r");
    EXPECT_EQ(bytesFor(projector, "ZOOM 300"), "ZOOM=255\r");
    EXPECT_EQ(bytesFor(projector, "ZOOM -4"), "ZOOM=000\r");
}

TEST(ProjectorEncoding, AppendsTheSumOfAllBytesAfterTheInsertion) {
    const auto projector =
        modelWith("ZOOM", "ZOOM=\r", {{1, width(5, 3)}}, Projector::additiveChecksum);
    EXPECT_EQ(bytesFor(projector, "ZOOM 42"), "ZOOM=042\r\x25");
}

TEST(ProjectorEncoding, InsertsADecimalNumber) {
    const auto projector =
        modelWith("KEYSTONEHORI", "LENS:\r",
                  {{1, {.min = -5000, .max = 5000, .pos = 5, .len = 0x23, .type = 'D'}}});
    EXPECT_EQ(bytesFor(projector, "KEYSTONEHORI 1,256"), "LENS:+001.26\r");
    EXPECT_EQ(bytesFor(projector, "KEYSTONEHORI 99"), "LENS:+050.00\r");
}

TEST(ProjectorEncoding, InsertsBytesAndSumsThem) {
    const ArgumentDescriptors bytes{{1, {.min = 0, .max = 1000, .pos = 4, .len = 2, .type = 'I'}}};
    EXPECT_EQ(bytesFor(modelWith("INPUT", "\x02SET\x03", bytes), "INPUT 300"),
              "\x02SET\x01\x2C\x03");
    EXPECT_EQ(bytesFor(modelWith("INPUT", "\x02SET\x03", bytes, 1), "INPUT 300"),
              "\x02SET\x01\x2C\x03\x1E");
}

TEST(ProjectorEncoding, InsertsHexadecimalDigits) {
    const auto projector = modelWith(
        "BRIGHTNESS", "VOL", {{1, {.min = 0, .max = 255, .pos = 3, .len = 2, .type = 'X'}}});
    EXPECT_EQ(bytesFor(projector, "BRIGHTNESS 200"), "VOLc8");
}

TEST(ProjectorEncoding, InsertsASignedNumber) {
    const auto projector =
        modelWith("ROTATION", "", {{1, {.min = -99, .max = 99, .pos = 0, .len = 3, .type = 'B'}}});
    EXPECT_EQ(bytesFor(projector, "ROTATION 5"), "+005");
    EXPECT_EQ(bytesFor(projector, "ROTATION -7"), "-007");
}

TEST(ProjectorEncoding, InsertsSeveralArguments) {
    const auto projector = modelWith("INPUT", "P,\r", {{1, width(1, 1)}, {2, width(2, 2)}});
    EXPECT_EQ(bytesFor(projector, "INPUT 3 7"), "P3,07\r");
}

TEST(ProjectorEncoding, LeavesTheStringAloneWithoutADescriptor) {
    EXPECT_EQ(bytesFor(modelWith("INPUT", "IN\r"), "INPUT 3 7"), "IN\r");
}

TEST(ProjectorEncoding, LeavesTheStringAloneWithoutAnArgument) {
    EXPECT_EQ(bytesFor(modelWith("INPUT", "IN\r", {{1, width(9, 1)}}), "INPUT"), "IN\r");
    EXPECT_EQ(bytesFor(modelWith("INPUT", "IN\r", {{1, width(9, 1)}}), "INPUT x"), "IN\r");
}

TEST(ProjectorEncoding, DropsArgumentsBeyondTheDescriptors) {
    const auto projector = modelWith("INPUT", "IN\r", {{1, width(2, 1)}});
    EXPECT_EQ(bytesFor(projector, "INPUT 3 7 8"), "IN3\r");
}

TEST(ProjectorEncoding, DropsAnArgumentInAGapOfTheDescriptors) {
    const auto projector = modelWith("INPUT", "a,b", {{1, width(1, 1)}, {3, width(2, 1)}});
    EXPECT_EQ(bytesFor(projector, "INPUT 4 5 6"), "a4,6b");
    EXPECT_EQ(bytesFor(projector, "INPUT 4 5"), "a4,b");
}

TEST(ProjectorEncoding, CountsArgumentsFromOne) {
    EXPECT_EQ(bytesFor(modelWith("INPUT", "ab", {{0, width(1, 1)}, {2, width(2, 1)}}), "INPUT 4"),
              "ab");
}

TEST(ProjectorEncoding, IgnoresDescriptorsOfACommandThatTakesNoArgument) {
    EXPECT_EQ(bytesFor(modelWith("ON", "PON\r", {{1, width(99, 1)}}), "ON 5"), "PON\r");
}

TEST(ProjectorEncoding, IgnoresDescriptorsOfOtherCommands) {
    const Projector projector("DEMO", {{"FOCUS", {{1, width(0, 1)}}}},
                              {{"FOCUS", "F"}, {"ZOOM", "Z"}}, 0);
    EXPECT_EQ(bytesFor(projector, "ZOOM 5"), "Z");
    EXPECT_EQ(bytesFor(projector, "FOCUS 5"), "5F");
}

TEST(ProjectorEncoding, WritesOneSignificantDigitWithoutDigitsAheadOfThePoint) {
    const auto projector = modelWith(
        "KEYSTONEVERT", "", {{1, {.min = -100, .max = 100, .pos = 0, .len = 0x10, .type = 'D'}}});
    EXPECT_EQ(bytesFor(projector, "KEYSTONEVERT 2.25"), "2");
}

TEST(ProjectorEncoding, SumsAnEmptyStringToAZeroByte) {
    EXPECT_EQ(bytesFor(modelWith("ON", "", {}, 1), "ON"), "\0"s);
}

TEST(ProjectorEncoding, SumsBytesModulo256) {
    EXPECT_EQ(bytesFor(modelWith("ON", "\x80\x80", {}, 1), "ON"), "\x80\x80\0"s);
    EXPECT_EQ(bytesFor(modelWith("ON", "\xFF\xFF\x03", {}, 1), "ON"), "\xFF\xFF\x03\x01");
    EXPECT_EQ(bytesFor(modelWith("ON", "A\0B"s, {}, 1), "ON"), "A\0B\x83"s);
}

TEST(ProjectorEncoding, KnowsNoOtherChecksum) {
    for (const int kind : {0, 2, 3, -1, 255})
        EXPECT_EQ(bytesFor(modelWith("ON", "PON", {}, kind), "ON"), "PON") << kind;
}

TEST(ProjectorEncoding, MakesAnEmptyStringOfACommandThatTheModelLacks) {
    EXPECT_EQ(bytesFor(modelWith("ON", "PON"), "OFF"), "");
    EXPECT_EQ(bytesFor(modelWith("ON", "PON", {}, 1), "OFF"), "\0"s);
    const Projector onlyDescriptors("DEMO", {{"INPUT", {{1, width(0, 2)}}}}, {}, 0);
    EXPECT_EQ(bytesFor(onlyDescriptors, "INPUT 3"), "03");
}

TEST(ProjectorEncoding, RefusesAnArgumentOrAPlaceThatCannotBe) {
    const auto beyond = modelWith("INPUT", "IN", {{1, width(3, 1)}});
    EXPECT_THROW(bytesFor(beyond, "INPUT 1"), std::out_of_range);
    const auto whole = modelWith("KEYSTONEHORI", "K", {{1, width(1, 1)}});
    EXPECT_THROW(bytesFor(whole, "KEYSTONEHORI nan"), std::invalid_argument);
}

}  // namespace
}  // namespace orx::test
