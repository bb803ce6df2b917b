// Questions that get lost, answers that come late, and the way to rest.
#include <chrono>
#include <stdexcept>
#include <vector>

#include <gmock/gmock.h>

#include "orx/client/Client.h"
#include "support/FakeDaemon.h"
#include "support/WaitUntil.h"

namespace orx::client {
namespace {

using test::FakeDaemon;
using Replies = std::vector<std::string>;
constexpr std::chrono::seconds longEnough{60};
constexpr std::chrono::milliseconds notLong{300};
const Replies lost;
const std::string resting = "IDLE; zoom: 5/9 focus: 0/3;\n";
const std::string moving = "BUSY; zoom: 4/9>5 focus: 0/3;\n";
const std::string announced = "IDLE; zoom: 4/9>5 focus: 0/3;\n";

/// Answers one question after the other as `answers` says, then as the last of them for ever.
FakeDaemon::Answer oneByOne(std::vector<Replies> answers) {
    return [answers = std::move(answers), next = std::size_t{0}](const std::string&) mutable {
        const auto& answer = answers.at(next);
        if (next + 1 < answers.size()) ++next;
        return answer;
    };
}

/// An address at which nobody listens.
Address deserted() {
    return FakeDaemon(oneByOne({lost})).address();
}

TEST(Client, asksForTheStatus) {
    const FakeDaemon daemon(oneByOne({{resting}}));
    EXPECT_EQ(Client(daemon.address()).status(longEnough), DaemonStatus::parse(resting));
}

TEST(Client, takesTheAnswerFromAnotherAddressOfTheDaemon) {
    const FakeDaemon daemon(oneByOne({{resting}}), FakeDaemon::From::elsewhere);
    EXPECT_EQ(Client(daemon.address()).status(longEnough), DaemonStatus::parse(resting));
}

TEST(Client, asksAgainWhereAnAnswerIsLost) {
    const FakeDaemon daemon(oneByOne({lost, lost, {resting}}));
    EXPECT_EQ(Client(daemon.address()).status(longEnough), DaemonStatus::parse(resting));
}

TEST(Client, passesOverWhatIsNoStatus) {
    const FakeDaemon daemon(oneByOne({{"", "hello", moving + moving, resting}}));
    EXPECT_EQ(Client(daemon.address()).status(longEnough), DaemonStatus::parse(resting));
}

TEST(Client, givesUpWhereThereIsNoAnswer) {
    const FakeDaemon daemon(oneByOne({lost}));
    EXPECT_EQ(Client(daemon.address()).status(notLong), std::nullopt);
}

TEST(Client, knowsAHostWhereNobodyListens) {
    const Client nobody(deserted());
    EXPECT_EQ(nobody.status(notLong), std::nullopt);
    EXPECT_EQ(nobody.presence(notLong), Presence::deserted);
    EXPECT_EQ(nobody.waitUntilAtRest(notLong), Rest::silent);
    const FakeDaemon silent(oneByOne({lost}));
    EXPECT_EQ(Client(silent.address()).presence(notLong), Presence::silent);
    const FakeDaemon daemon(oneByOne({lost, {resting}}));
    EXPECT_EQ(Client(daemon.address()).presence(longEnough), Presence::answers);
}

TEST(Client, knowsTheSameDaemonByAnotherName) {
    EXPECT_TRUE(Client({"127.0.0.1", 7781}).hasSamePeer(Client({"127.1", 7781})));
    EXPECT_FALSE(Client({"127.0.0.1", 7781}).hasSamePeer(Client({"127.0.0.1", 7782})));
    EXPECT_FALSE(Client({"127.0.0.1", 7781}).hasSamePeer(Client({"127.0.0.2", 7781})));
}

TEST(Client, sendsACommandOnceAndWaitsForNothing) {
    const FakeDaemon daemon(oneByOne({lost}));
    Client(daemon.address()).send(Request("ZOOM  5"));
    ASSERT_TRUE(test::waitUntil([&] { return !daemon.commands().empty(); }));
    EXPECT_THAT(daemon.commands(), testing::ElementsAre("ZOOM 5"));
    EXPECT_NO_THROW(Client(deserted()).send(Request("ON")));
}

TEST(Client, findsAHostByItsName) {
    EXPECT_NO_THROW(Client({"localhost", 1}));
    EXPECT_THROW(Client({"no such host", 1}), std::runtime_error);
}

TEST(Client, waitsUntilTheLensIsAtRest) {
    const FakeDaemon daemon(oneByOne({{announced},
                                      {moving},
                                      {"IDLE; zoom: resetting>5 focus: 0/3;\n"},
                                      {announced},
                                      {moving},
                                      {resting}}));
    std::vector<DaemonStatus> seen;
    const auto observer = [&seen](const DaemonStatus& status) { seen.push_back(status); };
    EXPECT_EQ(Client(daemon.address()).waitUntilAtRest(longEnough, observer), Rest::reached);
    ASSERT_GE(seen.size(), 6U);
    EXPECT_EQ(seen.front(), DaemonStatus::parse(announced));
    EXPECT_EQ(seen.back(), DaemonStatus::parse(resting));
}

TEST(Client, isNotTakenInByAMoveThatHasNotBegunYet) {
    const FakeDaemon daemon(oneByOne({{resting}, {moving}, {resting}}));
    bool hasMoved = false;
    const auto observer = [&](const DaemonStatus& status) { hasMoved |= status.busy; };
    EXPECT_EQ(Client(daemon.address()).waitUntilAtRest(longEnough, observer), Rest::reached);
    EXPECT_TRUE(hasMoved);
}

TEST(Client, doesNotWaitForEver) {
    const FakeDaemon busy(oneByOne({{moving}}));
    EXPECT_EQ(Client(busy.address()).waitUntilAtRest(notLong), Rest::busy);
    const FakeDaemon onItsWay(oneByOne({{announced}}));
    EXPECT_EQ(Client(onItsWay.address()).waitUntilAtRest(notLong), Rest::busy);
    const FakeDaemon silent(oneByOne({lost}));
    EXPECT_EQ(Client(silent.address()).waitUntilAtRest(notLong), Rest::silent);
}

TEST(Client, doesNotTakeALateAnswerForThatToTheNextQuestion) {
    const FakeDaemon daemon(oneByOne({{resting, resting}, {moving}}));
    const Client client(daemon.address());
    EXPECT_EQ(client.status(longEnough), DaemonStatus::parse(resting));
    EXPECT_EQ(client.status(longEnough), DaemonStatus::parse(moving));
}

}  // namespace
}  // namespace orx::client
