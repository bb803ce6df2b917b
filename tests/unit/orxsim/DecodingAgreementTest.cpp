// What the daemon's encoder writes, the simulator's own decoder reads back: two implementations of
// one format, held against each other on random commands.
#include <algorithm>
#include <cmath>
#include <random>

#include <gmock/gmock.h>

#include "orxsim/CommandRecognizer.h"
#include "projector/ArgumentInsertion.h"
#include "unit/orxsim/DemoModels.h"
#include "unit/orxsim/ModelBench.h"

namespace orx::orxsim {
namespace {

class RandomCommands {
  public:
    explicit RandomCommands(unsigned seed) : generator(seed) {}

    int number(int least, int greatest) {
        const auto range = static_cast<std::uint64_t>(std::int64_t{greatest} - least) + 1;
        return static_cast<int>(least + static_cast<std::int64_t>(generator() % range));
    }

    /// Up to four arguments, commas between them: without, even a reader who knows the format could
    /// not tell where one number ends.
    TestCommand command() {
        TestCommand command{"TEST", "T ", {}};
        const int count = number(1, 4);
        for (int index = 0; index < count; ++index) {
            command.arguments.push_back(argument(static_cast<unsigned>(command.bytes.size())));
            command.bytes += index + 1 < count ? "," : "\r";
        }
        return command;
    }

    /// Within the bounds, on them or beyond.
    std::string value(const TestArgument& argument) {
        constexpr std::array<int, 3> deviations{-1, 0, 1};
        const std::array<int, 3> values{argument.min, argument.max,
                                        number(argument.min, argument.max)};
        const int value = values.at(pick(3)) + deviations.at(pick(3));
        return argument.type == 'D' ? fraction(value, argument.len >> 4U) : std::to_string(value);
    }

    std::size_t pick(std::size_t count) { return generator() % count; }

  private:
    TestArgument argument(unsigned pos) {
        const char type = "ABXDDIN"[pick(7)];
        TestArgument result{type, pos, length(type), bound(), bound()};
        if (result.min > result.max) std::swap(result.min, result.max);
        return result;
    }

    /// Raw values need their four bytes to be told apart.
    unsigned length(char type) {
        if (type == 'I') return static_cast<unsigned>(number(4, 7));
        if (type != 'D') return static_cast<unsigned>(number(0, 8));
        return decimalLength(static_cast<unsigned>(pick(2) * pick(7)),
                             static_cast<unsigned>(number(0, 7)));
    }

    int bound() {
        const std::array<int, 4> sizes{9, 255, 100'000, 2'000'000'000};
        const int size = sizes.at(pick(sizes.size()));
        return number(-size, size);
    }

    static std::string fraction(int units, unsigned decimals) {
        auto digits = std::to_string(std::abs(std::int64_t{units}));
        if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
        digits.insert(digits.size() - decimals, ".");
        return (units < 0 ? "-" : "") + digits;
    }

    std::mt19937_64 generator;
};

std::string encoded(const TestCommand& command, const std::vector<std::string>& values) {
    ArgumentInsertion insertion(command.bytes);
    for (std::size_t index = 0; index < values.size(); ++index) {
        const auto& argument = command.arguments[index];
        insertion.insert(values[index], {argument.min, argument.max, static_cast<int>(argument.pos),
                                         static_cast<int>(argument.len), argument.type});
    }
    return insertion.finish();
}

/// The value that is sent; empty for decimals, whose text depends on the format.
std::string expectedValue(const TestArgument& argument, const std::string& value) {
    if (argument.type == 'D') return {};
    return std::to_string(std::clamp(std::stoi(value), argument.min, argument.max));
}

TEST(DecodingAgreement, readsBackWhatTheDaemonWrites) {
    RandomCommands random(20'000);
    for (int round = 0; round < 20'000; ++round) {
        const auto command = random.command();
        std::vector<std::string> values;
        for (const auto& argument : command.arguments)
            values.push_back(random.value(argument));
        const auto bytes = encoded(command, values);
        ModelBench bench({command});
        CommandRecognizer recognizer(bench.table(), bench.model());
        auto heard = recognizer.hear(bytes);
        if (heard.empty()) heard = recognizer.silence();
        ASSERT_EQ(heard.size(), 1U) << round << ": " << bytes;
        ASSERT_EQ(heard[0].reason, "") << round << ": " << bytes;
        for (std::size_t index = 0; index < values.size(); ++index) {
            const auto expected = expectedValue(command.arguments[index], values[index]);
            if (expected.empty()) continue;
            ASSERT_EQ(heard[0].arguments[index], expected) << round << ": " << bytes;
        }
    }
}

std::string withSum(std::string bytes) {
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    return bytes + static_cast<char>(sum);
}

/// `bytes` with every argument at its least, middle or greatest value.
std::string demoBytes(const orxdef::ModelCommand& command, int part) {
    ArgumentInsertion insertion(command.string->bytes);
    for (const auto& [number, argument] : command.arguments) {
        const auto value = argument->min + (std::int64_t{argument->max} - argument->min) * part / 2;
        const auto text =
            argument->type == 'D'
                ? std::to_string(static_cast<double>(value) / std::pow(10.0, argument->decimals()))
                : std::to_string(value);
        insertion.insert(
            text, {argument->min, argument->max, argument->pos, argument->len, argument->type});
    }
    return insertion.finish();
}

TEST(DecodingAgreement, knowsEveryCommandOfTheDemoModels) {
    const auto definitions = demoDefinitions();
    ASSERT_EQ(definitions.models.size(), 3U);
    int commands = 0;
    for (const auto& model : definitions.models) {
        const auto table = orxdef::commandTable(definitions, model);
        CommandRecognizer recognizer(table, model);
        for (const auto& [name, command] : table) {
            for (const int part : {0, 1, 2}) {
                const auto bytes = demoBytes(command, part);
                const bool hasSum = model.checksum == orxdef::Checksum::sum8;
                const auto heard = recognizer.hear(hasSum ? withSum(bytes) : bytes);
                ASSERT_EQ(heard.size(), 1U) << bytes;
                ASSERT_EQ(heard[0].reason, "") << bytes;
                ASSERT_EQ(heard[0].command, name) << bytes;
                ASSERT_EQ(heard[0].arguments.size(), command.arguments.size()) << bytes;
                ++commands;
            }
        }
    }
    EXPECT_GT(commands, 3 * 100);
}

/// A reader that takes anything would agree as well.
TEST(DecodingAgreement, readsNothingElse) {
    RandomCommands random(30'000);
    int refused = 0;
    for (int round = 0; round < 5000; ++round) {
        const TestCommand command{"TEST", "T \r", {{"ABXN"[random.pick(4)], 2, 4, -500, 500}}};
        auto bytes = encoded(command, {random.value(command.arguments[0])});
        const auto place = 2 + random.pick(bytes.size() - 3);
        bytes[place] = static_cast<char>(' ' + random.pick(60));
        ModelBench bench({command});
        CommandRecognizer recognizer(bench.table(), bench.model());
        const auto heard = recognizer.hear(bytes);
        ASSERT_EQ(heard.size(), 1U) << bytes;
        if (!heard[0].isCommand()) {
            ++refused;
        } else {
            ASSERT_EQ(encoded(command, heard[0].arguments), bytes);
        }
    }
    EXPECT_GT(refused, 2500);
}

}  // namespace
}  // namespace orx::orxsim
