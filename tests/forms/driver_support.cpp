#include "driver.h"

#include "text/textutil.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

namespace qrl::test {

namespace {

constexpr int kPollMs = 10;

[[noreturn]] void Fail(const std::string& what) { throw DriverFailure{what}; }

std::string Narrow(const std::wstring& text) {
    return utf16ToUtf8(std::u16string(text.begin(), text.end()));
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

bool IsDialog(HWND window) { return ClassOf(window) == L"#32770"; }
bool IsCombo(HWND window) { return _wcsicmp(ClassOf(window).c_str(), L"ComboBox") == 0; }

template <class Predicate>
HWND WaitFor(DWORD thread, int timeoutMs, Predicate found) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (std::chrono::steady_clock::now() < end) {
        for (HWND w : ThreadWindows(thread))
            if (found(w)) return w;
        Sleep(kPollMs);
    }
    return nullptr;
}

}  // namespace

std::vector<HWND> ThreadWindows(DWORD thread) {
    std::vector<HWND> windows;
    EnumThreadWindows(
        thread,
        [](HWND w, LPARAM p) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(p)->push_back(w);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::vector<HWND> ThreadWindowsOfClass(DWORD thread, const std::wstring& className) {
    std::vector<HWND> found;
    for (HWND w : ThreadWindows(thread))
        if (ClassOf(w) == className) found.push_back(w);
    return found;
}

HWND Driver::WaitForDialog(const std::wstring& title, int timeoutMs, int settleMs) {
    // A dialog is findable before WM_INITDIALOG has run; it becomes visible only after.
    HWND w = WaitFor(thread_, timeoutMs,
                     [&](HWND w) { return IsDialog(w) && IsWindowVisible(w) && Text(w) == title; });
    if (!w) Fail("no dialog titled \"" + Narrow(title) + "\"");
    Settle(settleMs);
    return w;
}

HWND Driver::WaitForPopup(HWND owner, int timeoutMs) {
    HWND w = WaitFor(thread_, timeoutMs, [&](HWND w) {
        return w != owner && IsDialog(w) && IsWindowVisible(w) && GetWindow(w, GW_OWNER) == owner;
    });
    if (!w) Fail("no popup over \"" + Narrow(Text(owner)) + "\"");
    Settle();
    return w;
}

void Driver::WaitGone(HWND window, int timeoutMs) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (IsWindow(window)) {
        if (std::chrono::steady_clock::now() > end) Fail("window stays: \"" + Narrow(Text(window)) + "\"");
        Sleep(kPollMs);
    }
}

std::wstring Driver::Text(HWND window) {
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length > 0 ? length : 0) + 1, L'\0');
    SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(wcslen(text.c_str()));
    return text;
}

void Driver::Close(HWND window, int button) {
    Click(window, button);
    WaitGone(window);
}

void Driver::AnswerFileDialog(const std::wstring& title, const std::wstring& path) {
    HWND dialog = WaitForDialog(title);
    HWND name = GetDlgItem(dialog, 0x480);  // edt1
    if (!name) {
        // cmb13: the name as a ComboBoxEx, whose edit sits inside its combo box.
        HWND comboEx = GetDlgItem(dialog, 0x47C);
        HWND combo = comboEx ? FindWindowExW(comboEx, nullptr, L"ComboBox", nullptr) : nullptr;
        name = combo ? FindWindowExW(combo, nullptr, L"Edit", nullptr) : nullptr;
        if (!name && comboEx) name = FindWindowExW(comboEx, nullptr, L"Edit", nullptr);
    }
    if (!name) Fail("file dialog \"" + Narrow(title) + "\" without a name field");
    SetWindowTextW(name, path.c_str());
    Close(dialog);
}

void Driver::OpenAndClose(HWND dialog, int id, const std::wstring& title, int button) {
    Click(dialog, id);
    Close(WaitForDialog(title, 15000, 0), button);
}

void Driver::InDialog(HWND dialog, int id, const std::wstring& title, const std::function<void(HWND)>& script) {
    Click(dialog, id);
    HWND inner = WaitForDialog(title);
    script(inner);
    WaitGone(inner);
    Settle();
}

std::wstring Driver::Answer(HWND owner, int button) {
    HWND box = WaitForPopup(owner);
    const std::wstring seen = Text(box) + L"|" + MessageText(box);
    Click(box, button);
    WaitGone(box);
    Settle();
    return seen;
}

std::vector<std::wstring> Driver::ListRows(HWND dialog, int id) {
    HWND list = GetDlgItem(dialog, id);
    const bool combo = IsCombo(list);
    std::vector<std::wstring> rows;
    const int count = static_cast<int>(SendMessageW(list, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        const int length = static_cast<int>(SendMessageW(list, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, i, 0));
        std::wstring text(static_cast<std::size_t>(std::max(length, 0)) + 1, L'\0');
        SendMessageW(list, combo ? CB_GETLBTEXT : LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        text.resize(wcslen(text.c_str()));
        rows.push_back(text);
    }
    return rows;
}

int Driver::Selection(HWND dialog, int id) {
    const UINT message = IsCombo(GetDlgItem(dialog, id)) ? CB_GETCURSEL : LB_GETCURSEL;
    return static_cast<int>(SendDlgItemMessageW(dialog, id, message, 0, 0));
}

std::wstring Driver::MessageText(HWND box) {
    std::wstring text;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (_wcsicmp(ClassOf(child).c_str(), L"Static") != 0) continue;
        const std::wstring t = Text(child);
        if (t.empty()) continue;
        if (!text.empty()) text += L"\n";
        text += t;
    }
    return text;
}

std::wstring Driver::TreeItemText(HWND tree, HTREEITEM item) {
    wchar_t buffer[1024] = {};
    TVITEMW tv{};
    tv.mask = TVIF_TEXT | TVIF_HANDLE;
    tv.hItem = item;
    tv.pszText = buffer;
    tv.cchTextMax = 1024;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&tv));
    return buffer;
}

HTREEITEM Driver::FindTreeItem(HWND tree, const std::wstring& prefix) {
    std::vector<HTREEITEM> stack;
    if (auto root = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0))) stack.push_back(root);
    while (!stack.empty()) {
        HTREEITEM item = stack.back();
        stack.pop_back();
        if (TreeItemText(tree, item).rfind(prefix, 0) == 0) return item;
        if (auto next = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(item))))
            stack.push_back(next);
        if (auto child = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item))))
            stack.push_back(child);
    }
    Fail("no tree item \"" + Narrow(prefix) + "\"");
}

void Driver::SelectTreeItem(HWND tree, HTREEITEM item) {
    SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

void Driver::Type(HWND edit, const std::wstring& text) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, WM_CHAR, VK_BACK, 0);
    for (wchar_t c : text) SendMessageW(edit, WM_CHAR, c, 0);
}

void Driver::Paste(HWND edit, const std::wstring& text) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void Driver::Choose(HWND dialog, int comboId, int row, bool posted) {
    HWND combo = GetDlgItem(dialog, comboId);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    const WPARAM command = MAKEWPARAM(comboId, CBN_SELCHANGE);
    if (posted)
        PostMessageW(dialog, WM_COMMAND, command, reinterpret_cast<LPARAM>(combo));
    else
        SendMessageW(dialog, WM_COMMAND, command, reinterpret_cast<LPARAM>(combo));
}

void Driver::SelectRow(HWND dialog, int listId, int row) {
    HWND list = GetDlgItem(dialog, listId);
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(listId, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

void Driver::DoubleClickRow(HWND dialog, int listId, int row) {
    HWND list = GetDlgItem(dialog, listId);
    RECT item{};
    if (SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)) == LB_ERR)
        Fail("no row " + std::to_string(row) + " to double-click");
    const LPARAM at = MAKELPARAM(item.left + 2, (item.top + item.bottom) / 2);
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        PostMessageW(list, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, at);
}

void Driver::Click(HWND button) {
    if (!button) Fail("no button to click");
    PostMessageW(button, BM_CLICK, 0, 0);
}

void Driver::Tick(HWND dialog, int id) {
    HWND box = GetDlgItem(dialog, id);
    if (!box) Fail("no check box " + std::to_string(id));
    SendMessageW(box, BM_CLICK, 0, 0);
}

void Driver::PressKey(HWND window, UINT key, unsigned modifiers) {
    // Key state belongs to a thread's input; sharing the dialog thread's lets us set it from here.
    AttachThreadInput(GetCurrentThreadId(), thread_, TRUE);
    BYTE state[256] = {};
    GetKeyboardState(state);
    const auto hold = [&](bool shift, bool ctrl) {
        state[VK_SHIFT] = shift ? 0x80 : 0;
        state[VK_CONTROL] = ctrl ? 0x80 : 0;
        SetKeyboardState(state);
    };
    hold(modifiers & kShift, modifiers & kCtrl);
    PostMessageW(window, WM_KEYDOWN, key, 1);
    PostMessageW(window, WM_KEYUP, key, 0xC0000001);
    Settle();
    hold(false, false);
    AttachThreadInput(GetCurrentThreadId(), thread_, FALSE);
}

HWND Driver::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(thread_, &info) ? info.hwndFocus : nullptr;
}

void Driver::Settle(int ms) const {
    // A message sent to the dialog thread returns only once it has reached its message loop.
    DWORD_PTR result = 0;
    if (const std::vector<HWND> windows = ThreadWindows(thread_); !windows.empty())
        SendMessageTimeoutW(windows.front(), WM_NULL, 0, 0, SMTO_BLOCK, 5000, &result);
    Sleep(ms);
}

void Drive(const std::function<void()>& dialogCall, const std::function<void(Driver&)>& script) {
    std::vector<std::string> failures;
    const DWORD dialogThread = GetCurrentThreadId();
    std::thread helper([&] {
        Driver driver(dialogThread);
        try {
            script(driver);
        } catch (const DriverFailure& f) {
            failures.push_back(f.what);
        } catch (const std::exception& e) {
            failures.push_back(e.what());
        }
        // Whatever the script left open is cancelled, so that the dialog call returns.
        for (int round = 0; round < 200; ++round) {
            bool any = false;
            for (HWND w : ThreadWindows(dialogThread)) {
                if (!IsWindowVisible(w) || !IsDialog(w)) continue;
                any = true;
                if (!failures.empty() || round > 100) PostMessageW(w, WM_COMMAND, IDCANCEL, 0);
            }
            if (!any) break;
            if (round == 100) failures.push_back("the script left a dialog open");
            Sleep(50);
        }
    });
    dialogCall();
    helper.join();
    for (const std::string& f : failures) ADD_FAILURE() << f;
}

HWND CreateOwnedWindow(const wchar_t* className, WNDPROC proc, void* owner, DWORD style, int x, int y, int width,
                       int height, HWND parent) {
    WNDCLASSW wc{};
    if (!GetClassInfoW(GetModuleHandleW(nullptr), className, &wc)) {
        wc.lpfnWndProc = proc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = className;
        RegisterClassW(&wc);
    }
    HWND window = CreateWindowExW(0, className, L"", style, x, y, width, height, parent, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(owner));
    return window;
}

ParentWindow::ParentWindow(int x, int y, int width, int height)
    : window_(CreateOwnedWindow(L"QrlTestParent", Proc, this, WS_POPUP | WS_VISIBLE, x, y, width, height, nullptr)) {}

LRESULT CALLBACK ParentWindow::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ParentWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self || (message != WM_COMMAND && message < WM_USER)) return DefWindowProcW(window, message, wParam, lParam);
    self->messages.push_back({message, wParam, lParam});
    return 0;
}

std::wstring TempDir() {
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    return temp;
}

std::u16string ReadUtf8File(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream buffer;
    buffer << in.rdbuf();
    return utf8ToUtf16(buffer.str());
}

std::u16string ReplaceFirst(std::u16string text, std::u16string_view from, std::u16string_view to) {
    const std::size_t at = text.find(from);
    if (at != std::u16string::npos) text.replace(at, from.size(), to);
    return text;
}

}  // namespace qrl::test
