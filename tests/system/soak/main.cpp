// orx_soak load [DATAGRAMS [SEED]]
// orx_soak day [COMMANDS [SEED]]
//
// Prints figures; ends with 1 where one of them is not as it has to be.
#include <algorithm>
#include <chrono>
#include <exception>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "system/soak/Day.h"
#include "system/soak/Growth.h"
#include "system/soak/Load.h"

namespace orx::test {
namespace {

template <typename Value>
void print(const char* what, const Value& value) {
    std::cout << std::left << std::setw(34) << what << value << "\n";
}

/// What both kinds have. Gives whether the memory has stayed what it was.
bool printHoldings(const auto& seen) {
    print("own memory once settled, kB", seen.ownSettled);
    print("own memory at the end, kB", seen.ownAtEnd);
    print("at the start", seen.atStart.text());
    print("at the end", seen.atEnd.text());
    return seen.ownAtEnd < seen.ownSettled + mostGrowth;
}

bool report(const LoadFigures& seen) {
    print("datagrams sent", seen.sent);
    for (std::size_t kind = 0; kind < datagramKindNames.size(); ++kind)
        print(std::string("  ").append(datagramKindNames.at(kind)).c_str(), seen.ofKind.at(kind));
    print("  STATUS, all answered", seen.statusAnswers);
    print("dropped by the system", seen.dropped);
    print("told of as unknown", seen.unknown);
    print("commands taken", seen.taken);
    print("commands executed", seen.executed);
    print("lens moves", seen.moves);
    print("steps, all counted on the line", seen.steps);
    return printHoldings(seen);
}

bool report(const DayFigures& seen) {
    print("commands", seen.commands);
    print("  calibrations among them", seen.calibrations);
    print("moves of an axis", seen.moves);
    print("commands on the line", seen.play.lineCommands);
    print("bytes on the line", seen.play.lineBytes);
    print("comparisons of an axis at rest", seen.play.comparisons);
    print("resets in mid-move", seen.play.inFlight.resets);
    print("  steps in flight, told apart", seen.play.inFlight.differences);
    return printHoldings(seen);
}

/// Runs to the end or to the first thing that is wrong, and prints the figures up to there.
bool soak(auto work) {
    const auto start = std::chrono::steady_clock::now();
    std::string wrong;
    try {
        work.run();
    } catch (const std::exception& error) {
        wrong = error.what();
    }
    const bool flat = report(work.figures());
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    print("seconds", static_cast<long>(taken.count()));
    print("mismatches", wrong.empty() ? "0" : "1: " + wrong);
    return flat && wrong.empty();
}

bool soakWith(const std::string& mode, long count, std::uint64_t seed) {
    // Behind that many all that the daemon needs for good has been used once.
    constexpr long part = 20;
    const long settled = std::max(count / part, 1L);
    if (mode == "load") {
        return soak(Load({.datagrams = count, .settled = settled, .seed = seed}));
    }
    return soak(Day({.commands = count, .settled = settled, .seed = seed}));
}

bool soakAsAsked(const std::vector<std::string>& words) {
    constexpr long usualDatagrams = 2'000'000;
    constexpr long usualCommands = 24L * 60 * 6;  // one every ten seconds
    const long usual = words.at(0) == "load" ? usualDatagrams : usualCommands;
    const long count = words.size() > 1 ? std::stol(words[1]) : usual;
    return soakWith(words[0], count, words.size() > 2 ? std::stoull(words[2]) : 1);
}

/// A number is left out or has digits alone.
bool isACall(const std::vector<std::string>& words) {
    const auto isNumber = [](const std::string& word) {
        return !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
    };
    return !words.empty() && words.size() <= 3 && (words[0] == "load" || words[0] == "day") &&
           std::all_of(words.begin() + 1, words.end(), isNumber);
}

}  // namespace
}  // namespace orx::test

/// What a child process has on its standard error is a failure, too, as it is in every test.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (!orx::test::isACall(words)) {
        std::cerr << "Usage: orx_soak load [DATAGRAMS [SEED]]\n"
                     "       orx_soak day [COMMANDS [SEED]]\n";
        return 2;
    }
    const bool passed = orx::test::soakAsAsked(words);
    return passed && testing::UnitTest::GetInstance()->ad_hoc_test_result().Passed() ? 0 : 1;
}
