// Whole files, read at once and replaced at once.
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gmock/gmock.h>

#include "orxdef/Files.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class Files : public testing::Test {
  protected:
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            names.push_back(entry.path().filename().string());
        return names;
    }

    /// What replacing the file says, or "replaced".
    [[nodiscard]] static std::string replacing(const std::string& path, std::string_view content) {
        try {
            replaceFile(path, content);
            return "replaced";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    test::TemporaryFolder folder;
};

/// Lets no file of this process grow beyond `bytes`, as a full disk would, while it lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before);
        auto limit = before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }

  private:
    rlimit before{};
};

mode_t permissionsOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST_F(Files, aFileIsReadWithEveryByte) {
    std::string content("\0\xff\r\n", 4);
    content += std::string(200000, 'x');
    EXPECT_EQ(readFile(folder.write("in", content)), content);
}

TEST_F(Files, readingAMissingFileSaysWhy) {
    try {
        static_cast<void>(readFile(folder.file("nowhere")));
        FAIL() << "read a file that does not exist";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "No such file or directory");
    }
}

TEST_F(Files, aNewFileHasTheContentAndNothingIsLeftBesideIt) {
    const std::string content("a\0b", 3);
    replaceFile(folder.file("out"), content);
    EXPECT_EQ(test::contentOf(folder.file("out")), content);
    EXPECT_THAT(names(), ElementsAre("out"));
}

TEST_F(Files, aNewFileIsAsReadableAsTheUserCreatesFiles) {
    const auto mask = ::umask(027);
    replaceFile(folder.file("out"), "x");
    ::umask(mask);
    EXPECT_EQ(permissionsOf(folder.file("out")), 0640U);
}

TEST_F(Files, anOldFileKeepsItsPermissions) {
    const auto path = folder.write("out", "old and longer");
    fs::permissions(path, fs::perms(0604));
    replaceFile(path, "new");
    EXPECT_EQ(test::contentOf(path), "new");
    EXPECT_EQ(permissionsOf(path), 0604U);
    EXPECT_THAT(names(), ElementsAre("out"));
}

TEST_F(Files, aReaderKeepsTheOldContentThatItHasOpened) {
    const auto path = folder.write("out", "old");
    std::ifstream reader(path);
    replaceFile(path, "new");
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old");
}

TEST_F(Files, aSymbolicLinkStaysAndItsTargetIsReplaced) {
    const auto target = folder.write("target", "old");
    fs::create_symlink("target", folder.file("link"));
    replaceFile(folder.file("link"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.file("link")));
    EXPECT_EQ(test::contentOf(target), "new");
}

TEST_F(Files, aFailedWriteLeavesTheOldFileAndNothingBesideIt) {
    const auto path = folder.write("out", "old");
    std::string refusal;
    {
        const FileSizeLimit limit(100);
        refusal = replacing(path, std::string(1000, 'x'));
    }
    EXPECT_EQ(refusal, "File too large");
    EXPECT_EQ(test::contentOf(path), "old");
    EXPECT_THAT(names(), ElementsAre("out"));
}

TEST_F(Files, aMissingFolderIsNotMade) {
    EXPECT_EQ(replacing(folder.file("nowhere/out"), "x"), "No such file or directory");
    EXPECT_THAT(names(), ElementsAre());
}

TEST_F(Files, onlyRegularFilesAreReplaced) {
    fs::create_directory(folder.file("sub"));
    ASSERT_EQ(::mkfifo(folder.file("fifo").c_str(), 0600), 0);
    EXPECT_EQ(replacing(folder.file("sub"), "x"), "Not a regular file");
    EXPECT_EQ(replacing(folder.file("fifo"), "x"), "Not a regular file");
    EXPECT_THAT(names(), UnorderedElementsAre("sub", "fifo"));
}

TEST_F(Files, theSameFileIsKnownUnderAnotherName) {
    const auto path = folder.write("one", "x");
    fs::create_hard_link(path, folder.file("two"));
    EXPECT_TRUE(isSameFile(path, folder.file("./one")));
    EXPECT_TRUE(isSameFile(path, folder.file("two")));
    EXPECT_FALSE(isSameFile(path, folder.write("three", "x")));
    EXPECT_FALSE(isSameFile(folder.file("missing"), folder.file("missing")));
}

}  // namespace
}  // namespace orx::orxdef
