#include <array>
#include <string>

#include "harness/Cores.h"
#include "harness/FunctionTimes.h"
#include "rows/Rows.h"

namespace orx::bench {

void measureFunctions(const Run& run) {
    struct Compared {
        const char* measure;
        const char* ours;
        const char* limit;
        Bound bound{};
        bool inMicroseconds = false;
    };
    const std::array compared{
        Compared{"encode type A, of snprintf", "encode/A", "print/A", atMost(3.0)},
        Compared{"encode type B, of snprintf", "encode/B", "print/B", atMost(3.0)},
        Compared{"encode type D, of snprintf", "encode/D", "print/D", atMost(3.0)},
        Compared{"encode type I, of snprintf", "encode/I", "print/I", atMost(3.0)},
        Compared{"encode type X, of snprintf", "encode/X", "print/X", atMost(3.0)},
        Compared{"encode other types, of snprintf", "encode/other", "print/other", atMost(3.0)},
        Compared{"log one message, 50 lines kept", "logMessage", "writeAsManyBytes", atMost(1.3)},
        Compared{"parse a datagram of 40 lines", "parseDatagram", "receiveDatagram", {}, true},
        Compared{"load definitions, 64 KiB", "loadDefinitions/64", "readDefinitions/64", {}, true},
        Compared{"load lens memory, 10,000 slots",
                 "loadLensMemory/10000",
                 "readLensMemory/10000",
                 {},
                 true},
    };
    stayOn(placements().front().client);
    std::string pattern;
    for (const auto& row : compared)
        for (const auto* name : {row.ours, row.limit})
            pattern.append(pattern.empty() ? "^(" : "|").append(name);
    const auto times = timeFunctions(pattern.append(")$"), run.quick);
    for (const auto& row : compared) {
        const Pair pair{times.at(row.ours), times.at(row.limit)};
        constexpr double nsPerUs = 1000;
        run.add(row.inMicroseconds
                    ? medianRow(row.measure, "us", {pair.ours / nsPerUs, pair.limit / nsPerUs}, {})
                    : medianRow(row.measure, "ns", pair, row.bound));
    }
}

}  // namespace orx::bench
