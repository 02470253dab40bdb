// A periodic call of a sink on the thread that made the timer (Win32 build only). All timers share
// one hidden window of the class "TimerWin", made with the first timer and destroyed with the last.
#pragma once

#include "locale/inicache.h"

#include <cstdint>

namespace qrl {

class TIntervalTimer {
public:
    // `instance` is the module's instance handle, under which the window class is registered.
    TIntervalTimer(TIntervalTimerSink* sink, void* instance);
    ~TIntervalTimer();  // stops; no call reaches the sink after this
    TIntervalTimer(const TIntervalTimer&) = delete;
    TIntervalTimer& operator=(const TIntervalTimer&) = delete;

    bool Start(uint32_t intervalMs);
    // Stops the timer and removes the timer messages already queued for the shared window.
    void Stop();
    bool IsActive() const { return active_; }

    // Called by the shared window for a WM_TIMER whose id is a timer's.
    static void Dispatch(uintptr_t timerId);

private:
    TIntervalTimerSink* sink_;
    uintptr_t timerId_ = 0;
    bool active_ = false;
    void* instance_;
};

}  // namespace qrl
