// Every operator new and delete of a program that links this is counted (the plug-in's
// too, since the program's operators take its place): the bytes live now and
// the most live since the last reset of the peak.
#pragma once

#include <cstddef>

namespace heapcount {
long long Live();
long long Peak();
// Starts a new peak at the bytes live now.
void ResetPeak();
}  // namespace heapcount
