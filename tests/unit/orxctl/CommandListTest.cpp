// The list of commands, and the way to find one in it.
#include <algorithm>

#include <gmock/gmock.h>

#include "commands/Vocabulary.h"
#include "orxctl/CommandList.h"

namespace orx::orxctl {
namespace {

using testing::HasSubstr;

TEST(CommandList, hasALineForEachCommand) {
    EXPECT_EQ(std::ranges::count(commandList(""), '\n'),
              static_cast<std::ptrdiff_t>(vocabulary.size()));
}

TEST(CommandList, saysArgumentKindAndEffect) {
    EXPECT_EQ(commandList("ZOOMX"), "ZOOMX  integer  move the zoom to a position in motor steps\n");
    EXPECT_EQ(commandList("[M]EMCLEAR"),
              "MEMCLEAR  -  forget the lens positions of all memory slots\n");
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
    EXPECT_LE(longest, 80U);
}

}  // namespace
}  // namespace orx::orxctl
