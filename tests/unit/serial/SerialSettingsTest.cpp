// The line parameters: what the configuration may change, and what they look like in a dump.
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "serial/SerialSettings.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"

namespace orx::test {
namespace {

constexpr LineParameters model{
    .bytesize = 7, .stopbits = 2, .parity = 1, .baudrate = 19200, .timeout = 300, .delay = 40};

class SerialSettingsValues : public testing::Test {
  protected:
    /// Reads a configuration file of these lines.
    void configure(const std::string& lines) {
        settings.readConfiguration(MainConfig(folder.write("orx.cfg", lines)));
    }

    [[nodiscard]] std::string dumped() const {
        return outputOf([this] { settings.dump(); });
    }

    SerialSettings settings{model};

  private:
    TemporaryFolder folder;
};

std::string dumpOf(const LineParameters& line) {
    return "  baudrate: " + std::to_string(line.baudrate) +
           "\n  bytesize: " + std::to_string(line.bytesize) +
           "\n     delay: " + std::to_string(line.delay) +
           "\n    parity: " + std::to_string(line.parity) +
           "\n  stopbits: " + std::to_string(line.stopbits) +
           "\n   timeout: " + std::to_string(line.timeout) + "\n";
}

TEST_F(SerialSettingsValues, AreThoseOfTheModelAtFirst) {
    EXPECT_EQ(settings.baudrate(), 19200);
    EXPECT_EQ(settings.delay(), 40);
    EXPECT_EQ(settings.debug(), 0);
    EXPECT_EQ(settings.device(), "");
    EXPECT_EQ(dumped(),
              "  baudrate: 19200\n"
              "  bytesize: 7\n"
              "     delay: 40\n"
              "    parity: 1\n"
              "  stopbits: 2\n"
              "   timeout: 300\n");
}

TEST_F(SerialSettingsValues, StayWithoutAnyKey) {
    configure("");
    EXPECT_EQ(dumped(), dumpOf(model));
    EXPECT_EQ(settings.debug(), 0);
    EXPECT_EQ(settings.device(), "");
}

TEST_F(SerialSettingsValues, AreAllTakenFromTheConfiguration) {
    configure(
        "serial.device = /dev/ttyS1\nserial.debug = 1\nserial.baudrate = 9600\n"
        "serial.bytesize = 8\nserial.delay = 25\nserial.parity = even\n"
        "serial.stopbits = 1\nserial.timeout = 250\n");
    EXPECT_EQ(settings.device(), "/dev/ttyS1");
    EXPECT_EQ(settings.debug(), 1);
    EXPECT_EQ(settings.baudrate(), 9600);
    EXPECT_EQ(settings.delay(), 25);
    EXPECT_EQ(dumped(), dumpOf({.bytesize = 8,
                                .stopbits = 1,
                                .parity = 2,
                                .baudrate = 9600,
                                .timeout = 250,
                                .delay = 25}));
}

TEST_F(SerialSettingsValues, LoseTheDeviceThatIsNoLongerConfigured) {
    configure("serial.device = /dev/ttyS1");
    configure("serial.debug = 2");
    EXPECT_EQ(settings.device(), "");
}

TEST_F(SerialSettingsValues, AreTakenWithinTheirRangesOnly) {
    struct Case {
        const char* key;
        int LineParameters::*field;
        int lowest, highest;
    };
    const std::vector<Case> cases{
        {"serial.baudrate", &LineParameters::baudrate, 0, 4'000'000},
        {"serial.bytesize", &LineParameters::bytesize, 5, 8},
        {"serial.delay", &LineParameters::delay, 0, 10'000},
        {"serial.stopbits", &LineParameters::stopbits, 1, 2},
        {"serial.timeout", &LineParameters::timeout, 0, 10'000},
    };
    for (const auto& [key, field, lowest, highest] : cases) {
        auto expected = model;
        for (const int value : {lowest, highest, lowest - 1, highest + 1, -2147483647 - 1}) {
            SCOPED_TRACE(std::string(key) + " = " + std::to_string(value));
            if (value >= lowest && value <= highest) expected.*field = value;
            configure(std::string(key) + " = " + std::to_string(value));
            EXPECT_EQ(dumped(), dumpOf(expected));
        }
        configure(std::string(key) + " = " + std::to_string(model.*field));
    }
}

TEST_F(SerialSettingsValues, TakeTheDebugLevelsZeroToTwo) {
    for (const int level : {1, 2, 0}) {
        configure("serial.debug = " + std::to_string(level));
        EXPECT_EQ(settings.debug(), level);
    }
    configure("serial.debug = 1");
    for (const std::string outside : {"-1", "3", "", "2147483647"}) {
        configure("serial.debug = " + outside);
        EXPECT_EQ(settings.debug(), 1) << outside;
    }
    EXPECT_EQ(dumped(), dumpOf(model));
}

TEST_F(SerialSettingsValues, KnowParityByItsThreeNames) {
    auto expected = model;
    const std::vector<std::pair<std::string, int>> names{{"even", 2}, {"none", 0}, {"odd", 1}};
    for (const auto& [name, parity] : names) {
        configure("serial.parity = " + name);
        expected.parity = parity;
        EXPECT_EQ(dumped(), dumpOf(expected)) << name;
    }
    for (const std::string other : {"Even", "EVEN", "evenly", "eve", "0", "2", "mark", ""}) {
        configure("serial.parity = " + other);
        EXPECT_EQ(dumped(), dumpOf(expected)) << other;
    }
}

TEST_F(SerialSettingsValues, PassOverAnEmptyValue) {
    configure(
        "serial.debug =\nserial.baudrate =\nserial.bytesize =\nserial.delay =\n"
        "serial.stopbits =\nserial.timeout =\n");
    EXPECT_EQ(dumped(), dumpOf(model));
}

TEST_F(SerialSettingsValues, AreReadUpToTheFirstCharacterThatIsNoDigit) {
    configure("serial.baudrate = 9600 baud\nserial.delay = +5ms");
    EXPECT_EQ(settings.baudrate(), 9600);
    EXPECT_EQ(settings.delay(), 5);
}

TEST_F(SerialSettingsValues, RefuseWhatIsNoNumber) {
    for (const std::string key :
         {"debug", "baudrate", "bytesize", "delay", "stopbits", "timeout"}) {
        SCOPED_TRACE(key);
        const auto errorOf = [&](const std::string& value) -> std::string {
            try {
                configure("serial." + key + " = " + value);
            } catch (const std::invalid_argument& error) {
                return std::string("invalid argument ") + error.what();
            } catch (const std::out_of_range& error) {
                return std::string("out of range ") + error.what();
            }
            return "none";
        };
        EXPECT_EQ(errorOf("fast"), "invalid argument stoi");
        EXPECT_EQ(errorOf("2147483648"), "out of range stoi");
        EXPECT_EQ(errorOf("-2147483649"), "out of range stoi");
    }
    EXPECT_EQ(dumped(), dumpOf(model));
}

TEST_F(SerialSettingsValues, AreReadInTheirOrderUpToTheOneThatIsRefused) {
    EXPECT_THROW(configure("serial.device = /dev/ttyS1\nserial.debug = 2\nserial.baudrate = 9600\n"
                           "serial.bytesize = 8\nserial.delay = fast\nserial.parity = even\n"
                           "serial.stopbits = 1\nserial.timeout = 250\n"),
                 std::invalid_argument);
    auto expected = model;
    expected.baudrate = 9600;
    expected.bytesize = 8;
    EXPECT_EQ(dumped(), dumpOf(expected));
    EXPECT_EQ(settings.debug(), 2);
    EXPECT_EQ(settings.device(), "/dev/ttyS1");
    EXPECT_THROW(configure("serial.parity = even\nserial.stopbits = 1\nserial.timeout = slow\n"),
                 std::invalid_argument);
    expected.parity = 2;
    expected.stopbits = 1;
    EXPECT_EQ(dumped(), dumpOf(expected));
}

TEST_F(SerialSettingsValues, LetTheDelayBeAnyNumber) {
    for (const int delay : {0, -1, 10'001, 2147483647, -2147483647 - 1}) {
        settings.setDelay(delay);
        EXPECT_EQ(settings.delay(), delay);
        auto expected = model;
        expected.delay = delay;
        EXPECT_EQ(dumped(), dumpOf(expected));
    }
}

TEST_F(SerialSettingsValues, AreCopiedAndThenGoTheirOwnWay) {
    configure("serial.device = /dev/ttyS1\nserial.debug = 1\nserial.parity = even");
    settings.setDelay(77);
    SerialSettings copy(settings);
    EXPECT_EQ(copy.device(), "/dev/ttyS1");
    EXPECT_EQ(copy.debug(), 1);
    EXPECT_EQ(outputOf([&copy] { copy.dump(); }), dumped());
    copy.setDelay(1);
    EXPECT_EQ(settings.delay(), 77);
    settings.setDelay(2);
    EXPECT_EQ(copy.delay(), 1);
}

}  // namespace
}  // namespace orx::test
