#include "kit/controlkit.h"

#include "kit/dialogkit.h"
#include "kit/gdiholders.h"

namespace qrl {

LRESULT TCustomControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(window_, message, wParam, lParam);
}

void TCustomControl::NotifyParent(int code) const { qrl::NotifyParent(window_, code); }

namespace {

TCustomControl* StateOf(HWND window) {
    return reinterpret_cast<TCustomControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void Paint(HWND window, TCustomControl& control) {
    TPaintScope paint(window);
    if (!paint.dc()) return;
    RECT client{};
    GetClientRect(window, &client);
    control.OnPaint(paint.dc(), client);
}

void DeleteState(HWND window) {
    TCustomControl* control = StateOf(window);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    delete control;
}

}  // namespace

LRESULT DispatchControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        TCustomControl* control = StateOf(window);
        if (control == nullptr) return DefWindowProcW(window, message, wParam, lParam);
        switch (message) {
        case WM_PAINT: Paint(window, *control); return 0;
        case WM_ERASEBKGND:
            if (control->PaintsWholeClient()) return 1;
            break;
        case WM_NCDESTROY: DeleteState(window); break;
        default: return control->OnMessage(message, wParam, lParam);
        }
    } catch (...) {
        // Nothing may unwind into the system's dispatch; a failed message leaves the control as it was.
        if (message == WM_PAINT) ValidateRect(window, nullptr);  // a paint that threw must not repeat forever
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool RegisterControlClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, const wchar_t* cursor) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = procedure;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorW(nullptr, cursor);
    wc.lpszClassName = name;
    return RegisterClassW(&wc) != 0;
}

}  // namespace qrl
