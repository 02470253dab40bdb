#include "layoutcheck.h"

namespace qrl4host {

namespace {

int Dpi(HWND window) {
    using TDpiForWindow = UINT(WINAPI*)(HWND);  // Windows 10; the screen's resolution elsewhere
    static const auto dpiForWindow = reinterpret_cast<TDpiForWindow>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (window && dpiForWindow && dpiForWindow(window)) return static_cast<int>(dpiForWindow(window));
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// A text as drawn: "&&" is one ampersand, a single one only underlines the next character.
std::wstring Shown(const std::wstring& text) {
    std::wstring shown;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != L'&' || ++i < text.size()) shown += text[i];
    return shown;
}

// What a control leaves of its width for its own text (0: it shows none), and whether it wraps.
int TextRoom(HWND control, bool& wraps) {
    wchar_t name[64] = {};
    GetClassNameW(control, name, 64);
    const std::wstring full = name, kind = full.substr(full.find_last_of(L'!') + 1);  // "6.0...!Button"
    const LONG style = GetWindowLongW(control, GWL_STYLE);
    const LONG type = style & (kind == L"Static" ? SS_TYPEMASK : BS_TYPEMASK);
    RECT client{};
    GetClientRect(control, &client);
    wraps = kind == L"Static" ? type <= SS_RIGHT : (style & BS_MULTILINE) != 0;
    if (kind == L"Static") return type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP ? client.right : 0;
    if (kind != L"Button" || type == BS_GROUPBOX || type > BS_AUTORADIOBUTTON) return 0;
    // The system's measures are the screen's; a control at another resolution draws at its own.
    const auto measure = [&](int metric) { return MulDiv(GetSystemMetrics(metric), Dpi(control), Dpi(nullptr)); };
    const int room = client.right - 2 * measure(SM_CXEDGE);
    return type <= BS_DEFPUSHBUTTON || (style & BS_PUSHLIKE) ? room : room - measure(SM_CXMENUCHECK);
}

// The width and height `text` needs in the control's font: on one line, or wrapped at `wrapWidth`.
SIZE TextNeeds(HWND control, const std::wstring& text, int wrapWidth) {
    HDC dc = GetDC(control);
    const HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    if (wrapWidth > 0) {
        RECT box{0, 0, wrapWidth, 0};
        DrawTextW(dc, text.c_str(), -1, &box, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
        size = SIZE{box.right, box.bottom};
    }
    SelectObject(dc, old);
    ReleaseDC(control, dc);
    return size;
}

}  // namespace

std::vector<std::wstring> LayoutProblems(HWND dialog) {
    std::vector<std::wstring> problems;
    RECT area{};
    GetClientRect(dialog, &area);
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control)) continue;
        const std::wstring where = WindowText(dialog) + L": " + std::to_wstring(GetDlgCtrlID(control));
        RECT r{};
        GetWindowRect(control, &r);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
        if (r.left < 0 || r.top < 0 || r.right > area.right || r.bottom > area.bottom)
            problems.push_back(where + L" lies outside the dialog");
        bool wraps = false;
        const int room = TextRoom(control, wraps);
        const std::wstring text = Shown(WindowText(control));
        if (room <= 0 || text.empty()) continue;
        RECT client{};
        GetClientRect(control, &client);
        // A control with room for one line only cuts what does not fit on it, wrapping or not.
        SIZE needs = TextNeeds(control, text, 0);
        const bool wrapped = wraps && client.bottom >= 2 * needs.cy;
        if (wrapped) needs = TextNeeds(control, text, room);
        if (needs.cx > room || (wrapped && needs.cy > client.bottom))
            problems.push_back(where + L" \"" + text + L"\" needs " + std::to_wstring(needs.cx) + L"x" +
                               std::to_wstring(needs.cy) + L", has " + std::to_wstring(room) + L"x" +
                               std::to_wstring(client.bottom));
    }
    return problems;
}

}  // namespace qrl4host
