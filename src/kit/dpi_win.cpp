#include "kit/dpi.h"

#include "kit/basedialog.h"
#include "kit/geometry.h"

#include <string_view>
#include <vector>

namespace qrl {

namespace {

// Windows 10 and later; looked up so that the module still loads where they are missing.
template <class Function>
Function UserCall(const char* name) {
    HMODULE user = GetModuleHandleW(L"user32.dll");
    return user ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(user, name))) : nullptr;
}

// The awareness contexts and the dialog behaviour are Windows 10's values, as the platform defines them.
using TSetThreadContext = HANDLE(WINAPI*)(HANDLE);
using TDpiForWindow = UINT(WINAPI*)(HWND);
using TSetDialogBehaviour = BOOL(WINAPI*)(HWND, int, int);
const HANDLE kPerMonitorAware = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-3));
const HANDLE kPerMonitorAwareV2 = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4));
constexpr int kDialogScalingOff = 1;  // DDC_DISABLE_ALL

TRect ToTRect(const RECT& r) { return TRect{r.left, r.top, r.right, r.bottom}; }

bool IsComboBox(HWND window) {
    wchar_t name[64] = {};
    const int length = GetClassNameW(window, name, 64);
    constexpr std::wstring_view kCombo = L"ComboBox";  // a versioned class reads "6.0...!ComboBox"
    return length >= static_cast<int>(kCombo.size()) &&
           std::wstring_view(name, static_cast<std::size_t>(length)).ends_with(kCombo);
}

}  // namespace

TDpiAwarenessScope::TDpiAwarenessScope() {
    static const auto setContext = UserCall<TSetThreadContext>("SetThreadDpiAwarenessContext");
    if (!setContext) return;
    // The second version scales the frame and the common controls too; the first is all Windows 8.1 has.
    previous_ = setContext(kPerMonitorAwareV2);
    if (!previous_) previous_ = setContext(kPerMonitorAware);
}

TDpiAwarenessScope::~TDpiAwarenessScope() {
    static const auto setContext = UserCall<TSetThreadContext>("SetThreadDpiAwarenessContext");
    if (previous_ && setContext) setContext(previous_);
}

UINT WindowDpi(HWND window) {
    static const auto dpiForWindow = UserCall<TDpiForWindow>("GetDpiForWindow");
    if (dpiForWindow && window) {
        if (const UINT dpi = dpiForWindow(window)) return dpi;
    }
    HDC dc = GetDC(window);
    const int dpi = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 0;
    if (dc) ReleaseDC(window, dc);
    return dpi > 0 ? static_cast<UINT>(dpi) : kDefaultDpi;
}

int ScaleToDpi(int pixels, UINT dpi) { return ScaleLength(pixels, kDefaultDpi, static_cast<std::int32_t>(dpi)); }

void TakeOverDialogScaling(HWND dialog) {
    static const auto setBehaviour = UserCall<TSetDialogBehaviour>("SetDialogDpiChangeBehavior");
    if (setBehaviour) setBehaviour(dialog, kDialogScalingOff, kDialogScalingOff);
}

HFONT RescaleDialog(HWND dialog, HFONT dialogFont, UINT oldDpi, UINT newDpi) {
    if (oldDpi == 0 || newDpi == 0 || oldDpi == newDpi) return nullptr;
    const auto from = static_cast<std::int32_t>(oldDpi), to = static_cast<std::int32_t>(newDpi);
    HFONT scaled = nullptr;
    LOGFONTW font{};
    if (dialogFont && GetObjectW(dialogFont, sizeof font, &font)) {
        font.lfHeight = ScaleLength(font.lfHeight, from, to);
        font.lfWidth = ScaleLength(font.lfWidth, from, to);
        scaled = CreateFontIndirectW(&font);
    }
    std::vector<HWND> children;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    for (HWND child : children) {
        RECT r = ControlRect(child);
        // A drop-down's window is its closed height; scale the opened list's, or it would shrink to nothing.
        RECT dropped{};
        if (IsComboBox(child) && SendMessageW(child, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped)) &&
            dropped.bottom > dropped.top)
            r.bottom = r.top + (dropped.bottom - dropped.top);
        if (scaled && reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0)) == dialogFont)
            SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(scaled), FALSE);
        const TRect moved = ScaleRect(ToTRect(r), from, to);
        SetWindowPos(child, nullptr, moved.left, moved.top, moved.Width(), moved.Height(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    InvalidateRect(dialog, nullptr, TRUE);
    return scaled;
}

}  // namespace qrl
