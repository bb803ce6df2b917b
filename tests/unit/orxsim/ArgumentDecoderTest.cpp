// Arguments read back from the text of a command, type by type.
#include <gmock/gmock.h>

#include "orxsim/ArgumentDecoder.h"
#include "unit/orxsim/ModelBench.h"

namespace orx::orxsim {
namespace {

using testing::HasSubstr;

constexpr orxdef::NumberStyle plain{};
constexpr orxdef::NumberStyle afterSign{true, false};
constexpr orxdef::NumberStyle afterDecimal{true, true};

struct Case {
    TestArgument argument;
    orxdef::NumberStyle before;  ///< left behind by earlier arguments
    std::string text;
    std::string value;    ///< of a valid text
    std::string mistake;  ///< a part of what is wrong with any other
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.argument.type << each.argument.len << " reads "
            << testing::PrintToString(each.text);
}

orxdef::ArgumentDescriptor descriptorOf(const TestArgument& argument) {
    orxdef::ArgumentDescriptor descriptor;
    descriptor.min = argument.min;
    descriptor.max = argument.max;
    descriptor.len = static_cast<std::uint8_t>(argument.len);
    descriptor.type = static_cast<std::uint8_t>(argument.type);
    return descriptor;
}

class ArgumentReading : public testing::TestWithParam<Case> {};

TEST_P(ArgumentReading, givesTheValueOrWhatIsWrong) {
    const auto& wanted = GetParam();
    const auto descriptor = descriptorOf(wanted.argument);
    const ArgumentDecoder decoder(descriptor, wanted.before.with(descriptor));
    const auto reading = decoder.read(wanted.text);
    EXPECT_EQ(reading.value, wanted.value) << reading.mistake;
    EXPECT_EQ(reading.mistake.empty(), wanted.mistake.empty()) << reading.mistake;
    EXPECT_THAT(reading.mistake, HasSubstr(wanted.mistake));
    if (!decoder.isRaw() && wanted.mistake.empty()) {
        EXPECT_LE(wanted.text.size(), decoder.greatestLength());
        EXPECT_EQ(wanted.text.find_first_not_of(decoder.characters()), std::string::npos);
    }
}

using namespace std::string_literals;

constexpr TestArgument filled{'A', 0, 3, -50, 255};
constexpr TestArgument withSign{'B', 0, 3, -128, 127};
constexpr TestArgument hexadecimal{'X', 0, 2, 0, 4095};
constexpr TestArgument negativeHexadecimal{'X', 0, 2, -1, 16};
constexpr TestArgument decimal{'D', 0, decimalLength(3, 2), -5000, 5000};
constexpr TestArgument general{'D', 0, decimalLength(0, 3), 500, 9995};
constexpr TestArgument roundHundreds{'D', 0, decimalLength(0, 0), 110, 160};
constexpr TestArgument other{'N', 0, 9, -20, 20};
constexpr TestArgument twoBytes{'I', 0, 2, -100, 1000};
constexpr TestArgument oneByte{'I', 0, 1, 256, 300};
constexpr TestArgument sixBytes{'I', 0, 6, -1000, 1000};

INSTANTIATE_TEST_SUITE_P(
    FilledNumbers, ArgumentReading,
    testing::Values(
        Case{filled, plain, "042", "42", ""}, Case{filled, plain, "255", "255", ""},
        Case{filled, plain, "0-4", "-4", ""}, Case{filled, plain, "-50", "-50", ""},
        Case{filled, plain, "256", "", "is 256, not within -50 to 255"},
        Case{filled, plain, "-51", "", "not within"},
        Case{filled, plain, "42", "", "is written 42, not 042"},
        Case{filled, plain, "0042", "", "not 042"}, Case{filled, plain, "-04", "", "not 0-4"},
        Case{filled, plain, "1-4", "", "not 0-4"}, Case{filled, plain, "+42", "", "not 042"},
        Case{filled, plain, "", "", "not within"}, Case{filled, plain, "4+2-", "", "not within"},
        Case{filled, plain, "99999999999999999999", "", "not within"},
        Case{filled, afterSign, "+42", "42", ""}, Case{filled, afterSign, "-04", "-4", ""},
        Case{filled, afterSign, "042", "", "not +42"},
        Case{{'A', 0, 1, 0, 300}, plain, "300", "300", ""},
        Case{{'A', 0, 0, 0, 9}, plain, "7", "7", ""},
        Case{{'A', 0, 2, 30, 10}, plain, "30", "30", ""},
        Case{{'A', 0, 2, 30, 10}, plain, "20", "", "not within"}));

INSTANTIATE_TEST_SUITE_P(NumbersWithSign, ArgumentReading,
                         testing::Values(Case{withSign, plain, "+005", "5", ""},
                                         Case{withSign, plain, "-128", "-128", ""},
                                         Case{withSign, plain, "+000", "0", ""},
                                         Case{withSign, plain, "-000", "", "not +000"},
                                         Case{withSign, plain, "005", "", "not +005"},
                                         Case{withSign, plain, "+05", "", "not +005"},
                                         Case{withSign, plain, "+128", "",
                                              "not within -128 to +127"}));

INSTANTIATE_TEST_SUITE_P(
    HexadecimalNumbers, ArgumentReading,
    testing::Values(Case{hexadecimal, plain, "0a", "10", ""},
                    Case{hexadecimal, plain, "fff", "4095", ""},
                    Case{hexadecimal, afterSign, "2a", "42", ""},
                    Case{hexadecimal, plain, "a", "", "not 0a"},
                    Case{hexadecimal, plain, "0A", "", "not 0a"},
                    Case{hexadecimal, plain, "1000", "", "not within 00 to fff"},
                    Case{hexadecimal, plain, "", "", "not within"},
                    Case{negativeHexadecimal, plain, "ffffffff", "-1", ""},
                    Case{negativeHexadecimal, plain, "fffffffe", "", "not within"}));

INSTANTIATE_TEST_SUITE_P(
    Decimals, ArgumentReading,
    testing::Values(Case{decimal, plain, "+001.26", "+001.26", ""},
                    Case{decimal, plain, "-050.00", "-050.00", ""},
                    Case{decimal, plain, "+000.00", "+000.00", ""},
                    Case{decimal, plain, "-000.00", "", "not +000.00"},
                    Case{decimal, plain, "+050.01", "", "not within -050.00 to +050.00"},
                    Case{decimal, plain, "+1.26", "", "not +001.26"},
                    Case{decimal, plain, "001.26", "", "not +001.26"},
                    Case{decimal, plain, "+00.126", "", "not +001.26"},
                    Case{{'D', 0, decimalLength(2, 0), -9, 9}, plain, "+007", "+007", ""},
                    Case{general, plain, "0.5", "0.5", ""},
                    Case{general, plain, "1.25", "1.25", ""},
                    Case{general, plain, "9.99", "9.99", ""},
                    Case{general, plain, "0.499", "", "not within"},
                    Case{general, plain, "1.250", "", "not 1.25"},
                    Case{general, plain, "+1.25", "", "not 1.25"},
                    Case{general, plain, "1e400", "", "not within"},
                    Case{general, afterSign, "+1.25", "+1.25", ""},
                    Case{general, afterDecimal, "+1.250", "+1.250", ""},
                    Case{general, afterDecimal, "+1.25", "", "not within"},
                    Case{roundHundreds, plain, "1e+02", "1e+02", ""},
                    Case{roundHundreds, plain, "2e+02", "2e+02", ""},
                    Case{roundHundreds, plain, "3e+02", "", "not within"}));

INSTANTIATE_TEST_SUITE_P(OtherTypes, ArgumentReading,
                         testing::Values(Case{other, plain, "7", "7", ""},
                                         Case{other, plain, "-20", "-20", ""},
                                         Case{other, plain, "07", "", "not 7"},
                                         Case{other, afterSign, "+7", "7", ""}));

INSTANTIATE_TEST_SUITE_P(
    RawBytes, ArgumentReading,
    testing::Values(Case{twoBytes, plain, "\x01\x2c"s, "300", ""},
                    Case{twoBytes, plain, "\x00\x00"s, "0", ""},
                    Case{twoBytes, plain, "\xff\xff"s, "-1", ""},
                    Case{twoBytes, plain, "\xff\x9c"s, "-100", ""},
                    Case{twoBytes, plain, "\xff\x9b"s, "", "is [ff 9b], not within -100 to 1000"},
                    Case{twoBytes, plain, "\x03\xe9"s, "", "not within"},
                    Case{oneByte, plain, "\x2c"s, "300", ""},
                    Case{oneByte, plain, "\x2d"s, "", "not within"},
                    Case{sixBytes, plain, "\x00\x00\x00\x00\x03\xe8"s, "1000", ""},
                    Case{sixBytes, plain, "\xff\xff\xff\xff\xff\xff"s, "-1", ""},
                    Case{sixBytes, plain, "\x00\x00\xff\xff\xff\xff"s, "", "not within"},
                    Case{sixBytes, plain, "\x01\x00\x00\x00\x00\x05"s, "", "not within"},
                    Case{{'I', 0, 1, 20, 10}, plain, "\x0a"s, "10", ""},
                    Case{{'I', 0, 0, 5, 9}, plain, "", "", ""}));

}  // namespace
}  // namespace orx::orxsim
