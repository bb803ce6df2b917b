// Show files: what several commands make together.
#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class OrxctlRun : public OrxctlStory {
  protected:
    [[nodiscard]] std::string write(const std::string& text) const {
        return installation.write("show", text);
    }
    [[nodiscard]] CallResult run(const std::string& text, const std::string& options = "") const {
        return call("run " + write(text) + options);
    }
    /// What clients have sent but STATUS.
    [[nodiscard]] std::vector<std::string> commands() {
        auto all = proxy.requests();
        std::erase(all, "STATUS");
        return all;
    }
};

const std::string show = R"(# The picture first.
ON

  ZOOMX 2     # two steps
wait
sleep 0.05
FOCUSX 1
wait 60
KEYSTONEHORI -1.5 # the last line has no end)";

TEST_F(OrxctlRun, DoesOneLineAfterTheOther) {
    startLens(motorModel());
    EXPECT_EQ(run(show), done());
    EXPECT_THAT(commands(), ElementsAre("ON", "ZOOMX 2", "FOCUSX 1", "KEYSTONEHORI -1.5"));
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "ON\rzrz+z+frf+");
}

TEST_F(OrxctlRun, ReadsItsStandardInput) {
    startLens(motorModel());
    EXPECT_EQ(resultOf(toDaemon("run -"), {.inputFile = write(show)}), done());
    EXPECT_THAT(commands(), ElementsAre("ON", "ZOOMX 2", "FOCUSX 1", "KEYSTONEHORI -1.5"));
}

TEST_F(OrxctlRun, WaitsForTheLensBeforeItGoesOn) {
    startAnsweredLens(motorModel());
    Orxctl orxctl(toDaemon("run " + write("ZOOMX 1\nwait\nON\n")));
    line.waitFor("zr");
    expectGoesOn(orxctl);
    line.answer(1);
    line.waitFor("zrz+");
    expectGoesOn(orxctl);
    EXPECT_THAT(commands(), ElementsAre("ZOOMX 1"));
    line.answer(1);
    line.waitFor("zrz+ON\r");
    line.answer(1);
    EXPECT_EQ(orxctl.waitForEnd(), done());
}

/// None of these needs a daemon: the file is wrong before anybody is asked.
TEST_F(OrxctlRun, SendsNothingWhereAnyLineIsWrong) {
    const auto file = write("ON\nZOOM wide\n# ZOM\nZOM 5\nsleep\nsleep 1 2\nwait long\nOFF\n");
    for (const auto& [words, input, name] :
         {std::tuple{"run " + file, std::string("/dev/null"), file},
          {std::string("run -"), file, std::string("input")}}) {
        const auto result = resultOf(toDaemon(words), {.inputFile = input});
        EXPECT_EQ(result.ending, "exit status 1");
        for (const auto* const mistake :
             {":2: ZOOM", ":4: unknown command \"ZOM\"", ":5: ", ":6: ", ":7: "})
            EXPECT_THAT(result.errors, HasSubstr(name + mistake));
        for (const auto* const right : {":1: ", ":3: ", ":8: "})
            EXPECT_THAT(result.errors, Not(HasSubstr(name + right)));
    }
    EXPECT_THAT(proxy.requests(), IsEmpty());
}

TEST_F(OrxctlRun, NeedsItsFile) {
    const auto result = call("run /nonexistent/show");
    EXPECT_EQ(result.ending, "exit status 1");
    EXPECT_THAT(result.errors, HasSubstr("/nonexistent/show"));
    EXPECT_THAT(proxy.requests(), IsEmpty());
}

TEST_F(OrxctlRun, EndsWithALineThatFails) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0");
    const auto result = run("ZOOMX 2\nwait 2\nON\n");
    EXPECT_EQ(result, failure(3, installation.file("show") + ":2: not at rest within 2 s"));
    EXPECT_THAT(commands(), ElementsAre("ZOOMX 2"));
    line.waitFor("z+");
    line.answer(2);
    waitForPositions("2/2000", "undefined");
}

TEST_F(OrxctlRun, EndsForADaemonThatRefusesALine) {
    startDumb();
    const auto result = run("CLEARFLAGS\nON\nCLEARFLAGS\n");
    EXPECT_EQ(result.ending, "exit status 4");
    EXPECT_THAT(result.errors, AllOf(HasSubstr("show:2: "), HasSubstr("ON was not sent")));
    EXPECT_THAT(commands(), ElementsAre("CLEARFLAGS"));
}

TEST_F(OrxctlRun, GoesOnForTheOtherDaemons) {
    startLens(motorModel());
    Proxy silence{nobodysPort};
    const auto result = resultOf("run " + write("ON\nOFF\n") + " --timeout 0.5 -H " +
                                 silence.address() + "," + proxy.address());
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_THAT(result.output, AllOf(HasSubstr("nothing was sent"), HasSubstr("done")));
    EXPECT_THAT(commands(), ElementsAre("ON", "OFF"));
    EXPECT_THAT(silence.requests(), Each("STATUS"));
}

}  // namespace
}  // namespace orx::test
