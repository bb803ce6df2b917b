// The figures of docs/lens.md: what backlash and lost steps do to the lens, and what the settings
// of the daemon do against them.
#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "system/harness/SideBySide.h"
#include "system/simulated/Bench.h"
#include "system/simulated/LensErrors.h"
#include "system/simulated/MeasuredTable.h"

namespace orx::test {
namespace {

const std::vector<int> backlashes{0, 1, 2, 3, 4, 8};
constexpr std::size_t lockInModes = 7;

class LockInErrorTable : public testing::Test {
  protected:
    LockInErrorTable() : errors(lockInModes, std::vector<LockInErrors>(backlashes.size())) {
        workSideBySide(lockInModes * backlashes.size(), [this](std::size_t number, int channel) {
            const auto mode = number / backlashes.size();
            const auto column = number % backlashes.size();
            errors.at(mode).at(column) =
                measureLockIn(static_cast<int>(mode), backlashes.at(column), channel);
        });
    }

    [[nodiscard]] int spread(std::size_t mode, std::size_t column) const {
        return errors.at(mode).at(column).spread();
    }

    [[nodiscard]] int leastSpread(std::size_t column) const {
        int least = spread(0, column);
        for (std::size_t mode = 1; mode < lockInModes; ++mode)
            least = std::min(least, spread(mode, column));
        return least;
    }

    [[nodiscard]] std::string cell(std::size_t mode, std::size_t column) const {
        const auto& error = errors.at(mode).at(column);
        const auto text = std::to_string(error.afterUp) + " / " + std::to_string(error.afterDown);
        const auto width = std::to_string(error.spread());
        return text + " (" + (error.spread() == leastSpread(column) ? "**" + width + "**" : width) +
               ")";
    }

    [[nodiscard]] MeasuredTable table() const {
        MeasuredTable::Row header{"lock-in mode"};
        for (const int backlash : backlashes)
            header.push_back("backlash " + std::to_string(backlash));
        MeasuredTable result("lock-in", header);
        for (std::size_t mode = 0; mode < lockInModes; ++mode) {
            MeasuredTable::Row row{std::to_string(mode)};
            for (std::size_t column = 0; column < backlashes.size(); ++column)
                row.push_back(cell(mode, column));
            result.add(row);
        }
        return result;
    }

    std::vector<std::vector<LockInErrors>> errors;  ///< by mode, then by backlash
};

TEST_F(LockInErrorTable, IsInTheDocument) {
    table().compareWithDocument();
}

TEST_F(LockInErrorTable, ShowsNoErrorWithoutBacklashAndAllOfItWithoutLockIn) {
    for (std::size_t mode = 0; mode < lockInModes; ++mode)
        EXPECT_EQ(spread(mode, 0), 0) << "mode " << mode;
    for (std::size_t column = 0; column < backlashes.size(); ++column)
        EXPECT_EQ(spread(0, column), backlashes.at(column));
}

/// How far the lens is from where it was saved, after a way down and a recall.
int recallError(const std::vector<std::string>& way) {
    Bench bench({.projector = {"--travel", "104", "--backlash", "4"},
                 .configuration = "abszoom.lockinmode = 0\n",
                 .lensMemory = "zoommax = 100\n"});
    for (const auto& command : way) {
        bench.send(command);
        static_cast<void>(bench.waitForRest());
    }
    bench.send("MEMSAVE 1");
    const auto saved = bench.waitUntilExecuted().zoom.lens;
    bench.send("ZOOMX 20");
    static_cast<void>(bench.waitForRest());
    bench.send("MEMLOAD 1");
    static_cast<void>(bench.waitForRest());
    return bench.waitUntilExecuted().zoom.lens - saved;
}

TEST(Backlash, ShowsInARecallOnlyWhereTheSpotWasSavedAfterAMoveDown) {
    EXPECT_EQ(recallError({"ZOOMX 20", "ZOOMX 50"}), 0);
    EXPECT_EQ(recallError({"ZOOMX 80", "ZOOMX 50"}), -4);
}

const std::vector<std::string> losses{"1/200", "1/50", "1/20"};

/// The recalls of all axes of these cases.
std::vector<std::vector<Recall>> measureAll(const std::vector<LossyCase>& cases) {
    std::vector<LossyRecalls> measured(cases.size());
    workSideBySide(cases.size(), [&](std::size_t number, int channel) {
        measured.at(number) = measureRecalls(cases.at(number), channel);
    });
    std::vector<std::vector<Recall>> axes;
    for (auto& result : measured) {
        axes.push_back(std::move(result.zoom));
        axes.push_back(std::move(result.focus));
    }
    return axes;
}

/// The errors of several axes within a stretch of their recalls, whatever their sign.
struct Errors {
    double average = 0;
    int greatest = 0;

    [[nodiscard]] std::string averageText() const {
        std::ostringstream text;
        text << std::fixed << std::setprecision(1) << average;
        return text.str();
    }
};

Errors errorsOf(const std::vector<std::vector<Recall>>& axes, std::size_t from, std::size_t to) {
    Errors errors;
    for (const auto& recalls : axes) {
        for (std::size_t number = from; number < to; ++number) {
            const int error = std::abs(recalls.at(number).error);
            errors.greatest = std::max(errors.greatest, error);
            errors.average += error;
        }
    }
    errors.average /= static_cast<double>(axes.size() * (to - from));
    return errors;
}

std::vector<LossyCase> withSeveralSeeds(const std::string& loss, bool resetOnLoad) {
    constexpr int seeds = 4;
    std::vector<LossyCase> cases;
    for (int seed = 1; seed <= seeds; ++seed)
        cases.push_back({"DEMO-1", loss, resetOnLoad, seed});
    return cases;
}

TEST(LostStepTable, IsInTheDocument) {
    constexpr std::size_t part = 10;
    MeasuredTable table("lost-steps", {"lost steps", "recalls", "average with 1", "greatest with 1",
                                       "average with 0", "greatest with 0"});
    for (const auto& loss : losses) {
        const auto with = measureAll(withSeveralSeeds(loss, true));
        const auto without = measureAll(withSeveralSeeds(loss, false));
        const auto count = with.front().size();
        for (std::size_t from = 0; from < count; from += part) {
            const auto one = errorsOf(with, from, from + part);
            const auto zero = errorsOf(without, from, from + part);
            table.add({loss, std::to_string(from + 1) + " to " + std::to_string(from + part),
                       one.averageText(), std::to_string(one.greatest), zero.averageText(),
                       std::to_string(zero.greatest)});
        }
        const auto firstErrors = errorsOf(without, 0, part);
        const auto lastErrors = errorsOf(without, count - part, count);
        EXPECT_GT(lastErrors.average, firstErrors.average) << "losing " << loss;
        EXPECT_GT(lastErrors.average, errorsOf(with, count - part, count).average)
            << "losing " << loss;
    }
    table.compareWithDocument();
}

class LostSteps : public testing::TestWithParam<std::string> {
  protected:
    /// The recalls of both axes at every loss.
    [[nodiscard]] static std::vector<std::vector<Recall>> measure(bool resetOnLoad) {
        std::vector<LossyCase> cases;
        for (const auto& loss : losses)
            cases.push_back({.model = GetParam(), .loss = loss, .resetOnLoad = resetOnLoad});
        return measureAll(cases);
    }
};

INSTANTIATE_TEST_SUITE_P(Models, LostSteps, testing::Values("DEMO-1", "DEMO-3"),
                         [](const auto& test) {
                             return test.param == "DEMO-1" ? "NativeReset" : "FastSteps";
                         });

TEST_P(LostSteps, OfItsOwnAreAllThatARecallWithAResetSuffersFrom) {
    for (const auto& recalls : measure(true)) {
        int before = 0;
        for (const auto& recall : recalls) {
            EXPECT_EQ(recall.resets, recall.changesTarget ? 1 : 0);
            if (recall.changesTarget) {
                EXPECT_LE(std::abs(recall.error), recall.lostSince);
            } else {
                EXPECT_EQ(recall.error, before);
            }
            before = recall.error;
        }
        EXPECT_GT(recalls.back().lostInAll, 0);
    }
}

TEST_P(LostSteps, OfEarlierRecallsAddUpWithoutAReset) {
    for (const auto& recalls : measure(false)) {
        EXPECT_EQ(recalls.front().resets, 1);
        EXPECT_TRUE(std::all_of(recalls.begin() + 1, recalls.end(),
                                [](const Recall& recall) { return recall.resets == 0; }));
        EXPECT_TRUE(std::ranges::any_of(recalls, [](const Recall& recall) {
            return std::abs(recall.error) > recall.lostSince;
        })) << "no error is greater than what its own recall has lost";
    }
}

}  // namespace
}  // namespace orx::test
