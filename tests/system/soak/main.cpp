// orx_soak load [DATAGRAMS [SEED]]
// orx_soak day [COMMANDS [SEED]]
//
// Prints figures; ends with 1 where one of them is not as it has to be.
#include <chrono>
#include <exception>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "system/soak/Day.h"
#include "system/soak/Load.h"

namespace orx::test {
namespace {

constexpr double mostGrowth = 5.0;  ///< of the memory, in percent

template <typename Value>
void print(const char* what, const Value& value) {
    std::cout << std::left << std::setw(34) << what << value << "\n";
}

/// What both kinds have. Gives whether the memory has stayed what it was.
bool printHoldings(const auto& seen) {
    const double growth = 100.0 * static_cast<double>(seen.residentAtEnd - seen.residentSettled) /
                          static_cast<double>(seen.residentSettled);
    print("memory once settled, kB", seen.residentSettled);
    print("memory at the end, kB", seen.residentAtEnd);
    print("growth, %", growth);
    print("at the start", seen.atStart.text());
    print("at the end", seen.atEnd.text());
    return growth < mostGrowth;
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
    if (mode == "load") {
        return soak(Load({.datagrams = count, .settled = count / part, .seed = seed}));
    }
    return soak(Day({.commands = count, .settled = count / part, .seed = seed}));
}

int soakAsAsked(const std::vector<std::string>& words) {
    if (words.empty() || words.size() > 3 || (words[0] != "load" && words[0] != "day")) {
        std::cerr << "Usage: orx_soak load [DATAGRAMS [SEED]]\n"
                     "       orx_soak day [COMMANDS [SEED]]\n";
        return 2;
    }
    constexpr long usualDatagrams = 2'000'000;
    constexpr long usualCommands = 24 * 60 * 6;  // one every ten seconds
    const long usual = words[0] == "load" ? usualDatagrams : usualCommands;
    const long count = words.size() > 1 ? std::stol(words[1]) : usual;
    const auto seed = words.size() > 2 ? std::stoull(words[2]) : 1ULL;
    return soakWith(words[0], count, seed) ? 0 : 1;
}

}  // namespace
}  // namespace orx::test

/// What a child process has on its standard error is a failure, too, as it is in every test.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int status = orx::test::soakAsAsked({argv + 1, argv + argc});
    return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 1 : status;
}
