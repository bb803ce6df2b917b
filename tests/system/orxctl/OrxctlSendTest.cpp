// The client sends one command: what it refuses to send, and what the daemon gets.
#include "support/TemporaryFolder.h"
#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OrxctlSend : public OrxctlStory {
  protected:
    void waitForExecution(const std::string& display) const {
        daemon->waitForLine("[CMDQ] executing cmd: " + display + " (rcvd from ctrlchan)");
    }
};

TEST_F(OrxctlSend, SaysNothingOfACommandThatWasSent) {
    startWith(motorModel());
    EXPECT_EQ(call("ON"), done());
    line.waitFor("ON\r");
    EXPECT_THAT(requests(), ElementsAre("STATUS", "ON"));
}

struct Words {
    std::string line;
    std::string display;  ///< as the daemon shows the command
};

TEST_F(OrxctlSend, PassesWordsOnAsTheyAre) {
    startWith(motorModel());
    for (const auto& [words, display] :
         std::vector<Words>{{"KEYSTONEHORI -1.5", "KEYSTONEHORI (-1.5)"},
                            {"KEYSTONEVERT -.25 -2e1", "KEYSTONEVERT (-.25,-2e1)"},
                            {"ROTATION -7", "ROTATION (-7)"},
                            {"INPUT 1 2 3", "INPUT (1,2,3)"},
                            {"RAW 0a 1B ff", "RAW (0a1Bff)"},
                            {"ZOCALEND", "ZOCALEND"},
                            {"Z---", "Z---"}}) {
        EXPECT_EQ(call(words), done()) << words;
        waitForExecution(display);
    }
}

TEST_F(OrxctlSend, TakesOptionsAheadOfTheWordsAndBetweenThem) {
    startWith(motorModel());
    const auto host = "-H " + proxy.address();
    EXPECT_EQ(resultOf(host + " --timeout 60 ROTATION -1"), done());
    EXPECT_EQ(resultOf("ROTATION " + host + " -2"), done());
    EXPECT_EQ(resultOf("ROTATION -3 " + host + " --timeout 60"), done());
    EXPECT_THAT(resultOf(host + " status").output, HasSubstr(proxy.address()));
    EXPECT_THAT(requests(), ElementsAre("STATUS", "ROTATION -1", "STATUS", "ROTATION -2", "STATUS",
                                        "ROTATION -3", "STATUS"));
}

TEST_F(OrxctlSend, FindsTheDaemonByItsConfiguration) {
    startWith(motorModel());
    const TemporaryFolder folder;
    const auto config =
        " --config " + folder.write("orx.cfg", "controlchannel = " + proxy.address() + "\n");
    EXPECT_EQ(resultOf("ON" + config), done());
    line.waitFor("ON\r");
    EXPECT_THAT(resultOf("status" + config).output, HasSubstr(proxy.address()));
    const auto mixed = call("ON" + config);
    EXPECT_EQ(mixed.ending, "exit status 1");
    EXPECT_THAT(mixed.errors, HasSubstr("either --host or --config"));
    EXPECT_THAT(requests(), ElementsAre("STATUS", "ON", "STATUS"));
}

struct Mistake {
    std::string line;
    std::vector<std::string> told;
};

TEST(OrxctlMistakes, AreToldAndNothingIsSent) {
    Proxy silence{nobodysPort};
    for (const auto& [line, told] :
         std::vector<Mistake>{{"ZOM 5", {"unknown command", "did you mean", "\"ZOOM\""}},
                              {"zoom 5", {"unknown command", "\"ZOOM\""}},
                              {"stats", {"unknown command", "\"status\""}},
                              {"CMD_ZOOM_ABS 1", {"keyword", "\"ZOOM\""}},
                              {"ZOOM wide", {"ZOOM", "\"wide\""}},
                              {"ZOOM 99999999999", {"32 bits"}},
                              {"ZOOM", {"without an argument"}},
                              {"ZOOMX 1 2", {"one argument"}},
                              {"KEYSTONEHORI -x", {""}},
                              {"ON 5", {"takes no argument", "\"5\""}},
                              {"RAW 0a1", {"hexadecimal"}},
                              {"RAW zz", {"hexadecimal"}},
                              {"ZOOM 5 --force wide", {"\"wide\""}},
                              {"ZOOM 5 --timeout soon", {"seconds"}},
                              {"QUIT --wait", {"nothing to wait for"}},
                              {"ZOOM 5 status", {"one thing at a time"}},
                              {"--no-such-option", {"--no-such-option"}}}) {
        const auto result = resultOf(line + " -H " + silence.address());
        EXPECT_EQ(result.ending, "exit status 1") << line;
        EXPECT_EQ(result.output, "") << line;
        for (const auto& text : told)
            EXPECT_THAT(result.errors, HasSubstr(text)) << line;
        EXPECT_THAT(silence.requests(), IsEmpty()) << line;
    }
}

TEST(OrxctlMistakes, ShowNegativeNumbersAsTheyWereGiven) {
    for (const auto* const line : {"ZOOM 5 --timeout -5", "commands -5", "ZOOM 5 -H -5", "ON -5",
                                   "completion -5", "run -5", "wait --hosts -5"}) {
        const auto result = resultOf(line);
        EXPECT_THAT(result.errors, HasSubstr("-5")) << line;
        EXPECT_EQ(result.errors.find('\x01'), std::string::npos) << line;
    }
}

/// Everything that waits for an answer in vain waits no longer than this, in seconds.
const std::string briefly = " --timeout 0.1";

TEST(OrxctlSilence, IsToldAndNothingIsSent) {
    Proxy silence{nobodysPort};
    const auto result = resultOf("ZOOMX 5" + briefly + " -H " + silence.address());
    EXPECT_EQ(result, (CallResult{"exit status 2", "",
                                  "orxctl: " + silence.address() +
                                      ": no answer within 0.1 s; nothing was sent\n"}));
    EXPECT_THAT(silence.requests(), AllOf(Contains("STATUS"), testing::Each("STATUS")));
}

TEST(OrxctlSilence, IsToldOfAPortWhereNobodyListens) {
    for (const auto* const line : {"ON", "STATUS", "wait", "ping", "RESTART", "ON --wait"}) {
        const auto result = resultOf(line + briefly + " -H " + controlAddress());
        EXPECT_EQ(result.ending, "exit status 2") << line;
        EXPECT_THAT(result.output + result.errors, HasSubstr("no answer")) << line;
    }
}

TEST(OrxctlSilence, DoesNotKeepAForcedCommandBack) {
    Proxy silence{nobodysPort};
    EXPECT_EQ(resultOf("ZOOMX 5 --force -H " + silence.address()), done());
    EXPECT_THAT(silence.requests(), ElementsAre("ZOOMX 5"));
}

class OrxctlDumbMode : public OrxctlSend {
  protected:
    void SetUp() override { startDumb(); }
};

TEST_F(OrxctlDumbMode, RefusesWhatOnlyAProjectorCanDo) {
    for (const auto* const command : {"ON", "ZOOMX 5", "MEMSAVE 1", "RAW 41", "SETDELAY 5"}) {
        const auto result = call(command);
        EXPECT_EQ(result.ending, "exit status 4") << command;
        EXPECT_THAT(result.errors, AllOf(HasSubstr("dumb mode"), HasSubstr("was not sent")))
            << command;
    }
    EXPECT_THAT(proxy.requests(), testing::Each("STATUS"));
}

TEST_F(OrxctlDumbMode, SendsItWhereItIsForced) {
    EXPECT_EQ(call("ZOOMX 5 --force"), done());
    waitForExecution("ZOOMX (5)");
}

TEST_F(OrxctlDumbMode, StopsNothingThatTheDaemonDoesItself) {
    EXPECT_THAT(call("STATUS").output, HasSubstr("HELO DUMB"));
    EXPECT_EQ(call("CLEARFLAGS"), done());
    EXPECT_EQ(status(), "IDLE;;DUMB \n");
    const auto place = daemon->place();
    EXPECT_EQ(call("RESTART"), done());
    daemon->waitForLine("[CMDQ] start", place);
    EXPECT_EQ(call("QUIT"), done());
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

}  // namespace
}  // namespace orx::test
