// Commands that wait in the queue before its thread starts.
#include <memory>

#include <benchmark/benchmark.h>

#include "commands/CommandQueue.h"

namespace orx::bench {
namespace {

class Nobody final : public CommandExecutor {
  public:
    void execute(const Command& /*command*/) override {}
};

/// Pushes so many commands, then lets the loop work them off.
void workOffQueue(benchmark::State& state) {
    const auto command = std::make_shared<const Command>("ON");
    const auto quit = std::make_shared<const Command>("QUIT");
    for (auto iteration : state) {
        CommandQueue queue(std::make_shared<Nobody>());
        for (auto waiting = state.range(); waiting > 0; --waiting)
            queue.push(command);
        queue.push(quit);
        queue.run();
    }
}

BENCHMARK(workOffQueue)->RangeMultiplier(10)->Range(10, 1'000'000);

}  // namespace
}  // namespace orx::bench
