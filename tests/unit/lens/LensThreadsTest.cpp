// One thread steps an axis while another gives it targets, resets and stops, and a third looks on.
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "lens/LensControl.h"
#include "unit/lens/ControlBench.h"
#include "unit/lens/ThreadedLine.h"

namespace orx::test {
namespace {

/// Gives the processor away until `condition` holds.
template <typename Condition>
void waitUntil(Condition condition) {
    while (!condition())
        std::this_thread::yield();
}

class LensThreads : public LensBench {
  protected:
    LensThreads() {
        // A log that cannot be opened costs next to nothing, and so the threads meet more often.
        openLog(folder.file("missing/orx.log"));
        std::filesystem::remove_all(INSTALL_PREFIX + "/var");
        std::filesystem::create_directories(INSTALL_PREFIX + "/var");
    }

    std::shared_ptr<Projector> threadedModel() {
        auto model = std::make_shared<Projector>("BENCH", ArgumentTable{},
                                                 CommandStrings{{"AZ+", "z+"},
                                                                {"AZ-", "z-"},
                                                                {"ZOOMRESET", "z0"},
                                                                {"AF+", "f+"},
                                                                {"AF-", "f-"},
                                                                {"FOCUSRESET", "f0"}},
                                                 0);
        model->setConnector(std::make_shared<SerialConnector>(
            settings, std::make_unique<ThreadedLine>(zoomMotor, focusMotor), time));
        return model;
    }

    Motor zoomMotor{.stepUp = "z+", .stepDown = "z-", .reset = "z0"};
    Motor focusMotor{.stepUp = "f+", .stepDown = "f-", .reset = "f0"};
    YieldingTime time;
};

/// An axis of a hundred thousand steps whose moves run on a thread of their own.
class MovingAxis {
  public:
    explicit MovingAxis(std::shared_ptr<Projector> model) : axis(std::move(model), zoomCommands) {
        axis.setParameters({.lockInMode = 4});
        axis.setRange(0, 100'000);
        give("OVERRIDEZOPOS 0");
        mover = std::thread([this] {
            while (!done) {
                axis.moveStep();
                ++movesEnded;
                std::this_thread::yield();
            }
        });
        onlooker = std::thread([this] {
            while (!done) {
                if (!axis.positionText().empty() && axis.isBusy()) ++busyLooks;
                std::this_thread::yield();
            }
        });
    }
    MovingAxis(const MovingAxis&) = delete;
    MovingAxis& operator=(const MovingAxis&) = delete;
    ~MovingAxis() { end(); }

    void give(const std::string& text) { axis.handleCommand(Command(text)); }

    /// Waits for a whole move, or look at the target, that has begun after this call; the axis is
    /// then at its target, whatever the move before it still had under way.
    void waitForArrival() const {
        const unsigned before = movesEnded;
        waitUntil([&] { return movesEnded - before >= 2; });
    }

    /// Ends the threads.
    void end() {
        done = true;
        if (mover.joinable()) mover.join();
        if (onlooker.joinable()) onlooker.join();
    }

    LensControl axis;
    std::atomic<int> busyLooks = 0;

  private:
    std::atomic<unsigned> movesEnded = 0;
    std::atomic<bool> done = false;
    std::thread mover;
    std::thread onlooker;
};

TEST_F(LensThreads, NeverLoseTheZeroOfAReset) {
    constexpr int rounds = 3000;
    outputOf([this] {
        MovingAxis moving(threadedModel());
        for (int round = 0; round < rounds; ++round) {
            // Far up, so that a position from before the reset could not be mistaken.
            moving.give("ZOOMX " + std::to_string(50'000 + round));
            const unsigned before = zoomMotor.steps;
            const auto some = 3U + static_cast<unsigned>(round) % 7U;
            waitUntil([&] { return zoomMotor.steps - before >= some; });
            moving.give("ZOOMRESET");
            moving.waitForArrival();
            ASSERT_EQ(moving.axis.positionText(), "0/100000");
            // A step that was under way when the reset began is all that may come after it.
            ASSERT_LE(std::abs(zoomMotor.place), 1) << "round " << round;
        }
        EXPECT_GT(moving.busyLooks, 0);
    });
}

TEST_F(LensThreads, LetAStopEndAMoveAtItsNextStep) {
    constexpr int rounds = 200;
    outputOf([this] {
        for (int round = 0; round < rounds; ++round) {
            MovingAxis moving(threadedModel());
            const unsigned before = zoomMotor.steps;
            moving.give("ZOOMX 50000");
            const auto some = 1U + static_cast<unsigned>(round) % 5U;
            waitUntil([&] { return zoomMotor.steps - before >= some; });
            moving.axis.stop();
            const unsigned atStop = zoomMotor.steps;
            waitUntil([&] { return !moving.axis.isBusy(); });
            moving.give("ZOOMX 7");
            moving.end();
            moving.axis.moveStep();
            ASSERT_LE(zoomMotor.steps - atStop, 1U);
        }
    });
}

TEST_F(LensThreads, CarryOutCommandsWhileTheLoopSteps) {
    constexpr int rounds = 50;
    outputOf([this] {
        const MainConfig mainConfig(folder.write("orx.cfg", "abszoom.lockinmode = 3\n"));
        ProjectorControl control(threadedModel(), mainConfig, time);
        const auto execute = [&control](const std::string& text) {
            control.execute(Command(text));
        };
        const auto statusIs = [](const std::string& begin) {
            return Status::statusReply().starts_with(begin + ";");
        };
        control.start();
        for (int round = 0; round < rounds; ++round) {
            for (const auto* text :
                 {"ZOCALSTART",      "AZ+",           "AZ-",        "ZOCALEND 2000",
                  "FOCALSTART",      "FOCALEND 1000", "ZOOM 65536", "FOCUS 32768",
                  "MEMSAVE 1",       "AZ-",           "SETDELAY 1", "ZOOMX 30",
                  "SETZORSTSTEPS 2", "MEMLOAD 1",     "FOCUSX 9",   "LENSRESET",
                  "OVERRIDEZOPOS 5", "LENSRESET",     "ZOOMX 40",   "FOCUSX 30"}) {
                execute(text);
            }
            waitUntil([&] { return statusIs("IDLE; zoom: 40/2000 focus: 30/1000"); });
            ASSERT_LE(std::abs(zoomMotor.place - 40), 1) << "round " << round;
            ASSERT_LE(std::abs(focusMotor.place - 30), 1) << "round " << round;
        }
        execute("QUIT");
        control.waitUntilStopped();
        EXPECT_FALSE(control.isAlive());
    });
}

}  // namespace
}  // namespace orx::test
