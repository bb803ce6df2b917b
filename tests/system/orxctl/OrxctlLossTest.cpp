// A network that loses, delays and doubles datagrams.
#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;

class OrxctlLoss : public OrxctlStory {
  protected:
    /// How often the queue has executed the command that it shows so.
    [[nodiscard]] std::size_t executions(const std::string& display) const {
        const auto lines = daemon->lines();
        return static_cast<std::size_t>(std::ranges::count(
            lines, "[CMDQ] executing cmd: " + display + " (rcvd from ctrlchan)"));
    }
    /// A lens at zoom 0 where every step waits for an answer.
    void startAtZero() {
        startAnsweredLens(motorModel());
        send("OVERRIDEZOPOS 0");
        waitForPositions("0/2000", "undefined");
    }
};

TEST_F(OrxctlLoss, IsMadeGoodByAskingAgain) {
    startLens(motorModel());
    proxy.setRule(Proxy::dropFirstReplies(3));
    const auto result = call("status --timeout 60");
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_THAT(result.output, HasSubstr("undefined"));
    EXPECT_THAT(proxy.count("STATUS"), Ge(4U));
}

/// Pauses of 50 ms each would be 40 questions in two seconds; a busy machine makes fewer of them,
/// never more.
TEST_F(OrxctlLoss, MakesThePausesGrow) {
    proxy.setRule(Proxy::dropAll);
    EXPECT_EQ(call("status").ending, "exit status 2");
    EXPECT_THAT(proxy.count("STATUS"), AllOf(Ge(2U), Le(6U)));
}

TEST_F(OrxctlLoss, IsMadeGoodWhereverItStrikes) {
    startLens(motorModel());
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        proxy.setRule(Proxy::dropHalf(seed));
        EXPECT_EQ(call("ping --timeout 60").ending, "exit status 0") << seed;
    }
}

TEST_F(OrxctlLoss, NeverSendsACommandTwice) {
    startLens(motorModel());
    proxy.setRule(Proxy::dropHalf(7));
    EXPECT_EQ(call("ZOOMX 3 --confirm --timeout 60").ending, "exit status 0");
    EXPECT_EQ(call("wait --timeout 60").ending, "exit status 0");
    EXPECT_EQ(proxy.count("ZOOMX 3"), 1U);
    proxy.setRule(Proxy::dropReplies);
    EXPECT_EQ(call("AZ+ --force --timeout 1").ending, "exit status 0");
    EXPECT_EQ(call("AZ+ --force --wait --timeout 1").ending, "exit status 2");
    EXPECT_EQ(proxy.count("AZ+"), 2U);
    waitUntilExecuted();
    EXPECT_EQ(executions("ZOOMX (3)"), 1U);
    EXPECT_EQ(executions("AZ+"), 2U);
}

TEST_F(OrxctlLoss, LeavesRepliesThatComeTwiceWithoutEffect) {
    startAtZero();
    proxy.setRule([](const Proxy::Datagram& datagram) {
        return datagram.isReply ? Proxy::Fate::twice : Proxy::Fate::pass;
    });
    Orxctl orxctl(toDaemon("ZOOMX 2 --wait --confirm"));
    line.waitFor("z+");
    expectGoesOn(orxctl);
    line.answer(2);
    EXPECT_EQ(orxctl.waitForEnd(), done("confirmed\n"));
    EXPECT_EQ(executions("ZOOMX (2)"), 1U);
}

/// The command is under way for longer than the question behind it, whose answer is that the lens
/// is at rest.
TEST_F(OrxctlLoss, DoesNotLetOneAnswerEndTheWaitForACommandThatIsStillUnderWay) {
    startAtZero();
    proxy.setRule([answered = 0](const Proxy::Datagram& datagram) mutable {
        if (datagram.text == "ZOOMX 2") return Proxy::Fate::hold;
        return datagram.isReply || ++answered <= 2 ? Proxy::Fate::pass : Proxy::Fate::drop;
    });
    Orxctl orxctl(toDaemon("ZOOMX 2 --wait"));
    proxy.waitForMore("STATUS", 3);
    EXPECT_EQ(proxy.count("ZOOMX 2"), 1U);
    proxy.release();
    line.waitFor("z+");
    proxy.setRule([](const Proxy::Datagram&) { return Proxy::Fate::pass; });
    expectGoesOn(orxctl);
    line.answer(2);
    EXPECT_EQ(orxctl.waitForEnd(), done());
}

/// That the lens was at rest before the move is told late, and so often that it would be believed.
TEST_F(OrxctlLoss, LetsNoLateReplyTellOfWhatWasBefore) {
    startAtZero();
    proxy.setRule([](const Proxy::Datagram& datagram) {
        return datagram.isReply && datagram.number == 1 ? Proxy::Fate::hold : Proxy::Fate::pass;
    });
    Orxctl orxctl(toDaemon("ZOOMX 2 --wait"));
    line.waitFor("z+");
    proxy.waitForMore("STATUS", 1);
    proxy.release(100);
    expectGoesOn(orxctl);
    line.answer(2);
    EXPECT_EQ(orxctl.waitForEnd(), done());
}

/// A command that waits behind a reset keeps its channel from answering.
TEST_F(OrxctlLoss, IsNoneWhereTheDaemonAnswersLate) {
    auto model = stepperModel();
    model.line.timeout = waitsForAnswer;
    startLens(model, "abszoom.resetsteps = 4\n");
    send("ZOOMRESET");
    line.waitFor("Z<");
    send("ON");
    daemon->waitForText("cmd=ON");
    Orxctl status(toDaemon("status --timeout 60"));
    Orxctl move(toDaemon("ZOOMX 1 --wait --timeout 60"));
    proxy.waitForMore("STATUS", 6);
    EXPECT_FALSE(status.hasEnded());
    EXPECT_EQ(proxy.count("ZOOMX 1"), 0U);
    line.answer(6);
    line.waitFor("Z<Z<Z<Z<ON\r");
    const auto result = status.waitForEnd();
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_THAT(result.output, HasSubstr("0/2000"));
    EXPECT_EQ(move.waitForEnd(), done());
    EXPECT_EQ(line.written(), "Z<Z<Z<Z<ON\rz+");
}

TEST_F(OrxctlLoss, IsNoneWhileTheCommandItselfWaitsBehindAReset) {
    auto model = stepperModel();
    model.line.timeout = waitsForAnswer;
    startLens(model, "abszoom.resetsteps = 2\n");
    send("ZOOMRESET");
    line.waitFor("Z<");
    Orxctl orxctl(toDaemon("ZOOMX 1 --wait --timeout 60"));
    proxy.waitForMore("ZOOMX 1", 1);
    proxy.waitForMore("STATUS", 4);
    EXPECT_FALSE(orxctl.hasEnded());
    line.answer(3);
    EXPECT_EQ(orxctl.waitForEnd(), done());
    EXPECT_EQ(axes(), "IDLE; zoom: 1/2000 focus: undefined");
}

}  // namespace
}  // namespace orx::test
