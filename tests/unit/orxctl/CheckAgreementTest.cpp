// The check against the daemon itself: what it foretells is what a start then meets.
#include <exception>

#include "CheckBench.h"
#include "core/Log.h"
#include "core/Orx.h"
#include "support/CapturedOutput.h"

namespace orx::orxctl {
namespace {

/// A configuration, and the content of the lens memory file.
struct Start {
    std::string name;
    std::string lines;
    std::string memory{};
};

void PrintTo(const Start& start, std::ostream* stream) {
    *stream << start.name;
}

std::string nameOfStart(const testing::TestParamInfo<Start>& start) {
    return start.param.name;
}

class CheckAgrees : public CheckBench, public testing::WithParamInterface<Start> {
  protected:
    ~CheckAgrees() override { openLog(""); }

    /// What ends a start, empty where nothing does.
    static std::string endOfStart(const std::string& path) {
        std::string text;
        test::outputOf([&] {
            try {
                const Orx daemon(MainConfig::create(path));
            } catch (const std::exception& error) {
                text = error.what();
            }
        });
        return text;
    }

    /// The first end that a check foretells, empty where it foretells none.
    static std::string foretoldEnd(const std::string& path) {
        std::ostringstream output;
        static_cast<void>(check(path, CheckFormat::text, output));
        const auto text = output.str();
        const std::string prefix = "error: the daemon ends with \"ERROR: ";
        const auto place = text.find(prefix);
        EXPECT_EQ(place != std::string::npos,
                  text.find("The daemon would not start.") != std::string::npos);
        if (place == std::string::npos) return "";
        const auto begin = place + prefix.size();
        return text.substr(begin, text.find("\": ", begin) - begin);
    }
};

TEST_P(CheckAgrees, withTheStart) {
    if (!GetParam().memory.empty()) std::ofstream(LensConfig::filePath()) << GetParam().memory;
    const auto path = configure(GetParam().lines);
    const auto foretold = foretoldEnd(path);
    EXPECT_EQ(foretold, endOfStart(path));
}

INSTANTIATE_TEST_SUITE_P(
    Each, CheckAgrees,
    testing::Values(
        Start{"sound", ""}, Start{"dumbMode", "projector ="},
        Start{"dumbModeWithOddValues",
              "projector = none\nserial.baudrate = x\nserial.device = /dev/none\n"
              "cmd.CMD_MUTE = \\xZZ\nabszoom.resetsteps = x",
              "zoommax = x\n"},
        Start{"dumbModeWithAnOddDebugLevel", "projector = none\nserial.debug = x"},
        Start{"parseErrorFirst", "serial.debug = x\ngarbage\nmore garbage"},
        Start{"definitionBeforeDevice",
              "definitionfile = /none\nserial.device = /dev/none\ncontrolchannel = x"},
        Start{"valueBeforeDevice", "serial.device = /dev/none\nserial.timeout = soon"},
        Start{"valuesOutOfRange", "serial.baudrate = 5000000\nserial.parity = x\nserial.debug = 9"},
        Start{"speedThatNoLineHas", "serial.baudrate = 14400"},
        Start{"numberTooLarge", "serial.delay = 2147483648\nserial.device ="},
        Start{"deviceBeforeAlias", "serial.device = /dev/none\ncmd.CMD_MUTE = \\xZZ"},
        Start{"folderAsDevice", "serial.device = /dev"},
        Start{"belowAFileAsDevice", "serial.device = /dev/null/x"},
        Start{"noTerminalAsDevice", "serial.device = /dev/null"},
        Start{"noDeviceNeeded", "serial.device =\nserial.debug = 2"},
        Start{"aliasBeforeMemory", "cmd.CMD_MUTE = \\xZZ", "garbage\n"},
        Start{"escapeThatIsCutShort", "cmd.CMD_MUTE = \\x"},
        Start{"malformedAlias", "cmd.CMD_MUTE = a\\xZZb"},
        Start{"memoryBeforeMotion", "abszoom.reducemax = x", "garbage\n"},
        Start{"motion", "absfocus.reducemax = %"},
        Start{"motionTooLarge", "absfocus.reducemax = -2147483648%\nabszoom.resetsteps = 0x"},
        Start{"range", "controlchannel = x", "zoommin = low\n"},
        Start{"slot", "controlchannel = x", "mem = 1:2;3,1:;\n"},
        Start{"slotsThatArePassedOver", "", "mem = 1:2,;,:,3;4:5\n"},
        Start{"twoChannels", "controlchannel = 127.0.0.1:0, localhost:1"},
        Start{"channelWithoutPort", "controlchannel = 127.0.0.1:"},
        Start{"emptyChannel", "controlchannel ="},
        Start{"channelOfAnotherMachine", "controlchannel = 192.0.2.1:7781"},
        Start{"channelOnBroadcast", "controlchannel = 255.255.255.255:17781"},
        Start{"channelOnMulticast", "controlchannel = 224.0.0.251:17781"},
        Start{"lowPort", "controlchannel = " + test::privateAddress() + ":1"},
        Start{"cutPort", "controlchannel = " + test::privateAddress() + ":65537"},
        Start{"channelTwice", "controlchannel = " + test::privateAddress() + ":17781, " +
                                  test::privateAddress() + ":17781"},
        Start{"folderAsLog", "logfile = /etc"}, Start{"noLog", "logfile ="}),
    nameOfStart);

class CheckAgreesOnChannels : public CheckAgrees {};

TEST_P(CheckAgreesOnChannels, thatAreTaken) {
    const test::UdpPeer peer(test::privateAddress());
    const auto port = std::to_string(test::portOf(peer.address()));
    const auto path = configure("controlchannel = " + GetParam().lines + ":" + port);
    const auto foretold = foretoldEnd(path);
    EXPECT_EQ(foretold, endOfStart(path));
    EXPECT_EQ(foretold, "[LISTENER] socket bind failed: Address already in use");
}

INSTANTIATE_TEST_SUITE_P(Each, CheckAgreesOnChannels,
                         testing::Values(Start{"byAddress", test::privateAddress()},
                                         Start{"onAllAddresses", "*"}),
                         nameOfStart);

}  // namespace
}  // namespace orx::orxctl
