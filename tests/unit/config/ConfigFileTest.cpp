// Where a configuration file comes from and where it goes; what its lines mean is tested apart.
#include <filesystem>
#include <stdexcept>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/ConfigFile.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"
#include "unit/config/OpenConfigFile.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

static_assert(std::has_virtual_destructor_v<ConfigFile>);

class ConfigFileTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    const std::string path = folder.file("orx.cfg");
};

TEST_F(ConfigFileTest, IsEmptyWithoutAFile) {
    OpenConfigFile config;
    EXPECT_EQ(config.path(), "");
    EXPECT_THAT(config.entries, IsEmpty());
    config.load();
    config.reload();
    EXPECT_THAT(config.entries, IsEmpty());
}

TEST_F(ConfigFileTest, IsReadAtOnceByTheConstructor) {
    folder.write("orx.cfg", "a = 1\n");
    const OpenConfigFile config(path);
    EXPECT_EQ(config.path(), path);
    EXPECT_THAT(config.entries, ElementsAre(Pair("a", "1")));
}

TEST_F(ConfigFileTest, IsEmptyWhereTheFileIsMissing) {
    EXPECT_THAT(OpenConfigFile(path).entries, IsEmpty());
    EXPECT_THAT(OpenConfigFile(folder.file("no/such/folder/orx.cfg")).entries, IsEmpty());
}

TEST_F(ConfigFileTest, LetsAWrongLineOutOfTheConstructor) {
    folder.write("orx.cfg", "garbage\n");
    EXPECT_THROW(ConfigFile{path}, std::runtime_error);
}

TEST_F(ConfigFileTest, TellsWhetherAPathIsReadable) {
    EXPECT_FALSE(ConfigFile::isReadable(path));
    EXPECT_FALSE(ConfigFile::isReadable(""));
    EXPECT_FALSE(ConfigFile::isReadable(folder.file("no/such/folder/orx.cfg")));
    folder.write("orx.cfg", "");
    EXPECT_TRUE(ConfigFile::isReadable(path));
}

TEST_F(ConfigFileTest, LoadsOverWhatItHolds) {
    folder.write("orx.cfg", "a = 1\nb = 2\n");
    OpenConfigFile config(path);
    folder.write("orx.cfg", "b = 3\nc = 4\n");
    config.load();
    EXPECT_THAT(config.entries, ElementsAre(Pair("a", "1"), Pair("b", "3"), Pair("c", "4")));
}

TEST_F(ConfigFileTest, KeepsItsEntriesWhereTheFileIsGoneAtALoad) {
    folder.write("orx.cfg", "a = 1\n");
    OpenConfigFile config(path);
    std::filesystem::remove(path);
    config.load();
    EXPECT_THAT(config.entries, ElementsAre(Pair("a", "1")));
}

TEST_F(ConfigFileTest, ReloadsFromScratch) {
    folder.write("orx.cfg", "a = 1\nb = 2\n");
    OpenConfigFile config(path);
    config.entries["own"] = "value";
    folder.write("orx.cfg", "b = 3\n");
    config.reload();
    EXPECT_THAT(config.entries, ElementsAre(Pair("b", "3")));
    std::filesystem::remove(path);
    config.reload();
    EXPECT_THAT(config.entries, IsEmpty());
}

TEST_F(ConfigFileTest, ReloadsTheLinesAheadOfAWrongOne) {
    folder.write("orx.cfg", "a = 1\nb = 2\n");
    OpenConfigFile config(path);
    folder.write("orx.cfg", "c = 3\ngarbage\n");
    EXPECT_THROW(config.reload(), std::runtime_error);
    EXPECT_THAT(config.entries, ElementsAre(Pair("c", "3")));
}

TEST_F(ConfigFileTest, SavesTheEntriesInOrderAndAnEmptyLine) {
    OpenConfigFile config(path);
    config.entries = {{"b", "2"}, {"a", "1"}, {"A", ""}, {"", "x"}};
    config.save();
    EXPECT_EQ(contentOf(path), " = x\nA = \na = 1\nb = 2\n\n");
}

TEST_F(ConfigFileTest, SavesASingleLineFeedWhereItIsEmpty) {
    OpenConfigFile(path).save();
    EXPECT_EQ(contentOf(path), "\n");
}

TEST_F(ConfigFileTest, SavesOverALongerFileAndLosesItsComments) {
    folder.write("orx.cfg", "# a comment that is longer than all the rest\nb=2\n\n;\na =  1 # x\n");
    OpenConfigFile(path).save();
    EXPECT_EQ(contentOf(path), "a = 1 # x\nb = 2\n\n");
}

TEST_F(ConfigFileTest, ReadsBackWhatItSaved) {
    OpenConfigFile config(path);
    config.entries = {{"a.b c", "1=2"}, {"", "empty key"}, {"empty value", ""}, {"z\0"s, "\xff"}};
    config.save();
    EXPECT_EQ(OpenConfigFile(path).entries, config.entries);
}

TEST_F(ConfigFileTest, FailsToSaveWhereTheFileCannotBeOpened) {
    for (const auto& target :
         {folder.file("no/such/folder/orx.cfg"), folder.path().string(), ""s}) {
        OpenConfigFile config(target);
        config.entries["a"] = "1";
        try {
            config.save();
            ADD_FAILURE() << "saved to " << target;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), "could not write to file: " + target);
        }
        EXPECT_THAT(config.entries, ElementsAre(Pair("a", "1")));
    }
}

TEST_F(ConfigFileTest, SaysNothingOfADiskThatIsFull) {
    OpenConfigFile config(path);
    config.entries["a"] = "1";
    std::filesystem::create_symlink("/dev/full", path);
    EXPECT_NO_THROW(config.save());
}

TEST_F(ConfigFileTest, PrintsEveryEntryInOrder) {
    OpenConfigFile config;
    EXPECT_EQ(outputOf([&config] { config.dump(); }), "");
    config.entries = {{"b", "2 # x"}, {"a.c", "1"}, {"e", ""}, {"", "0"}};
    EXPECT_EQ(outputOf([&config] { config.dump(); }),
              "[config]  = 0\n[config] a.c = 1\n[config] b = 2 # x\n[config] e = \n");
}

class OverridingConfig : public ConfigFile {
  public:
    void reload() override { calls += "reload "; }
    void save() override { calls += "save "; }
    void dump() const override { calls += "dump "; }

    mutable std::string calls;
};

TEST_F(ConfigFileTest, LetsADerivedClassReloadSaveAndDumpItsOwnWay) {
    OverridingConfig derived;
    ConfigFile& config = derived;
    config.reload();
    config.save();
    config.dump();
    EXPECT_EQ(derived.calls, "reload save dump ");
}

}  // namespace
}  // namespace orx::test
