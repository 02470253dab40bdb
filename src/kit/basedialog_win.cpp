#include "kit/basedialog.h"

#include "kit/geometry.h"
#include "kit/listrows.h"
#include "kit/pleasewait.h"
#include "kit/scrollrule.h"

#include <algorithm>

namespace qrl {

// ---- helpers

void EnableControl(HWND dialog, int id, bool enable) {
    if (HWND w = GetDlgItem(dialog, id)) EnableWindow(w, enable);
}

bool IsChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

void SetChecked(HWND dialog, int id, bool on) { CheckDlgButton(dialog, id, on ? BST_CHECKED : BST_UNCHECKED); }

void EnableCheck(HWND dialog, int id, bool enable) {
    HWND w = GetDlgItem(dialog, id);
    if (!w) return;
    if (!enable) SendMessageW(w, BM_SETCHECK, BST_UNCHECKED, 0);
    EnableWindow(w, enable);
}

void ShowControl(HWND dialog, int id, bool show) {
    if (HWND w = GetDlgItem(dialog, id)) ShowWindow(w, show ? SW_SHOW : SW_HIDE);
}

void SetControlNumber(HWND dialog, int id, int value) {
    HWND w = GetDlgItem(dialog, id);
    if (!w) return;
    SetWindowTextW(w, std::to_wstring(value).c_str());
    SendMessageW(w, EM_SETMODIFY, 0, 0);
}

std::u16string GetWindowText16(HWND window) {
    if (!window) return {};
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0) return {};
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    const LRESULT got = SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(length + 1),
                                     reinterpret_cast<LPARAM>(text.data()));
    text.resize(got > 0 && got <= length ? static_cast<std::size_t>(got) : 0);
    return text;
}

std::u16string GetControlText(HWND dialog, int id) { return GetWindowText16(GetDlgItem(dialog, id)); }

void SetControlText(HWND dialog, int id, const std::u16string& text) { SetDlgItemTextW(dialog, id, W(text)); }

namespace {

// Characters that surely lie beyond the edit's right side when it shows the start of `text`:
// twice as many as fit, measured with its font.
std::size_t BeyondView(HWND edit, const std::u16string& text) {
    RECT client{};
    GetClientRect(edit, &client);
    HDC dc = GetDC(edit);
    const HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(edit, WM_GETFONT, 0, 0)));
    const int measured = static_cast<int>(std::min<std::size_t>(text.size(), 4096));
    int fit = measured;
    SIZE size{};
    GetTextExtentExPointW(dc, W(text), measured, client.right, &fit, nullptr, &size);
    SelectObject(dc, old);
    ReleaseDC(edit, dc);
    return 2 * static_cast<std::size_t>(std::max(fit, 0)) + 8;
}

// The edit shows its text from the start and no selection (an edit without the focus hides it).
bool ShowsStartOnly(HWND edit) {
    DWORD start = 0, end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0) == 0 && (start == end || GetFocus() != edit);
}

}  // namespace

void SetEditText(HWND edit, const std::u16string& text) {
    const std::u16string shown = GetWindowText16(edit);
    const std::size_t same = static_cast<std::size_t>(
        std::mismatch(shown.begin(), shown.end(), text.begin(), text.end()).first - shown.begin());
    const bool unseen = IsWindowVisible(edit) && !GetUpdateRect(edit, nullptr, FALSE) && ShowsStartOnly(edit) &&
                        same >= BeyondView(edit, shown);
    if (!unseen) {
        SetWindowTextW(edit, W(text));
        return;
    }
    SendMessageW(edit, WM_SETREDRAW, FALSE, 0);
    SetWindowTextW(edit, W(text));
    SendMessageW(edit, WM_SETREDRAW, TRUE, 0);
    // Nothing was waiting to be painted before, and nothing in view has changed.
    ValidateRect(edit, nullptr);
}

// The combo is looked up once: each lookup by id walks the dialog's children.
void FillComboRows(HWND dialog, int id, std::span<const std::u16string> rows, int selection) {
    HWND combo = GetDlgItem(dialog, id);
    TRedrawOff quiet(combo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    for (const std::u16string& row : rows) SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(row)));
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(selection), 0);
}

int ComboSelection(HWND dialog, int id) {
    return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

void SelectComboText(HWND dialog, int id, const std::u16string& text) {
    HWND combo = GetDlgItem(dialog, id);
    const LRESULT row = SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(W(text)));
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(row == CB_ERR ? -1 : row), 0);
    if (row == CB_ERR && (GetWindowLongW(combo, GWL_STYLE) & 3) == CBS_DROPDOWN) SetWindowTextW(combo, W(text));
}

void SetStyleBits(HWND control, LONG mask, LONG bits) {
    const LONG style = GetWindowLongW(control, GWL_STYLE);
    SetWindowLongW(control, GWL_STYLE, (style & ~mask) | (mask & bits));
}

RECT ControlRect(HWND control) {
    RECT r{};
    GetWindowRect(control, &r);
    MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&r), 2);
    return r;
}

int MoveAtBottom(HWND control, const RECT& rect, int left, int bottom) {
    const TRect r = MoveAtBottomRect(TRect{rect.left, rect.top, rect.right, rect.bottom}, left, bottom);
    MoveWindow(control, r.left, r.top, r.Width(), r.Height(), TRUE);
    return r.right;
}

void MoveClipped(HWND control, const RECT& rect, int left, int top, int rightLimit) {
    const TRect r = MoveClippedRect(TRect{rect.left, rect.top, rect.right, rect.bottom}, left, top, rightLimit);
    MoveWindow(control, r.left, r.top, r.Width(), r.Height(), TRUE);
}

HWND TopLevelOf(HWND window) {
    HWND w = window;
    while (w && !(GetWindowLongW(w, GWL_STYLE) & WS_POPUP)) w = GetParent(w);
    return w ? w : window;
}

void ResetDialogScroll(HWND dialog) {
    ClosePleaseWait();
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE;
    info.nMin = 0;
    info.nMax = 0;
    SetScrollInfo(dialog, SB_VERT, &info, TRUE);
}

void HandleDialogScroll(HWND dialog, WPARAM wParam) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    if (!GetScrollInfo(dialog, SB_VERT, &info)) return;
    const int wanted = ScrollTarget(info.nPos, static_cast<int>(info.nPage), info.nMax, LOWORD(wParam),
                                    HIWORD(wParam));
    if (wanted == info.nPos) return;
    const int old = info.nPos;
    info.fMask = SIF_POS;
    info.nPos = wanted;
    SetScrollInfo(dialog, SB_VERT, &info, TRUE);
    ScrollWindowEx(dialog, 0, old - wanted, nullptr, nullptr, nullptr, nullptr, SW_SCROLLCHILDREN | SW_INVALIDATE);
}

namespace {
HINSTANCE g_instance = nullptr;
}

HINSTANCE ModuleInstance() { return g_instance; }
void SetModuleInstance(HINSTANCE instance) { g_instance = instance; }

HINSTANCE FormsInstance() {
    if (HINSTANCE instance = ModuleInstance()) return instance;
    // Not loaded as the DLL (a test program linked with us): the module that holds this code.
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&FormsInstance), &module);
    return module;
}

}  // namespace qrl
