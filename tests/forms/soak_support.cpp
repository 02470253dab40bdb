#include "soak.h"

#include "driver.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace qrl::test {

namespace {

struct Usage {
    std::size_t windows = 0;     // top-level windows of the calling thread
    std::size_t gdiObjects = 0;  // live GDI objects of the process
    std::size_t heapBytes = 0;   // bytes in use in all heaps of the process, by walking them
};

// Wine hands out window DCs from a cache that grows, now and then and late, with the windows
// drawn into at once, and keeps every entry: an entry not in use reports no device and holds its
// visible region. Those are the window manager's, so they and a region each are left out.
std::size_t CountGdiObjects() {
    // Under Wine a handle whose high word is 0 matches any live object at that index, so probing
    // every index counts the live objects.
    std::size_t count = 0, regions = 0, cachedDcs = 0;
    for (uintptr_t index = 1; index <= 0xFFFF; ++index) {
        const auto object = reinterpret_cast<HGDIOBJ>(index);
        const DWORD type = GetObjectType(object);
        if (type == 0) continue;
        ++count;
        if (type == OBJ_REGION) ++regions;
        if (type == OBJ_DC && GetDeviceCaps(static_cast<HDC>(object), TECHNOLOGY) == 0) ++cachedDcs;
    }
    return count - cachedDcs - std::min(cachedDcs, regions);
}

// Wine's version 6 edit copies a cue text with one allocator and frees it with another, so every
// copy stays: the settings dialog's search leaves one a run. They are Wine's, so they don't count.
bool IsWineCueCopy(const PROCESS_HEAP_ENTRY& entry) {
    static const wchar_t kCue[] = L"Search settings (Ctrl+F)";
    return entry.cbData == sizeof kCue && std::memcmp(entry.lpData, kCue, sizeof kCue) == 0;
}

// The process's counters of private bytes read 0 under Wine; walking the heaps works everywhere.
std::size_t HeapBytesInUse() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 16);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t total = 0;
    for (HANDLE heap : heaps) {
        if (!HeapLock(heap)) continue;
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) && !IsWineCueCopy(entry)) total += entry.cbData;
        HeapUnlock(heap);
    }
    return total;
}

// Least-squares growth per run of the readings taken at `runs`.
double Slope(const std::vector<double>& runs, const std::vector<double>& values) {
    const double n = static_cast<double>(runs.size());
    double sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        sx += runs[i];
        sy += values[i];
        sxx += runs[i] * runs[i];
        sxy += runs[i] * values[i];
    }
    const double denominator = n * sxx - sx * sx;
    return denominator == 0 ? 0 : (n * sxy - sx * sy) / denominator;
}

Usage MeasureUsage() {
    Usage u;
    u.windows = ThreadWindows(GetCurrentThreadId()).size();
    u.gdiObjects = CountGdiObjects();
    u.heapBytes = HeapBytesInUse();
    return u;
}

}  // namespace

void ExpectNoGrowth(int runs, const std::function<bool(int)>& body, double bytesPerRun) {
    constexpr int kWarmUp = 20;
    int failedRuns = 0;
    // The platform fills its caches (fonts, classes, the language table) on the first runs.
    for (int n = 0; n < kWarmUp; ++n)
        if (!body(n)) ++failedRuns;
    constexpr int kReadingsPerWindow = 8;
    const int half = std::max(runs / 2, kReadingsPerWindow);
    const int step = half / kReadingsPerWindow;
    std::vector<double> slopes;
    std::vector<Usage> edges;
    int n = kWarmUp;
    for (int window = 0; window < 2; ++window) {
        std::vector<double> at, bytes;
        edges.push_back(MeasureUsage());
        for (int reading = 0; reading < kReadingsPerWindow; ++reading) {
            for (int i = 0; i < step; ++i, ++n)
                if (!body(n)) ++failedRuns;
            at.push_back(n);
            bytes.push_back(static_cast<double>(MeasureUsage().heapBytes));
        }
        slopes.push_back(Slope(at, bytes));
    }
    const Usage last = MeasureUsage();
    const long long windowGrowth = static_cast<long long>(last.windows) - static_cast<long long>(edges[1].windows);
    // Wine fills its caches (device contexts, fonts) now and then, late as well: a few objects
    // that come once show in one window only. A leak grows in both, so the smaller growth counts.
    const long long firstGdi = static_cast<long long>(edges[1].gdiObjects) - static_cast<long long>(edges[0].gdiObjects);
    const long long secondGdi = static_cast<long long>(last.gdiObjects) - static_cast<long long>(edges[1].gdiObjects);
    char summary[256];
    std::snprintf(summary, sizeof summary,
                  "%d runs: heap %.1f and %.1f bytes a run in the two windows, windows %+lld, GDI objects %+lld "
                  "and %+lld, %zu heap bytes at the end",
                  n, slopes[0], slopes[1], windowGrowth, firstGdi, secondGdi, last.heapBytes);
    std::printf("[ soak     ] %s\n", summary);
    EXPECT_EQ(failedRuns, 0);
    EXPECT_EQ(windowGrowth, 0);
    EXPECT_LE(std::min(firstGdi, secondGdi), 0);
    EXPECT_LT(std::min(slopes[0], slopes[1]), bytesPerRun) << summary;
}

}  // namespace qrl::test
