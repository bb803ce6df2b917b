#include <gtest/gtest.h>

#include "core/BuildIdentity.h"

namespace orx::test {
namespace {

constexpr BuildIdentity withoutCodeName{"orx", "v2.0", "", "7", "2031-12-24, 01:02:03"};

TEST(Banner, NamesTheBuildForPeople) {
    EXPECT_EQ(banner(),
              "orx v" ORX_VERSION " \"Quietpangolin\" (build 2393 @ 2019-06-13, 16:23:26)");
}

TEST(Banner, GoesWithoutACodeName) {
    EXPECT_EQ(banner(withoutCodeName), "orx v2.0 (build 7 @ 2031-12-24, 01:02:03)");
}

TEST(InternalVersion, JoinsFiveFieldsForScripts) {
    EXPECT_EQ(internalVersion(), ORX_VERSION "/Quietpangolin/2393/2019-06-13/16:23:26");
}

TEST(InternalVersion, HasAnEmptyFieldInPlaceOfAMissingCodeName) {
    EXPECT_EQ(internalVersion(withoutCodeName), "2.0//7/2031-12-24/01:02:03");
}

TEST(InternalVersion, TakesTheCodeNameWithoutItsBlankAndQuotes) {
    auto identity = withoutCodeName;
    identity.codeName = " \"Two words\"";
    EXPECT_EQ(internalVersion(identity), "2.0/Two words/7/2031-12-24/01:02:03");
    identity.codeName = " \"\"";
    EXPECT_EQ(internalVersion(identity), "2.0//7/2031-12-24/01:02:03");
}

TEST(BuildIdentity, IsThatOfTheRelease) {
    EXPECT_EQ(buildIdentity.product, "orx");
    EXPECT_EQ(buildIdentity.version, "v" ORX_VERSION);
    EXPECT_EQ(buildIdentity.codeName, " \"Quietpangolin\"");
    EXPECT_EQ(buildIdentity.buildNumber, "2393");
    EXPECT_EQ(buildIdentity.buildDateTime, "2019-06-13, 16:23:26");
}

}  // namespace
}  // namespace orx::test
