#include "forms/pleasewait.h"

#include "forms/basedialog.h"
#include "locale/language.h"

namespace qrl {

namespace {

HWND g_pleaseWait = nullptr;  // process-wide: one window at most

constexpr int kWidth = 180;
constexpr int kHeight = 50;
constexpr DWORD kStyle = 0x90840000;  // WS_POPUP | WS_VISIBLE | WS_BORDER | WS_THICKFRAME
constexpr UINT kTextFlags = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;

void Paint(HWND window) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    if (!dc) return;
    RECT r;
    GetClientRect(window, &r);
    FillRect(dc, &r, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    const std::u16string text = Translate(u"run_cpp_3776", u"Loading...");
    InflateRect(&r, -4, -4);
    DrawTextW(dc, W(text), -1, &r, kTextFlags);
    EndPaint(window, &ps);
}

LRESULT CALLBACK PleaseWaitProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_PAINT) {
            Paint(window);
            return 0;
        }
        if (message == WM_NCDESTROY && window == g_pleaseWait) g_pleaseWait = nullptr;
    } catch (...) {
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

void OpenPleaseWait(HWND parent) {
    if (g_pleaseWait) return;
    RECT p{};
    if (parent) GetWindowRect(parent, &p);
    // Each offset is half of the difference, rounded towards zero.
    const int x = p.left + ((p.right - p.left) - kWidth) / 2;
    const int y = p.top + ((p.bottom - p.top) - kHeight) / 2;
    const std::u16string title = Translate(u"run_cpp_3743", u"Please wait");
    g_pleaseWait = CreateWindowExW(0, kPleaseWaitClass, W(title), kStyle, x, y, kWidth, kHeight, parent, nullptr,
                                   FormsInstance(), nullptr);
    if (g_pleaseWait) UpdateWindow(g_pleaseWait);
}

void ClosePleaseWait() {
    if (!g_pleaseWait) return;
    PostMessageW(g_pleaseWait, WM_CLOSE, 0, 0);
    g_pleaseWait = nullptr;
}

HWND PleaseWaitWindow() { return g_pleaseWait; }

bool RegisterPleaseWaitClass(HINSTANCE instance) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = PleaseWaitProc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT));
    wc.lpszClassName = kPleaseWaitClass;
    return RegisterClassW(&wc) != 0;
}

void UnregisterPleaseWaitClass(HINSTANCE instance) { UnregisterClassW(kPleaseWaitClass, instance); }

}  // namespace qrl
