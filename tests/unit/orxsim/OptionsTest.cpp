// The command line.
#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include "orxsim/AnswerText.h"
#include "orxsim/Options.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

Options read(const std::vector<std::string>& arguments) {
    std::vector<const char*> all{"orxsim", "--definitions", "a.ccd", "--model", "M", "--link", "l"};
    for (const auto& argument : arguments)
        all.push_back(argument.c_str());
    CLI::App app;
    return readOptions(app, static_cast<int>(all.size()), all.data());
}

/// What is said about a wrong command line.
std::string mistakeIn(const std::vector<std::string>& arguments) {
    try {
        static_cast<void>(read(arguments));
        return "none";
    } catch (const CLI::ParseError& error) {
        return error.what();
    }
}

TEST(Options, areUsualWhereNothingIsSaid) {
    const auto options = read({});
    EXPECT_EQ(options.definitions, "a.ccd");
    EXPECT_EQ(options.model, "M");
    EXPECT_EQ(options.link, "l");
    EXPECT_FALSE(options.json);
    const auto& behaviour = options.behaviour;
    EXPECT_THAT(behaviour.travel, ElementsAre(2000, 1000));
    EXPECT_THAT(behaviour.start, ElementsAre(1000, 500));
    EXPECT_THAT(behaviour.jogSteps, ElementsAre(5, 20, 100));
    EXPECT_EQ(behaviour.stepTime.count(), 0);
    EXPECT_EQ(behaviour.lostSteps.count, 0U);
    EXPECT_EQ(behaviour.lineNoise.count, 0U);
    EXPECT_EQ(behaviour.backlash, 0);
    EXPECT_FALSE(behaviour.realTime);
    EXPECT_EQ(behaviour.answers, AnswerFault::none);
    EXPECT_EQ(behaviour.unplugging.commands, std::nullopt);
    EXPECT_EQ(behaviour.unplugging.time, std::nullopt);
    EXPECT_EQ(behaviour.seed, 1U);
}

TEST(Options, describeTheLens) {
    const auto lens = read({"--travel", "300,200", "--start", "0,200", "--jog", "2,30,400",
                            "--step-time", "7", "--backlash", "4", "--lose", "1/500"})
                          .behaviour;
    EXPECT_THAT(lens.travel, ElementsAre(300, 200));
    EXPECT_THAT(lens.start, ElementsAre(0, 200));
    EXPECT_THAT(lens.jogSteps, ElementsAre(2, 30, 400));
    EXPECT_EQ(lens.stepTime, std::chrono::milliseconds(7));
    EXPECT_EQ(lens.backlash, 4);
    EXPECT_EQ(lens.lostSteps.count, 1U);
    EXPECT_EQ(lens.lostSteps.of, 500U);
}

TEST(Options, takeOneValueForBothAxes) {
    const auto lens = read({"--travel", "300"}).behaviour;
    EXPECT_THAT(lens.travel, ElementsAre(300, 300));
    EXPECT_THAT(lens.start, ElementsAre(150, 150));
    EXPECT_THAT(read({"--start", "17"}).behaviour.start, ElementsAre(17, 17));
}

TEST(Options, describeLineAndAnswers) {
    const auto line = read({"--real-time", "--line-noise", "2/300", "--ack", "A\\x06\\r", "--error",
                            "", "--slow-answer", "80", "--seed", "18446744073709551615"})
                          .behaviour;
    EXPECT_TRUE(line.realTime);
    EXPECT_EQ(line.lineNoise.count, 2U);
    EXPECT_EQ(line.lineNoise.of, 300U);
    EXPECT_EQ(line.acknowledgement, "A\x06\r");
    EXPECT_EQ(line.error, "");
    EXPECT_EQ(line.answerDelay, std::chrono::milliseconds(80));
    EXPECT_EQ(line.seed, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(read({"--no-answer"}).behaviour.answers, AnswerFault::silent);
    EXPECT_EQ(read({"--garbage-answer"}).behaviour.answers, AnswerFault::garbage);
}

TEST(Options, sayWhenTheLineIsCut) {
    EXPECT_EQ(read({"--unplug-after", "12"}).behaviour.unplugging.commands, 12U);
    EXPECT_EQ(read({"--unplug-after", "12ms"}).behaviour.unplugging.time,
              std::chrono::milliseconds(12));
    EXPECT_EQ(read({"--unplug-after", "12s"}).behaviour.unplugging.time, std::chrono::seconds(12));
}

TEST(Options, refuseWhatMakesNoSense) {
    const std::vector<std::vector<std::string>> wrong{{"--travel", "0"},
                                                      {"--travel", "1,2,3"},
                                                      {"--travel", "12,"},
                                                      {"--travel", "-5"},
                                                      {"--travel", "1000001"},
                                                      {"--start", "2001"},
                                                      {"--start", "0,1001"},
                                                      {"--jog", "1,2"},
                                                      {"--jog", "0,1,2"},
                                                      {"--step-time", "fast"},
                                                      {"--step-time", "-1"},
                                                      {"--backlash", "1.5"},
                                                      {"--lose", "1"},
                                                      {"--lose", "1/0"},
                                                      {"--lose", "3/2"},
                                                      {"--lose", "1/2/3"},
                                                      {"--lose", "/"},
                                                      {"--line-noise", "a/b"},
                                                      {"--unplug-after", "0"},
                                                      {"--unplug-after", "2h"},
                                                      {"--unplug-after", "ms"},
                                                      {"--unplug-after", ""},
                                                      {"--ack", "\\q"},
                                                      {"--error", "\\x4"},
                                                      {"--seed", "-1"},
                                                      {"--seed", "18446744073709551616"},
                                                      {"--no-answer", "--garbage-answer"},
                                                      {"--faults"}};
    for (const auto& arguments : wrong)
        EXPECT_NE(mistakeIn(arguments), "none") << arguments.front() << ' ' << arguments.back();
}

TEST(Options, sayWhatWasExpected) {
    EXPECT_THAT(mistakeIn({"--lose", "often"}), HasSubstr("N/M, N times in M, not often"));
    EXPECT_THAT(mistakeIn({"--start", "5000"}), HasSubstr("--start: must lie within the travel"));
    EXPECT_THAT(mistakeIn({"--seed", "x"}), HasSubstr("a whole number from 0 to"));
}

TEST(AnswerText, standsForBytes) {
    EXPECT_EQ(answerBytes(""), "");
    EXPECT_EQ(answerBytes("OK"), "OK");
    EXPECT_EQ(answerBytes("\\x02OK\\x7f\\r\\n\\t\\\\{1}"), "\x02OK\x7f\r\n\t\\{1}");
    EXPECT_EQ(answerBytes("a\\x00b\\xFFc"), std::string("a\0b\xff"
                                                        "c",
                                                        5));
}

TEST(AnswerText, refusesUnknownEscapes) {
    for (const auto* text : {"\\", "a\\", "\\x", "\\x1", "\\xg1", "\\x1g", "\\X41", "\\a", "\\x+1"})
        EXPECT_THROW(static_cast<void>(answerBytes(text)), std::invalid_argument) << text;
}

}  // namespace
}  // namespace orx::orxsim
