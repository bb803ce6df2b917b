// Commands are checked before they are sent.
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "orx/client/Request.h"

namespace orx::client {
namespace {

TEST(Request, isWhatTheDaemonReads) {
    const Request request(" \tMEMLOAD   3\r\n");
    EXPECT_EQ(request.text(), "MEMLOAD 3");
    EXPECT_EQ(request.keyword(), "MEMLOAD");
    EXPECT_THAT(request.arguments(), testing::ElementsAre("3"));
}

TEST(Request, keepsNumbersAsTheyAreWritten) {
    EXPECT_EQ(Request("INPUT +7 0x10 12abc").text(), "INPUT +7 0x10 12abc");
    EXPECT_EQ(Request("KEYSTONEVERT -2.50 1e2 inf").text(), "KEYSTONEVERT -2.50 1e2 inf");
}

TEST(Request, makesOneArgumentOfTheWordsOfRaw) {
    EXPECT_EQ(Request("RAW 0a 1B f f").text(), "RAW 0a1Bff");
}

TEST(Request, cannotSmuggleASecondCommandIn) {
    EXPECT_EQ(Request("INPUT 1\n2").text(), "INPUT 1 2");
    EXPECT_THROW(Request("INPUT 1\nQUIT"), std::invalid_argument);
}

TEST(Request, needsAProjectorUnlessItIsForTheDaemonItself) {
    for (const auto* const text : {"STATUS", "CLEARFLAGS", "QUIT", "RESTART"})
        EXPECT_FALSE(Request(text).needsProjector()) << text;
    for (const auto* const text : {"ON", "ZOOM 1", "MEMCLEAR", "RAW 00", "SETDELAY 1"})
        EXPECT_TRUE(Request(text).needsProjector()) << text;
}

TEST(Request, knowsTheWordThatIsNoCommand) {
    for (const auto* const word : {"zoom", "CMD_ZOOM_ABS", "ZOOM,", "=", ""}) {
        try {
            const Request request(std::string(word) + " 1");
            FAIL() << word << " is taken for a command";
        } catch (const UnknownCommand& unknown) {
            EXPECT_EQ(unknown.keyword(), *word != '\0' ? word : "1");
        }
    }
    EXPECT_THROW(Request(" \n "), UnknownCommand);
}

/// What is refused, and why.
class DroppedArgument : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(DroppedArgument, isRefused) {
    const auto& [text, reason] = GetParam();
    try {
        const Request request(text);
        FAIL() << text << " is taken";
    } catch (const std::invalid_argument& mistake) {
        EXPECT_EQ(mistake.what(), reason);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, DroppedArgument,
    testing::Values(
        std::pair{"ON 1", R"(ON takes no argument, not "1")"},
        std::pair{"ZOOM abc", R"(ZOOM takes whole numbers of 32 bits, not "abc")"},
        std::pair{"ZOOM 5 x", R"(ZOOM takes whole numbers of 32 bits, not "x")"},
        std::pair{"ZOOM 99999999999", R"(ZOOM takes whole numbers of 32 bits, not "99999999999")"},
        std::pair{"KEYSTONEVERT -", R"(KEYSTONEVERT takes decimal numbers, not "-")"},
        std::pair{"KEYSTONEVERT 1e999", R"(KEYSTONEVERT takes decimal numbers, not "1e999")"},
        std::pair{"RAW 0a1", "RAW takes pairs of hexadecimal digits"},
        std::pair{"RAW zz", "RAW takes pairs of hexadecimal digits"}));

TEST(Request, isNoLongerThanWhatTheDaemonReads) {
    constexpr std::size_t most = 2048;
    const std::string head = "RAW ";
    EXPECT_EQ(Request(head + std::string(most - head.size(), '0')).text().size(), most);
    EXPECT_THROW(Request(head + std::string(most - head.size() + 2, '0')), std::invalid_argument);
}

}  // namespace
}  // namespace orx::client
