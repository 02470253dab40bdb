#include "locale/intervaltimer.h"

#include <windows.h>

namespace qrl {

namespace {

constexpr wchar_t kClassName[] = L"TimerWin";

// The shared window and the number of timers that use it.
HWND g_window = nullptr;
int g_users = 0;

LRESULT CALLBACK timerWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
        // A sink's exception must not unwind into the system's dispatch.
        try {
            TIntervalTimer::Dispatch(static_cast<uintptr_t>(wParam));
        } catch (...) {
        }
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND acquireWindow(HINSTANCE instance) {
    if (g_users++ == 0) {
        WNDCLASSW wc{};
        wc.lpfnWndProc = timerWindowProc;
        wc.hInstance = instance;
        wc.lpszClassName = kClassName;
        RegisterClassW(&wc);
        g_window = CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, instance, nullptr);
    }
    return g_window;
}

void releaseWindow(HINSTANCE instance) {
    if (--g_users > 0) return;
    if (g_window) {
        DestroyWindow(g_window);
        g_window = nullptr;
    }
    UnregisterClassW(kClassName, instance);
}

}  // namespace

TIntervalTimer::TIntervalTimer(TIntervalTimerSink* sink, void* instance) : sink_(sink), instance_(instance) {
    acquireWindow(static_cast<HINSTANCE>(instance_));
}

TIntervalTimer::~TIntervalTimer() {
    Stop();
    releaseWindow(static_cast<HINSTANCE>(instance_));
}

bool TIntervalTimer::Start(uint32_t intervalMs) {
    if (!g_window) return false;
    Stop();
    // The timer's id is its own address, so WM_TIMER leads straight back to it; Stop() drains the
    // queued messages before a timer goes, so the address is live whenever one arrives.
    timerId_ = SetTimer(g_window, reinterpret_cast<UINT_PTR>(this), intervalMs, nullptr);
    active_ = timerId_ != 0;
    return active_;
}

void TIntervalTimer::Stop() {
    if (active_) {
        active_ = false;
        KillTimer(g_window, reinterpret_cast<UINT_PTR>(this));
        MSG msg;
        while (PeekMessageA(&msg, g_window, WM_TIMER, WM_TIMER, PM_REMOVE)) {
        }
    }
    timerId_ = 0;
}

void TIntervalTimer::Dispatch(uintptr_t timerId) {
    auto* timer = reinterpret_cast<TIntervalTimer*>(timerId);
    if (timer && timer->active_ && timer->sink_) timer->sink_->OnTimer();
}

}  // namespace qrl
