// Whenever the power is cut while a file is replaced, all of the old content is there or all of the
// new, and once the replacement is done it is the new.
#include <filesystem>
#include <iostream>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/FileReplacement.h"
#include "support/TemporaryFolder.h"
#include "unit/config/PowerCut.h"
#include "unit/config/RecordingDisk.h"

namespace orx::test {
namespace {

/// A lens memory with so many slots.
std::string memoryWith(int slots) {
    std::string text = "focusmax = 1000\nmem = ";
    for (int slot = 1; slot <= slots; ++slot) {
        text.append(std::to_string(slot)).append(":340;");
        text.append(std::to_string(slots)).append(",");
    }
    return text + "\nzoommax = 2000\n\n";
}

struct Save {
    std::optional<int> slotsBefore;  ///< none where there is no file yet
    int slotsAfter;
    std::size_t bytesAtOnce;  ///< what one write takes
};

/// One replacement on a disk of its own, and all that a power cut may make of it.
class CutSave {
  public:
    explicit CutSave(const Save& save) : after(memoryWith(save.slotsAfter)) {
        if (save.slotsBefore) layDown(memoryWith(*save.slotsBefore));
        disk.mostBytesAtOnce = save.bytesAtOnce;
        FileReplacement(path, disk).replaceWith(after);
        struct stat status {};
        ::stat(path.c_str(), &status);
        afterwards = {.content = after, .mode = status.st_mode & permissions, .user = user};
    }

    /// Cuts the power after every step, `rounds` times by chance and wherever one step or all but
    /// one were carried out; gives how many cuts that were.
    int cutEverywhere(int rounds, std::mt19937& chance) {
        for (std::size_t done = 0; done <= disk.steps.size(); ++done) {
            const PowerCut cut(before, std::span(disk.steps).first(done));
            lookAfterOrderlyCuts(cut, done);
            for (int round = 0; round < rounds; ++round)
                look(cut.after(chance), done);
        }
        return cuts;
    }

  private:
    static constexpr mode_t permissions = 07777;

    void layDown(const std::string& content) {
        folder.write("lensmemory.cfg", content);
        constexpr uid_t somebody = 4711;
        if (::geteuid() == 0) {
            EXPECT_EQ(::chown(path.c_str(), somebody, somebody), 0);
        }
        struct stat status {};
        ::stat(path.c_str(), &status);
        user = status.st_uid;
        before.names[path] = status.st_ino;
        before.files[status.st_ino] = {
            .content = content, .mode = status.st_mode & permissions, .user = user};
    }

    void lookAfterOrderlyCuts(const PowerCut& cut, std::size_t done) {
        const auto whole = [](std::size_t size) { return size; };
        for (std::size_t step = 0; step < cut.openSteps(); ++step) {
            look(cut.after([step](std::size_t index) { return index <= step; }, whole), done);
            look(cut.after([step](std::size_t index) { return index == step; }, whole), done);
            look(cut.after([step](std::size_t index) { return index != step; }, whole), done);
        }
        look(cut.after([](std::size_t) { return false; }, whole), done);
    }

    void look(const DiskState& state, std::size_t done) {
        ++cuts;
        const auto found = state.find(path);
        const bool isOld = found == before.find(path);
        const bool isNew = found == afterwards;
        const bool allDone = done == disk.steps.size();
        if (allDone ? isNew : isOld || isNew) return;
        ADD_FAILURE() << "after " << done << " of " << disk.steps.size() << " steps the file "
                      << (found ? "holds " + std::to_string(found->content.size()) +
                                      " bytes, mode " + std::to_string(found->mode) + ", owner " +
                                      std::to_string(found->user)
                                : "is missing");
    }

    TemporaryFolder folder;
    const std::string path = folder.file("lensmemory.cfg");
    const std::string after;
    uid_t user = 0;  ///< not known of a file that there was not
    DiskState before;
    DiskState::File afterwards;
    RecordingDisk disk;
    int cuts = 0;
};

TEST(PowerCutWhileAFileIsReplaced, LeavesTheOldContentOrTheNew) {
    constexpr std::size_t all = std::string::npos;
    const std::vector<Save> saves{
        {std::nullopt, 0, all},
        {std::nullopt, 3, 7},
        {std::nullopt, 500, 512},
        {0, 1, all},
        {1, 0, all},
        {1, 2, 1},
        {3, 3, all},
        {3, 4, 13},
        {10, 11, 16},
        {11, 10, 16},
        {100, 1, all},
        {1, 100, 64},
        {100, 101, 64},
        {2000, 10, 32},
        {10, 2000, 1024},
        {2000, 2001, 4096},
        {10000, 9999, 8192},
        {9999, 10000, 4096},
    };
    constexpr int rounds = 60;
    std::mt19937 chance(20);
    int cuts = 0;
    for (const auto& save : saves)
        cuts += CutSave(save).cutEverywhere(rounds, chance);
    std::cout << cuts << " power cuts\n";
    EXPECT_GE(cuts, 30000);
}

// What the model finds where a step of the replacement is left out: a check of the check.
class ForgetfulDisk : public RecordingDisk {
  public:
    explicit ForgetfulDisk(Kind left) : leftOut(left) {}
    int sync(int fileOrFolder) override {
        const int result = RecordingDisk::sync(fileOrFolder);
        if (steps.back().kind == leftOut) steps.pop_back();
        return result;
    }

  private:
    Kind leftOut;
};

class WithoutOneStep : public testing::Test {
  protected:
    [[nodiscard]] bool losesSomething(DiskStep::Kind leftOut) const {
        ForgetfulDisk disk(leftOut);
        FileReplacement(path, disk).replaceWith("new");
        const PowerCut cut({}, disk.steps);
        const auto last = cut.openSteps();
        for (std::size_t lost = 0; lost < last; ++lost) {
            const auto state = cut.after([lost](std::size_t index) { return index != lost; },
                                         [](std::size_t size) { return size; });
            const auto found = state.find(path);
            if (!found || found->content != "new") return true;
        }
        return false;
    }

    TemporaryFolder folder;
    const std::string path = folder.file("lensmemory.cfg");
};

TEST_F(WithoutOneStep, SomethingIsLost) {
    EXPECT_TRUE(losesSomething(DiskStep::Kind::sync));
    EXPECT_TRUE(losesSomething(DiskStep::Kind::syncFolder));
    EXPECT_FALSE(losesSomething(DiskStep::Kind::create)) << "where nothing is left out";
}

}  // namespace
}  // namespace orx::test
