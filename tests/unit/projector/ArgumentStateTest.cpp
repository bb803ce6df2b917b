// The number format that one argument leaves to the next ones of the same command.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "projector/ArgumentInsertion.h"
#include "unit/projector/ReferenceEncoding.h"

namespace orx::test {
namespace {

/// What an argument leaves behind for later ones.
enum class Leaves { nothing, sign, signAndFixedPoint };

struct Specimen {
    char type;
    int len;
    std::string argument;
    std::string fresh;            ///< as the first argument
    std::string afterSign;        ///< after a 'B'
    std::string afterFixedPoint;  ///< after a 'D' with digits ahead of the point
    Leaves leaves;
};

const std::vector<Specimen> specimens{
    {'A', 4, "42", "0042", "+042", "+042", Leaves::nothing},
    {'A', 4, "-7", "00-7", "-007", "-007", Leaves::nothing},
    {'A', 2, "42", "42", "+42", "+42", Leaves::nothing},
    {'B', 3, "42", "+042", "+042", "+042", Leaves::sign},
    {'B', 3, "-7", "-007", "-007", "-007", Leaves::sign},
    {'D', 0x23, "1,5", "+001.50", "+001.50", "+001.50", Leaves::signAndFixedPoint},
    {'D', 0x12, "-1,5", "-01.5", "-01.5", "-01.5", Leaves::signAndFixedPoint},
    {'D', 0x10, "2.25", "2", "+2", "+2.3", Leaves::nothing},
    {'D', 0x20, "-25", "-25", "-25", "-25.00", Leaves::nothing},
    {'D', 0x10, "25", "2e+01", "+2e+01", "+25.0", Leaves::nothing},
    {'I', 2, "300", "\x01\x2C", "\x01\x2C", "\x01\x2C", Leaves::nothing},
    {'X', 4, "200", "00c8", "00c8", "00c8", Leaves::nothing},
    {'X', 4, "-1", "ffffffff", "ffffffff", "ffffffff", Leaves::nothing},
    {'N', 4, "5", "5", "+5", "+5", Leaves::nothing},
    {'N', 4, "-5", "-5", "-5", "-5", Leaves::nothing},
};

ArgumentDescriptor descriptorOf(const Specimen& specimen, int pos) {
    return {.min = -100000,
            .max = 100000,
            .pos = pos,
            .len = specimen.len,
            .type = static_cast<unsigned char>(specimen.type)};
}

std::string textAfter(Leaves before, const Specimen& specimen) {
    if (before == Leaves::nothing) return specimen.fresh;
    return before == Leaves::sign ? specimen.afterSign : specimen.afterFixedPoint;
}

/// Writes the specimens, one at each comma of a command string, in one command.
template <typename Insertion>
std::string encode(const std::vector<const Specimen*>& arguments) {
    const std::string base = std::string(arguments.size(), ',') + "!";
    Insertion insertion(base);
    int pos = 0;
    for (const auto* specimen : arguments)
        insertion.insert(specimen->argument, descriptorOf(*specimen, pos++));
    return insertion.finish();
}

TEST(ArgumentState, StartsAfreshForEachCommand) {
    for (int round = 0; round < 2; ++round) {
        for (const auto& specimen : specimens)
            EXPECT_EQ(encode<ArgumentInsertion>({&specimen}), specimen.fresh + ",!");
    }
}

TEST(ArgumentState, PassesFromTheFirstArgumentToTheSecondInEveryPairOfTypes) {
    for (const auto& first : specimens) {
        for (const auto& second : specimens) {
            EXPECT_EQ(encode<ArgumentInsertion>({&first, &second}),
                      first.fresh + "," + textAfter(first.leaves, second) + ",!")
                << first.type << " " << first.argument << " then " << second.type << " "
                << second.argument;
        }
    }
}

TEST(ArgumentState, AddsUpOverThreeArguments) {
    for (const auto& first : specimens) {
        for (const auto& second : specimens) {
            for (const auto& third : specimens) {
                EXPECT_EQ(encode<ArgumentInsertion>({&first, &second, &third}),
                          encode<ReferenceEncoding>({&first, &second, &third}))
                    << first.type << second.type << third.type;
            }
        }
    }
}

TEST(ArgumentState, IsNeverTakenBack) {
    const auto& sign = specimens[3];
    const auto& fixedPoint = specimens[5];
    const auto& general = specimens[7];
    const auto& hexadecimal = specimens[11];
    const auto& plain = specimens[13];
    EXPECT_EQ(encode<ArgumentInsertion>({&sign, &hexadecimal, &plain, &general, &plain}),
              "+042,00c8,+5,+2,+5,!");
    EXPECT_EQ(encode<ArgumentInsertion>({&fixedPoint, &sign, &hexadecimal, &general, &plain}),
              "+001.50,+042,00c8,+2.3,+5,!");
}

TEST(ArgumentState, AgreesWithTheReferenceForAllBoundsAndWidths) {
    const std::vector<std::string> arguments{
        "0",     "1",      "-1",     "9.5",   "-0.05", "127",   "-128",       "255",
        "65536", "-65537", "123456", "99,99", "-1e3",  "1e300", "2147483647", "-2147483648"};
    const std::vector<std::pair<int, int>> bounds{
        {-2147483647 - 1, 2147483647}, {0, 255}, {-128, 127}, {-9999, -10}, {500, 100}};
    const std::vector<int> lengths{0, 1, 2, 3, 4, 5, 8, 0x10, 0x11, 0x24, 0x3F, 0x71, 0xF2};
    const auto& sign = specimens[3];
    for (const char type : {'A', 'B', 'D', 'I', 'X', 'N'}) {
        for (const int len : lengths) {
            for (const auto& [min, max] : bounds) {
                const ArgumentDescriptor descriptor{
                    .min = min, .max = max, .pos = 2, .len = len, .type = type};
                for (const auto& argument : arguments) {
                    ArgumentInsertion insertion("ab,\r");
                    ReferenceEncoding reference("ab,\r");
                    insertion.insert(argument, descriptor);
                    reference.insert(argument, descriptor);
                    insertion.insert(sign.argument, descriptorOf(sign, 3));
                    reference.insert(sign.argument, descriptorOf(sign, 3));
                    insertion.insert(argument, descriptor);  // again, ahead of the one before
                    reference.insert(argument, descriptor);
                    EXPECT_EQ(insertion.finish(), reference.finish())
                        << type << " len " << len << " " << min << ".." << max << " " << argument;
                }
            }
        }
    }
}

}  // namespace
}  // namespace orx::test
