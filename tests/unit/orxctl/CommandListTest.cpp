// The list of commands, and the way to find one in it.
#include <algorithm>

#include <gmock/gmock.h>

#include "orxctl/CommandList.h"
#include "orxctl/CommandTexts.h"

namespace orx::orxctl {
namespace {

using testing::HasSubstr;

TEST(CommandList, hasALineForEachCommand) {
    EXPECT_EQ(std::ranges::count(commandList(""), '\n'),
              static_cast<std::ptrdiff_t>(vocabulary.size()));
}

TEST(CommandList, saysArgumentKindAndEffect) {
    EXPECT_EQ(commandList("ZOCALEND"),
              "ZOCALEND [STEPS]  integer  take the steps counted, or these, for the zoom travel\n");
    EXPECT_EQ(commandList("[M]EMCLEAR").substr(0, 16), "MEMCLEAR  none  ");
}

TEST(CommandList, isSearchedInAllThatItSays) {
    EXPECT_THAT(commandList("MEMORY"), HasSubstr("MEMLOAD"));
    EXPECT_THAT(commandList("end stop"), HasSubstr("LENSRESET"));
    EXPECT_EQ(commandList("no such thing"), "");
}

TEST(CommandList, matchesAPatternWithWholeKeywords) {
    EXPECT_EQ(std::ranges::count(commandList("zoom*"), '\n'), 3);  // ZOOM, ZOOMRESET, ZOOMX
    EXPECT_EQ(std::ranges::count(commandList("?[+-]"), '\n'), 4);
    EXPECT_EQ(commandList("*memory"), "");
}

TEST(CommandList, fitsIntoEightyColumns) {
    const auto list = commandList("");
    std::size_t longest = 0;
    for (std::size_t begin = 0, end = 0; begin < list.size(); begin = end + 1) {
        end = list.find('\n', begin);
        longest = std::max(longest, end - begin);
    }
    EXPECT_LE(longest, 100U);
}

TEST(CommandTexts, areFoundByTheirKeyword) {
    EXPECT_EQ(textFor("ZOOM").argument, "FRACTION");
    EXPECT_THROW(static_cast<void>(textFor("zoom")), std::invalid_argument);
}

}  // namespace
}  // namespace orx::orxctl
