// What ends a start: each with its own text on the console and exit status 1.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class StartUpError : public Story {
  protected:
    void SetUp() override { install(motorModel()); }

    /// Starts the daemon; gives its last console line once it has ended as a failed start does.
    std::string errorOfStart() {
        EXPECT_EQ(startAndWaitForEnd(), "exit status 1");
        const auto lines = daemon->lines();
        if (lines.empty()) return {};
        EXPECT_THAT(installation.log(), Not(Contains("-- ORX logging end --")));
        return lines.back();
    }
    /// As `errorOfStart`, with `lines` added to the configuration.
    std::string errorWith(const std::string& lines) {
        installation.writeConfiguration(configuration("MOTOR", lines));
        return errorOfStart();
    }
    /// As `errorOfStart`, with `bytes` as the definition file.
    std::string errorWithDefinitions(const std::string& bytes) {
        installation.write("lib/orx.ccd", bytes);
        return errorOfStart();
    }
};

TEST_F(StartUpError, NamesADefinitionFileThatIsMissing) {
    const auto missing = installation.file("lib/other.ccd");
    EXPECT_EQ(errorWith("definitionfile = " + missing + "\n"),
              "ERROR: projector definition file " + missing + " not found");
}

TEST_F(StartUpError, TellsOfADefinitionFileThatIsNone) {
    const std::string error =
        "ERROR: insufficient mana (wrong or missing magic in projector definition file)";
    EXPECT_EQ(errorWithDefinitions(""), error);
    EXPECT_EQ(errorWithDefinitions("twenty-one bytes long"), error);
}

TEST_F(StartUpError, TellsOfADefinitionFileThatEndsBehindItsMagic) {
    EXPECT_EQ(errorWithDefinitions(DefinitionImage{}.bytes().substr(0, 7)),
              "ERROR: projector definition file has wrong revision");
}

TEST_F(StartUpError, TellsOfADefinitionFileOfTheWrongByteOrder) {
    auto image = define({motorModel()});
    image.endianCheck = 0x100;
    EXPECT_EQ(errorWithDefinitions(image.bytes()),
              "ERROR: wrong endianness in projector definition file");
}

TEST_F(StartUpError, TellsOfADefinitionFileOfAnotherRevision) {
    for (const std::uint32_t revision : {12U, 14U}) {
        auto image = define({motorModel()});
        image.revision = revision;
        EXPECT_EQ(errorWithDefinitions(image.bytes()),
                  "ERROR: projector definition file has wrong revision");
    }
}

TEST_F(StartUpError, TellsOfASerialDeviceThatDoesNotOpen) {
    const std::string error = "ERROR: [RS232] could not init serial device: ";
    EXPECT_EQ(errorWith("serial.device = " + installation.file("tty") + "\n"),
              error + "No such file or directory");
    EXPECT_EQ(errorWith("serial.device =\n"), error + "No such file or directory");
    EXPECT_EQ(errorWith("serial.device = " + installation.prefix() + "\n"),
              error + "Is a directory");
}

TEST_F(StartUpError, TellsOfSettingsThatAreNoNumbers) {
    for (const auto* setting :
         {"serial.delay = fast", "serial.baudrate = 99999999999", "serial.debug = on",
          "abszoom.resetsteps = many", "absfocus.resetsteps = 99999999999",
          "abszoom.resetonloadmem = yes", "absfocus.lockinmode = both", "abszoom.reducemax = %",
          "absfocus.reducemax = some"}) {
        EXPECT_EQ(errorWith(std::string(setting) + "\n"), "ERROR: stoi") << setting;
    }
}

TEST_F(StartUpError, TellsOfAMalformedEscapeInAnAlias) {
    EXPECT_EQ(errorWith("cmd.CMD_PICTURE_MUTE = \\xZZ\n"), "ERROR: stoi");
}

TEST_F(StartUpError, TellsOfALensMemoryWithoutNumbers) {
    for (const auto* memory : {"mem = one:340;1200,\n", "mem = 1:;1200,\n", "mem = 1:340;,\n",
                               "zoommin = low\n", "focusmax = 99999999999\n"}) {
        installation.writeLensMemory(memory);
        EXPECT_EQ(errorOfStart(), "ERROR: stoi") << memory;
    }
}

TEST_F(StartUpError, NamesTheLineOfTheLensMemoryThatIsNoSetting) {
    installation.writeLensMemory("zoommax = 100\nmem\n");
    EXPECT_EQ(errorOfStart(), "ERROR: [config] " + installation.file("var/lensmemory.cfg") +
                                  ", line 2: parse error");
}

TEST_F(StartUpError, TellsOfAnAddressWithoutAPort) {
    EXPECT_EQ(errorWith("controlchannel = 7781\n"),
              "ERROR: [LISTENER] port missing in interface: 7781");
    EXPECT_EQ(errorWith("controlchannel =\n"), "ERROR: [LISTENER] port missing in interface: ");
    EXPECT_EQ(errorWith("controlchannel = " + controlAddress() + ",\n"),
              "ERROR: [LISTENER] port missing in interface: ");
}

TEST_F(StartUpError, TellsOfAPortThatIsNoNumber) {
    for (const auto* address : {"127.0.0.1:", "127.0.0.1:port", "127.0.0.1:99999999999",
                                "localhost:port"}) {  // the port is looked at first
        EXPECT_EQ(errorWith("controlchannel = " + std::string(address) + "\n"), "ERROR: stoi")
            << address;
    }
}

TEST_F(StartUpError, TellsOfAnAddressThatIsNone) {
    for (const std::string address : {"localhost", "127.0.0", "127.0.0.1.1", ""}) {
        EXPECT_EQ(errorWith("controlchannel = " + address + ":17781\n"),
                  "ERROR: [LISTENER] IP address " + address + " could not be converted: Success");
    }
}

TEST_F(StartUpError, TellsOfAnAddressThatIsTaken) {
    EXPECT_EQ(errorWith("controlchannel = " + controlAddress() + "," + controlAddress() + "\n"),
              "ERROR: [LISTENER] socket bind failed: Address already in use");
}

TEST_F(StartUpError, TellsOfAnAddressOfAnotherMachine) {
    EXPECT_EQ(errorWith("controlchannel = 192.0.2.1:17781\n"),
              "ERROR: [LISTENER] socket bind failed: Cannot assign requested address");
}

TEST_F(StartUpError, TellsOfTheFirstAddressThatFails) {
    EXPECT_EQ(errorWith("controlchannel = " + controlAddress() + ", nowhere:1, 7781\n"),
              "ERROR: [LISTENER] IP address nowhere could not be converted: Success");
}

TEST_F(StartUpError, DoesNotComeFromADefinitionFileWithAnotherMagic) {
    auto image = define({motorModel()});
    image.magic = "strange";
    image.magic.resize(6);
    installation.writeDefinitions(image);
    start();
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;\n");
}

TEST_F(StartUpError, DoesNotComeFromADefinitionFileThatWasCutShort) {
    const auto whole = define({motorModel()}).bytes();
    installation.write("lib/orx.ccd", whole.substr(0, whole.size() - 6));
    start();
    send("ON");
    line.waitFor("ON\r");
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;\n");
}

}  // namespace
}  // namespace orx::test
