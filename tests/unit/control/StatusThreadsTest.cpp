// The status under the hands of several threads.
#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/Status.h"

namespace orx::test {
namespace {

class StillAxis final : public StatusAxis {
  public:
    [[nodiscard]] const std::string& name() const noexcept override { return axisName; }
    [[nodiscard]] bool isBusy() const noexcept override { return false; }
    [[nodiscard]] std::string positionText() const override { return "7"; }

  private:
    std::string axisName = "axis";
};

TEST(StatusThreads, NeverShowHalfAReply) {
    constexpr int rounds = 500;
    Status::reset();
    Status::setDumb(false);
    std::atomic<int> writers = 3;
    const auto repeat = [&writers](auto change) {
        return std::thread([&writers, change] {
            for (int round = 0; round < rounds; ++round)
                change(round);
            --writers;
        });
    };
    std::array<std::thread, 3> threads{
        repeat([](int round) { Status::setDebug(round % 2 == 0); }),
        repeat([](int round) { Status::setDumb(round % 2 == 0); }),
        repeat([](int round) {
            if (round % 4 == 3) {
                Status::reset();
            } else {
                Status::addAxis(std::make_shared<StillAxis>());
            }
        }),
    };
    std::vector<std::string> replies;
    while (writers > 0 || replies.empty())
        replies.push_back(Status::statusReply());
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(replies, testing::Each(testing::MatchesRegex(
                             "IDLE;( axis: 7)?( axis: 7)?( axis: 7)?;HELO (DUMB )?(DEBUG)?\n")));
    Status::reset();
}

}  // namespace
}  // namespace orx::test
