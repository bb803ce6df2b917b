// What is read, beside the reading of its bytes alone: datagrams, definitions, configuration, lens
// memory.
#include <array>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include <benchmark/benchmark.h>

#include "commands/Command.h"
#include "config/MainConfig.h"
#include "core/FileDescriptor.h"
#include "core/InstallPrefix.h"
#include "core/Log.h"
#include "harness/Images.h"
#include "lens/LensConfig.h"
#include "lens/LensControl.h"
#include "projector/ProjectorDefinitionFile.h"
#include "support/TemporaryFolder.h"

namespace orx::bench {
namespace {

std::string fortyLines() {
    constexpr std::array lines{"ZOOM 32768\n", "INPUT 3\n", "PICMUTE\n", "KEYSTONEVERT 1.25\n"};
    std::string text;
    for (std::size_t line = 0; line < 40; ++line)
        text += lines.at(line % lines.size());
    return text;
}

void parseDatagram(benchmark::State& state) {
    const auto text = fortyLines();
    for (auto iteration : state) {
        std::string_view rest = text;
        while (!rest.empty()) {
            const auto line = rest.substr(0, rest.find('\n'));
            benchmark::DoNotOptimize(std::make_shared<const Command>(line));
            rest.remove_prefix(line.size() + 1);
        }
    }
}

void receiveDatagram(benchmark::State& state) {
    const auto text = fortyLines();
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        state.SkipWithError("no sockets to be had");
        return;
    }
    const FileDescriptor sender(ends[0]);
    const FileDescriptor receiver(ends[1]);
    ::send(sender.get(), text.data(), text.size(), 0);
    std::array<char, 2048> buffer;
    for (auto iteration : state)
        ::recv(receiver.get(), buffer.data(), buffer.size(), MSG_PEEK);
}

void readBytes(benchmark::State& state, const std::string& path) {
    std::array<char, 1 << 16> buffer;
    for (auto iteration : state) {
        const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        while (::read(file.get(), buffer.data(), buffer.size()) > 0) {
        }
    }
}

constexpr std::size_t kib = 1024;

std::string definitionImage(benchmark::State& state) {
    return definitions(static_cast<std::size_t>(state.range()) * kib - kib / 2).bytes();
}

void loadDefinitions(benchmark::State& state) {
    const test::TemporaryFolder folder;
    const auto path = folder.write("definitions", definitionImage(state));
    for (auto iteration : state) {
        ProjectorDefinitionFile file(path);
        benchmark::DoNotOptimize(file.projector("BENCH"));
        benchmark::DoNotOptimize(file.serialSettings("BENCH"));
    }
}

void readDefinitions(benchmark::State& state) {
    const test::TemporaryFolder folder;
    readBytes(state, folder.write("definitions", definitionImage(state)));
}

void loadConfiguration(benchmark::State& state) {
    const test::TemporaryFolder folder;
    const auto path = folder.write("configuration", configuration(static_cast<int>(state.range())));
    for (auto iteration : state)
        benchmark::DoNotOptimize(MainConfig::create(path));
}

void readConfiguration(benchmark::State& state) {
    const test::TemporaryFolder folder;
    readBytes(state, folder.write("configuration", configuration(static_cast<int>(state.range()))));
}

void writeLensMemory(const std::string& text) {
    std::ofstream(INSTALL_PREFIX + "/var/lensmemory.cfg") << text;
}

/// The lens memory tells every slot to the log.
void loadLensMemory(benchmark::State& state) {
    const test::TemporaryFolder folder;
    openLog(folder.file("log"));
    writeLensMemory(lensMemory(static_cast<int>(state.range())));
    const MainConfig config(ConfigFile::Entries{});
    const auto projector =
        std::make_shared<const Projector>("BENCH", ArgumentTable{}, CommandStrings{}, 0);
    const auto zoom = std::make_shared<LensControl>(projector, zoomCommands);
    const auto focus = std::make_shared<LensControl>(projector, focusCommands);
    for (auto iteration : state) {
        const LensConfig memory(config, {zoom, focus});
        benchmark::DoNotOptimize(memory.hasSlot(1));
    }
    openLog("/dev/null");
}

void readLensMemory(benchmark::State& state) {
    const test::TemporaryFolder folder;
    readBytes(state, folder.write("memory", lensMemory(static_cast<int>(state.range()))));
}

BENCHMARK(parseDatagram);
BENCHMARK(receiveDatagram);
BENCHMARK(loadDefinitions)->Arg(4)->Arg(8)->Arg(16)->Arg(32)->Arg(64);
BENCHMARK(readDefinitions)->Arg(4)->Arg(8)->Arg(16)->Arg(32)->Arg(64);
BENCHMARK(loadConfiguration)->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK(readConfiguration)->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK(loadLensMemory)->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK(readLensMemory)->RangeMultiplier(10)->Range(10, 100'000);

}  // namespace
}  // namespace orx::bench
