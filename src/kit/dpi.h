// The module's windows at the resolution of the monitor they are on: per-monitor awareness for the
// module's own windows where Windows offers it, and the dialogs laid out again when their monitor's
// resolution changes. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

inline constexpr UINT kDefaultDpi = 96;
// Windows 10's messages, which the headers declare only for programs that need Windows 10.
inline constexpr UINT kDpiChangedMessage = 0x02E0;               // WM_DPICHANGED
inline constexpr UINT kDpiChangedAfterParentMessage = 0x02E3;    // WM_DPICHANGED_AFTERPARENT

// Makes the calling thread per-monitor aware for a scope and puts back what it was on every way
// out. The calls are looked up at run time: where Windows lacks them, nothing changes.
class TDpiAwarenessScope {
public:
    TDpiAwarenessScope();
    ~TDpiAwarenessScope();
    TDpiAwarenessScope(const TDpiAwarenessScope&) = delete;
    TDpiAwarenessScope& operator=(const TDpiAwarenessScope&) = delete;

private:
    HANDLE previous_ = nullptr;  // the thread's awareness context before
};

// The resolution `window` is drawn at: its monitor's for a per-monitor aware window, else the system's.
UINT WindowDpi(HWND window);
// `pixels` as at 96 dots per inch, at `dpi`.
int ScaleToDpi(int pixels, UINT dpi);

// Turns the dialog manager's own scaling off where it has one, so that RescaleDialog is the only one.
void TakeOverDialogScaling(HWND dialog);
// Moves and sizes every child of `dialog` from `oldDpi` to `newDpi` and gives the children in `font`
// (the dialog's) that font scaled. Returns the new font, which the caller keeps alive as long as the
// dialog and deletes afterwards; null when there was none to scale.
HFONT RescaleDialog(HWND dialog, HFONT font, UINT oldDpi, UINT newDpi);

}  // namespace qrl
