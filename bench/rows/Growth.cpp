#include "rows/Growth.h"

#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "harness/Cores.h"
#include "harness/FunctionTimes.h"
#include "harness/UdpClient.h"

namespace orx::bench {
namespace {

using Points = std::vector<std::pair<long, double>>;  ///< size and microseconds

void write(const std::string& path, const Points& points) {
    std::ofstream file(path);
    for (const auto& [size, microseconds] : points)
        file << size << ' ' << microseconds << '\n';
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

Points channelPoints(const Setup& setup) {
    const auto placement = placements().front();
    Points points;
    for (const int channels : {1, 2, 4, 8, 16, 32}) {
        const auto ports = freePorts(channels);
        const Server daemon(setup.command({.ports = ports}), placement.server);
        const UdpClient client(ports.back());
        client.waitForAnswer("STATUS");
        Samples samples;
        for (int asked = 0; asked < 5000; ++asked)
            samples.add(client.ask("STATUS"));
        points.emplace_back(channels, samples.median());
    }
    return points;
}

/// The points of a benchmark that ran with several sizes.
Points pointsOf(const FunctionTimes& times, const std::string& name) {
    constexpr double nsPerUs = 1000;
    std::map<long, double> bySize;
    for (const auto& [fullName, samples] : times) {
        if (fullName.starts_with(std::string(name).append("/")))
            bySize[std::stol(fullName.substr(name.size() + 1))] = samples.median() / nsPerUs;
    }
    return {bySize.begin(), bySize.end()};
}

}  // namespace

void writeGrowth(const Setup& setup, const std::string& folder) {
    stayOn(placements().front().client);
    write(folder + "/channels.dat", channelPoints(setup));
    const std::vector<std::pair<std::string, std::string>> plots{
        {"queue", "workOffQueue"},
        {"configuration", "loadConfiguration"},
        {"configuration-limit", "readConfiguration"},
        {"definitions", "loadDefinitions"},
        {"definitions-limit", "readDefinitions"},
        {"lensmemory", "loadLensMemory"},
        {"lensmemory-limit", "readLensMemory"}};
    const auto times = timeFunctions("^(workOff|load|read)", true);
    for (const auto& [file, benchmark] : plots)
        write(std::string(folder).append("/").append(file).append(".dat"),
              pointsOf(times, benchmark));
}

}  // namespace orx::bench
