// Definition files shown as tables.
#include <gmock/gmock.h>

#include "Reading.h"
#include "ToolOutput.h"
#include "orxdef/List.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

ToolOutput listOf(const std::string& image) {
    const test::TemporaryFolder folder;
    const auto path = folder.write("orx.ccd", image);
    return outputOf(
        [&path](std::ostream& output, std::ostream& errors) { return list(path, output, errors); });
}

TEST(ListSubcommand, showsModelsCommandsAndSerialLines) {
    const auto result = listOf(imageOf(R"(
[[model]]
name = "LONG NAME"
baudrate = 115200
bytesize = 7
parity = "even"
delay = 20
checksum = "sum8"
[model.commands]
ON = '\x02P\r'
TEST = { send = 'T{1}{{{2}', args = [
    { type = "X", len = 2, min = 0, max = 255 }, { type = "I", len = 1, min = -1, max = 1 }] }
KEYSTONEVERT = { send = 'K{1}', args = [
    { type = "D", digits = 3, decimals = 2, min = -50, max = 12.5 }] }
[[model]]
name = "B"
baudrate = 300
parity = "odd"
stopbits = 2
timeout = 0
)"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, R"(MODEL      BAUD RATE  FRAME  TIMEOUT  DELAY  CHECKSUM  COMMANDS
LONG NAME  115200     7E1    100 ms   20 ms  sum8      3
B          300        8O2    0 ms     0 ms   none      0

LONG NAME

COMMAND       BYTES      ARGUMENTS
KEYSTONEVERT  K{1}       {1} D -50..12.5 len 3.2
ON            \x02P\r
TEST          T{1}{{{2}  {1} X 0..255 len 2
                         {2} I -1..1 len 1

B

COMMAND  BYTES  ARGUMENTS
)");
}

TEST(ListSubcommand, showsOddFilesAsTheDaemonSeesThem) {
    const auto result = listOf(imageOf(R"(
[verbatim]
commands = [{ id = 1, name = 'ON' }, { id = 2, name = 'ON' }]
[[model]]
baudrate = 9600
[model.verbatim]
name = 'a\x00b'
bytesize = 99
checksum = 7
strings = [{ id = 1, bytes = 'old' }, { id = 2, bytes = 'new' }, { id = 9, bytes = 'lost' }]
descriptors = [{ id = 2, number = 4, type = 200, len = 1, pos = 99, min = 5, max = 1 }]
)"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, R"(MODEL   BAUD RATE  FRAME  TIMEOUT  DELAY  CHECKSUM  COMMANDS
a\x00b  9600       99N1   100 ms   0 ms   kind 7    2

a\x00b

COMMAND  BYTES   ARGUMENTS
         lost
ON       new{4}  {4} \xc8 5..1 len 1
)");
}

TEST(ListSubcommand, refusesADamagedFileWithEveryPlace) {
    const auto image = imageOf("[[model]]\nname = 'A'\nbaudrate = 1\n[model.commands]\nON = 'x'\n");
    const auto result = listOf(image.substr(0, image.size() - 1));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, testing::HasSubstr(":byte 33: the block of \"A\" is cut short"));
}

}  // namespace
}  // namespace orx::orxdef
