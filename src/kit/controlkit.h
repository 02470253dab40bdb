// The one shape of a custom control: its state is an object of a class derived from
// TCustomControl, made at WM_NCCREATE, kept in the window's user data and deleted at WM_NCDESTROY;
// painting happens only in WM_PAINT; no exception leaves the window procedure; changes reach the
// parent by WM_COMMAND with a named code. Win32 only.
#pragma once

#include <windows.h>

#include <memory>

namespace qrl {

class TCustomControl {
public:
    explicit TCustomControl(HWND window) : window_(window) {}
    virtual ~TCustomControl() = default;  // runs at WM_NCDESTROY, while the window still exists
    TCustomControl(const TCustomControl&) = delete;
    TCustomControl& operator=(const TCustomControl&) = delete;

    HWND Window() const { return window_; }

    // Draws the client area; the device context is the paint scope's.
    virtual void OnPaint(HDC, const RECT&) {}
    // Every message but paint, background and destruction; the default is DefWindowProcW.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // True when OnPaint fills the whole client area, so the background is never erased (no flicker).
    virtual bool PaintsWholeClient() const { return false; }

protected:
    void NotifyParent(int code) const;
    void Invalidate() const { InvalidateRect(window_, nullptr, FALSE); }

private:
    HWND window_;
};

// The body every control procedure shares, after the state exists.
LRESULT DispatchControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

template <class Control>
LRESULT CALLBACK CustomControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        try {
            auto state = std::make_unique<Control>(window);
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(static_cast<TCustomControl*>(state.release())));
        } catch (...) {
            return FALSE;  // the window is not created
        }
    }
    return DispatchControlMessage(window, message, wParam, lParam);
}

bool RegisterControlClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure,
                          const wchar_t* cursor = reinterpret_cast<const wchar_t*>(IDC_ARROW));

template <class Control>
bool RegisterControlClass(HINSTANCE instance, const wchar_t* name,
                          const wchar_t* cursor = reinterpret_cast<const wchar_t*>(IDC_ARROW)) {
    return RegisterControlClass(instance, name, &CustomControlProc<Control>, cursor);
}

}  // namespace qrl
