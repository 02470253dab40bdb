#include "snapshots.h"

#include <cstdio>
#include <vector>

#include "hostwindow.h"
#include "layoutcheck.h"
#include "pngwrite.h"

namespace qrl4host {

namespace {

struct TSeenDialog {
    HWND window;
    DWORD firstSeen;
    bool pictured = false;
    bool pressed = false;
    bool cancelled = false;
    bool chosen = false;
};

struct TWatch {
    TSnapshotOptions options;
    std::vector<TSeenDialog> seen;
    std::size_t nextPress = 0;
    int pictureCount = 0;
    int layoutProblems = 0;
    UINT_PTR timer = 0;
};
TWatch g_watch;

bool isDialog(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return std::wcscmp(name, L"#32770") == 0;
}

BOOL CALLBACK collect(HWND window, LPARAM parameter) {
    if (IsWindowVisible(window) && isDialog(window)) reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

bool uniform(const uint32_t* pixels, std::size_t count) {
    for (std::size_t i = 1; i < count; ++i)
        if ((pixels[i] & 0xFFFFFF) != (pixels[0] & 0xFFFFFF)) return false;
    return true;
}

// Each child paints itself into the picture at its place, bottom of the z-order first. Done by
// hand because a window's own WM_PRINT does not take its children along on every system (Wine's
// does not), and there may be no screen to copy from (Wine's null driver).
void printChildren(HWND parent, HDC dc, const RECT& top) {
    HWND first = GetWindow(parent, GW_CHILD);
    if (!first) return;
    for (HWND child = GetWindow(first, GW_HWNDLAST); child; child = GetWindow(child, GW_HWNDPREV)) {
        if (!IsWindowVisible(child)) continue;
        RECT rect{};
        GetWindowRect(child, &rect);
        POINT old{};
        SetViewportOrgEx(dc, rect.left - top.left, rect.top - top.top, &old);
        SendMessageW(child, WM_PRINT, reinterpret_cast<WPARAM>(dc), PRF_NONCLIENT | PRF_CLIENT | PRF_ERASEBKGND);
        SetViewportOrgEx(dc, old.x, old.y, nullptr);
        printChildren(child, dc, top);
    }
}

// The window as the user sees it.
bool capture(HWND window, uint32_t& width, uint32_t& height, std::vector<uint8_t>& rgb) {
    RECT rect{};
    GetWindowRect(window, &rect);
    width = static_cast<uint32_t>(rect.right - rect.left);
    height = static_cast<uint32_t>(rect.bottom - rect.top);
    if (width == 0 || height == 0 || width > 8192 || height > 8192) return false;

    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = static_cast<LONG>(width);
    info.bmiHeader.biHeight = -static_cast<LONG>(height);  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bool ok = bitmap && bits;
    if (ok) {
        HGDIOBJ old = SelectObject(memory, bitmap);
        // With a screen (a display, or Xvfb) the dialog is copied from it as the user sees it.
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
        ok = BitBlt(memory, 0, 0, static_cast<int>(width), static_cast<int>(height), screen, rect.left, rect.top,
                    SRCCOPY) != 0;
        GdiFlush();
        if (!ok || uniform(static_cast<const uint32_t*>(bits), static_cast<std::size_t>(width) * height)) {
            // No screen to copy from: the window and its children paint themselves into the picture.
            ok = true;
            SendMessageW(window, WM_PRINT, reinterpret_cast<WPARAM>(memory),
                         PRF_NONCLIENT | PRF_CLIENT | PRF_ERASEBKGND);
            printChildren(window, memory, rect);
            GdiFlush();
        }
        SelectObject(memory, old);
    }
    if (ok) {
        const auto* pixels = static_cast<const uint8_t*>(bits);
        rgb.resize(static_cast<std::size_t>(width) * height * 3);
        for (std::size_t i = 0, n = static_cast<std::size_t>(width) * height; i < n; ++i) {
            rgb[i * 3] = pixels[i * 4 + 2];
            rgb[i * 3 + 1] = pixels[i * 4 + 1];
            rgb[i * 3 + 2] = pixels[i * 4];
        }
    }
    if (bitmap) DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return ok;
}

void picture(TSeenDialog& dialog) {
    dialog.pictured = true;
    if (g_watch.options.checkLayout) {
        for (const std::wstring& problem : LayoutProblems(dialog.window)) {
            PrintText("layout", reinterpret_cast<const char16_t*>(problem.c_str()));
            ++g_watch.layoutProblems;
        }
    }
    if (g_watch.options.directory.empty()) return;
    uint32_t width = 0, height = 0;
    std::vector<uint8_t> rgb;
    wchar_t title[256] = {};
    GetWindowTextW(dialog.window, title, 256);
    const std::wstring path =
        g_watch.options.directory + L"\\dialog-" + std::to_wstring(++g_watch.pictureCount) + L".png";
    if (capture(dialog.window, width, height, rgb) && WritePng(path, width, height, rgb))
        PrintText("picture", reinterpret_cast<const char16_t*>((path + L" (" + title + L")").c_str()));
    else
        PrintText("picture failed", reinterpret_cast<const char16_t*>(title));
}

// The first item, depth first, whose text starts with `prefix`.
HTREEITEM findItem(HWND tree, HTREEITEM item, const std::wstring& prefix) {
    for (; item; item = TreeView_GetNextSibling(tree, item)) {
        wchar_t text[512] = {};
        TVITEMW data{};
        data.mask = TVIF_TEXT;
        data.hItem = item;
        data.pszText = text;
        data.cchTextMax = 512;
        TreeView_GetItem(tree, &data);
        if (std::wstring(text).rfind(prefix, 0) == 0) return item;
        if (HTREEITEM found = findItem(tree, TreeView_GetChild(tree, item), prefix)) return found;
    }
    return nullptr;
}

// Selects the script's tree item in the dialog's tree, as a click on it would.
void selectItem(HWND window) {
    HWND tree = FindWindowExW(window, nullptr, WC_TREEVIEWW, nullptr);
    HTREEITEM item = tree ? findItem(tree, TreeView_GetRoot(tree), g_watch.options.select) : nullptr;
    std::printf("select: %s\n", item ? "found" : "not found");
    if (item) TreeView_SelectItem(tree, item);
    g_watch.options.select.clear();
}

void press(HWND window, int id) {
    std::printf("press: %d\n", id);
    std::fflush(stdout);
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(window, id)));
}

// Picks the script's row of a drop-down in the dialog; true when the dialog has one to pick from.
bool choose(HWND window) {
    HWND combo = GetDlgItem(window, g_watch.options.chooseId);
    std::printf("choose: %d row %d\n", g_watch.options.chooseId, g_watch.options.chooseRow);
    g_watch.options.chooseId = 0;
    if (!combo) return false;
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(g_watch.options.chooseRow), 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
    return true;
}

void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    std::vector<HWND> open;
    EnumThreadWindows(GetCurrentThreadId(), &collect, reinterpret_cast<LPARAM>(&open));
    const DWORD now = GetTickCount();
    for (HWND window : open) {
        TSeenDialog* dialog = nullptr;
        for (TSeenDialog& s : g_watch.seen)
            if (s.window == window) dialog = &s;
        if (!dialog) {
            g_watch.seen.push_back(TSeenDialog{window, now});
            continue;
        }
        if (now - dialog->firstSeen < g_watch.options.settleMs) continue;
        if (!dialog->chosen && g_watch.options.chooseId != 0) {
            dialog->chosen = true;
            if (choose(window)) dialog->firstSeen = now;  // settles again before its picture
            continue;
        }
        if (!dialog->pictured) picture(*dialog);
        if (!dialog->pressed && g_watch.nextPress < g_watch.options.presses.size()) {
            dialog->pressed = true;
            if (!g_watch.options.select.empty()) selectItem(window);
            press(window, g_watch.options.presses[g_watch.nextPress++]);
        } else if (!dialog->cancelled && g_watch.options.timeoutMs != 0 &&
                   now - dialog->firstSeen > g_watch.options.timeoutMs) {
            dialog->cancelled = true;
            press(window, IDCANCEL);
        }
    }
    // Forget dialogs that have gone, so that a new window at a reused handle counts as new.
    std::vector<TSeenDialog> still;
    for (const TSeenDialog& s : g_watch.seen)
        if (IsWindow(s.window) && IsWindowVisible(s.window)) still.push_back(s);
    g_watch.seen.swap(still);
}

}  // namespace

void StartSnapshots(const TSnapshotOptions& options) {
    g_watch.options = options;
    g_watch.timer = SetTimer(nullptr, 0, 100, &tick);
}

void StopSnapshots() {
    if (g_watch.timer) KillTimer(nullptr, g_watch.timer);
    g_watch.timer = 0;
}

int LayoutProblemCount() { return g_watch.layoutProblems; }

}  // namespace qrl4host
