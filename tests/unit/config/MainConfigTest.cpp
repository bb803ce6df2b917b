#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/MainConfig.h"
#include "core/InstallPrefix.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// What a configuration without any entry of its own prints.
std::string defaultsAsPrinted() {
    return "[config] controlchannel = 127.0.0.1:7781\n[config] definitionfile = " + INSTALL_PREFIX +
           "/lib/orx.ccd\n[config] logfile = " + INSTALL_PREFIX + "/var/run/orx.log\n";
}

std::string printed(const MainConfig& config) {
    return outputOf([&config] { config.dump(); });
}

class MainConfigTest : public testing::Test {
  protected:
    std::shared_ptr<MainConfig> create(const std::string& content) const {
        return MainConfig::create(folder.write("orx.cfg", content));
    }

    TemporaryFolder folder;
    const std::string path = folder.file("orx.cfg");
};

TEST_F(MainConfigTest, HasDefaultsWithoutAFile) {
    const auto config = MainConfig::create("");
    EXPECT_THAT(config->controlChannel(), ElementsAre("127.0.0.1:7781"));
    EXPECT_EQ(config->definitionFile(), INSTALL_PREFIX + "/lib/orx.ccd");
    EXPECT_EQ(config->logFile(), INSTALL_PREFIX + "/var/run/orx.log");
    EXPECT_EQ(config->projector(), "");
    EXPECT_EQ(config->serialDevice(), "");
    EXPECT_THAT(config->aliases(), IsEmpty());
    EXPECT_EQ(printed(*config), defaultsAsPrinted());
}

TEST_F(MainConfigTest, ReadsTheDefaultFileBelowTheInstallPrefix) {
    const std::filesystem::path etc = INSTALL_PREFIX + "/etc";
    std::filesystem::create_directories(etc);
    std::ofstream(etc / "orx.cfg") << "projector = BY DEFAULT\n";
    const auto config = MainConfig::create("");
    std::filesystem::remove_all(etc);
    EXPECT_EQ(config->projector(), "BY DEFAULT");
}

TEST_F(MainConfigTest, LetsAWrongLineOfTheDefaultFileOut) {
    const std::filesystem::path etc = INSTALL_PREFIX + "/etc";
    std::filesystem::create_directories(etc);
    std::ofstream(etc / "orx.cfg") << "garbage\n";
    std::string text;
    try {
        static_cast<void>(MainConfig::create(""));
    } catch (const std::runtime_error& error) {
        text = error.what();
    }
    std::filesystem::remove_all(etc);
    EXPECT_EQ(text, "[config] " + INSTALL_PREFIX + "/etc/orx.cfg, line 1: parse error");
}

TEST_F(MainConfigTest, RefusesAGivenFileThatCannotBeRead) {
    for (const auto& missing : {path, folder.file("no/such/folder/orx.cfg"), std::string(" ")}) {
        try {
            static_cast<void>(MainConfig::create(missing));
            ADD_FAILURE() << "created from " << missing;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), "config file not found: " + missing);
        }
    }
}

TEST_F(MainConfigTest, LetsAWrongLineOfAGivenFileOut) {
    try {
        create("projector = P\n\nwrong\n");
        ADD_FAILURE() << "created";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), "[config] " + path + ", line 3: parse error");
    }
}

TEST_F(MainConfigTest, GivesTheValuesOfItsFile) {
    const auto config = create(
        "controlchannel = 0.0.0.0:7781, 127.0.0.1:7782\n"
        "definitionfile = my.ccd\n"
        "logfile = my log\n"
        "projector = MODEL 1\n"
        "serial.device = line0\n");
    EXPECT_THAT(config->controlChannel(), ElementsAre("0.0.0.0:7781", "127.0.0.1:7782"));
    EXPECT_EQ(config->definitionFile(), "my.ccd");
    EXPECT_EQ(config->logFile(), "my log");
    EXPECT_EQ(config->projector(), "MODEL 1");
    EXPECT_EQ(config->serialDevice(), "line0");
}

TEST_F(MainConfigTest, FillsInEachDefaultByItself) {
    EXPECT_EQ(create("logfile = x\n")->definitionFile(), INSTALL_PREFIX + "/lib/orx.ccd");
    EXPECT_EQ(create("definitionfile = x\n")->logFile(), INSTALL_PREFIX + "/var/run/orx.log");
    EXPECT_THAT(create("projector = x\n")->controlChannel(), ElementsAre("127.0.0.1:7781"));
}

TEST_F(MainConfigTest, KeepsAnEmptyValueInPlaceOfADefault) {
    const auto config = create("controlchannel =\ndefinitionfile =\nlogfile =\n");
    EXPECT_THAT(config->controlChannel(), ElementsAre(""));
    EXPECT_EQ(config->definitionFile(), "");
    EXPECT_EQ(config->logFile(), "");
}

TEST_F(MainConfigTest, TakesKeysInTheirExactCase) {
    const auto config = create("LogFile = x\nProjector = y\n");
    EXPECT_EQ(config->logFile(), INSTALL_PREFIX + "/var/run/orx.log");
    EXPECT_EQ(config->projector(), "");
}

TEST_F(MainConfigTest, PrintsItsDefaultsAmongItsEntries) {
    EXPECT_EQ(
        printed(*create("projector = P\nabszoom.resetsteps = 7\n")),
        "[config] abszoom.resetsteps = 7\n" + defaultsAsPrinted() + "[config] projector = P\n");
}

TEST_F(MainConfigTest, SavesItsDefaultsAmongItsEntries) {
    const auto config = create("# mine\nprojector = P\n");
    config->save();
    EXPECT_EQ(contentOf(path), "controlchannel = 127.0.0.1:7781\ndefinitionfile = " +
                                   INSTALL_PREFIX + "/lib/orx.ccd\nlogfile = " + INSTALL_PREFIX +
                                   "/var/run/orx.log\nprojector = P\n\n");
}

TEST_F(MainConfigTest, GathersTheAliases) {
    const auto config = create(
        "cmd.CMD_ZOOM_PLUS = &CMD_ZOOM_PLUS2\n"
        "cmd.warm = \\x01 = \\x02\n"
        "cmd.nothing =\n"
        "cmd.cmd.twice = 2\n");
    EXPECT_THAT(config->aliases(),
                ElementsAre(Pair("CMD_ZOOM_PLUS", "&CMD_ZOOM_PLUS2"), Pair("cmd.twice", "2"),
                            Pair("nothing", ""), Pair("warm", "\\x01 = \\x02")));
    EXPECT_TRUE(config->hasAlias("warm"));
    EXPECT_TRUE(config->hasAlias("CMD_ZOOM_PLUS"));
    EXPECT_TRUE(config->hasAlias("nothing"));
    EXPECT_FALSE(config->hasAlias("cmd.warm"));
    EXPECT_FALSE(config->hasAlias("WARM"));
    EXPECT_FALSE(config->hasAlias("war"));
    EXPECT_FALSE(config->hasAlias(""));
}

TEST_F(MainConfigTest, KeepsAliasesAmongItsEntriesToo) {
    EXPECT_EQ(create("cmd.warm = 5\n")->getString("cmd.warm"), "5");
}

TEST_F(MainConfigTest, GathersAnAliasOfEmptyName) {
    const auto config = create("cmd. = value\n");
    EXPECT_THAT(config->aliases(), ElementsAre(Pair("", "value")));
    EXPECT_TRUE(config->hasAlias(""));
}

TEST_F(MainConfigTest, GathersNoOtherKeysAsAliases) {
    const auto config =
        create("CMD.a = 1\nCmd.b = 2\ncmd = 3\ncmdx.c = 4\ncm = 5\nxcmd.d = 6\ncmd .e = 7\n= 8\n");
    EXPECT_THAT(config->aliases(), IsEmpty());
}

TEST_F(MainConfigTest, ReloadsEntriesDefaultsAndAliases) {
    const auto config = create("logfile = x\nprojector = P\ncmd.warm = 1\ncmd.hot = 2\n");
    folder.write("orx.cfg", "controlchannel = 127.0.0.1:1\ncmd.hot = 3\ncmd.cold = 4\n");
    config->reload();
    EXPECT_EQ(config->projector(), "");
    EXPECT_EQ(config->logFile(), INSTALL_PREFIX + "/var/run/orx.log");
    EXPECT_THAT(config->controlChannel(), ElementsAre("127.0.0.1:1"));
    EXPECT_THAT(config->aliases(), ElementsAre(Pair("cold", "4"), Pair("hot", "3")));
    EXPECT_FALSE(config->hasAlias("warm"));
}

TEST_F(MainConfigTest, ReloadsAsTheBaseClassToo) {
    const auto config = create("cmd.warm = 1\n");
    folder.write("orx.cfg", "cmd.cold = 2\n");
    static_cast<ConfigFile&>(*config).reload();
    EXPECT_THAT(config->aliases(), ElementsAre(Pair("cold", "2")));
}

TEST_F(MainConfigTest, ReloadsNothingButTheDefaultsWhereTheFileIsGone) {
    const auto config = create("logfile = x\nprojector = P\ncmd.warm = 1\n");
    std::filesystem::remove(path);
    config->reload();
    EXPECT_EQ(printed(*config), defaultsAsPrinted());
    EXPECT_THAT(config->aliases(), IsEmpty());
}

TEST_F(MainConfigTest, LetsAWrongLineOutOfAReload) {
    const auto config = create("projector = P\n");
    folder.write("orx.cfg", "projector\n");
    EXPECT_THROW(config->reload(), std::runtime_error);
}

TEST_F(MainConfigTest, HandsOutValuesThatOutliveAReload) {
    const auto config = create("projector = P\ncontrolchannel = a:1, b:2\n");
    const auto projector = config->projector();
    const auto addresses = config->controlChannel();
    std::filesystem::remove(path);
    config->reload();
    EXPECT_EQ(projector, "P");
    EXPECT_THAT(addresses, ElementsAre("a:1", "b:2"));
}

}  // namespace
}  // namespace orx::test
