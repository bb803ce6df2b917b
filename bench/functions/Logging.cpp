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

/// Has the log write to `path`, and as many lines as it keeps.
void fill(Log& log, const std::string& path) {
    log.open(path);
    for (std::size_t line = 0; line < Log::maxLines; ++line)
        log.write(message, Echo::no);
}

void logMessage(benchmark::State& state) {
    const test::TemporaryFolder folder;
    Log log;
    fill(log, folder.file("log"));
    for (auto iteration : state)
        log.write(message, Echo::no);
}

void writeAsManyBytes(benchmark::State& state) {
    const test::TemporaryFolder folder;
    const auto path = folder.file("log");
    Log log;
    fill(log, path);
    const RewrittenLog file(path, std::filesystem::file_size(path), false);
    for (auto iteration : state)
        file.rewrite();
}

BENCHMARK(logMessage);
BENCHMARK(writeAsManyBytes);

}  // namespace
}  // namespace orx::bench
