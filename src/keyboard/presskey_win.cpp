#include "keyboard/presskey.h"

#include "kit/basedialog.h"
#include "kit/controlkit.h"
#include "kit/gdiholders.h"
#include "locale/language.h"

namespace qrl {

namespace {

constexpr int kWidth = 180;
constexpr int kHeight = 50;

class PressKeyWindow final : public TCustomControl {
public:
    explicit PressKeyWindow(HWND window) : TCustomControl(window) {}
    bool PaintsWholeClient() const override { return true; }

    void OnPaint(HDC dc, const RECT& client) override {
        FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        RECT text = client;
        InflateRect(&text, -4, -4);
        const std::u16string prompt =
            Translate(u"presskey_prompt", u"Press a key to select it\r\n(or click to cancel)");
        const TSelectObject font(dc, GetStockObject(DEFAULT_GUI_FONT));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, RGB(0, 0, 0));
        DrawTextW(dc, W(prompt), -1, &text, DT_CENTER | DT_NOPREFIX | DT_WORDBREAK);
    }

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            PostMessageW(GetWindow(Window(), GW_OWNER), kKeyPressedMessage, wParam, lParam);
            DestroyWindow(Window());
            return 0;
        case WM_KILLFOCUS:
        case WM_LBUTTONDOWN:
            DestroyWindow(Window());
            return 0;
        default: return TCustomControl::OnMessage(message, wParam, lParam);
        }
    }
};

}  // namespace

bool RegisterPressKeyClass(HINSTANCE instance) { return RegisterControlClass<PressKeyWindow>(instance, kPressKeyClass); }

void UnregisterPressKeyClass(HINSTANCE instance) { UnregisterClassW(kPressKeyClass, instance); }

HWND ShowPressKeyWindow(HWND dialog) {
    RECT owner{};
    GetWindowRect(dialog, &owner);
    const int x = owner.left + (owner.right - owner.left - kWidth) / 2;
    const int y = owner.top + (owner.bottom - owner.top - kHeight) / 2;
    const std::u16string title = Translate(u"presskey_title", u"Press Key");
    HWND window = CreateWindowExW(0, kPressKeyClass, W(title), WS_POPUP | WS_CAPTION | WS_VISIBLE, x, y, kWidth,
                                  kHeight, dialog, nullptr, FormsInstance(), nullptr);
    if (window) SetFocus(window);
    return window;
}

}  // namespace qrl
