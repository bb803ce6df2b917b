// The list of what is wrong.
#include <sstream>

#include <gmock/gmock.h>

#include "orxdef/Mistakes.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;

TEST(Mistakes, comeInReadingOrderByFileLineColumnAndByte) {
    Mistakes mistakes({"a", "b"});
    mistakes.add({1, 1, 1}, "fifth");
    mistakes.add({0, 2, 1}, "third");
    mistakes.add({0, 1, 7}, "second");
    mistakes.add({0, 1, 1}, "first");
    mistakes.add({0, 2, 1}, "fourth");
    EXPECT_THAT(mistakes.lines(), ElementsAre("a:1:1: first", "a:1:7: second", "a:2:1: third",
                                              "a:2:1: fourth", "b:1:1: fifth"));
    Mistakes binary({"c"});
    binary.add({0, 1, 1, 10}, "later");
    binary.add({0, 1, 1, 9}, "earlier");
    EXPECT_THAT(binary.lines(), ElementsAre("c:byte 9: earlier", "c:byte 10: later"));
}

TEST(Mistakes, areErrorsUnlessTheySayOtherwise) {
    Mistakes mistakes({"a"});
    mistakes.add({}, "an error");
    mistakes.add({}, "a warning", Severity::warning);
    mistakes.add({}, "a note", Severity::note);
    mistakes.add({}, "a note", Severity::note);
    EXPECT_EQ(mistakes.count(), 4U);
    EXPECT_EQ(mistakes.count(Severity::error), 1U);
    EXPECT_EQ(mistakes.count(Severity::warning), 1U);
    EXPECT_EQ(mistakes.count(Severity::note), 2U);
}

TEST(Mistakes, arePrintedOneALine) {
    Mistakes mistakes({"a", "b"});
    mistakes.addUnreadable(1, "No such file");
    mistakes.add({0, 3, 4}, "wrong");
    std::ostringstream output;
    mistakes.print(output);
    EXPECT_EQ(output.str(), "a:3:4: wrong\nb:1:1: cannot be read: No such file\n");
}

}  // namespace
}  // namespace orx::orxdef
