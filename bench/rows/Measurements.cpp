#include "rows/Rows.h"

namespace orx::bench {

const std::vector<Measurement>& measurements() {
    static const std::vector<Measurement> all{
        {"status", measureStatus},      {"flight", measureStatusInFlight},
        {"calls", measureSystemCalls},  {"channels", measureChannels},
        {"commands", measureCommands},  {"steps", measureSteps},
        {"start", measureStart},        {"memory", measureMemory},
        {"size", measureSize},          {"idle", measureIdle},
        {"functions", measureFunctions}};
    return all;
}

}  // namespace orx::bench
