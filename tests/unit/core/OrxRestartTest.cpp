// RESTART: the daemon goes down and comes up anew within the process.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ProcessCounts.h"
#include "support/WaitUntil.h"
#include "unit/core/OrxBench.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

const std::string startMessage = "-- ORX logging start --";
const std::string endMessage = "-- ORX logging end --";

class OrxRestart : public OrxBench {};

TEST_F(OrxRestart, ServesOnAfterwards) {
    build();
    const auto output = serve({{0, "RESTART"}, {0, "ON\nQUIT"}});
    const auto restarting = output.find("ORX restarting...\n");
    ASSERT_NE(restarting, std::string::npos) << output;
    EXPECT_LT(output.find("executing cmd: RESTART"), restarting);
    EXPECT_GT(output.find("[LISTENER] closing socket #"), restarting);
    EXPECT_GT(output.find("executing cmd: ON"), restarting);
    EXPECT_EQ(output.find("ORX restarting...\n", restarting + 1), std::string::npos);
    EXPECT_EQ(sent(), "<on>");
}

TEST_F(OrxRestart, DiscardsWhatStillWaited) {
    settings["controlchannel"] = channel() + "," + channel(1);
    build();
    const auto output = serveToTheEnd({{0, "RESTART\nON"}, {1, "QUIT"}});
    EXPECT_THAT(output, Not(HasSubstr("cmd=ON")));
    EXPECT_EQ(sent(), "");
}

TEST_F(OrxRestart, LogsTheEndAndTheStart) {
    settings["logfile"] = folder.file("first.log");
    build();
    settings["logfile"] = folder.file("second.log");
    configure();
    serve({{0, "RESTART"}, {0, "QUIT"}});
    const auto first = logged("first.log");
    ASSERT_GE(first.size(), 2U);
    EXPECT_EQ(first[0], endMessage);
    EXPECT_EQ(first[1], "ORX restarting...");
    EXPECT_EQ(first.back(), startMessage);
    EXPECT_EQ(logged("second.log").back(), startMessage);
}

TEST_F(OrxRestart, ForgetsTheLogOfBefore) {
    build();
    serve({{0, "RESTART"}, {0, "QUIT"}});
    EXPECT_EQ(logged().back(), startMessage);
    EXPECT_THAT(logged(), Not(Contains("ORX restarting...")));
    EXPECT_THAT(logged(), Not(Contains(endMessage)));
    EXPECT_THAT(logged(), Contains(HasSubstr("cmd=QUIT")));
    EXPECT_THAT(logged(), Not(Contains(HasSubstr("cmd=RESTART"))));
}

TEST_F(OrxRestart, ReadsTheSameConfigurationAnew) {
    const auto config = configuration();
    outputOf([this, &config] { daemon = std::make_unique<Orx>(config); });
    settings["controlchannel"] = channel(1);
    settings["serial.device"] = folder.write("line2", "");
    settings["cmd.CMD_POWER_ON"] = "&CMD_ZOOM_PLUS2";
    configure();
    EXPECT_THAT(serve({{0, "ON\nRESTART"}, {1, "ON\nQUIT"}}), Not(HasSubstr("ERROR")));
    EXPECT_EQ(sent(), "<on>");
    EXPECT_EQ(contentOf(folder.file("line2")), "<2>");
    EXPECT_EQ(config->controlChannel(), std::vector{channel(1)});
    EXPECT_TRUE(config->hasAlias("CMD_POWER_ON"));
}

TEST_F(OrxRestart, ReadsTheDefinitionFileAnew) {
    build();
    DefinitionImage definitions;
    definitions.commands = {{1, "ON"}};
    definitions.blocks = {{.name = "MODEL", .strings = {{1, "<new>"}}}};
    folder.write("orx.ccd", definitions.bytes());
    serve({{0, "RESTART"}, {0, "ON\nQUIT"}});
    EXPECT_EQ(sent(), "<new>");
}

TEST_F(OrxRestart, LeavesDumbModeForAProjector) {
    settings["projector"] = "OTHER";
    build();
    settings["projector"] = "MODEL";
    configure();
    const auto output = serveToTheEnd({{0, "ON\nRESTART"}, {0, "ON\nQUIT"}});
    EXPECT_THAT(output, HasSubstr("[PROJCTRL] start\n"));
    EXPECT_EQ(output.find("dumb mode"), output.rfind("dumb mode"));
    EXPECT_EQ(sent(), "<on>");
}

TEST_F(OrxRestart, LeavesAProjectorForDumbMode) {
    build();
    settings["projector"] = "OTHER";
    configure();
    const auto output = serve({{0, "ON\nRESTART"}, {0, "ON\nQUIT"}});
    EXPECT_LT(output.find("ORX restarting...\n"), output.find("dumb mode"));
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DUMB \n");
    EXPECT_EQ(sent(), "<on>");
}

TEST_F(OrxRestart, HappensAgainAndAgainThroughAnyChannel) {
    constexpr int rounds = 60;
    settings["projector"] = "OTHER";
    settings["controlchannel"] = channel() + "," + channel(1) + "," + channel(2);
    build();
    const auto descriptors = openDescriptors();
    std::vector<Request> requests;
    for (int round = 0; round < rounds; ++round)
        requests.emplace_back(round % 3, "RESTART");
    requests.emplace_back(0, "QUIT");
    std::size_t restarts = 0;
    const auto output = serve(requests);
    for (auto place = output.find("ORX restarting..."); place != std::string::npos;
         place = output.find("ORX restarting...", place + 1))
        ++restarts;
    EXPECT_EQ(restarts, rounds);
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_THAT(release(), HasSubstr("[LISTENER] closing socket #"));
}

TEST_F(OrxRestart, LeavesNoThreadBehind) {
    build();
    serve({{0, "RESTART"}, {0, "QUIT"}});
    release();
    const auto threads = runningThreads();
    build();
    serve({{0, "RESTART"}, {0, "RESTART"}, {0, "RESTART"}, {0, "QUIT"}});
    release();
    EXPECT_TRUE(waitUntil([threads] { return runningThreads() <= threads; }));
}

/// A change for the worse while the daemon runs, and the error that RESTART then ends with.
class FailingRestart : public OrxBench {
  protected:
    void expectError(const std::string& expected, const std::function<void()>& spoil) {
        build();
        spoil();
        const auto output = serve({{0, "RESTART"}});
        EXPECT_THAT(output, EndsWith("ERROR: " + expected + "\n"));
        EXPECT_THAT(output, HasSubstr("ORX restarting...\n"));
        const auto afterError = release();
        EXPECT_THAT(afterError, Not(HasSubstr("[CMDQ]")));
        const auto messages = logged();
        EXPECT_THAT(messages, Not(Contains(endMessage))) << "torn down before the log was new";
    }

    void expectError(const std::string& expected) {
        expectError(expected, [this] { configure(); });
    }
};

TEST_F(FailingRestart, NamesAWrongLineOfTheConfiguration) {
    build();
    folder.write("orx.cfg", "garbage\n");
    const auto output = serve({{0, "RESTART"}});
    EXPECT_THAT(output,
                EndsWith("ERROR: [config] " + folder.file("orx.cfg") + ", line 1: parse error\n"));
    EXPECT_EQ(release(), "");
    const auto messages = logged();
    EXPECT_EQ(std::ranges::count(messages, endMessage), 1);
}

TEST_F(FailingRestart, NamesAMissingDefinitionFile) {
    expectError("projector definition file " + folder.file("orx.ccd") + " not found",
                [this] { std::filesystem::remove(folder.file("orx.ccd")); });
}

TEST_F(FailingRestart, NamesAMissingSerialDevice) {
    expectError("[RS232] could not init serial device: No such file or directory",
                [this] { std::filesystem::remove(folder.file("line")); });
}

TEST_F(FailingRestart, NamesAWrongChannelBehindARightOne) {
    expectError("[LISTENER] port missing in interface: nowhere", [this] {
        settings["controlchannel"] += ", nowhere";
        configure();
    });
}

TEST_F(FailingRestart, NamesAWrongChannelInDumbMode) {
    settings["projector"] = "OTHER";
    expectError("[LISTENER] port missing in interface: nowhere", [this] {
        settings["controlchannel"] = "nowhere";
        configure();
    });
}

TEST_F(FailingRestart, LeavesNoDescriptorBehind) {
    const auto descriptors = openDescriptors();
    expectError("[LISTENER] port missing in interface: nowhere", [this] {
        settings["controlchannel"] += ", nowhere";
        configure();
    });
    Status::reset();  // lets go of the axes, and so of the serial line
    EXPECT_EQ(openDescriptors(), descriptors);
}

}  // namespace
}  // namespace orx::test
