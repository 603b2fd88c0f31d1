// Runs the UI loop on a manual clock with the simulated network until the
// world is settled: no reply pending on the network, no message queued and no
// timer set — or until a limit of clock time.
#pragma once

#include <cstdint>

namespace hostref {
// True when it settled within maxMs of clock time. The loop must run on a manual clock.
bool RunUntilSettled(uint64_t maxMs);
// Advances the manual clock by ms, answering replies as they come.
void RunFor(uint64_t ms);
}  // namespace hostref
