// Driving real dialogs from a second thread, the way a user would: wait for a window to be
// visible, select tree items, type, tick, choose, press buttons, answer message boxes. The dialog
// runs on the test's main thread; the script runs on a helper thread and never lets the main
// thread hang: when the script fails or ends with a dialog still open, every window of the dialog
// thread is cancelled.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace qrl::test {

// Thrown inside a script when something the script waits for does not come.
struct DriverFailure {
    std::string what;
};

class Driver {
public:
    explicit Driver(DWORD dialogThread) : thread_(dialogThread) {}

    // A visible top-level window of the dialog thread with this title (class "#32770").
    HWND WaitForDialog(const std::wstring& title, int timeoutMs = 15000, int settleMs = 50);
    // A visible dialog of the dialog thread, other than those in `known`, owned by `owner`.
    HWND WaitForPopup(HWND owner, int timeoutMs = 15000);
    // Waits until `window` is gone.
    void WaitGone(HWND window, int timeoutMs = 15000);

    static std::wstring Text(HWND window);
    // A control of a dialog: its text, whether it shows, takes input or is checked, and the selected
    // row of a list box or combo box.
    static std::wstring Text(HWND dialog, int id) { return Text(GetDlgItem(dialog, id)); }
    static bool Shown(HWND dialog, int id) { return IsWindowVisible(GetDlgItem(dialog, id)) != FALSE; }
    static bool Enabled(HWND dialog, int id) { return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE; }
    static bool Checked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
    static int Selection(HWND dialog, int id);
    // Texts of the static controls of a message box, joined by "\n".
    static std::wstring MessageText(HWND box);
    // Answers the message box that `owner` shows with `button`; returns its title and text as
    // "title|text".
    std::wstring Answer(HWND owner, int button);
    // The rows of a dialog's list box or combo box.
    static std::vector<std::wstring> ListRows(HWND dialog, int id);

    // Tree: the item whose text starts with `prefix`, searched depth first; fails when none.
    static HTREEITEM FindTreeItem(HWND tree, const std::wstring& prefix);
    static std::wstring TreeItemText(HWND tree, HTREEITEM item);
    static void SelectTreeItem(HWND tree, HTREEITEM item);

    // Replaces the edit's text by typing it, one WM_CHAR per character.
    static void Type(HWND edit, const std::wstring& text);
    // Replaces the edit's text as a paste does (EM_REPLACESEL), past any ES_NUMBER filter.
    static void Paste(HWND edit, const std::wstring& text);
    // Chooses a row of a drop-down and tells the dialog, as a user's pick does; posted where the pick
    // may ask a question, which would block us.
    static void Choose(HWND dialog, int comboId, int row, bool posted = false);
    // Selects a row of a list box and tells the dialog, as a user's click does.
    static void SelectRow(HWND dialog, int listId, int row);
    // Double-clicks a row of a list box with the mouse (posted: what it opens or ends may block).
    static void DoubleClickRow(HWND dialog, int listId, int row);
    // Clicks a button (posted, so that a modal box it opens doesn't block us).
    static void Click(HWND button);
    static void Click(HWND dialog, int id) { Click(GetDlgItem(dialog, id)); }
    // Clicks a check box or radio button and returns once the dialog has handled it: sent messages
    // overtake posted ones, so a posted click could land after the next selection.
    static void Tick(HWND dialog, int id);

    // Clicks `button` of `window` and waits until the window is gone.
    void Close(HWND window, int button = IDOK);
    // Clicks `id` of `dialog`, waits for the dialog titled `title` that it opens, lets `script` work
    // it (by default: closes it with `button`) and waits for it to go.
    void OpenAndClose(HWND dialog, int id, const std::wstring& title, int button);
    void InDialog(HWND dialog, int id, const std::wstring& title, const std::function<void(HWND)>& script);

    // Answers the open- or save-file dialog titled `title` with `path` and accepts it.
    void AnswerFileDialog(const std::wstring& title, const std::wstring& path);

    // Presses a key in `window` as the keyboard would, with Shift and Ctrl held as asked (the dialog
    // thread's key state says so while the key is handled), and waits until it is handled.
    enum Modifier : unsigned { kPlain = 0, kShift = 1, kCtrl = 2 };
    void PressKey(HWND window, UINT key, unsigned modifiers = kPlain);
    // The window that has the focus on the dialog thread.
    HWND Focus() const;

    // Waits until the dialog thread has nothing left to do for the moment.
    void Settle(int ms = 50) const;

    DWORD DialogThread() const { return thread_; }

private:
    DWORD thread_;
};

// Runs `dialogCall` on this thread while `script` drives it from a helper thread; the script's
// failures are the test's.
void Drive(const std::function<void()>& dialogCall, const std::function<void(Driver&)>& script);


// A window of class `className` (registered with `proc` on first use) whose user data is `owner`.
HWND CreateOwnedWindow(const wchar_t* className, WNDPROC proc, void* owner, DWORD style, int x, int y, int width,
                       int height, HWND parent);

// A visible popup window of this thread standing in for a control's parent or a window's owner:
// it notes each WM_COMMAND and each message from WM_USER on, and goes with the object.
class ParentWindow {
public:
    struct Message {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };
    explicit ParentWindow(int x = 0, int y = 0, int width = 700, int height = 260);
    ~ParentWindow() { DestroyWindow(window_); }
    ParentWindow(const ParentWindow&) = delete;
    ParentWindow& operator=(const ParentWindow&) = delete;
    HWND Handle() const { return window_; }
    std::vector<Message> messages;

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    HWND window_ = nullptr;
};

// A folder for the test's files.
std::wstring TempDir();

// Every visible or hidden top-level window of a thread.
std::vector<HWND> ThreadWindows(DWORD thread);
// Those of them of one window class.
std::vector<HWND> ThreadWindowsOfClass(DWORD thread, const std::wstring& className);

// Reads a UTF-8 file into 16-bit text; empty when it can't be read.
std::u16string ReadUtf8File(const std::string& path);
// Replaces the first `from` in `text`.
std::u16string ReplaceFirst(std::u16string text, std::u16string_view from, std::u16string_view to);

}  // namespace qrl::test
