// A projector that answers as none should: commands go on, nothing is lost, and the order is kept.
#include <numeric>
#include <ostream>

#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

/// All values that a byte can have.
std::string everyByte() {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

struct Answers {
    const char* name;
    std::string answer{};      ///< sent ahead of every command
    std::string withoutEnd{};  ///< sent over and over, as fast as the line takes it
    std::string more{};        ///< of the configuration
};

std::ostream& operator<<(std::ostream& out, const Answers& answers) {
    return out << answers.name;
}

const std::vector<Answers> answersOfAllKinds{
    {.name = "NoneAtAll", .more = "serial.timeout = 100\n"},
    {.name = "TheBeginningOfOne", .answer = "O", .more = "serial.timeout = 100\n"},
    {.name = "EveryByte", .answer = everyByte()},
    {.name = "EveryByteWithoutEnd", .withoutEnd = everyByte()},
    {.name = "OneLineWithoutEnd", .withoutEnd = std::string(3000, 'r')},
    {.name = "LinesWithoutEnd", .withoutEnd = "OK\r\n"},
    {.name = "NothingButZerosWithoutEnd", .withoutEnd = std::string(100, '\0')},
    {.name = "WithoutEndAndWaitedFor",
     .withoutEnd = std::string(200, 'n'),
     .more = "serial.timeout = 10000\n"},
};

class BadAnswers : public LensStory, public testing::WithParamInterface<Answers> {
  protected:
    void SetUp() override {
        startLens(motorModel(), GetParam().more);
        if (!GetParam().withoutEnd.empty()) line.flood(GetParam().withoutEnd);
    }
    void command(const std::string& text) const {
        if (!GetParam().answer.empty()) line.send(GetParam().answer);
        send(text);
    }
};

INSTANTIATE_TEST_SUITE_P(All, BadAnswers, testing::ValuesIn(answersOfAllKinds),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(BadAnswers, LoseNoCommandAndKeepTheOrder) {
    constexpr int rounds = 4;
    std::string expected;
    for (int round = 0; round < rounds; ++round) {
        for (const auto* text : {"ON", "PICMUTE", "OFF"})
            command(text);
        expected += "ON\rPMUTE\rOFF\r";
    }
    waitUntilExecuted();
    EXPECT_EQ(line.written(), expected);
    EXPECT_EQ(quit(), "exit status 0");
}

TEST_P(BadAnswers, LeaveTheLensWhereTheStatusSays) {
    command("ZOOMX 3");
    waitForPositions("3/2000", "undefined");
    command("ZOOMX 1");
    waitForPositions("1/2000", "undefined");
    command("FOCUSX 2");
    waitForPositions("1/2000", "2/100");
    EXPECT_EQ(line.written(), "zrz+z+z+z-z-frf+f+");
}

}  // namespace
}  // namespace orx::test
