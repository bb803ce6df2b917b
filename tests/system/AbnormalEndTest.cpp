// What a command cannot do ends the process at once, and not as if all were well.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::Not;
using testing::StartsWith;

class AbnormalEnd : public Story {
  protected:
    /// Sends `command` to the running daemon; expects it to end the process.
    void expectEndBy(const std::string& command) {
        daemon->expectErrorText();
        send(command);
        EXPECT_THAT(daemon->waitForEnd(), StartsWith("signal ")) << command;
        EXPECT_THAT(daemon->lines(), Contains(StartsWith("[CMDQ] executing cmd: ")).Times(1));
        EXPECT_THAT(daemon->lines(), Not(Contains("[CMDQ] stop.")));
        EXPECT_THAT(installation.log(), Not(Contains("-- ORX logging end --")));
    }
    /// A model whose KEYSTONEVERT takes an argument like this.
    static Model modelWith(const Argument& argument) {
        Model model{.name = "KEYSTONE"};
        model.commands = {{"KEYSTONEVERT", "K=\r"}};
        model.arguments = {argument};
        model.arguments.front().keyword = "KEYSTONEVERT";
        return model;
    }
};

TEST_F(AbnormalEnd, ComesWithAWordThatIsNoWholeNumber) {
    for (const auto* word : {"inf", "nan", ".5", "99999999999"}) {
        startWith(modelWith({.max = 9, .pos = 2, .len = 1, .type = 'A'}));
        expectEndBy("KEYSTONEVERT " + std::string(word));
        EXPECT_EQ(line.written(), "");
    }
}

TEST_F(AbnormalEnd, ComesWithAnArgumentBehindTheEndOfTheCommand) {
    startWith(modelWith({.max = 9, .pos = 5, .len = 1, .type = 'A'}));
    expectEndBy("KEYSTONEVERT 1");
    EXPECT_EQ(line.written(), "");
}

TEST_F(AbnormalEnd, ComesWithALensMemoryThatCannotBeWritten) {
    for (const auto* command : {"MEMSAVE 1", "MEMCLEAR", "ZOCALEND 5"}) {
        installation.block("var/lensmemory.cfg");
        startWith(motorModel());
        expectEndBy(command);
        EXPECT_EQ(line.written(), "");
    }
}

TEST_F(AbnormalEnd, DoesNotComeWithACommandThatTheDaemonCanDo) {
    startWith(modelWith({.max = 9, .pos = 2, .len = 1, .type = 'A'}));
    send("KEYSTONEVERT 5.5");
    line.waitFor("K=5\r");
    EXPECT_EQ(quit(), "exit status 0");
}

}  // namespace
}  // namespace orx::test
