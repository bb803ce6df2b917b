// One message into a log of 50 lines, beside the writing of as many bytes.
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "core/Log.h"
#include "limits/Floor.h"
#include "support/TemporaryFolder.h"

namespace orx::bench {
namespace {

constexpr const char* message = "src=127.0.0.1 cmd=ZOOMX (1200)";

void fill(Log& log) {
    for (std::size_t line = 0; line < Log::maxLines; ++line)
        log.write(message, Echo::no);
}

void logMessage(benchmark::State& state) {
    const test::TemporaryFolder folder;
    Log log;
    log.open(folder.file("log"));
    fill(log);
    for (auto iteration : state)
        log.write(message, Echo::no);
}

void writeAsManyBytes(benchmark::State& state) {
    const test::TemporaryFolder folder;
    Log log;
    log.open(folder.file("log"));
    fill(log);
    const RewrittenLog file(folder.file("log"), std::filesystem::file_size(folder.file("log")),
                            false);
    for (auto iteration : state)
        file.rewrite();
}

BENCHMARK(logMessage);
BENCHMARK(writeAsManyBytes);

}  // namespace
}  // namespace orx::bench
