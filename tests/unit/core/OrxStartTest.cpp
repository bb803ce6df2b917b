// What the daemon builds, from what, and what keeps it from being built.
#include <filesystem>
#include <map>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ProcessCounts.h"
#include "unit/core/OrxBench.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

class OrxStart : public OrxBench {};

TEST_F(OrxStart, ShowsBothAxesOfAProjector) {
    build();
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: undefined focus: undefined;HELO \n");
}

TEST_F(OrxStart, LogsItsBeginningAndItsChannels) {
    settings["controlchannel"] += ", " + channel(1);
    EXPECT_THAT(build(), MatchesRegex("\\[RS232\\] .*\n"
                                      "\\[LENSMEM\\] .*\n"
                                      "\\[LISTENER\\] created socket #[0-9]+ @ " +
                                      channel() +
                                      " .*\n"
                                      "\\[LISTENER\\] created socket #[0-9]+ @ " +
                                      channel(1) + " .*\n"));
    const auto messages = logged();
    ASSERT_GE(messages.size(), 3U);
    EXPECT_EQ(messages.back(), "-- ORX logging start --");
    EXPECT_EQ(messages[1], "listening on " + channel());
    EXPECT_EQ(messages[0], "listening on " + channel(1));
}

TEST_F(OrxStart, ForgetsTheLogOfBefore) {
    openLog(folder.file("orx.log"));
    log("of before", Echo::no);
    build();
    EXPECT_EQ(logged().back(), "-- ORX logging start --");
}

TEST_F(OrxStart, OpensTheSerialLineAsConfigured) {
    settings["serial.baudrate"] = "19200";
    settings["serial.delay"] = "7";
    EXPECT_THAT(build(),
                HasSubstr("serial init " + folder.file("line") + " @ 19200 baud, delay = 7ms\n"));
}

TEST_F(OrxStart, SetsNoFlagWithAProjectorOnALine) {
    showNoFlagsBut([] { Status::setDebug(true); });
    build();
    EXPECT_THAT(Status::statusReply(), HasSubstr(";HELO DEBUG\n")) << "the text of before";
    Status::setHello();
    EXPECT_THAT(Status::statusReply(), HasSubstr(";HELO \n")) << "the flags themselves";
}

TEST_F(OrxStart, ShowsDebugWithAProjectorWithoutALine) {
    settings["serial.debug"] = "2";
    settings["serial.device"] = folder.file("missing");
    build();
    EXPECT_THAT(Status::statusReply(), HasSubstr(";HELO DEBUG\n"));
}

TEST_F(OrxStart, RunsInDumbModeWithoutAKnownProjector) {
    for (const auto* name : {"", "OTHER", "model", "MODE", "MODELL"}) {
        SCOPED_TRACE(name);
        showNoFlagsBut([] {});
        settings["projector"] = name;
        EXPECT_THAT(build(), Not(HasSubstr("[RS232]")));
        EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DUMB \n");
        release();
    }
}

TEST_F(OrxStart, RunsInDumbModeWithoutAProjectorKey) {
    settings.erase("projector");
    build();
    EXPECT_EQ(Status::statusReply(), "IDLE;;HELO DUMB \n");
}

TEST_F(OrxStart, ShowsDebugInDumbModeAtLevelTwoOnly) {
    const std::map<std::string, std::string> flagsOfLevel{
        {"", "HELO DUMB "},  {"0", "HELO DUMB "},      {"1", "HELO DUMB "},
        {"3", "HELO DUMB "}, {"2", "HELO DUMB DEBUG"}, {"-2", "HELO DUMB "},
    };
    settings["projector"] = "OTHER";
    for (const auto& [level, flags] : flagsOfLevel) {
        SCOPED_TRACE(level);
        settings["serial.debug"] = level;
        build();
        EXPECT_EQ(Status::statusReply(), "IDLE;;" + flags + "\n");
        release();
    }
}

TEST_F(OrxStart, DumpsTheDefinitionFileAtAnyDebugLevelAboveZero) {
    for (const std::string level : {"", "0", "3", "1", "2"}) {
        SCOPED_TRACE(level);
        settings["serial.debug"] = level;
        const bool isDumped = level == "1" || level == "2";
        EXPECT_EQ(build().find("[HEADER]\n") != std::string::npos, isDumped);
        release();
    }
}

TEST_F(OrxStart, DumpsTheDefinitionFileAsItIs) {
    settings["serial.debug"] = "1";
    settings["serial.baudrate"] = "19200";
    settings["cmd.CMD_ZOOM_PLUS"] = "&CMD_ZOOM_PLUS2";
    const auto output = build();
    EXPECT_THAT(output, HasSubstr("  baudrate: 9600\n"));
    EXPECT_THAT(output, HasSubstr("    Z+ -> <1>\n"));
    EXPECT_LT(output.find("[RS232]"), output.find("[HEADER]"));
    EXPECT_LT(output.find("[HEADER]"), output.find("[LENSMEM]"));
    EXPECT_LT(output.find("[LENSMEM]"), output.find("[LISTENER]"));
}

TEST_F(OrxStart, DumpsNothingInDumbMode) {
    settings["projector"] = "OTHER";
    settings["serial.debug"] = "1";
    EXPECT_THAT(build(), Not(HasSubstr("[HEADER]")));
}

TEST_F(OrxStart, ListensNowhereElseThanConfigured) {
    settings["controlchannel"] = channel(1);
    build();
    EXPECT_THAT(logged(), testing::Contains("listening on " + channel(1)));
    EXPECT_THAT(logged(), Not(testing::Contains("listening on " + channel())));
}

class OrxStartError : public OrxBench {};

TEST_F(OrxStartError, ComesOfAMissingDefinitionFile) {
    settings["definitionfile"] = folder.file("none.ccd");
    EXPECT_EQ(buildError(), "projector definition file " + folder.file("none.ccd") + " not found");
}

TEST_F(OrxStartError, ComesOfAWrongDefinitionFile) {
    settings["definitionfile"] = folder.write("wrong.ccd", "none");
    EXPECT_EQ(buildError(),
              "insufficient mana (wrong or missing magic in projector definition file)");
}

TEST_F(OrxStartError, ComesOfAMissingSerialDevice) {
    settings["serial.device"] = folder.file("missing");
    EXPECT_EQ(buildError(), "[RS232] could not init serial device: No such file or directory");
}

TEST_F(OrxStartError, ComesOfASerialSettingThatIsNoNumber) {
    settings["serial.baudrate"] = "fast";
    EXPECT_EQ(buildError(), "stoi");
}

TEST_F(OrxStartError, ComesOfADebugLevelThatIsNoNumberInDumbModeToo) {
    settings["projector"] = "OTHER";
    for (const auto* level : {"high", "99999999999"}) {
        settings["serial.debug"] = level;
        EXPECT_EQ(buildError(), "stoi") << level;
    }
}

TEST_F(OrxStartError, ComesOfAMalformedAlias) {
    settings["cmd.warm"] = "\\xzz";
    EXPECT_EQ(buildError(), "stoi");
    settings["projector"] = "OTHER";  // nobody reads it then
    EXPECT_EQ(buildError(), "no error");
}

TEST_F(OrxStartError, ComesOfAMalformedLensMemory) {
    const auto path = INSTALL_PREFIX + "/var/lensmemory.cfg";
    std::filesystem::create_directories(INSTALL_PREFIX + "/var");
    std::ofstream(path) << "garbage\n";
    const auto error = buildError();
    std::filesystem::remove(path);
    EXPECT_EQ(error, "[config] " + path + ", line 1: parse error");
}

TEST_F(OrxStartError, ComesOfAWrongChannel) {
    settings["controlchannel"] = "nowhere";
    EXPECT_EQ(buildError(), "[LISTENER] port missing in interface: nowhere");
    settings["controlchannel"] = "";
    EXPECT_EQ(buildError(), "[LISTENER] port missing in interface: ");
    settings["controlchannel"] = channel() + "," + channel();
    EXPECT_EQ(buildError(), "[LISTENER] socket bind failed: Address already in use");
}

TEST_F(OrxStartError, ComesOfTheFirstThingThatIsWrong) {
    settings["controlchannel"] = "nowhere";
    settings["cmd.warm"] = "\\xzz";
    EXPECT_EQ(buildError(), "stoi");
    settings["serial.device"] = folder.file("missing");
    EXPECT_THAT(buildError(), HasSubstr("[RS232] could not init serial device"));
    settings["serial.baudrate"] = "fast";
    EXPECT_EQ(buildError(), "stoi");
    settings["definitionfile"] = "";
    EXPECT_EQ(buildError(), "projector definition file  not found");
}

TEST_F(OrxStartError, IsLoggedNeitherAsAnErrorNorAsAnEnd) {
    settings["definitionfile"] = folder.file("none.ccd");
    EXPECT_NE(buildError(), "no error");
    EXPECT_THAT(logged(), ElementsAre("-- ORX logging start --"));
}

TEST_F(OrxStartError, ClosesTheChannelsThatWereOpenAlready) {
    settings["controlchannel"] = channel() + "," + channel(1) + ",nowhere";
    const auto descriptors = openDescriptors();
    const auto output = outputOf([this] { EXPECT_ANY_THROW(Orx{configuration()}); });
    EXPECT_THAT(output, MatchesRegex("(.*\n)*"
                                     "\\[LISTENER\\] created socket #[0-9]+ @ .*\n"
                                     "\\[LISTENER\\] created socket #[0-9]+ @ .*\n"
                                     "\\[LISTENER\\] closing socket #[0-9]+\n"
                                     "\\[LISTENER\\] closing socket #[0-9]+\n"));
    Status::reset();  // lets go of the axes, and so of the serial line
    EXPECT_EQ(openDescriptors(), descriptors);
}

}  // namespace
}  // namespace orx::test
