#include "kit/pleasewait.h"

#include "kit/basedialog.h"
#include "kit/controlkit.h"
#include "locale/language.h"

namespace qrl {

namespace {

HWND g_pleaseWait = nullptr;  // process-wide: one window at most

constexpr int kWidth = 180;
constexpr int kHeight = 50;
constexpr DWORD kStyle = 0x90840000;  // WS_POPUP | WS_VISIBLE | WS_BORDER | WS_THICKFRAME
constexpr UINT kTextFlags = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
constexpr TTextKey kPleaseWaitTitle{u"run_cpp_3743", u"Please wait"};
constexpr TTextKey kLoadingText{u"run_cpp_3776", u"Loading..."};

class WaitWindow : public TCustomControl {
public:
    using TCustomControl::TCustomControl;
    ~WaitWindow() override {
        if (Window() == g_pleaseWait) g_pleaseWait = nullptr;
    }
    bool PaintsWholeClient() const override { return true; }
    void OnPaint(HDC dc, const RECT& client) override {
        FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        const std::u16string text = Translate(kLoadingText);
        RECT r = client;
        InflateRect(&r, -4, -4);
        DrawTextW(dc, W(text), -1, &r, kTextFlags);
    }
};

}  // namespace

void OpenPleaseWait(HWND parent) {
    if (g_pleaseWait) return;
    RECT p{};
    if (parent) GetWindowRect(parent, &p);
    // Each offset is half of the difference, rounded towards zero.
    const int x = p.left + ((p.right - p.left) - kWidth) / 2;
    const int y = p.top + ((p.bottom - p.top) - kHeight) / 2;
    const std::u16string title = Translate(kPleaseWaitTitle);
    g_pleaseWait = CreateWindowExW(0, kPleaseWaitClass, W(title), kStyle, x, y, kWidth, kHeight, parent, nullptr,
                                   FormsInstance(), nullptr);
    if (g_pleaseWait) UpdateWindow(g_pleaseWait);
}

void ClosePleaseWait() {
    if (!g_pleaseWait) return;
    PostMessageW(g_pleaseWait, WM_CLOSE, 0, 0);
    g_pleaseWait = nullptr;
}

void DestroyPleaseWait() {
    HWND window = g_pleaseWait;
    g_pleaseWait = nullptr;
    if (!window || !IsWindow(window)) return;
    // Whatever reaches the window from now on must not run our code, which is about to be unloaded.
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcW));
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
        // The state object goes with the window procedure it no longer reaches.
        delete reinterpret_cast<TCustomControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
}

HWND PleaseWaitWindow() { return g_pleaseWait; }

bool RegisterPleaseWaitClass(HINSTANCE instance) {
    return RegisterControlClass<WaitWindow>(instance, kPleaseWaitClass, reinterpret_cast<LPCWSTR>(IDC_WAIT));
}

void UnregisterPleaseWaitClass(HINSTANCE instance) { UnregisterClassW(kPleaseWaitClass, instance); }

}  // namespace qrl
