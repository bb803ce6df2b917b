// How a file is replaced: what stays of the old one, and what becomes of it where something fails.
#include <cerrno>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/FileReplacement.h"
#include "support/TemporaryFolder.h"
#include "unit/config/OpenConfigFile.h"
#include "unit/config/RecordingDisk.h"

namespace orx::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::Not;

class FileReplacementTest : public testing::Test {
  protected:
    void replace(const std::string& content) { FileReplacement(path, disk).replaceWith(content); }

    /// As `replace`, in a process that withholds those rights from new files.
    void replaceUnderMask(mode_t mask, const std::string& content) {
        const auto before = ::umask(mask);
        replace(content);
        ::umask(before);
    }

    [[nodiscard]] static struct stat statusOf(const std::string& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
        return status;
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            found.push_back(entry.path().filename());
        std::ranges::sort(found);
        return found;
    }

    /// Lets every call of `operation` fail with `error`.
    void alwaysFail(std::string_view operation, int error) {
        disk.failure = [=](std::string_view called, int) {
            return called == operation ? error : 0;
        };
    }

    /// Lets there be no second file in the folder: only the path itself can be opened.
    void allowNoSecondFile() {
        disk.failureToOpen = [this](const std::string& opened) {
            return opened != path ? EACCES : 0;
        };
    }

    TemporaryFolder folder;
    const std::string path = folder.file("lensmemory.cfg");
    RecordingDisk disk;
};

TEST_F(FileReplacementTest, PutsAnotherFileInThePlaceOfTheOld) {
    folder.write("lensmemory.cfg", "old");
    const auto before = statusOf(path).st_ino;
    replace("new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_NE(statusOf(path).st_ino, before);
    EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
}

TEST_F(FileReplacementTest, IsTheWayAConfigurationFileIsSaved) {
    folder.write("lensmemory.cfg", "a = 1\n");
    OpenConfigFile config(path);
    std::ifstream reader(path);
    config.entries["a"] = "2";
    config.save();
    EXPECT_EQ(contentOf(path), "a = 2\n\n");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "a = 1\n");
}

TEST_F(FileReplacementTest, CreatesAMissingFileAsAnyProgramDoes) {
    replaceUnderMask(027, "new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0640U);
    EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
}

TEST_F(FileReplacementTest, KeepsModeAndOwner) {
    folder.write("lensmemory.cfg", "old");
    constexpr uid_t somebody = 4711;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(path.c_str(), somebody, somebody), 0);
    }
    for (const mode_t mode : {0600U, 0644U, 0666U, 0777U}) {
        ::chmod(path.c_str(), mode);
        const auto before = statusOf(path);
        replace("new");
        EXPECT_EQ(statusOf(path).st_mode, before.st_mode);
        EXPECT_EQ(statusOf(path).st_uid, before.st_uid);
        EXPECT_EQ(statusOf(path).st_gid, before.st_gid);
    }
}

TEST_F(FileReplacementTest, ShowsTheNewContentToNobodyButTheOwnerBefore) {
    folder.write("lensmemory.cfg", "old");
    ::chmod(path.c_str(), 0666);
    mode_t modeInTheMaking = 0;
    disk.failure = [&](std::string_view called, int) {
        if (called == "setOwner") modeInTheMaking = statusOf(folder.file(names().back())).st_mode;
        return 0;
    };
    replace("new");
    EXPECT_EQ(modeInTheMaking & 07777U, 0600U);
}

TEST_F(FileReplacementTest, FollowsSymbolicLinks) {
    folder.write("data/real.cfg", "old");
    std::filesystem::create_symlink("data/real.cfg", folder.file("middle"));
    std::filesystem::create_symlink(folder.file("middle"), path);
    replace("new");
    EXPECT_EQ(contentOf(folder.file("data/real.cfg")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("middle")));
    EXPECT_FALSE(std::filesystem::is_symlink(folder.file("data/real.cfg")));
    EXPECT_THAT(disk.steps, Contains(Field(&DiskStep::kind, DiskStep::Kind::rename)));
}

TEST_F(FileReplacementTest, CreatesWhatADanglingLinkLeadsTo) {
    std::filesystem::create_directory(folder.file("data"));
    std::filesystem::create_symlink("data/real.cfg", path);
    replace("new");
    EXPECT_EQ(contentOf(folder.file("data/real.cfg")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
}

TEST_F(FileReplacementTest, WritesThroughToADevice) {
    std::filesystem::create_symlink("/dev/null", path);
    replace("new");
    EXPECT_TRUE(std::filesystem::is_character_file(path));
    EXPECT_THAT(disk.steps, Not(Contains(Field(&DiskStep::kind, DiskStep::Kind::rename))));
}

TEST_F(FileReplacementTest, WritesInPlaceWhatHasAnotherName) {
    folder.write("lensmemory.cfg", "old");
    std::filesystem::create_hard_link(path, folder.file("another name"));
    replace("new");
    EXPECT_EQ(contentOf(folder.file("another name")), "new");
    EXPECT_EQ(contentOf(path), "new");
}

TEST_F(FileReplacementTest, IsNotHeldUpByWhatLiesBesideTheFile) {
    const auto beside = folder.file("lensmemory.cfg." + std::to_string(::getpid()));
    ASSERT_EQ(::mkfifo(beside.c_str(), 0600), 0);
    replaceUnderMask(022, "new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0644U);
    EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
}

TEST_F(FileReplacementTest, TakesThePlaceOfWhatACutSaveLeftBeside) {
    folder.write("lensmemory.cfg", "old");
    folder.write("lensmemory.cfg." + std::to_string(::getpid()), "half of something longer");
    replace("new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
}

TEST_F(FileReplacementTest, RefusesWhatCannotBeOpenedForWriting) {
    folder.write("lensmemory.cfg", "old");
    for (const int error : {EACCES, EROFS, EMFILE, EIO, EISDIR, ELOOP}) {
        alwaysFail("open", error);
        EXPECT_THAT([this] { replace("new"); },
                    testing::ThrowsMessage<std::runtime_error>("could not write to file: " + path));
        EXPECT_EQ(contentOf(path), "old");
        EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
    }
}

TEST_F(FileReplacementTest, RefusesAMissingFileThatCannotBeCreated) {
    disk.failure = [](std::string_view called, int call) {
        return called == "open" && call > 1 ? EACCES : 0;
    };
    EXPECT_THAT([this] { replace("new"); },
                testing::ThrowsMessage<std::runtime_error>("could not write to file: " + path));
    EXPECT_THAT(names(), testing::IsEmpty());
}

TEST_F(FileReplacementTest, WritesInPlaceWhereTheFolderTakesNoSecondFile) {
    allowNoSecondFile();
    disk.mostBytesAtOnce = 2;
    for (const std::string content : {"new", "", "longer than what was there before"}) {
        folder.write("lensmemory.cfg", "old content");
        const auto before = statusOf(path).st_ino;
        replace(content);
        EXPECT_EQ(contentOf(path), content);
        EXPECT_EQ(statusOf(path).st_ino, before);
    }
}

TEST_F(FileReplacementTest, CreatesAMissingFileWhereTheFolderTakesNoSecondFile) {
    allowNoSecondFile();
    disk.mostBytesAtOnce = 2;
    replace("new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(disk.steps.back().kind, DiskStep::Kind::sync);
}

TEST_F(FileReplacementTest, LeavesNoPartOfAMissingFileThatCannotBeWritten) {
    allowNoSecondFile();
    alwaysFail("write", ENOSPC);
    replace("new");
    EXPECT_THAT(names(), testing::IsEmpty());
}

TEST_F(FileReplacementTest, WritesInPlaceWhereTheNewFileCannotBeMadeToLookAsTheOld) {
    for (const auto* operation : {"setOwner", "setMode", "rename"}) {
        folder.write("lensmemory.cfg", "old content");
        const auto before = statusOf(path).st_ino;
        alwaysFail(operation, EPERM);
        replace("new");
        EXPECT_EQ(contentOf(path), "new") << operation;
        EXPECT_EQ(statusOf(path).st_ino, before) << operation;
        EXPECT_THAT(names(), ElementsAre("lensmemory.cfg")) << operation;
    }
}

TEST_F(FileReplacementTest, TakesBackAWriteInPlaceThatFailsHalfWay) {
    disk.mostBytesAtOnce = 2;
    for (const std::string content : {"new", "longer than what was there before"}) {
        folder.write("lensmemory.cfg", "the old content");
        int writesInPlace = -1;
        disk.failure = [&](std::string_view called, int) {
            if (called == "remove") writesInPlace = 0;  // the file beside was of no use
            if (called == "write" && writesInPlace >= 0 && ++writesInPlace == 2) return ENOSPC;
            return called == "rename" ? EPERM : 0;
        };
        replace(content);
        EXPECT_GT(writesInPlace, 2);
        EXPECT_EQ(contentOf(path), "the old content");
    }
}

TEST_F(FileReplacementTest, KeepsTheOldContentOnADiskThatFails) {
    for (const auto* operation : {"write", "sync", "rename", "setMode"}) {
        folder.write("lensmemory.cfg", "old");
        alwaysFail(operation, EIO);
        replace("new");
        EXPECT_EQ(contentOf(path), "old") << operation;
        EXPECT_THAT(names(), ElementsAre("lensmemory.cfg")) << operation;
    }
}

/// A call of the replacement that fails, or that one and all that follow.
struct Failure {
    int call;
    int error;
    bool once;
};

class FileReplacementWithAFailure : public FileReplacementTest {
  protected:
    const std::string before = "the old content";
    const std::string after = "the new content, which is longer";

    /// Replaces the old content by the new, in several writes; gives how many calls that took.
    int replaceWith(const std::optional<Failure>& failure) {
        folder.write("lensmemory.cfg", before);
        RecordingDisk failing;
        failing.mostBytesAtOnce = 5;
        failing.failure = [&](std::string_view called, int call) {
            if (!failure) return 0;
            const bool fails =
                failure->once ? call == failure->call : call >= failure->call && called != "remove";
            return fails ? failure->error : 0;
        };
        FileReplacement(path, failing).replaceWith(after);
        return failing.calls();
    }
};

TEST_F(FileReplacementWithAFailure, IsAsItWasOrReplacedWhicheverCallFails) {
    const int calls = replaceWith(std::nullopt);
    ASSERT_GT(calls, 10);
    for (const int error : {ENOSPC, EIO, EROFS, EMFILE, EACCES, EDQUOT, EINTR, EPERM}) {
        for (int call = 2; call <= calls; ++call) {
            for (const bool once : {true, false}) {
                EXPECT_NO_THROW(replaceWith(Failure{call, error, once}));
                EXPECT_THAT(contentOf(path), AnyOf(before, after))
                    << "call " << call << (once ? " alone: " : " and all after it: ") << error;
                EXPECT_THAT(names(), ElementsAre("lensmemory.cfg"));
            }
        }
    }
}

}  // namespace
}  // namespace orx::test
