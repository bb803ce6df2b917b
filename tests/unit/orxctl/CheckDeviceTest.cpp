// What is found about the serial device, and by which signs.
#include <algorithm>
#include <sys/socket.h>
#include <sys/sysmacros.h>
#include <sys/un.h>

#include "CheckBench.h"
#include "CheckHoldingProcess.h"
#include "CheckOrdinaryUser.h"
#include "orxctl/check/DeviceCheck.h"
#include "orxctl/check/Holders.h"
#include "orxctl/check/Person.h"
#include "orxctl/check/TerminalDrivers.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CheckSerialDevice : public CheckBench {
  protected:
    /// What is found about a device of that name, with names of adapters in a folder of the test.
    Lines messages(const std::string& device) {
        auto lines = allMessages(device);
        std::erase_if(lines, [](const auto& each) { return each.find(ofOthers) != each.npos; });
        return lines;
    }

    Lines allMessages(const std::string& device) {
        Report found;
        found.foundModel("M");
        checkDevice(device, {.subject = "serial.device"}, found, folder.file("by-id"));
        Lines lines;
        for (const auto& finding : found.findings())
            lines.push_back(
                shortened(std::string(nameOf(finding.severity)) + ": " + finding.message));
        return lines;
    }

    /// Gives the line a name as the system gives adapters.
    void nameById(const std::string& name) const {
        std::filesystem::create_directories(folder.path() / "by-id");
        std::filesystem::create_symlink(line.device(), folder.path() / "by-id" / name);
    }
};

std::string failure(const std::string& reason) {
    return "error: the daemon ends with \"ERROR: [RS232] could not init serial device: " + reason;
}

TEST_F(CheckSerialDevice, aFreeLineIsFine) {
    EXPECT_THAT(messages(line.device()), IsEmpty());
}

TEST_F(CheckSerialDevice, standsAtItsLine) {
    EXPECT_THAT(findings("serial.device = /dev/none"),
                ElementsAre("orx.cfg:1: " + failure("No such file or directory\": there is no "
                                                    "\"/dev/none\"; plug in the adapter, or mend "
                                                    "the name")));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckSerialDevice, missesADeviceAndTellsWhatIsPluggedIn) {
    EXPECT_THAT(messages(""), ElementsAre(failure("No such file or directory\": there is no "
                                                  "serial device; set serial.device")));
    nameById("usb-Adapter_7");
    nameById("usb-Adapter_2");
    EXPECT_THAT(
        messages(""),
        ElementsAre(testing::EndsWith("; plugged in: by-id/usb-Adapter_2, by-id/usb-Adapter_7")));
    EXPECT_THAT(messages("/dev/none"), ElementsAre(HasSubstr("; plugged in: by-id/usb-A")));
}

TEST_F(CheckSerialDevice, cannotBeAFolderOrBelowAFile) {
    EXPECT_THAT(messages("/dev"), ElementsAre(failure("Is a directory\": \"/dev\" is a folder; "
                                                      "name a device")));
    EXPECT_THAT(messages("/dev/null/x"),
                ElementsAre(failure("Not a directory\": \"/dev/null/x\" cannot be reached; mend "
                                    "the name")));
}

TEST_F(CheckSerialDevice, canBeOpenedAndYetBeNoLine) {
    folder.write("file", "");
    EXPECT_THAT(messages(folder.file("file")),
                ElementsAre("error: \"file\" is no device, so no command reaches a projector; "
                            "name the device of the serial line"));
    EXPECT_THAT(messages("/dev/null"),
                ElementsAre("error: \"/dev/null\" is no serial line, so no command reaches a "
                            "projector; name the device of the serial line"));
    EXPECT_THAT(report("serial.device = /dev/null"),
                testing::EndsWith("1 error, 0 warnings, 0 notes\n"
                                  "The daemon would start with projector M, but not drive it.\n"));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckSerialDevice, asASocketIsRefusedByTheSystem) {
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    folder.file("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_THAT(messages(folder.file("socket")),
                ElementsAre(failure("No such device or address\": \"socket\" is a socket; name a "
                                    "device")));
}

TEST_F(CheckSerialDevice, namesTheGroupThatMayUseIt) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can give a file to any group";
    constexpr gid_t group = 20;
    const auto file = folder.write("file", "");
    ASSERT_EQ(::chown(file.c_str(), 0, group), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0660), 0);
    const OrdinaryUser user;
    EXPECT_THAT(messages(file),
                Contains(failure("Permission denied\": user \"" + userName() +
                                 "\" may not read and write \"file\"; it belongs to group \"" +
                                 groupName(group) + "\": sudo usermod -aG " + groupName(group) +
                                 " " + userName() + ", then log in again")));
}

TEST_F(CheckSerialDevice, whoseGroupMayNotUseItEitherNeedsOtherPermissions) {
    const auto file = folder.write("file", "");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const OrdinaryUser user;
    EXPECT_THAT(messages(file), Contains(HasSubstr("; its permissions shut the user out: sudo "
                                                   "chmod a+rw file")));
}

TEST_F(CheckSerialDevice, isHeldByAnotherProcess) {
    const HoldingProcess holder("minicom");
    const auto lines = messages(line.device());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines.front(), testing::StartsWith("warning: \"LINE\" is held by process " +
                                                   std::to_string(holder.id()) + " ("));
    EXPECT_THAT(lines.front(),
                testing::EndsWith("), which would take away answers and mix in bytes; end it "
                                  "first"));
    EXPECT_THAT(messages("/dev/null"), Not(Contains(HasSubstr("held")))) << "which is no line";
}

TEST_F(CheckSerialDevice, isHeldByADaemonThatAlreadyRuns) {
    const HoldingProcess holder("orx");
    EXPECT_THAT(messages(line.device()),
                ElementsAre(HasSubstr("\"LINE\" is held by a daemon that already runs, process " +
                                      std::to_string(holder.id()))));
}

TEST_F(CheckSerialDevice, mayBeHeldByADaemonOfAnotherUser) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the administrator has processes of other users";
    ASSERT_EQ(::chmod(line.device().c_str(), 0666), 0);
    const HoldingProcess holder("orx");
    const OrdinaryUser user;
    EXPECT_THAT(allMessages(line.device()),
                ElementsAre(testing::ContainsRegex(
                    "note: \"LINE\" may be held by a daemon that already runs, .*process " +
                    std::to_string(holder.id()) + " .*; check as root to see")));
}

TEST_F(CheckSerialDevice, isNotThePseudoTerminalOfThatNumberInAContainer) {
    const HoldingProcess holder("minicom");
    const auto isHeld = [&holder](const struct stat& device) {
        return std::ranges::count(holdersOfDevice(device).processes, holder.id(), &Process::id) > 0;
    };
    struct stat here {};
    ASSERT_EQ(::stat(line.device().c_str(), &here), 0);
    EXPECT_TRUE(isHeld(here));
    auto elsewhere = here;
    elsewhere.st_dev += 1;
    EXPECT_FALSE(isHeld(elsewhere));
}

TEST_F(CheckSerialDevice, isHeldByALoginPrompt) {
    const HoldingProcess holder("agetty");
    EXPECT_THAT(messages(line.device()),
                ElementsAre(testing::AllOf(HasSubstr("is held by a login prompt, process "),
                                           HasSubstr("disable --now serial-getty@"))));
}

TEST_F(CheckSerialDevice, mayBeHeldByTheProjectorInSoftware) {
    const HoldingProcess holder("orxsim");
    EXPECT_THAT(messages(line.device()), IsEmpty());
}

TEST_F(CheckSerialDevice, shouldBeNamedByWhatItIs) {
    nameById("usb-Adapter_7-if00");
    EXPECT_THAT(messages(line.device()), IsEmpty()) << "a name that always leads to it";
    const auto device = folder.file("ttyUSB0");
    std::filesystem::create_symlink(line.device(), device);
    EXPECT_THAT(messages(device),
                ElementsAre("note: \"ttyUSB0\" can be another adapter after the next start; this "
                            "one is always called by-id/usb-Adapter_7-if00"));
}

TEST_F(CheckSerialDevice, keepsItsNameWhereTheSystemHasNoOther) {
    const test::PseudoTerminal other;
    std::filesystem::create_directories(folder.path() / "by-id");
    std::filesystem::create_symlink(other.device(), folder.path() / "by-id" / "usb-Other");
    std::filesystem::create_symlink(line.device(), folder.path() / "ttyACM3");
    EXPECT_THAT(messages(folder.file("ttyACM3")), IsEmpty());
}

TEST(TerminalDrivers, knowTerminalsByTheirNumbers) {
    const test::TemporaryFolder folder;
    const auto drivers = folder.write("drivers",
                                      "/dev/tty             /dev/tty        5       0 system\n"
                                      "usbserial            /dev/ttyUSB   188   2-5 serial\n");
    for (const auto& [numbers, expected] :
         std::vector<std::pair<dev_t, bool>>{{makedev(5, 0), true},
                                             {makedev(5, 1), false},
                                             {makedev(188, 1), false},
                                             {makedev(188, 2), true},
                                             {makedev(188, 5), true},
                                             {makedev(188, 6), false},
                                             {makedev(1, 3), false}})
        EXPECT_EQ(isTerminal(numbers, drivers), expected)
            << major(numbers) << ":" << minor(numbers);
    EXPECT_EQ(isTerminal(makedev(1, 3), folder.file("none")), std::nullopt);
}

TEST(TerminalDrivers, knowLinesWithoutHardware) {
    const test::TemporaryFolder folder;
    folder.write("4:64/type", "4\n");
    folder.write("4:65/type", "0\n");
    EXPECT_FALSE(lacksHardware(makedev(4, 64), folder.path().string()));
    EXPECT_TRUE(lacksHardware(makedev(4, 65), folder.path().string()));
    EXPECT_FALSE(lacksHardware(makedev(4, 66), folder.path().string()));
}

}  // namespace
}  // namespace orx::orxctl
