// Any story of the lens: wherever it comes to rest, STATUS says where the motors stand.
//
// ORX_SEQUENCES says how many random stories are told, ORX_SEED with which seed they begin.
#include <array>
#include <atomic>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <vector>

#include <gmock/gmock.h>

#include "system/harness/SideBySide.h"
#include "system/simulated/LensSequence.h"
#include "system/simulated/SequenceRun.h"
#include "system/simulated/Shrink.h"

namespace orx::test {
namespace {

int numberFromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::stoi(text) : otherwise;
}

/// What all sequences together have shown.
struct Tally {
    int sequences = 0;
    int commands = 0;
    int comparisons = 0;
    int lineCommands = 0;
    StepsInFlight inFlight;

    void add(const LensSequence& sequence, const SequenceOutcome& outcome) {
        ++sequences;
        commands += static_cast<int>(sequence.steps.size());
        comparisons += outcome.figures.comparisons;
        lineCommands += outcome.figures.lineCommands;
        inFlight.resets += outcome.figures.inFlight.resets;
        inFlight.differences += outcome.figures.inFlight.differences;
        inFlight.contacts += outcome.figures.inFlight.contacts;
    }

    void print() const {
        std::cout << sequences << " sequences, " << commands << " commands, " << lineCommands
                  << " commands on the line, " << comparisons << " comparisons at rest; "
                  << inFlight.resets << " resets of axes that may have been moving, which left "
                  << inFlight.differences << " differences of 1 and " << inFlight.contacts
                  << " end stop contacts\n";
    }
};

/// A sequence that fails, made as short as it goes. What depends on the moment may need more than
/// one attempt.
std::string describeFailure(const LensSequence& sequence, const std::string& violation,
                            int channel) {
    constexpr int attempts = 3;
    auto shorter = sequence;
    auto last = violation;
    shorter.steps = shrink(sequence.steps, [&](const std::vector<SequenceStep>& steps) {
        auto candidate = sequence;
        candidate.steps = steps;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const auto again = play(candidate, channel).violation;
            if (!again.empty()) last = again;
            if (!again.empty()) return true;
        }
        return false;
    });
    return "seed " + std::to_string(sequence.seed) + " fails: " + violation +
           "\nthe shortest part that fails: " + last + "\n" + shorter.text();
}

class Sequences {
  public:
    /// Plays them all, several daemons side by side: most of the time each of them waits.
    void playAll(int firstSeed, int count) {
        workSideBySide(static_cast<std::size_t>(count), [&](std::size_t number, int channel) {
            playOne(static_cast<std::uint64_t>(firstSeed) + number, channel);
        });
    }

    [[nodiscard]] const Tally& tally() const { return shown; }
    [[nodiscard]] const std::vector<std::string>& failures() const { return failed; }

  private:
    /// None is played behind the first failure, which all that follow would only repeat.
    void playOne(std::uint64_t seed, int channel) {
        if (anyFailed) return;
        const auto sequence = randomSequence(seed);
        const auto outcome = play(sequence, channel);
        const bool first = !outcome.violation.empty() && !anyFailed.exchange(true);
        const auto failure =
            first ? describeFailure(sequence, outcome.violation, channel) : std::string();
        const std::lock_guard lock(mutex);
        shown.add(sequence, outcome);
        if (first) failed.push_back(failure);
    }

    std::atomic<bool> anyFailed = false;
    std::mutex mutex;
    Tally shown;
    std::vector<std::string> failed;
};

TEST(SimulatedLens, StandsWhereTheStatusSaysAfterAnyCommands) {
    constexpr int usually = 50;
    const int count = numberFromEnvironment("ORX_SEQUENCES", usually);
    Sequences sequences;
    sequences.playAll(numberFromEnvironment("ORX_SEED", 1), count);
    sequences.tally().print();
    for (const auto& failure : sequences.failures())
        ADD_FAILURE() << failure;
    if (HasFailure()) return;
    EXPECT_EQ(sequences.tally().sequences, count);
    EXPECT_GT(sequences.tally().comparisons, count * 10);
}

TEST(SimulatedLens, StoriesShrinkToWhatFails) {
    const std::vector<int> numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    const auto fails = [](const std::vector<int>& some) {
        const testing::Matcher<const std::vector<int>&> both =
            testing::AllOf(testing::Contains(3), testing::Contains(11));
        return testing::Value(some, both);
    };
    EXPECT_THAT(shrink(numbers, fails), testing::ElementsAre(3, 11));
}

}  // namespace
}  // namespace orx::test
