// Soak tests: a body run a few hundred times in one process must leave no windows, GDI objects or
// heap behind. One noisy difference between two readings says little (the platform fills caches,
// the heap fragments); a leak shows as steady growth, so the verdict is on the growth per run over
// two windows of runs, after a warm-up: only growth seen in both windows counts.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace qrl::test {

struct Usage {
    std::size_t windows = 0;     // top-level windows of the calling thread
    std::size_t gdiObjects = 0;  // live GDI objects of the process
    std::size_t heapBytes = 0;   // bytes in use in all heaps of the process, by walking them
};
Usage MeasureUsage();

struct SoakResult {
    int failedRuns = 0;
    double heapBytesPerRun = 0;  // the smaller slope of the two windows
    long long windowGrowth = 0;  // over the second window
    long long gdiGrowth = 0;     // the smaller of the two windows' growth
    std::string summary;
};

// Runs `body(n)` `warmUp` times, then `runs` times measuring as it goes; `body` returns whether
// its run went as it should.
SoakResult Soak(int runs, const std::function<bool(int)>& body, int warmUp = 20);

// The verdict of a soak: every run went through, no window or GDI object left over, and the heap
// grows by less than `bytesPerRun` a run.
void ExpectNoGrowth(int runs, const std::function<bool(int)>& body, double bytesPerRun = 64);

}  // namespace qrl::test
