// Names for daemons and groups of them.
#include <cstdlib>
#include <stdexcept>

#include <gmock/gmock.h>

#include "orxctl/HostsFile.h"
#include "support/TemporaryFolder.h"

namespace orx::orxctl {
namespace {

using testing::ElementsAre;

class Hosts : public testing::Test {
  protected:
    [[nodiscard]] std::vector<Target> targets(const std::vector<std::string>& words) const {
        return HostsFile(folder.write("hosts", text)).targets(words);
    }

    test::TemporaryFolder folder;
    std::string text = R"(# where they hang
hall   = 10.0.0.5
dome   = planetarium.example:7782
foyer  = 10.0.0.6, 10.0.0.7:1
museum = hall, foyer
all    = museum, dome, hall
)";
};

const Target hall{"hall", {"10.0.0.5", 7781}};
const Target dome{"dome", {"planetarium.example", 7782}};
const Target foyer6{"10.0.0.6:7781", {"10.0.0.6", 7781}};
const Target foyer7{"10.0.0.7:1", {"10.0.0.7", 1}};

TEST_F(Hosts, areFoundByTheirNames) {
    EXPECT_THAT(targets({"hall", "dome"}), ElementsAre(hall, dome));
}

TEST_F(Hosts, areFoundByTheNamesOfTheirGroups) {
    EXPECT_THAT(targets({"foyer"}), ElementsAre(foyer6, foyer7));
    EXPECT_THAT(targets({"museum"}), ElementsAre(hall, foyer6, foyer7));
}

TEST_F(Hosts, areMeantOnceHoweverOftenTheyAreNamed) {
    EXPECT_THAT(targets({"all"}), ElementsAre(hall, foyer6, foyer7, dome));
    EXPECT_THAT(targets({"hall", "10.0.0.5", "10.0.0.5:7781"}), ElementsAre(hall));
}

TEST_F(Hosts, thatHaveNoNameAreAddresses) {
    EXPECT_THAT(
        targets({"10.9.9.9", "Hall:5"}),
        ElementsAre(Target{"10.9.9.9:7781", {"10.9.9.9", 7781}}, Target{"Hall:5", {"Hall", 5}}));
    EXPECT_THAT(HostsFile().targets({"hall"}), ElementsAre(Target{"hall:7781", {"hall", 7781}}));
}

TEST_F(Hosts, areRefusedWhereAWordIsNoAddress) {
    text += "wrong = 10.0.0.5:x\nempty =\ncomma = hall,\n";
    EXPECT_THROW(static_cast<void>(targets({"wrong"})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(targets({"empty"})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(targets({"comma"})), std::invalid_argument);
}

TEST_F(Hosts, areRefusedWhereANameLeadsBackToItself) {
    text += "one = two\ntwo = hall, one\nself = self\n";
    EXPECT_THROW(static_cast<void>(targets({"one"})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(targets({"self"})), std::invalid_argument);
}

TEST_F(Hosts, areFoundHoweverOftenNamesLeadToThem) {
    text += "g40 = hall\n";
    for (int group = 0; group < 40; ++group) {
        const auto next = "g" + std::to_string(group + 1);
        text.append("g").append(std::to_string(group)).append(" = ");
        text.append(next).append(",").append(next).append("\n");
    }
    EXPECT_THAT(targets({"g0"}), ElementsAre(hall));
}

TEST_F(Hosts, areRefusedWhereAChainOfNamesIsTooLong) {
    for (int name = 0; name < 200; ++name) {
        text.append("a").append(std::to_string(name)).append(" = a");
        text.append(std::to_string(name + 1)).append("\n");
    }
    EXPECT_THROW(static_cast<void>(targets({"a0"})), std::invalid_argument);
}

TEST_F(Hosts, areNoneWhereThereIsNoFile) {
    EXPECT_THAT(HostsFile(folder.file("missing")).targets({"hall"}).front().name, "hall:7781");
}

/// One test process runs one test, so nobody else sees what this one does to its environment.
TEST_F(Hosts, areThoseOfTheEnvironmentWhereNoneAreNamed) {
    ::unsetenv("ORX_HOST");
    EXPECT_THAT(usualTargets(), ElementsAre("127.0.0.1:7781"));
    ::setenv("ORX_HOST", "hall, 10.0.0.7:1", 1);
    EXPECT_THAT(usualTargets(), ElementsAre("hall", "10.0.0.7:1"));
}

TEST_F(Hosts, areReadFromTheFileOfTheUserWhereThereIsOne) {
    ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    EXPECT_THAT(usualHostsFile(), testing::EndsWith("/etc/orx-hosts.cfg"));
    folder.write("orx/hosts", text);
    EXPECT_EQ(usualHostsFile(), folder.file("orx/hosts"));
    ::unsetenv("XDG_CONFIG_HOME");
    ::setenv("HOME", folder.path().c_str(), 1);
    folder.write(".config/orx/hosts", text);
    EXPECT_EQ(usualHostsFile(), folder.file(".config/orx/hosts"));
}

}  // namespace
}  // namespace orx::orxctl
