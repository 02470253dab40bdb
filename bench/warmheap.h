// For the "warm" runs of a benchmark: the C library keeps the memory it gets back instead of
// returning it to the system, so every iteration reuses mapped pages, as in a long-running
// process. Without it a large run faults in fresh pages on every iteration while a small one
// reuses its heap. It cannot be undone: register the warm runs after the default ones.
#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>

inline void WarmHeap(const benchmark::State&) {
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
}
