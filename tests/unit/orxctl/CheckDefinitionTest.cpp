// What is found about the definition file and the choice of the model.
#include "CheckBench.h"
#include "CheckOrdinaryUser.h"
#include "support/DefinitionImage.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CheckDefinition : public CheckBench {
  protected:
    /// Makes the definition file from models of those names.
    void defineModels(const Lines& names) const {
        std::string text;
        for (const auto& name : names)
            text +=
                "[[model]]\nname = '" + name + "'\nbaudrate = 9600\n[model.commands]\nON = 'x'\n";
        folder.write("orx.ccd", orxdef::imageOf(text));
    }
};

TEST_F(CheckDefinition, aMissingFileEndsTheDaemon) {
    EXPECT_THAT(findings("definitionfile = /none/orx.ccd"),
                ElementsAre("orx.cfg:1: error: the daemon ends with \"ERROR: projector definition "
                            "file /none/orx.ccd not found\": set definitionfile to a file that "
                            "exists; \"orxdef compile\" makes one"));
}

TEST_F(CheckDefinition, aFileThatCannotBeReadEndsTheDaemon) {
    std::filesystem::permissions(folder.file("orx.ccd"), std::filesystem::perms::none);
    const auto config = configure("definitionfile = " + folder.file("orx.ccd"));
    const OrdinaryUser user;
    EXPECT_THAT(findingsIn(reportOn(config)),
                Contains("orx.cfg:1: error: the daemon ends with \"ERROR: projector definition "
                         "file orx.ccd not found\": the file is there, but cannot be read; let "
                         "the user of the daemon read it"));
}

TEST_F(CheckDefinition, whatIsNoDefinitionFileEndsTheDaemon) {
    const auto image = test::contentOf(folder.file("orx.ccd"));
    struct Damage {
        std::string content;
        std::string daemonText;
    };
    for (const auto& [content, daemonText] : std::vector<Damage>{
             {"text", "insufficient mana (wrong or missing magic in projector definition file)"},
             {image.substr(0, 6) + "\1\1" + image.substr(8),
              "wrong endianness in projector definition file"},
             {image.substr(0, 8) + "\x0e" + image.substr(9),
              "projector definition file has wrong revision"}}) {
        const auto file = folder.write("odd.ccd", content);
        EXPECT_THAT(findings("definitionfile = " + file),
                    ElementsAre("orx.cfg:1: error: the daemon ends with \"ERROR: " + daemonText +
                                "\": \"odd.ccd\" is no definition file; \"orxdef compile\" makes "
                                "one"));
    }
}

TEST_F(CheckDefinition, damageShowsWithItsPlaceAlthoughTheFileLoads) {
    auto image = test::contentOf(folder.file("orx.ccd"));
    folder.write("orx.ccd", image.substr(0, image.size() - 1));
    EXPECT_THAT(findings(""),
                ElementsAre("orx.ccd:byte 48: warning: the block of \"M\" is cut short: bytes 48 "
                            "to 82 of a file of 81; the daemon loads the file all the same: make "
                            "it anew",
                            "orx.ccd:byte 77: warning: entry 3 of 3 with the strings of \"M\" is "
                            "cut short; the daemon loads the file all the same: make it anew"));
    EXPECT_EQ(status, 0);
}

TEST_F(CheckDefinition, aCountThatLiesShowsWithItsPlace) {
    auto image = test::contentOf(folder.file("orx.ccd"));
    constexpr std::size_t projectorCount = 20;
    image.at(projectorCount) = '\xFF';
    folder.write("orx.ccd", image);
    EXPECT_THAT(findings(""),
                ElementsAre("orx.ccd:byte 48: warning: entry 2 of 255 of the projector list is cut "
                            "short; the daemon loads the file all the same: make it anew"));
    EXPECT_EQ(status, 0);
}

TEST_F(CheckDefinition, ofMuchDamageTheRestIsCounted) {
    test::DefinitionImage image;
    image.commands = {{1, "ON"}};
    for (const auto* name : {"M", "N", "O", "P", "Q"})
        image.blocks.push_back({.name = name, .strings = {{1, "on"}}});
    const auto bytes = image.bytes();
    constexpr std::size_t lengthOfBlocks = 5 * (14 + 3 + 2);
    folder.write("orx.ccd", bytes.substr(0, bytes.size() - lengthOfBlocks));
    const auto lines = findings("");
    constexpr std::size_t shown = 3;
    ASSERT_GT(lines.size(), shown);
    for (std::size_t index = 0; index < shown; ++index)
        EXPECT_THAT(lines[index], testing::StartsWith("orx.ccd:byte "));
    EXPECT_THAT(lines[shown], testing::MatchesRegex("orx.ccd: warning: \"orxdef check orx.ccd\" "
                                                    "shows [0-9]+ more damaged places"));
}

TEST_F(CheckDefinition, aMistypedModelIsNamed) {
    defineModels({"DEMO-1", "DEMO-2", "OTHER"});
    EXPECT_THAT(findings("projector = DEM-1"),
                ElementsAre("orx.cfg:1: error: there is no projector model \"DEM-1\" in "
                            "\"orx.ccd\", so the daemon drives none; set projector to the name of "
                            "a model; is it \"DEMO-1\"?"));
    EXPECT_THAT(findings("projector = other"), ElementsAre(HasSubstr("; is it \"OTHER\"?")));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckDefinition, fewModelsAreListedAndManyCounted) {
    defineModels({"A-1", "B-2"});
    EXPECT_THAT(findings("projector = none of them"),
                ElementsAre(HasSubstr("; the definition file has A-1, B-2")));
    EXPECT_THAT(findings("projector ="),
                ElementsAre("orx.cfg:1: error: no projector is chosen, so the daemon drives none; "
                            "set projector to the name of a model; the definition file has A-1, "
                            "B-2"));
    defineModels({"1", "2", "3", "4", "5", "6", "7", "8", "9"});
    EXPECT_THAT(findings("projector ="), ElementsAre(HasSubstr("; \"orxdef list\" shows the 9 "
                                                               "models of the definition file")));
}

TEST_F(CheckDefinition, aFileWithoutModelsSaysSo) {
    folder.write("orx.ccd", test::DefinitionImage().bytes());
    EXPECT_THAT(findings(""), ElementsAre(HasSubstr("; the definition file has no model at all")));
}

TEST_F(CheckDefinition, surprisesOfTheChosenModelAloneAreCounted) {
    defineModel("ON = 'x'\nZOOM = 'z'\nMEMSAVE = 'x'\n");
    EXPECT_THAT(findings(""), ElementsAre("orx.ccd: note: \"orxdef check orx.ccd\" shows 2 more "
                                          "points about \"M\""));
    EXPECT_EQ(status, 0);
    folder.write("orx.ccd", orxdef::imageOf(orxdef::modelWith("ON = 'x'") +
                                            "[[model]]\nname = 'N'\nbaudrate = 9600\n"
                                            "[model.commands]\nZOOM = 'x'\n"));
    EXPECT_THAT(findings(""), IsEmpty());
}

}  // namespace
}  // namespace orx::orxctl
