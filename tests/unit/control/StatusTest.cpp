// The reply to a status request.
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "control/Status.h"

namespace orx::test {
namespace {

class FakeAxis final : public StatusAxis {
  public:
    FakeAxis(std::string axisName, std::string axisPosition, bool isMoving = false)
        : axis(std::move(axisName)), position(std::move(axisPosition)), busy(isMoving) {}
    ~FakeAxis() override {
        if (onRelease) onRelease();
    }
    FakeAxis(const FakeAxis&) = delete;
    FakeAxis& operator=(const FakeAxis&) = delete;

    [[nodiscard]] const std::string& name() const noexcept override { return axis; }
    [[nodiscard]] bool isBusy() const noexcept override { return busy; }
    [[nodiscard]] std::string positionText() const override { return position; }

    std::string axis;
    std::string position;
    bool busy;
    std::function<void()> onRelease;
};

/// Taken before any test has touched the status.
const std::string replyAtProgramStart = Status::statusReply();

/// Starts from the flags of the program start, and shows them.
class StatusReply : public testing::Test {
  protected:
    StatusReply() {
        Status::reset();
        Status::setDumb(false);
    }
    ~StatusReply() override { Status::reset(); }
};

std::shared_ptr<FakeAxis> addAxis(const std::string& name, const std::string& position,
                                  bool busy = false) {
    auto axis = std::make_shared<FakeAxis>(name, position, busy);
    Status::addAxis(axis);
    return axis;
}

TEST_F(StatusReply, ShowsNoFlagsBeforeTheFirstSetter) {
    EXPECT_EQ(replyAtProgramStart, "IDLE;;\n");
}

TEST_F(StatusReply, BeginsWithHelloOnceAnyFlagWasSet) {
    Status::setDebug(false);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO \n");
}

TEST_F(StatusReply, ShowsTheFlagsInAFixedOrder) {
    struct Case {
        bool hello, lensConfig, dumb, debug;
        const char* reply;
    };
    constexpr bool yes = true;
    constexpr bool no = false;
    const std::vector<Case> cases{
        {no, no, no, no, "IDLE;;\n"},
        {no, no, no, yes, "IDLE;;DEBUG\n"},
        {no, no, yes, no, "IDLE;;DUMB \n"},
        {no, no, yes, yes, "IDLE;;DUMB DEBUG\n"},
        {no, yes, no, no, "IDLE;;LCU \n"},
        {no, yes, no, yes, "IDLE;;LCU DEBUG\n"},
        {no, yes, yes, no, "IDLE;;LCU DUMB \n"},
        {no, yes, yes, yes, "IDLE;;LCU DUMB DEBUG\n"},
        {yes, no, no, no, "IDLE;;HELO \n"},
        {yes, no, no, yes, "IDLE;;HELO DEBUG\n"},
        {yes, no, yes, no, "IDLE;;HELO DUMB \n"},
        {yes, no, yes, yes, "IDLE;;HELO DUMB DEBUG\n"},
        {yes, yes, no, no, "IDLE;;HELO LCU \n"},
        {yes, yes, no, yes, "IDLE;;HELO LCU DEBUG\n"},
        {yes, yes, yes, no, "IDLE;;HELO LCU DUMB \n"},
        {yes, yes, yes, yes, "IDLE;;HELO LCU DUMB DEBUG\n"},
    };
    for (const auto& flags : cases) {
        SCOPED_TRACE(flags.reply);
        Status::clearFlags();
        Status::setDebug(flags.debug);
        Status::setDumb(flags.dumb);
        if (flags.lensConfig) Status::setLensConfigLoaded();
        if (flags.hello) Status::setHello();
        EXPECT_EQ(Status::statusReply(), flags.reply);
    }
}

TEST_F(StatusReply, ShowsEachSetterAtOnce) {
    Status::setLensConfigLoaded();
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO LCU \n");
    Status::setDumb(true);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO LCU DUMB \n");
    Status::setDebug(true);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO LCU DUMB DEBUG\n");
    Status::clearFlags();
    EXPECT_EQ(Status::statusReply(), "IDLE;;DUMB DEBUG\n");
    Status::setHello();
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DUMB DEBUG\n");
    Status::setDumb(false);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DEBUG\n");
    Status::setDebug(false);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO \n");
}

TEST_F(StatusReply, KeepsDumbAndDebugWhenTheFlagsAreCleared) {
    Status::setDumb(true);
    Status::setDebug(true);
    Status::setLensConfigLoaded();
    Status::clearFlags();
    EXPECT_EQ(Status::statusReply(), "IDLE;;DUMB DEBUG\n");
}

TEST_F(StatusReply, ShowsTheFlagsOfBeforeAfterAResetUntilTheNextSetter) {
    Status::clearFlags();
    Status::setLensConfigLoaded();
    Status::setDumb(true);
    Status::setDebug(true);
    Status::reset();
    EXPECT_EQ(Status::statusReply(), "IDLE;;LCU DUMB DEBUG\n");
    Status::setDebug(false);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO \n");
}

TEST_F(StatusReply, ShowsDumbAndDebugSetAfterAReset) {
    Status::reset();
    Status::setDumb(true);
    Status::setDebug(true);
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DUMB DEBUG\n");
}

TEST_F(StatusReply, ShowsTheAxesInTheOrderTheyWereAdded) {
    addAxis("zoom", "1200");
    addAxis("focus", "300");
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: 1200 focus: 300;HELO \n");
    addAxis("", "");
    addAxis("zoom", "-1");
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: 1200 focus: 300 :  zoom: -1;HELO \n");
}

TEST_F(StatusReply, FollowsTheAxes) {
    const auto axis = addAxis("zoom", "1200");
    axis->position = "(resetting)";
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: (resetting);HELO \n");
    axis->busy = true;
    EXPECT_EQ(Status::statusReply(), "BUSY; zoom: (resetting);HELO \n");
    axis->busy = false;
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: (resetting);HELO \n");
}

TEST_F(StatusReply, IsBusyWhileAnyAxisIs) {
    for (int busy = 0; busy < 8; ++busy) {
        SCOPED_TRACE(busy);
        Status::reset();
        addAxis("a", "1", (busy & 1) != 0);
        addAxis("b", "2", (busy & 2) != 0);
        addAxis("c", "3", (busy & 4) != 0);
        EXPECT_EQ(Status::statusReply(),
                  std::string(busy != 0 ? "BUSY" : "IDLE").append("; a: 1 b: 2 c: 3;HELO \n"));
    }
}

TEST_F(StatusReply, SharesTheAxesUntilAReset) {
    auto axis = addAxis("zoom", "1200");
    const std::weak_ptr<FakeAxis> observer = axis;
    axis.reset();
    EXPECT_FALSE(observer.expired());
    Status::reset();
    EXPECT_TRUE(observer.expired());
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO \n");
}

TEST_F(StatusReply, MayBeAskedForByAnAxisThatIsReleased) {
    std::string reply;
    addAxis("zoom", "1200")->onRelease = [&reply] { reply = Status::statusReply(); };
    Status::reset();
    EXPECT_EQ(reply, "IDLE;;HELO \n");
}

}  // namespace
}  // namespace orx::test
