#include "harness/FunctionTimes.h"

#include <array>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

#include "core/FileDescriptor.h"

namespace orx::bench {
namespace {

/// Keeps the repetitions instead of printing them.
class Recorder final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& /*machine*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& run : runs) {
            if (run.error_occurred) throw std::runtime_error(run.error_message);
            if (run.run_type == Run::RT_Iteration)
                times[run.run_name.function_name + argumentOf(run)].add(run.GetAdjustedRealTime());
        }
    }

    FunctionTimes times;

  private:
    static std::string argumentOf(const Run& run) {
        return run.run_name.args.empty() ? "" : "/" + run.run_name.args;
    }
};

/// Nobody reads standard output as long as this lives: what is measured writes console lines.
class SilentOutput {
  public:
    SilentOutput() : output(::dup(STDOUT_FILENO)) {
        const FileDescriptor nobody(::open("/dev/null", O_WRONLY | O_CLOEXEC));
        ::dup2(nobody.get(), STDOUT_FILENO);
    }
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;
    ~SilentOutput() { ::dup2(output.get(), STDOUT_FILENO); }

  private:
    FileDescriptor output;
};

void setOptions(bool quick) {
    std::vector<std::string> options{
        "bench", "--benchmark_enable_random_interleaving=true",
        quick ? "--benchmark_repetitions=3" : "--benchmark_repetitions=15",
        quick ? "--benchmark_min_time=0.01" : "--benchmark_min_time=0.05"};
    std::vector<char*> arguments;
    arguments.reserve(options.size());
    for (auto& option : options)
        arguments.push_back(option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
}

}  // namespace

FunctionTimes timeFunctions(const std::string& pattern, bool quick) {
    setOptions(quick);
    const SilentOutput silent;
    Recorder recorder;
    if (benchmark::RunSpecifiedBenchmarks(&recorder, pattern) == 0) {
        throw std::logic_error("no benchmark is called " + pattern);
    }
    return std::move(recorder.times);
}

}  // namespace orx::bench
