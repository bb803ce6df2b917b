// Standard output as several threads and a slow reader have it.
#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <pthread.h>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "core/Console.h"
#include "core/Log.h"
#include "support/WaitUntil.h"
#include "unit/core/PipedOutput.h"

namespace orx::test {
namespace {

constexpr std::size_t linesEach = 40;

/// Runs `action` on four threads at once, with 0 to 3, and gives the lines that come out of a pipe.
template <typename Action>
std::vector<std::string> linesOfFourThreads(Action action) {
    Pipe pipe;
    auto all = std::async(std::launch::async, [&pipe] { return pipe.readToTheEnd(); });
    {
        const StandardOutputTo piped(pipe.input.get());
        std::vector<std::thread> threads;
        for (std::size_t number = 0; number < 4; ++number)
            threads.emplace_back([number, action] { action(number); });
        for (auto& thread : threads)
            thread.join();
    }
    pipe.input.close();
    std::vector<std::string> lines;
    std::istringstream text(all.get());
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

/// A line of one letter of its own for each thread and number, of the length given.
std::string lineOf(std::size_t thread, std::size_t number, std::size_t length) {
    return std::string(length, static_cast<char>('A' + static_cast<int>(thread))) + " " +
           std::to_string(number);
}

/// Expects the lines of each thread whole and in their order.
void expectWhole(const std::vector<std::string>& lines, std::size_t length,
                 const std::string& tag = {}) {
    std::array<std::size_t, 4> next{};
    ASSERT_EQ(lines.size(), 4 * linesEach);
    for (const auto& line : lines) {
        const auto thread = static_cast<std::size_t>(line.at(tag.size()) - 'A');
        ASSERT_LT(thread, next.size()) << line.substr(0, 80);
        const bool whole = line == tag + lineOf(thread, next.at(thread), length);
        ASSERT_TRUE(whole) << line.size() << " characters: " << line.substr(0, 80);
        ++next.at(thread);
    }
}

TEST(ConsoleThreads, NeverMixInsideALine) {
    const std::size_t length = 40;
    expectWhole(linesOfFourThreads([](std::size_t thread) {
                    for (std::size_t number = 0; number < linesEach; ++number)
                        printLine(lineOf(thread, number, length));
                }),
                length);
}

TEST(ConsoleThreads, NeverMixInsideALineThatThePipeTakesInPieces) {
    const std::size_t length = 20 * PIPE_BUF;
    expectWhole(linesOfFourThreads([](std::size_t thread) {
                    for (std::size_t number = 0; number < linesEach; ++number)
                        printLine(lineOf(thread, number, length));
                }),
                length);
}

TEST(ConsoleThreads, KeepTheLinesOfOneTextTogether) {
    const std::size_t length = 3 * PIPE_BUF;
    const auto lines = linesOfFourThreads([](std::size_t thread) {
        std::string text;
        for (std::size_t number = 0; number < linesEach; ++number)
            text += lineOf(thread, number, length) + "\n";
        printText(text);
    });
    expectWhole(lines, length);
    for (std::size_t place = 0; place < lines.size(); ++place)
        EXPECT_EQ(lines[place].front(), lines[place / linesEach * linesEach].front()) << place;
}

TEST(ConsoleThreads, NeverMixALoggedMessageAndItsTag) {
    const std::size_t length = 3 * PIPE_BUF;
    expectWhole(linesOfFourThreads([](std::size_t thread) {
                    Log log;
                    for (std::size_t number = 0; number < linesEach; ++number)
                        log.write(lineOf(thread, number, length), Echo::yes, "[TAG] ");
                }),
                length, "[TAG] ");
}

/// Fills a pipe, with the non-blocking end that is given, until it takes no more.
void fillUp(const Pipe& pipe) {
    const int flags = ::fcntl(pipe.input.get(), F_GETFL);
    ::fcntl(pipe.input.get(), F_SETFL, flags | O_NONBLOCK);
    const std::string filler(PIPE_BUF, '.');
    while (::write(pipe.input.get(), filler.data(), filler.size()) > 0) {
    }
    ::fcntl(pipe.input.get(), F_SETFL, flags);
}

/// Prints "late" into a pipe that is full, does `meanwhile` with the thread that waits to print,
/// and then gives what comes out behind that which filled the pipe.
template <typename Meanwhile>
std::string printedIntoAFullPipe(const Pipe& pipe, Meanwhile meanwhile) {
    fillUp(pipe);
    const auto filled = pipe.fill();
    const StandardOutputTo piped(pipe.input.get());
    std::atomic<pid_t> printing = 0;
    std::thread printer([&printing] {
        printing = thisThread();
        printLine("late");
    });
    EXPECT_TRUE(waitUntil([&printing] { return printing != 0 && isAsleep(printing); }));
    meanwhile(printer);
    EXPECT_EQ(pipe.fill(), filled);
    EXPECT_EQ(pipe.read(), std::string(filled, '.'));
    printer.join();
    return pipe.read();
}

TEST(ConsoleThreads, WaitWhileANonBlockingOutputIsFull) {
    const Pipe pipe(O_NONBLOCK);
    EXPECT_EQ(printedIntoAFullPipe(pipe, [](std::thread& /*printer*/) {}), "late\n");
}

std::atomic<int> signalsCaught = 0;

void catchSignal(int /*signal*/) {
    ++signalsCaught;
}

TEST(ConsoleThreads, TryAgainAfterASignal) {
    struct sigaction action {};
    struct sigaction former {};
    action.sa_handler = catchSignal;  // no SA_RESTART: the write is interrupted
    ASSERT_EQ(::sigaction(SIGUSR1, &action, &former), 0);
    signalsCaught = 0;
    const Pipe pipe;
    const auto printed = printedIntoAFullPipe(pipe, [](std::thread& printer) {
        ::pthread_kill(printer.native_handle(), SIGUSR1);
        EXPECT_TRUE(waitUntil([] { return signalsCaught == 1; }));
    });
    ::sigaction(SIGUSR1, &former, nullptr);
    EXPECT_EQ(printed, "late\n");
}

}  // namespace
}  // namespace orx::test
