// Bytes become commands, however they arrive.
#include <gmock/gmock.h>

#include "unit/orxsim/Ears.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

TEST(CommandRecognizer, knowsCommandsByTheirBytes) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("PWR ON\r"), ElementsAre("ON"));
    EXPECT_THAT(ears.hear("Z STEP -\r"), ElementsAre("AZ-"));
}

TEST(CommandRecognizer, readsArguments) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("SOURCE 07\r"), ElementsAre("INPUT 7"));
    EXPECT_THAT(ears.hear("PATTERN 03,00ff00\r"), ElementsAre("TEST 3 65280"));
    EXPECT_THAT(ears.hear("MEM \x01\x2c\r"), ElementsAre("NATMEMLOAD 300"));
}

TEST(CommandRecognizer, waitsForTheRestOfACommand) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("SOUR"), IsEmpty());
    EXPECT_THAT(ears.hear("CE 0"), IsEmpty());
    EXPECT_THAT(ears.hear("7"), IsEmpty());
    EXPECT_FALSE(ears.awaitsSilence());
    EXPECT_THAT(ears.silence(), IsEmpty());
    EXPECT_THAT(ears.hear("\r"), ElementsAre("INPUT 7"));
}

/// Whatever the model: a stream means the same however it is cut.
TEST(CommandRecognizer, hearsTheSameByteByByteAsInOnePiece) {
    const std::vector<std::pair<orxdef::Checksum, std::string>> streams{
        {orxdef::Checksum::none,
         "PWR ON\rSOURCE 100\rSOURCE 1\rMEM \r\r\rMEM \rPWR ON\rnoise\rZ STEP +Z STEP +\rPATTERN "
         "01,000001\rPATTERN ,\rPATTERN 2,\r\r\x80\xff\rMEM \xff\xff\rZ +\r"},
        {orxdef::Checksum::sum8,
         "PWR ON\r\x0dnoise\r!PWR ON\r\xeePWR ON\r\xeePWR OFF\r\x3aMEM \x01\x02\r\x20\r\r\rxx"}};
    for (const auto& [checksum, stream] : streams) {
        Ears atOnce(usualCommands(), checksum);
        Ears slowly(usualCommands(), checksum);
        const auto all = atOnce.hear(stream);
        EXPECT_GT(all.size(), 5U);
        EXPECT_EQ(all, slowly.hearSlowly(stream));
        EXPECT_EQ(atOnce.silence(), slowly.silence());
    }
}

TEST(CommandRecognizer, takesGluedCommandsApart) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("Z +\rZ +++\rSOURCE 01\rPWR"), ElementsAre("Z+", "Z+++", "INPUT 1"));
    EXPECT_THAT(ears.hear(" OFF\r"), ElementsAre("OFF"));
}

TEST(CommandRecognizer, takesTheTerminatorWithinRawBytesForAValue) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("MEM \x01\r\rPWR ON\r"), ElementsAre("NATMEMLOAD 269", "ON"));
    EXPECT_THAT(ears.hearSlowly("MEM \x00\r\rPWR ON\r"s), ElementsAre("NATMEMLOAD 13", "ON"));
}

TEST(CommandRecognizer, saysWhatIsWrongWithAnArgument) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("SOURCE 7\r"),
                ElementsAre("? SOURCE 7\r: argument 1 is written 7, not 07"));
    EXPECT_THAT(ears.hear("PATTERN 03,1000000\r"),
                ElementsAre("? PATTERN 03,1000000\r: argument 2 is 1000000, not within 000000 to "
                            "ffffff"));
    EXPECT_THAT(ears.hear("SOURCE 100\rPWR ON\r"),
                ElementsAre("? SOURCE 100\r: argument 1 is 100, not within 00 to 99", "ON"));
}

TEST(CommandRecognizer, missesArgumentsThatWereLeftOut) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("SOURCE \r"), ElementsAre("? SOURCE \r: argument 1 is missing"));
    EXPECT_THAT(ears.hear("PATTERN ,\r"), ElementsAre("? PATTERN ,\r: argument 1 is missing"));
    EXPECT_THAT(ears.hear("PATTERN 04,\r"), ElementsAre("? PATTERN 04,\r: argument 2 is missing"));
}

/// Two raw bytes could follow, the first of which is the terminator.
TEST(CommandRecognizer, missesARawArgumentOnceThereIsSilence) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("MEM \r"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.silence(), ElementsAre("? MEM \r: argument 1 is missing"));
    EXPECT_FALSE(ears.awaitsSilence());
}

TEST(CommandRecognizer, goesOnBehindTheTerminatorAfterGarbage) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("PWX"), IsEmpty());
    EXPECT_THAT(ears.hear(" ON"), IsEmpty());
    EXPECT_FALSE(ears.awaitsSilence());
    EXPECT_THAT(ears.hear("\rPWR ON\r"), ElementsAre("? PWX ON\r: no command of this model", "ON"));
}

TEST(CommandRecognizer, losesTheNextCommandTooWhereTheTerminatorIsMissing) {
    Ears ears(usualCommands());
    EXPECT_THAT(ears.hear("PWR ONPWR ON\rPWR ON\r"),
                ElementsAre("? PWR ONPWR ON\r: no command of this model", "ON"));
}

TEST(CommandRecognizer, letsGoOfEndlessGarbage) {
    Ears ears(usualCommands());
    const auto heard = ears.hear(std::string(70'000, 'x') + "\rPWR ON\r");
    ASSERT_EQ(heard.size(), 3U);
    EXPECT_EQ(heard[0].size(), std::string("? : no command of this model").size() + 65536);
    EXPECT_EQ(heard[2], "ON");
}

TEST(CommandRecognizer, wantsTheChecksum) {
    Ears ears(usualCommands(), orxdef::Checksum::sum8);
    EXPECT_THAT(ears.hear("PWR ON\r"), IsEmpty());
    EXPECT_THAT(ears.hear("\xc3"), ElementsAre("ON"));
    EXPECT_THAT(ears.hear("SOURCE 07\r\x65"), ElementsAre("INPUT 7"));
}

TEST(CommandRecognizer, givesUpACommandThatSilenceLeavesWithoutItsChecksum) {
    Ears ears(usualCommands(), orxdef::Checksum::sum8);
    EXPECT_THAT(ears.hear("PWR ON"), IsEmpty());
    EXPECT_THAT(ears.silence(), IsEmpty());
    EXPECT_THAT(ears.hear("\r"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.silence(), ElementsAre("? PWR ON\r: incomplete command"));
    EXPECT_THAT(ears.hear("PWR ON\r\xc3"), ElementsAre("ON"));
}

TEST(CommandRecognizer, refusesAWrongChecksumAndGoesOnBehindIt) {
    Ears ears(usualCommands(), orxdef::Checksum::sum8);
    EXPECT_THAT(ears.hear("PWR ON\r\xc2PWR ON\r\xc3"),
                ElementsAre("? PWR ON\r\xc2: wrong checksum", "ON"));
    EXPECT_THAT(ears.hear("MEM \x02\r\r\x00PWR ON\r\xc3"s),
                ElementsAre("? MEM \x02\r\r\x00: wrong checksum"s, "ON"));
}

TEST(CommandRecognizer, takesTheChecksumOfGarbageAlong) {
    Ears ears(usualCommands(), orxdef::Checksum::sum8);
    EXPECT_THAT(ears.hear("XYZ\rsPWR ON\r\xc3"),
                ElementsAre("? XYZ\rs: no command of this model", "ON"));
    EXPECT_THAT(ears.hear("XYZ\r"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.silence(), ElementsAre("? XYZ\r: no command of this model"));
    EXPECT_THAT(ears.hear("PWR ON\r\xc3"), ElementsAre("ON"));
}

TEST(CommandRecognizer, looksAtTheBitsOfTheLineOnly) {
    const std::vector<TestCommand> commands{{"ON", "\x02P1\x83", {}},
                                            {"INPUT", "\x02I\x83", {{'A', 2, 2, 0, 99}}}};
    Ears ears(commands, orxdef::Checksum::sum8, 7);
    EXPECT_THAT(ears.hear("\x02P1\x83\x06"), ElementsAre("ON"));
    EXPECT_THAT(ears.hear("\x02P1\x03\x86"), ElementsAre("ON"));
    EXPECT_THAT(ears.hear("\x02I\xb0\xb7\x03\x35"), ElementsAre("INPUT 7"));
    EXPECT_THAT(ears.hear("\x02P1\x83\x07"), ElementsAre("? \x02P1\x03\x07: wrong checksum"));
}

TEST(CommandRecognizer, readsNumbersOnALineOfFiveBits) {
    Ears ears({{"ROTATION", "R\x1f", {{'B', 1, 3, -180, 180}}}}, orxdef::Checksum::none, 5);
    EXPECT_THAT(ears.hear("R-045\x1f"), ElementsAre("ROTATION -45"));
}

TEST(CommandRecognizer, keepsTheSignOfEarlierArgumentsInLaterOnes) {
    const std::vector<TestCommand> commands{
        {"B",
         "B ,,,\r",
         {{'B', 2, 2, -9, 9}, {'A', 3, 4, -99, 99}, {'X', 4, 2, 0, 99}, {'N', 5, 0, -9, 9}}},
        {"D",
         "D ,,\r",
         {{'D', 2, decimalLength(2, 1), -99, 99},
          {'A', 3, 3, -99, 99},
          {'D', 4, decimalLength(0, 2), -500, 500}}},
        {"G", "G ,\r", {{'D', 2, decimalLength(0, 2), -500, 500}, {'A', 3, 3, -99, 99}}}};
    Ears ears(commands);
    EXPECT_THAT(ears.hear("B +05,+042,0f,+3\r"), ElementsAre("B 5 42 15 3"));
    EXPECT_THAT(ears.hear("D +01.5,-07,+1.25\r"), ElementsAre("D +01.5 -7 +1.25"));
    EXPECT_THAT(ears.hear("G 1.2,0-7\r"), ElementsAre("G 1.2 -7"));
}

TEST(CommandRecognizer, takesAnArgumentAheadOfTheOneBeforeBehindTheRest) {
    Ears ears({{"TEST", "P,Q\r", {{'A', 2, 1, 0, 9}, {'A', 1, 1, 0, 9}}}});
    EXPECT_THAT(ears.hear("P,3Q\r7,Q\r"), ElementsAre("TEST 3 7"));
}

TEST(CommandRecognizer, knowsNoCommandWhoseArgumentLiesBeyondItsEnd) {
    Ears ears({{"INPUT", "IN\r", {{'A', 9, 1, 0, 9}}}, {"ON", "ON\r", {}}});
    EXPECT_THAT(ears.hear("IN\r"), ElementsAre("? IN\r: no command of this model"));
    EXPECT_THAT(ears.hear("ON\r"), ElementsAre("ON"));
}

TEST(CommandRecognizer, prefersTheLensAmongCommandsOfTheSameBytes) {
    Ears ears({{"ARCRESET", "X\r", {}},
               {"Z+", "X\r", {}},
               {"AVMUTE", "Y\r", {}},
               {"AVUNMUTE", "Y\r", {}},
               {"ARCTOP", "W\r", {{'A', 1, 1, 0, 9}}},
               {"ZZ", "W\r", {}}});
    EXPECT_THAT(ears.hear("X\rY\rW\r"), ElementsAre("Z+", "AVMUTE", "ZZ"));
}

}  // namespace
}  // namespace orx::orxsim
