// Bounds of decimal arguments, turned into whole numbers of the smallest unit that is sent.
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "orxdef/DecimalBound.h"

namespace orx::orxdef {
namespace {

std::string refusalOf(double value, int decimals) {
    try {
        return "accepted as " + std::to_string(inUnits(value, decimals));
    } catch (const std::range_error& error) {
        return error.what();
    }
}

TEST(DecimalBound, isAWholeNumberOfTheSmallestUnit) {
    EXPECT_EQ(inUnits(50.0, 2), 5000);
    EXPECT_EQ(inUnits(-50.0, 2), -5000);
    EXPECT_EQ(inUnits(-12.5, 1), -125);
    EXPECT_EQ(inUnits(7.0, 0), 7);
    EXPECT_EQ(inUnits(0.0, 15), 0);
    EXPECT_EQ(inUnits(-0.0, 3), 0);
}

TEST(DecimalBound, forgivesTheNoiseOfBinaryFractions) {
    for (int hundredths = -100000; hundredths <= 100000; ++hundredths)
        ASSERT_EQ(inUnits(hundredths / 100.0, 2), hundredths);
    EXPECT_EQ(inUnits(21474836.47, 2), 2147483647);
    EXPECT_EQ(inUnits(0.000002147483647, 15), 2147483647);
}

TEST(DecimalBound, refusesAFractionOfTheUnit) {
    EXPECT_EQ(refusalOf(50.005, 2), "must be a multiple of 0.01, not 50.005");
    EXPECT_EQ(refusalOf(0.5, 0), "must be a multiple of 1, not 0.5");
    EXPECT_EQ(refusalOf(1e-300, 1), "must be a multiple of 0.1, not 1e-300");
    EXPECT_EQ(refusalOf(0.01, 1), "must be a multiple of 0.1, not 0.01");
    EXPECT_EQ(refusalOf(1e-16, 15), "must be a multiple of 0.000000000000001, not 1e-16");
}

TEST(DecimalBound, refusesAFractionOfTheUnitAtTheEndsOfTheRangeToo) {
    EXPECT_EQ(refusalOf(2147483646.5, 0), "must be a multiple of 1, not 2147483646.5");
    EXPECT_EQ(refusalOf(-21474836.475, 2), "must be a multiple of 0.01, not -21474836.475");
}

TEST(DecimalBound, fillsTheWhole32Bits) {
    EXPECT_EQ(inUnits(2147483647.0, 0), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(inUnits(-2147483648.0, 0), std::numeric_limits<std::int32_t>::min());
}

TEST(DecimalBound, refusesWhatDoesNotFit32Bits) {
    EXPECT_EQ(refusalOf(2147483648.0, 0), "must fit 32 bits in units of 1, unlike 2147483648");
    EXPECT_EQ(refusalOf(-21474836.49, 2), "must fit 32 bits in units of 0.01, unlike -21474836.49");
    EXPECT_EQ(refusalOf(1e300, 15),
              "must fit 32 bits in units of 0.000000000000001, unlike 1e+300");
}

TEST(DecimalBound, refusesWhatIsNoNumber) {
    EXPECT_EQ(refusalOf(std::nan(""), 2), "must fit 32 bits in units of 0.01, unlike nan");
    EXPECT_EQ(refusalOf(-INFINITY, 0), "must fit 32 bits in units of 1, unlike -inf");
}

TEST(UnitsText, isTheShortestNumberInRealUnits) {
    EXPECT_EQ(unitsText(-1250, 2), "-12.5");
    EXPECT_EQ(unitsText(1200, 2), "12");
    EXPECT_EQ(unitsText(7, 2), "0.07");
    EXPECT_EQ(unitsText(-7, 1), "-0.7");
    EXPECT_EQ(unitsText(0, 15), "0");
    EXPECT_EQ(unitsText(100, 0), "100");
    EXPECT_EQ(unitsText(-2147483647 - 1, 0), "-2147483648");
    EXPECT_EQ(unitsText(-2147483647 - 1, 15), "-0.000002147483648");
}

TEST(UnitsText, isReadBackAsTheSameUnits) {
    for (int decimals = 0; decimals <= 15; ++decimals)
        for (const std::int32_t units :
             {0, 1, -1, 9, 10, -99, 12345, -100000, 2147483647, -2147483647 - 1})
            EXPECT_EQ(inUnits(std::stod(unitsText(units, decimals)), decimals), units) << decimals;
}

}  // namespace
}  // namespace orx::orxdef
