#include <algorithm>
#include <deque>
#include <numeric>
#include <string>

#include <gtest/gtest.h>

#include "core/NewestFirst.h"

namespace orx::test {
namespace {

TEST(NewestFirst, IsEmptyAtFirst) {
    EXPECT_EQ(NewestFirst(3).text(), "");
}

TEST(NewestFirst, PutsTheNewestLineAheadOfTheOthers) {
    NewestFirst lines(3);
    lines.add("1 ", "one");
    lines.add("", "");
    lines.add("3 ", "three");
    EXPECT_EQ(lines.text(), "3 three\n\n1 one\n");
}

TEST(NewestFirst, LosesTheOldestLineWhereThereAreTooMany) {
    NewestFirst lines(2);
    for (const auto* line : {"a", "bb", "ccc", "dddd"})
        lines.add("", line);
    EXPECT_EQ(lines.text(), "dddd\nccc\n");
}

TEST(NewestFirst, BeginsAnewOnceItWasCleared) {
    NewestFirst lines(2);
    lines.add("", "old");
    lines.clear();
    EXPECT_EQ(lines.text(), "");
    lines.add("", "new");
    EXPECT_EQ(lines.text(), "new\n");
}

TEST(NewestFirst, KeepsItsLinesWhateverTheirSizes) {
    constexpr std::size_t count = 5;
    NewestFirst lines(count);
    std::deque<std::string> expected;
    for (int number = 0; number < 2000; ++number) {
        // From nothing to more than any room so far.
        const std::string line(static_cast<std::size_t>(number * number % 7919), 'x');
        const auto name = std::to_string(number);
        lines.add(name, line);
        expected.push_front(std::string(name).append(line).append("\n"));
        if (expected.size() > count) expected.pop_back();
        ASSERT_EQ(lines.text(), std::accumulate(expected.begin(), expected.end(), std::string()));
    }
}

}  // namespace
}  // namespace orx::test
