// What is found about the configuration file itself and its keys.
#include "CheckBench.h"
#include "CheckOrdinaryUser.h"
#include "config/MainConfig.h"
#include "orxctl/check/KeyCheck.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class CheckKeys : public CheckTable {};

TEST_P(CheckKeys, findsExactlyThat) {
    EXPECT_THAT(findings(GetParam().lines), ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    Each, CheckKeys,
    testing::Values(
        Case{"nothing", "", {}},
        Case{"commentsAndEmptyValues",
             "# serial.baud = 3\n\n;x\nserial.delay =\nserial.parity =",
             {}},
        Case{"allKeys",
             "serial.debug = 1\nserial.baudrate = 19200\nserial.bytesize = 7\nserial.delay = 0\n"
             "serial.parity = even\nserial.stopbits = 2\nserial.timeout = 300\n"
             "abszoom.reducemax = 10%\nabszoom.resetonloadmem = 0\nabszoom.resetsteps = 30\n"
             "abszoom.lockinmode = 6\nabsfocus.reducemax = 50\nabsfocus.resetonloadmem = 1\n"
             "absfocus.resetsteps = 1\nabsfocus.lockinmode = 0\ncmd.CMD_POWER_ON = &CMD_MUTE",
             {}},
        Case{"parseErrors",
             "# first\ngarbage\n\nserial.delay\n",
             {R"(orx.cfg:2: error: the daemon ends with "ERROR: [config] orx.cfg, line 2: parse )"
              R"(error": the line has no "="; write "key = value", or "#" ahead of a comment)",
              R"(orx.cfg:4: error: the daemon ends with "ERROR: [config] orx.cfg, line 4: parse )"
              R"(error": the line has no "="; write "key = value", or "#" ahead of a comment)"}},
        Case{"mistypedKey",
             "serial.bautrate = 9600",
             {R"(orx.cfg:1: warning: the daemon has no key "serial.bautrate" and passes it over; )"
              R"(is it "serial.baudrate"?)"}},
        Case{"cutKey",
             "serial.baud = 9600",
             {R"(orx.cfg:1: warning: the daemon has no key "serial.baud" and passes it over; )"
              R"(is it "serial.baudrate"?)"}},
        Case{"keyWithoutItsFirstPart",
             "lockinmode = 1",
             {R"(orx.cfg:1: warning: the daemon has no key "lockinmode" and passes it over; )"
              R"(is it "abszoom.lockinmode" or "absfocus.lockinmode"?)"}},
        Case{"keyInCapitals",
             "Projector = M",
             {R"(orx.cfg:1: warning: the daemon has no key "Projector" and passes it over; )"
              R"(is it "projector"?)"}},
        Case{"unlikeAnyKey",
             "volume = 11",
             {R"(orx.cfg:1: warning: the daemon has no key "volume" and passes it over; )"
              R"(remove the line)"}},
        Case{"emptyKey",
             "= 11",
             {R"(orx.cfg:1: warning: the daemon has no key "" and passes it over; remove the )"
              R"(line)"}},
        Case{"aliasWithoutPrefix",
             "CMD_POWER_ON = &CMD_MUTE",
             {R"(orx.cfg:1: warning: the daemon has no key "CMD_POWER_ON" and passes it over; )"
              R"(an alias begins with "cmd.")"}},
        Case{"aliasInCapitals",
             "CMD.CMD_POWER_ON = &CMD_MUTE",
             {R"(orx.cfg:1: warning: the daemon has no key "CMD.CMD_POWER_ON" and passes it )"
              R"(over; an alias begins with "cmd.")"}},
        Case{"repeatedKey",
             "serial.delay = 1\n#\nserial.delay = 2\nserial.delay = 3",
             {R"(orx.cfg:1: warning: "serial.delay" stands again on line 3, and the later one )"
              R"(counts; remove one of them)",
              R"(orx.cfg:3: warning: "serial.delay" stands again on line 4, and the later one )"
              R"(counts; remove one of them)"}},
        Case{"laterValue",
             "serial.delay = x\nserial.delay = -1",
             {R"(orx.cfg:1: warning: "serial.delay" stands again on line 2, and the later one )"
              R"(counts; remove one of them)",
              R"(orx.cfg:2: warning: -1 is passed over, "M" keeps its 0; give 0 to 10000)"}},
        Case{"commentBehindAText",
             "serial.parity = odd ; as the manual says",
             {R"(orx.cfg:1: warning: the value is all of "odd ; as the manual says", with )"
              R"("; as the manual says"; a comment stands on a line of its own)",
              R"(orx.cfg:1: warning: "odd ; as the manual says" is passed over, "M" keeps its )"
              R"(none; give "none", "odd" or "even" in small letters)"}}),
    nameOf);

class CheckConfigFile : public CheckBench {};

TEST_F(CheckConfigFile, goesOnBehindAParseError) {
    EXPECT_THAT(findings("garbage\nserial.delay = fast\n"), Contains(StartsWith("orx.cfg:2: ")));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckConfigFile, saysOfAGivenFileThatItIsMissing) {
    EXPECT_EQ(reportOn(folder.file("none.cfg")),
              "none.cfg: error: the daemon ends with \"ERROR: config file not found: none.cfg\": "
              "there is no such file; mend the name\n"
              "1 error, 0 warnings, 0 notes\n"
              "The daemon would not start.\n");
    EXPECT_EQ(status, 1);
}

TEST_F(CheckConfigFile, saysOfAGivenFileThatItCannotBeRead) {
    const auto path = configure("");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn(path)),
                ElementsAre("orx.cfg: error: the daemon ends with \"ERROR: config file not found: "
                            "orx.cfg\": the file is there, but cannot be read; let the user of "
                            "the daemon read it"));
}

TEST_F(CheckConfigFile, saysThatAFolderIsNoFile) {
    EXPECT_THAT(findingsIn(reportOn(folder.path().string())),
                Contains(HasSubstr(": error: that is a folder, so the defaults are taken; name a "
                                   "file")));
}

class CheckDefaultFile : public CheckBench {
  protected:
    CheckDefaultFile() {
        std::filesystem::create_directories(INSTALL_PREFIX + "/etc");
        std::filesystem::create_directories(INSTALL_PREFIX + "/lib");
        std::filesystem::permissions(INSTALL_PREFIX, std::filesystem::perms(0755));
        std::filesystem::remove(MainConfig::defaultPath());
        std::filesystem::copy_file(folder.file("orx.ccd"), INSTALL_PREFIX + "/lib/orx.ccd",
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

TEST_F(CheckDefaultFile, mayBeMissingAndLeavesTheDaemonWithoutAProjector) {
    const auto text = reportOn("");
    EXPECT_THAT(text, StartsWith("etc/orx.cfg: note: there is no configuration file, so the "
                                 "defaults are taken; make one that names projector and "
                                 "serial.device\n"));
    EXPECT_THAT(text, HasSubstr("projector: error: no projector is chosen, so the daemon drives "
                                "none; set projector to the name of a model; the definition file "
                                "has M\n"));
    EXPECT_THAT(text, testing::EndsWith("The daemon would start in dumb mode: without a projector "
                                        "it takes commands and sends nothing.\n"));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckDefaultFile, isReadWhereNoOtherIsGiven) {
    std::filesystem::copy_file(configure("serial.delay = -5"), MainConfig::defaultPath());
    EXPECT_THAT(findingsIn(reportOn("")),
                ElementsAre("etc/orx.cfg:1: warning: -5 is passed over, \"M\" keeps its 0; give 0 "
                            "to 10000"));
}

TEST_F(CheckDefaultFile, isMissedWhereItCannotBeRead) {
    std::filesystem::copy_file(configure(""), MainConfig::defaultPath());
    std::filesystem::permissions(MainConfig::defaultPath(), std::filesystem::perms::none);
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn("")),
                Contains("etc/orx.cfg: error: the file cannot be read, so the defaults are taken "
                         "in its place; let the user of the daemon read it"));
}

TEST(KnownKeys, areThoseOfTheConfigurationThatIsInstalled) {
    std::ifstream file(ORX_SOURCE_DIR "/packaging/orx.cfg");
    std::vector<std::string> keys;
    for (std::string text; std::getline(file, text);) {
        if (!text.starts_with('#') || text.starts_with("# ")) continue;
        const auto entry = parseConfigLine(text.substr(1));
        if (entry.kind == ConfigLine::Kind::entry && !entry.key.starts_with("cmd."))
            keys.push_back(entry.key);
    }
    EXPECT_THAT(keys, testing::UnorderedElementsAreArray(knownKeys()));
}

TEST(KnownKeys, aKeyThatIsLikeNoneLeadsNowhere) {
    EXPECT_THAT(likelyKeys("volume"), IsEmpty());
    EXPECT_THAT(likelyKeys("e"), IsEmpty()) << "the end of some keys";
    EXPECT_THAT(likelyKeys("baudrate"), ElementsAre("serial.baudrate"));
}

}  // namespace
}  // namespace orx::orxctl
