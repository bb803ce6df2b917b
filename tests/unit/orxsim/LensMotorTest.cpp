// The motor between its end stops: contacts, backlash, lost steps.
#include <gmock/gmock.h>

#include "orxsim/LensMotor.h"

namespace orx::orxsim {
namespace {

constexpr auto up = Direction::up;
constexpr auto down = Direction::down;

LensMotor motorWith(const LensMotor::Mechanics& mechanics) {
    return {mechanics, Chance({}, 1, 1)};
}

/// Steps until the motor stalls; gives how many steps it made.
int driveToEnd(LensMotor& motor, Direction direction, Drive drive = Drive::reset) {
    int steps = 0;
    while (motor.step(direction, drive))
        ++steps;
    return steps;
}

void step(LensMotor& motor, Direction direction, int count) {
    for (int number = 0; number < count; ++number)
        EXPECT_TRUE(motor.step(direction, Drive::step));
}

TEST(LensMotor, standsWhereItIsPutAtFirst) {
    const auto motor = motorWith({100, 40});
    EXPECT_EQ(motor.motor(), 40);
    EXPECT_EQ(motor.lens(), 40);
    EXPECT_EQ(motor.travel(), 100);
}

TEST(LensMotor, takesTheLensAlongStepByStep) {
    auto motor = motorWith({100, 40});
    step(motor, up, 3);
    EXPECT_EQ(motor.lens(), 43);
    step(motor, down, 5);
    EXPECT_EQ(motor.motor(), 38);
    EXPECT_EQ(motor.lens(), 38);
}

TEST(LensMotor, stallsAtTheUpperEndStopAndStaysThere) {
    auto motor = motorWith({100, 98});
    step(motor, up, 2);
    EXPECT_FALSE(motor.step(up, Drive::step));
    EXPECT_FALSE(motor.step(up, Drive::step));
    EXPECT_EQ(motor.motor(), 100);
    EXPECT_EQ(motor.lens(), 100);
    EXPECT_EQ(motor.contacts(Drive::step), 2);
}

TEST(LensMotor, stallsAtTheLowerEndStopAndStaysThere) {
    auto motor = motorWith({100, 1});
    step(motor, down, 1);
    EXPECT_FALSE(motor.step(down, Drive::step));
    EXPECT_EQ(motor.motor(), 0);
    EXPECT_EQ(motor.lens(), 0);
    EXPECT_EQ(motor.contacts(Drive::step), 1);
}

TEST(LensMotor, countsContactsByKindOfDrive) {
    auto motor = motorWith({100, 0});
    EXPECT_FALSE(motor.step(down, Drive::reset));
    EXPECT_FALSE(motor.step(down, Drive::jog));
    EXPECT_FALSE(motor.step(down, Drive::jog));
    EXPECT_EQ(motor.contacts(Drive::step), 0);
    EXPECT_EQ(motor.contacts(Drive::jog), 2);
    EXPECT_EQ(motor.contacts(Drive::reset), 1);
}

TEST(LensMotor, turnsThroughTheBacklashWhenItTurnsRoundUpwards) {
    auto motor = motorWith({100, 40, 4});
    step(motor, up, 4);
    EXPECT_EQ(motor.motor(), 44);
    EXPECT_EQ(motor.lens(), 40);
    step(motor, up, 2);
    EXPECT_EQ(motor.lens(), 42);
}

TEST(LensMotor, turnsThroughTheBacklashWhenItTurnsRoundDownwards) {
    auto motor = motorWith({100, 40, 4});
    step(motor, up, 10);
    step(motor, down, 4);
    EXPECT_EQ(motor.motor(), 46);
    EXPECT_EQ(motor.lens(), 46);
    step(motor, down, 1);
    EXPECT_EQ(motor.lens(), 45);
}

TEST(LensMotor, keepsTheLensWithinTheBacklashBehindItWhateverTheWay) {
    auto motor = motorWith({50, 25, 7});
    Chance way({1, 2}, 5, 5);
    for (int number = 0; number < 5000; ++number) {
        static_cast<void>(motor.step(way.happens() ? up : down, Drive::step));
        ASSERT_LE(motor.lens(), motor.motor());
        ASSERT_GE(motor.lens(), motor.motor() - 7);
        ASSERT_GE(motor.lens(), 0);
        ASSERT_LE(motor.lens(), 50);
    }
}

TEST(LensMotor, takesUpTheBacklashBeforeItMeetsTheUpperEndStop) {
    auto motor = motorWith({100, 100, 4});
    EXPECT_EQ(driveToEnd(motor, up), 4);
    EXPECT_EQ(motor.motor(), 104);
    EXPECT_EQ(motor.lens(), 100);
}

TEST(LensMotor, isAtZeroWithItsLensOnceDrivenToTheLowerEndStop) {
    auto motor = motorWith({100, 60, 4});
    step(motor, up, 10);
    EXPECT_EQ(driveToEnd(motor, down), 70);
    EXPECT_EQ(motor.motor(), 0);
    EXPECT_EQ(motor.lens(), 0);
}

TEST(LensMotor, losesStepsInStepsAndJogsButNotInAReset) {
    LensMotor motor({1000, 500}, Chance({1, 1}, 1, 1));
    EXPECT_TRUE(motor.step(up, Drive::step));
    EXPECT_TRUE(motor.step(down, Drive::jog));
    EXPECT_EQ(motor.motor(), 500);
    EXPECT_EQ(motor.lost(), 2);
    EXPECT_EQ(driveToEnd(motor, down), 500);
    EXPECT_EQ(motor.lost(), 2);
}

TEST(LensMotor, isBehindByExactlyTheStepsThatItLost) {
    LensMotor motor({100'000, 0}, Chance({1, 50}, 7, 1));
    step(motor, up, 20'000);
    EXPECT_EQ(motor.motor(), 20'000 - motor.lost());
    EXPECT_GT(motor.lost(), 300);
    EXPECT_LT(motor.lost(), 500);
}

/// The numbers of the steps, counted from 0, that a motor loses.
std::vector<int> lostSteps(std::uint64_t seed, std::uint64_t fault) {
    LensMotor motor({10'000, 0}, Chance({1, 100}, seed, fault));
    std::vector<int> numbers;
    for (int number = 0; number < 2000; ++number) {
        const int before = motor.lost();
        static_cast<void>(motor.step(up, Drive::step));
        if (motor.lost() > before) numbers.push_back(number);
    }
    return numbers;
}

TEST(LensMotor, losesTheSameStepsFromTheSameSeed) {
    EXPECT_FALSE(lostSteps(1, 1).empty());
    EXPECT_EQ(lostSteps(1, 1), lostSteps(1, 1));
    EXPECT_NE(lostSteps(1, 1), lostSteps(2, 1));
    EXPECT_NE(lostSteps(1, 1), lostSteps(1, 2));
}

}  // namespace
}  // namespace orx::orxsim
