// The measurements. Each starts what it needs, measures daemon and limit in turns, and reports
// rows.
#pragma once

#include "harness/Run.h"

namespace orx::bench {

void measureStatus(const Run& run);  ///< one STATUS after the other
void measureStatusInFlight(const Run& run);
void measureSystemCalls(const Run& run);  ///< of one STATUS
void measureChannels(const Run& run);     ///< STATUS beside other control channels
void measureCommands(const Run& run);     ///< from the datagram to the line
void measureSteps(const Run& run);        ///< of the lens
void measureStart(const Run& run);
void measureMemory(const Run& run);
void measureSize(const Run& run);
void measureIdle(const Run& run);
void measureFunctions(const Run& run);  ///< of the daemon's code, without the daemon

}  // namespace orx::bench
