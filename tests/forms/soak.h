// Soak tests: a body run a few hundred times in one process must leave no windows, GDI objects or
// heap behind. One noisy difference between two readings says little (the platform fills caches,
// the heap fragments); a leak shows as steady growth, so the verdict is on the growth per run over
// two windows of runs, after a warm-up: only growth seen in both windows counts.
#pragma once

#include <functional>

namespace qrl::test {

// Runs `body(n)` (which returns whether its run went as it should) `runs` times after a warm-up,
// measuring as it goes. The verdict: every run went through, no window or GDI object left over, and
// the heap grows by less than `bytesPerRun` a run.
void ExpectNoGrowth(int runs, const std::function<bool(int)>& body, double bytesPerRun = 64);

}  // namespace qrl::test
