#include "locale/intervaltimer.h"

#include <windows.h>

#include <gtest/gtest.h>

using namespace qrl;

namespace {

struct CountingSink : TIntervalTimerSink {
    int calls = 0;
    void OnTimer() override { ++calls; }
};

void pumpFor(DWORD ms) {
    const DWORD start = GetTickCount();
    MSG msg;
    while (GetTickCount() - start < ms) {
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        Sleep(1);
    }
}

bool classRegistered() {
    WNDCLASSW wc{};
    return GetClassInfoW(GetModuleHandleW(nullptr), L"TimerWin", &wc) != 0;
}

}  // namespace

TEST(IntervalTimer, CallsTheSinkUntilStoppedAndNotAfter) {
    CountingSink a, b;
    {
        TIntervalTimer first(&a, GetModuleHandleW(nullptr));
        TIntervalTimer second(&b, GetModuleHandleW(nullptr));
        EXPECT_TRUE(classRegistered());
        ASSERT_TRUE(first.Start(10));
        ASSERT_TRUE(second.Start(10));
        pumpFor(300);
        EXPECT_GE(a.calls, 2);
        EXPECT_GE(b.calls, 2);

        // A timer message already due when the timer stops must not reach the sink.
        Sleep(50);
        first.Stop();
        const int stopped = a.calls;
        pumpFor(100);
        EXPECT_EQ(a.calls, stopped);
        EXPECT_FALSE(first.IsActive());
        EXPECT_TRUE(second.IsActive());
    }
    // The last timer takes the shared window and its class with it.
    EXPECT_FALSE(classRegistered());
    const int after = b.calls;
    pumpFor(50);
    EXPECT_EQ(b.calls, after);
}
