// How messages name things.
#include <array>

#include <gmock/gmock.h>

#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

using Names = std::array<std::string_view, 3>;

TEST(Wording, aQuotedTextStaysOnOneLine) {
    EXPECT_EQ(quoted("DEMO\n1\x7f"), R"("DEMO\x0a1\x7f")");
}

TEST(Wording, namesAreListedWithCommas) {
    EXPECT_EQ(listed(Names{"a", "b", "c"}), "a, b, c");
}

TEST(Wording, alternativesEndInOr) {
    EXPECT_EQ(alternatives(Names{"a", "b", "c"}), R"("a", "b" or "c")");
}

TEST(Wording, aMistypedKeywordFindsTheOneMeant) {
    EXPECT_EQ(nearestKeyword("ZOMRESET"), "ZOOMRESET");
    EXPECT_EQ(nearestKeyword("FOCUSRESETT"), "FOCUSRESET");
    EXPECT_EQ(nearestKeyword("KEYSTONEVRET"), "KEYSTONEVERT");
    EXPECT_EQ(nearestKeyword("F++++"), "F+++");
}

TEST(Wording, theNearestNamesComeFirstAndThreeAtMost) {
    constexpr std::array<std::string_view, 6> names{"serial.stops",    "serial.topbits",
                                                    "serial.stopbits", "sirial.stobits",
                                                    "serial.stobit",   "projector"};
    EXPECT_THAT(nearest("SERIAL.STOPBIT", names),
                testing::ElementsAre("serial.stopbits", "serial.stobit", "serial.topbits"));
    EXPECT_THAT(nearest("SERIAL.STOPBITS", names),
                testing::ElementsAre("serial.stopbits", "serial.topbits"))
        << "the others are farther away";
    EXPECT_THAT(nearest("projektor", names), testing::ElementsAre("projector"));
    EXPECT_THAT(nearest("logfile", names), testing::IsEmpty());
}

TEST(Wording, letterCaseIsNoDifference) {
    EXPECT_EQ(nearestKeyword("zoomreset"), "ZOOMRESET");
}

TEST(Wording, aSymbolicNameFindsItsKeyword) {
    EXPECT_EQ(nearestKeyword("CMD_PICTURE_MUTE"), "PICMUTE");
}

TEST(Wording, whatIsLikeNoKeywordFindsNone) {
    EXPECT_EQ(nearestKeyword("PWR"), std::nullopt);
    EXPECT_EQ(nearestKeyword(""), std::nullopt);
    EXPECT_EQ(nearestKeyword("TOTALLYDIFFERENT"), std::nullopt);
}

}  // namespace
}  // namespace orx::orxdef
