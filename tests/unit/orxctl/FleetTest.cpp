// Errands to many daemons at once.
#include <atomic>
#include <stdexcept>

#include <gmock/gmock.h>

#include "orxctl/Fleet.h"
#include "support/WaitUntil.h"

namespace orx::orxctl {
namespace {

/// So many daemons, at ports of their own.
std::vector<Target> so(std::size_t many) {
    std::vector<Target> targets;
    for (std::size_t number = 1; number <= many; ++number)
        targets.push_back({"here", {"127.0.0.1", static_cast<std::uint16_t>(number)}});
    return targets;
}

TEST(Fleet, hasTheOutcomesInTheOrderOfTheDaemons) {
    Fleet fleet(so(1000));
    const auto outcomes = fleet.doForAll([](const client::Client&, std::size_t number) {
        return Outcome{ExitStatus::done, std::to_string(number)};
    });
    ASSERT_EQ(outcomes.size(), 1000U);
    for (std::size_t number = 0; number < outcomes.size(); ++number)
        EXPECT_EQ(outcomes[number].text, std::to_string(number));
}

TEST(Fleet, isSpokenToAllAtOnce) {
    constexpr std::size_t many = 200;
    Fleet fleet(so(many));
    std::atomic<std::size_t> present = 0;
    const auto outcomes = fleet.doForAll([&](const client::Client&, std::size_t) {
        ++present;
        return Outcome{test::waitUntil([&] { return present == many; }) ? ExitStatus::done
                                                                        : ExitStatus::noAnswer};
    });
    EXPECT_EQ(worstOf(outcomes), ExitStatus::done);
}

TEST(Fleet, isNotHeldUpByADaemonThatCannotBeReached) {
    Fleet fleet({{"nowhere", {"no such host", 1}},
                 {"here", {"127.0.0.1", 1}},
                 {"broken", {"127.0.0.1", 2}}});
    const auto outcomes = fleet.doForAll([](const client::Client&, std::size_t number) {
        if (number == 2) throw std::runtime_error("cannot send");
        return Outcome{};
    });
    EXPECT_EQ(outcomes.at(0).status, ExitStatus::noAnswer);
    EXPECT_THAT(outcomes.at(0).text, testing::StartsWith("host no such host: "));
    EXPECT_EQ(outcomes.at(1).status, ExitStatus::done);
    EXPECT_EQ(outcomes.at(2).text, "cannot send");
}

TEST(Fleet, isSpokenToOnceUnderSeveralNames) {
    Fleet fleet({{"hall", {"127.0.0.1", 1}}, {"foyer", {"127.0.0.1", 2}}, {"same", {"127.1", 1}}});
    std::atomic<int> errands = 0;
    const auto outcomes = fleet.doForAll([&](const client::Client&, std::size_t number) {
        ++errands;
        return Outcome{ExitStatus::done, std::to_string(number)};
    });
    EXPECT_EQ(errands, 2);
    EXPECT_EQ(outcomes.at(1).text, "1");
    EXPECT_EQ(outcomes.at(2).text, "0");
}

}  // namespace
}  // namespace orx::orxctl
