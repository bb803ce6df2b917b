// What one line of a configuration file says.
#include <gtest/gtest.h>

#include "config/ConfigLine.h"

namespace orx::test {
namespace {

TEST(ConfigLine, SaysNothingWhereItIsBlankOrAComment) {
    for (const auto* line : {"", " \t\r", "# key = value", "  ; key = value"})
        EXPECT_EQ(parseConfigLine(line).kind, ConfigLine::Kind::nothing) << line;
}

TEST(ConfigLine, HasAKeyAndAValueAroundTheFirstEqualsSign) {
    const auto line = parseConfigLine("  serial.delay =\t20 = x # y \r");
    EXPECT_EQ(line.kind, ConfigLine::Kind::entry);
    EXPECT_EQ(line.key, "serial.delay");
    EXPECT_EQ(line.value, "20 = x # y");
}

TEST(ConfigLine, CanLackKeyAndValue) {
    const auto line = parseConfigLine("=");
    EXPECT_EQ(line.kind, ConfigLine::Kind::entry);
    EXPECT_EQ(line.key, "");
    EXPECT_EQ(line.value, "");
}

TEST(ConfigLine, IsMalformedWithoutAnEqualsSign) {
    EXPECT_EQ(parseConfigLine("key value").kind, ConfigLine::Kind::malformed);
}

}  // namespace
}  // namespace orx::test
