// Encoding of a command with one argument, by type of descriptor, beside snprintf of the same text.
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "commands/Command.h"
#include "projector/Projector.h"

namespace orx::bench {
namespace {

Projector projectorFor(const std::string& keyword, char type, int len) {
    constexpr int pos = 7;
    const ArgumentDescriptor descriptor{
        .min = -9999, .max = 9999, .pos = pos, .len = len, .type = type};
    return {"BENCH", {{keyword, {{1, descriptor}}}}, {{keyword, "SOURCE \r"}}, 0};
}

/// `text` is what snprintf makes of it, so that both do the same.
void encode(benchmark::State& state, const std::string& line, char type, int len,
            std::string_view text) {
    const Command command(line);
    const auto projector = projectorFor(command.text(false), type, len);
    if (projector.commandString(command) != text) state.SkipWithError("another text");
    for (auto iteration : state)
        benchmark::DoNotOptimize(projector.commandString(command));
}

template <typename... Values>
void print(benchmark::State& state, const char* format, Values... values) {
    std::array<char, 64> text;
    for (auto iteration : state) {
        (benchmark::DoNotOptimize(values), ...);
        std::snprintf(text.data(), text.size(), format, values...);
        benchmark::DoNotOptimize(text);
    }
}

BENCHMARK_CAPTURE(encode, A, "INPUT 300", 'A', 4, "SOURCE 0300\r");
BENCHMARK_CAPTURE(print, A, "SOURCE %04d\r", 300);
BENCHMARK_CAPTURE(encode, B, "INPUT 300", 'B', 4, "SOURCE +0300\r");
BENCHMARK_CAPTURE(print, B, "SOURCE %+05d\r", 300);
BENCHMARK_CAPTURE(encode, D, "KEYSTONEVERT 1.256", 'D', 0x23, "SOURCE +001.26\r");
BENCHMARK_CAPTURE(print, D, "SOURCE %+07.2f\r", 1.26);
BENCHMARK_CAPTURE(encode, I, "INPUT 300", 'I', 2, "SOURCE \x01\x2c\r");
BENCHMARK_CAPTURE(print, I, "SOURCE %c%c\r", '\x01', '\x2c');
BENCHMARK_CAPTURE(encode, X, "INPUT 300", 'X', 4, "SOURCE 012c\r");
BENCHMARK_CAPTURE(print, X, "SOURCE %04x\r", 300);
BENCHMARK_CAPTURE(encode, other, "INPUT 300", 'P', 0, "SOURCE 300\r");
BENCHMARK_CAPTURE(print, other, "SOURCE %d\r", 300);

}  // namespace
}  // namespace orx::bench
