// The three debug levels of the serial line, as console and log show them.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A file with two models, every number of which is known.
DefinitionImage knownDefinitions() {
    BlockImage first = Model::fastLine();
    first.name = "FIRST";
    first.strings = {{7, "ON\r"}, {112, std::string("\x02\0\xffZ", 4)}, {9, ""}};
    first.descriptors = {{112, 1, -5, 300, 1, 3, 'A'}, {112, 2, -5000, 2550, 2, 0x23, 'D'}};
    first.checksum = 1;
    BlockImage second = Model::fastLine();
    second.name = "B";
    second.baudrate = 115200;
    second.bytesize = 7;
    second.parity = 2;
    second.stopbits = 2;
    second.delay = 20;
    second.timeout = 100;
    return {.commands = {{7, "ON"}, {112, "INPUT"}}, .blocks = {first, second}};
}

/// What the dump of that file says.
const std::vector<std::string> knownDump{
    "[HEADER]",
    "                  magic: [77 81 6a cd cc df ab]",
    "endiancheck 8bit random: 171",
    "               revision: 13",
    "           compile date: 20190613",
    "        cmd list length: 13",
    "                 # cmds: 2",
    "  projector list length: 16",
    "           # projectors: 2",
    "",
    "[COMMAND LIST]",
    "  id: 07  cmd string: ON",
    "  id: 09  cmd string: ",
    "  id: 112  cmd string: INPUT",
    "",
    "[PROJECTOR LIST]",
    "  name: B  offset: 111 length: 14",
    "  name: FIRST  offset: 51 length: 60",
    "",
    "[PROJECTOR: B]",
    "  baudrate: 115200",
    "  bytesize: 7",
    "     delay: 20",
    "    parity: 2",
    "  stopbits: 2",
    "   timeout: 100",
    "  checksum: 0",
    "  commands: ",
    "",
    "[PROJECTOR: FIRST]",
    "  baudrate: 9600",
    "  bytesize: 8",
    "     delay: 0",
    "    parity: 0",
    "  stopbits: 1",
    "   timeout: 0",
    "  checksum: 1",
    "  commands: ",
    "     -> ",
    R"(    INPUT -> \x02\x00\xffZ)",
    "                    arg: 1 type: A pos: 1 min: -5 max: 300 len: 3",
    "                    arg: 2 type: D pos: 2 min: -50 max: 25.5 len: 3.2",
    R"(    ON -> ON\x0d)",
};

class DebugLevel : public Story {
  protected:
    void startKnown(const std::string& lines) {
        installation.writeDefinitions(knownDefinitions());
        installation.writeConfiguration(configuration("FIRST", lines));
        start();
    }
    /// The console lines from the first one that begins with `head` on, `count` of them.
    [[nodiscard]] std::vector<std::string> linesFrom(const std::string& head,
                                                     std::size_t count) const {
        auto lines = daemon->lines();
        while (!lines.empty() && !lines.front().starts_with(head))
            lines.erase(lines.begin());
        lines.resize(std::min(lines.size(), count));
        return lines;
    }
};

TEST_F(DebugLevel, ZeroShowsNeitherTheFileNorTheTraffic) {
    startKnown("serial.debug = 0\n");
    send("ON");
    waitUntilExecuted();
    EXPECT_THAT(daemon->lines(), Not(Contains("[HEADER]")));
    EXPECT_THAT(daemon->lines(), Not(Contains(HasSubstr("4f 4e"))));
    EXPECT_THAT(installation.log(), Contains(R"(sending ON\x0d\xaa [4f 4e 0d aa])"));
    EXPECT_EQ(line.written(), "ON\r\xAA");
}

TEST_F(DebugLevel, OneShowsTheDefinitionFileAtTheStart) {
    startKnown("serial.debug = 1\n");
    EXPECT_THAT(linesFrom("[HEADER]", knownDump.size()), ElementsAreArray(knownDump));
    const auto place = daemon->waitForText("[RS232] fd ");
    EXPECT_LT(place, daemon->waitForLine("[HEADER]"));
    EXPECT_LT(daemon->waitForLine(knownDump.back()), daemon->waitForText("[LENSMEM]"));
}

TEST_F(DebugLevel, OneShowsTheFileAsItIsWhateverTheConfigurationSays) {
    startKnown(
        "serial.debug = 1\nserial.baudrate = 19200\nserial.bytesize = 7\nserial.delay = 3\n"
        "serial.parity = odd\nserial.stopbits = 2\nserial.timeout = 5\n"
        "cmd.CMD_POWER_OFF = &CMD_POWER_ON\ncmd.CMD_POWER_ON = &CMD_INPUT_SELECT\n");
    EXPECT_THAT(linesFrom("[HEADER]", knownDump.size()), ElementsAreArray(knownDump));
    daemon->waitForText("serial init " + line.device() + " @ 19200 baud, delay = 3ms");
}

TEST_F(DebugLevel, OneShowsTheTraffic) {
    startKnown("serial.debug = 1\n");
    send("ON\nRAW 00417f80");
    line.waitFor(std::string("ON\r\xAA\0A\x7f\x80", 8));
    waitUntilExecuted();
    const auto place = daemon->waitForLine(R"([RS232] sending: ON\x0d\xaa [4f 4e 0d aa])");
    daemon->waitForLine(R"([RS232] sending: \x00A\x7f\x80 [00 41 7f 80])", place);
    EXPECT_THAT(installation.log(), Contains(R"(sending ON\x0d\xaa [4f 4e 0d aa])"));
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;\n");
}

TEST_F(DebugLevel, TwoNeverTouchesTheDevice) {
    startKnown("serial.debug = 2\n");
    send("ON\nRAW 41");
    waitUntilExecuted();
    const std::string sent = R"(DEBUG - command string is: ON\x0d\xaa [4f 4e 0d aa])";
    auto place = daemon->waitForLine("[CMDQ] executing cmd: ON (rcvd from ctrlchan)");
    place = daemon->waitForLine(R"([RS232] ON\x0d\xaa)", place);
    place = daemon->waitForLine(sent, place);
    place = daemon->waitForLine("[RS232] A", place);
    daemon->waitForLine("DEBUG - command string is: A [41]", place);
    EXPECT_THAT(installation.log(), Contains(sent));
    EXPECT_THAT(installation.log(), Not(Contains(StartsWith("sending "))));
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "");
}

TEST_F(DebugLevel, TwoStartsWithoutADevice) {
    startKnown("serial.debug = 2\nserial.device = /nonexistent/tty\n");
    const std::string entering =
        "[RS232] entering NO_SERIAL_DEVICE debug mode: serial init & write disabled";
    EXPECT_EQ(daemon->lines().at(1), entering);
    EXPECT_THAT(linesFrom("[HEADER]", knownDump.size()), ElementsAreArray(knownDump));
    const std::string logged = "# serial debug mode: not writing to serial port";
    EXPECT_THAT(installation.log(), Contains(logged));
    EXPECT_THAT(daemon->lines(), Not(Contains(logged)));
    EXPECT_THAT(daemon->lines(), Not(Contains(HasSubstr("serial init /"))));
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;HELO DEBUG\n");
}

TEST_F(DebugLevel, OutsideOfItsRangeIsIgnored) {
    startKnown("serial.debug = 3\n");
    EXPECT_THAT(daemon->lines(), Not(Contains("[HEADER]")));
    send("ON");
    line.waitFor("ON\r\xAA");
}

}  // namespace
}  // namespace orx::test
