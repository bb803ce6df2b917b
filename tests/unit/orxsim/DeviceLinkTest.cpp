// The name of the serial line in the file system.
#include <gmock/gmock.h>

#include "orxsim/DeviceLink.h"
#include "support/TemporaryFolder.h"

namespace orx::orxsim {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class DeviceLinks : public testing::Test {
  protected:
    [[nodiscard]] std::string target() const { return fs::read_symlink(path).string(); }

    test::TemporaryFolder folder;
    std::string path = folder.file("projector");
};

TEST_F(DeviceLinks, leadToTheDeviceWhileTheyLive) {
    {
        const DeviceLink link(path, "/dev/pts/12345");
        EXPECT_EQ(target(), "/dev/pts/12345");
        EXPECT_EQ(link.path(), path);
    }
    EXPECT_FALSE(fs::is_symlink(path));
}

TEST_F(DeviceLinks, replaceALinkThatWasLeftBehind) {
    fs::create_symlink("/nowhere", path);
    const DeviceLink link(path, "/dev/pts/12345");
    EXPECT_EQ(target(), "/dev/pts/12345");
}

TEST_F(DeviceLinks, replaceNothingElse) {
    folder.write("projector", "kept");
    try {
        const DeviceLink link(path, "/dev/pts/12345");
        FAIL() << "the file was replaced";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), path + ": is there and no symbolic link");
    }
    EXPECT_EQ(test::contentOf(path), "kept");
    EXPECT_THROW(DeviceLink(folder.path().string(), "/dev/pts/12345"), std::runtime_error);
}

TEST_F(DeviceLinks, leaveALinkAloneThatLeadsToSomething) {
    fs::create_symlink("/dev/null", path);
    try {
        const DeviceLink link(path, "/dev/pts/12345");
        FAIL() << "the link was replaced";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), path + ": leads to /dev/null, which is in use; remove it first");
    }
    EXPECT_EQ(target(), "/dev/null");
}

TEST_F(DeviceLinks, needTheFolderTheyAreToStandIn) {
    try {
        const DeviceLink link(folder.file("missing/projector"), "/dev/pts/12345");
        FAIL() << "there is no such folder";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("missing/projector: No such file or directory"));
    }
}

TEST_F(DeviceLinks, leaveALinkAloneThatIsNotTheirsAnyMore) {
    {
        const DeviceLink link(path, "/dev/pts/12345");
        fs::remove(path);
        fs::create_symlink("/dev/pts/54321", path);
    }
    EXPECT_EQ(target(), "/dev/pts/54321");
}

TEST_F(DeviceLinks, canBeRemovedEarly) {
    DeviceLink link(path, "/dev/pts/12345");
    link.remove();
    EXPECT_FALSE(fs::is_symlink(path));
    link.remove();
}

}  // namespace
}  // namespace orx::orxsim
