// A lens memory file whose saving is cut off or fails holds all of the old or all of the new: at
// every single call that the save makes, for a file of every kind.
#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <utility>

#include "system/faults/ErrorNumbers.h"
#include "system/faults/FaultStory.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsSubsetOf;

/// What lies at the path of the lens memory file.
enum class Layout : std::uint8_t {
    file,
    link,        ///< a symbolic link to the file
    missing,     ///< nothing yet
    lonely,      ///< the file, and no room for another beside it: it is written in place
    lonelyLong,  ///< the same, and the new content is shorter than the old
};

void PrintTo(Layout layout, std::ostream* out) {
    constexpr std::array names{"AFile", "ALink", "NoFile", "NoFileBeside", "NoFileBesideALongOne"};
    *out << names.at(static_cast<std::size_t>(layout));
}

using Names = std::set<std::string>;

class LensMemorySave : public FaultStory, public testing::WithParamInterface<Layout> {
  protected:
    void SetUp() override {
        FaultStory::SetUp();
        configure("logfile = " + installation.file("orx.log") + "\n");
        installation.remove("var");
    }

    /// Starts a daemon with the old content before it.
    void startWithOld() {
        installation.remove("var");
        layOutOld();
        start(underFaults());
        blockSecondFile();
    }
    void layOutOld() const {
        const auto path = std::filesystem::path(memory());
        if (GetParam() == Layout::missing) {
            installation.write("var/run/empty", "");
            std::filesystem::remove(path);
        } else if (GetParam() == Layout::link) {
            installation.write("var/slots/lens.cfg", contentBefore());
            if (!installation.has("var/lensmemory.cfg"))
                std::filesystem::create_symlink("slots/lens.cfg", path);
        } else {
            installation.writeLensMemory(contentBefore());
        }
    }
    /// The second file would be named after the process, so the folder takes its place.
    void blockSecondFile() const {
        if (isWrittenInPlace())
            installation.block("var/lensmemory.cfg." + std::to_string(daemon->id()));
    }

    /// Arms a fault of the calls that reach the file, its folder or what lies beside it.
    void armSave(Fault fault) {
        fault.place = installation.file("var");
        faults.arm(fault);
    }
    /// Has the same new content saved as ever. False where the daemon has ended by it.
    bool save() {
        const auto ticket = std::to_string(--tickets);  // below those of the story
        const auto place = daemon->place();
        send("OVERRIDEZOPOS 1200\nOVERRIDEFOPOS 34\nMEMSAVE 2\nNATMEMCLEAR " + ticket);
        const auto executed = "[CMDQ] executing cmd: NATMEMCLEAR (" + ticket + ")";
        waitUntil(
            [&] {
                const auto lines = daemon->lines(place);
                return daemon->hasEnded() || std::ranges::any_of(lines, [&](const auto& text) {
                           return text.starts_with(executed);
                       });
            },
            [] { return "the end of a save"; });
        return !daemon->hasEnded();
    }
    /// The calls of a save that nothing disturbs, which leaves the new content in `newContent`.
    std::vector<std::string> callsOfSave() {
        layOutOld();
        startUnderFaults();
        blockSecondFile();
        armSave({.deed = Deed::pass});
        EXPECT_TRUE(save());
        newContent = content();
        EXPECT_THAT(newContent, HasSubstr(savedSlot().first));
        const auto calls = faults.trace();
        faults.disarm();
        EXPECT_EQ(quit(), "exit status 0");
        return calls;
    }

    [[nodiscard]] std::string memory() const { return installation.file("var/lensmemory.cfg"); }
    [[nodiscard]] std::string content() const {
        return installation.has("var/lensmemory.cfg") ? installation.lensMemory() : noContent;
    }
    [[nodiscard]] static std::string contentBefore() {
        const std::string ranges = "focusmax = 100\nmem = 1:4;12,\nzoommax = 2000\n";
        if (GetParam() == Layout::missing) return noContent;
        return GetParam() == Layout::lonelyLong ? "# " + std::string(500, 'x') + "\n" + ranges
                                                : ranges;
    }
    [[nodiscard]] static bool isWrittenInPlace() {
        return GetParam() == Layout::lonely || GetParam() == Layout::lonelyLong;
    }

    /// The slot that is saved, in the file and on the console. A lens without a range stands
    /// nowhere.
    [[nodiscard]] static std::pair<std::string, std::string> savedSlot() {
        if (GetParam() == Layout::missing) return {"2:-1;-1,", "slot 2: focus=-1 zoom=-1"};
        return {"2:34;1200,", "slot 2: focus=34 zoom=1200"};
    }

    /// All that lies below var/.
    [[nodiscard]] Names names() const {
        Names found;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(installation.file("var")))
            found.insert(entry.path().string());
        return found;
    }

    /// Saves undisturbed: the new content, and nothing beside it that was not there.
    void expectSaveToWork() {
        auto before = names();
        before.insert(memory());
        EXPECT_TRUE(save());
        EXPECT_EQ(content(), newContent);
        EXPECT_THAT(names(), IsSubsetOf(before));
        EXPECT_EQ(std::filesystem::is_symlink(memory()), GetParam() == Layout::link);
    }

    std::string newContent;

  private:
    static constexpr const char* noContent = "(no file)";

    int tickets = 0;
};

class KilledSave : public LensMemorySave {
  protected:
    /// Expects that the daemon has read the slots of that content.
    void expectSlotsOf(const std::string& content) const {
        const auto lines = daemon->lines();
        for (const auto& [inFile, onConsole] :
             {std::pair<std::string, std::string>{"1:4;12,", "slot 1: focus=4 zoom=12"},
              savedSlot()}) {
            const bool isThere = content.find(inFile) != std::string::npos;
            EXPECT_EQ(std::ranges::count(lines, "    lensmem " + onConsole), isThere ? 1 : 0);
        }
    }
};

TEST_P(KilledSave, LeavesAllOfTheOldOrAllOfTheNew) {
    const auto calls = callsOfSave();
    Names contents;
    for (std::uint32_t number = 1; number <= calls.size(); ++number) {
        SCOPED_TRACE("killed before " + calls.at(number - 1));
        startWithOld();
        armSave({.deed = Deed::kill, .first = number});
        EXPECT_FALSE(save());
        EXPECT_EQ(daemon->waitForEnd(), "signal 9");
        const auto left = content();
        ASSERT_THAT(left, AnyOf(contentBefore(), newContent));
        contents.insert(left);

        faults.disarm();
        start(underFaults());
        expectSlotsOf(left);
        expectSaveToWork();
        EXPECT_EQ(quit(), "exit status 0");
    }
    EXPECT_EQ(contents.size(), 2U) << "the save was never cut off, or always";
}

INSTANTIATE_TEST_SUITE_P(Of, KilledSave,
                         testing::Values(Layout::file, Layout::link, Layout::missing));

class FailingSave : public LensMemorySave {
  protected:
    /// Saves while a fault lies in wait, on a daemon that runs or is started for it.
    void saveUnder(const Fault& fault) {
        if (!daemon || daemon->hasEnded()) {
            startWithOld();
        } else {
            layOutOld();
        }
        const auto before = names();
        armSave(fault);
        const bool goesOn = save();
        const auto calls = faults.trace();
        EXPECT_GT(faults.done(), 0U);
        faults.disarm();
        EXPECT_EQ(goesOn, !couldNotBeOpened(calls, fault));
        EXPECT_THAT(content(), AnyOf(contentBefore(), newContent));
        goesOn ? expectToGoOn(before) : expectEnd();
    }

    /// All that the manual lists for a call, where there is a file; for the other layouts, where
    /// the same calls are made, the common ones.
    [[nodiscard]] static ErrorNumbers errorsOf(const std::string& call) {
        if (GetParam() != Layout::file) return commonErrors;
        return saveErrors.at(call.substr(0, call.find(' ')));
    }
    /// What was written in place can only be taken back by a disk that works again.
    [[nodiscard]] static std::size_t lastCallBeforeHarm(const std::vector<std::string>& calls) {
        if (!isWrittenInPlace()) return calls.size();
        const auto written = std::ranges::find_if(
            calls, [](const auto& call) { return call.starts_with("write "); });
        return static_cast<std::size_t>(written - calls.begin()) + 1;
    }

    static inline const ErrorNumbers commonErrors{ENOSPC, EIO, EROFS, EMFILE};

  private:
    /// Whether the fault has hit the last attempt to open the file itself.
    [[nodiscard]] bool couldNotBeOpened(const std::vector<std::string>& calls,
                                        const Fault& fault) const {
        const auto opening = std::ranges::find(calls.rbegin(), calls.rend(), "open " + memory());
        const auto number = static_cast<std::uint32_t>(calls.rend() - opening);
        // A file that is not there is made anew.
        return number >= fault.first && number - fault.first < fault.times && fault.error != ENOENT;
    }
    void expectToGoOn(Names before) {
        expectToExecute();
        expectSaveToWork();
        waitUntilNothingIsLost();
        before.insert(memory());
        EXPECT_EQ(names(), before);
    }
    /// The exception that nobody catches while a command executes.
    void expectEnd() {
        daemon->expectErrorText();
        EXPECT_EQ(daemon->waitForEnd(), "signal 6");
        EXPECT_THAT(daemon->errorText(), HasSubstr("could not write to file: " + memory() + "\n"));
        start(underFaults());
        expectSaveToWork();
        EXPECT_EQ(quit(), "exit status 0");
    }
};

TEST_P(FailingSave, LeavesAllOfTheOldOrAllOfTheNewWhereACallFails) {
    const auto calls = callsOfSave();
    for (std::uint32_t number = 1; number <= calls.size(); ++number) {
        for (const int error : errorsOf(calls.at(number - 1))) {
            SCOPED_TRACE(calls.at(number - 1) + ": " + reason(error));
            saveUnder({.error = error, .first = number});
        }
    }
}

TEST_P(FailingSave, LeavesAllOfTheOldOrAllOfTheNewWhereAllCallsFailFromThere) {
    const auto calls = callsOfSave();
    for (std::uint32_t number = 1; number <= lastCallBeforeHarm(calls); ++number) {
        for (const int error : commonErrors) {
            SCOPED_TRACE(calls.at(number - 1) + ": " + reason(error));
            saveUnder({.error = error, .first = number, .times = Fault::always});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, FailingSave,
                         testing::Values(Layout::file, Layout::link, Layout::missing,
                                         Layout::lonely, Layout::lonelyLong));

}  // namespace
}  // namespace orx::test
