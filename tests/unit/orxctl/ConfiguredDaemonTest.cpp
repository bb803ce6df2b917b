// The address of a daemon whose configuration is known.
#include <stdexcept>

#include <gmock/gmock.h>

#include "orxctl/ConfiguredDaemon.h"
#include "support/TemporaryFolder.h"

namespace orx::orxctl {
namespace {

using testing::HasSubstr;

class ConfiguredDaemon : public testing::Test {
  protected:
    [[nodiscard]] std::string addressFor(const std::string& configuration) const {
        return configuredDaemon(folder.write("orx.cfg", configuration)).address.text();
    }

    /// What users are told of it, which begins with the path of the file.
    [[nodiscard]] std::string complaintOf(const std::string& configuration) const {
        try {
            return "none: " + addressFor(configuration);
        } catch (const std::invalid_argument& mistake) {
            return mistake.what();
        }
    }

    test::TemporaryFolder folder;
};

TEST_F(ConfiguredDaemon, isWhereItsConfigurationSays) {
    EXPECT_EQ(addressFor("controlchannel = 10.0.0.5:7790\n"), "10.0.0.5:7790");
    EXPECT_EQ(addressFor("controlchannel = 127.0.0.9 : 7790\n"), "127.0.0.9:7790");
}

TEST_F(ConfiguredDaemon, isWhereDaemonsAreWithoutTheKey) {
    EXPECT_EQ(addressFor("projector = DEMO-1\n"), "127.0.0.1:7781");
}

TEST_F(ConfiguredDaemon, isOnThisMachineWhereItListensOnAllAddresses) {
    EXPECT_EQ(addressFor("controlchannel = *:7790\n"), "127.0.0.1:7790");
    EXPECT_EQ(addressFor("controlchannel = 0.0.0.0:7790\n"), "127.0.0.1:7790");
}

TEST_F(ConfiguredDaemon, isAskedWithinTheMachineWherePossible) {
    EXPECT_EQ(addressFor("controlchannel = 10.0.0.5:1, 127.0.0.1:2, *:3\n"), "127.0.0.1:2");
    EXPECT_EQ(addressFor("controlchannel = 10.0.0.5:1, *:3\n"), "127.0.0.1:3");
    EXPECT_EQ(addressFor("controlchannel = 10.0.0.5:1, 10.0.0.6:2\n"), "10.0.0.5:1");
}

TEST_F(ConfiguredDaemon, hasThePortThatTheDaemonCutsItTo) {
    EXPECT_EQ(addressFor("controlchannel = 127.0.0.1:65537\n"), "127.0.0.1:1");
}

TEST_F(ConfiguredDaemon, cannotBeToldWhereNoneCouldListen) {
    const auto file = folder.file("orx.cfg");
    EXPECT_EQ(complaintOf("controlchannel = here\n"),
              file + ": [LISTENER] port missing in interface: here");
    EXPECT_THAT(complaintOf("controlchannel =\n"), HasSubstr(file + ": "));
    EXPECT_THAT(complaintOf("controlchannel = 127.0.0.1:0\n"), HasSubstr("port 0"));
}

TEST_F(ConfiguredDaemon, cannotBeToldWithoutTheConfiguration) {
    EXPECT_THROW(static_cast<void>(configuredDaemon(folder.file("none"))), std::invalid_argument);
}

}  // namespace
}  // namespace orx::orxctl
