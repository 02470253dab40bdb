// The settings dialog's search row, tree marks, reset, undo and size on the comms sample, driven
// through the DLL as a user would; the replies are compared whole.
#include "formsetup.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

using Rows = std::vector<std::wstring>;
const std::wstring kTitle = L"Configure  Telnet over TCP";

HWND Tree(HWND dialog) { return GetDlgItem(dialog, IDC_TREE); }

// Every item of the tree in order, indented by depth; "+" marks an open group, "*" a bold item.
Rows TreeRows(HWND dialog) {
    Rows rows;
    HWND tree = Tree(dialog);
    std::vector<std::pair<HTREEITEM, int>> stack;
    if (auto root = TreeView_GetRoot(tree)) stack.emplace_back(root, 0);
    while (!stack.empty()) {
        const auto [item, depth] = stack.back();
        stack.pop_back();
        const UINT state = TreeView_GetItemState(tree, item, TVIS_EXPANDED | TVIS_BOLD);
        const bool parent = TreeView_GetChild(tree, item) != nullptr;
        rows.push_back(std::wstring(static_cast<std::size_t>(depth), L' ') + ((state & TVIS_BOLD) ? L"*" : L"") +
                       Driver::TreeItemText(tree, item) + ((parent && (state & TVIS_EXPANDED)) ? L" +" : L""));
        if (auto next = TreeView_GetNextSibling(tree, item)) stack.emplace_back(next, depth);
        if (auto child = TreeView_GetChild(tree, item)) stack.emplace_back(child, depth + 1);
    }
    return rows;
}

SIZE SizeOf(HWND window) {
    RECT r{};
    return GetWindowRect(window, &r) ? SIZE{r.right - r.left, r.bottom - r.top} : SIZE{};
}

class SettingsSearch : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        ForgetSelection(u"Comms");
        ForgetModuleValue(u"Comms.WindowSize");
    }
    // The other dialog tests open the form at the size it has always had.
    void TearDown() override { ForgetModuleValue(u"Comms.WindowSize"); }
    RunResult Run(const std::function<void(Driver&, HWND)>& script) {
        return RunRequest(SampleText("comms_request.xml"), kTitle, [&](Driver& d, HWND dlg) {
            script(d, dlg);
            if (IsWindow(dlg)) d.Close(dlg);
        });
    }
};

TEST_F(SettingsSearch, NarrowsTheTreeStepsThroughMatchesAndEscEmptiesIt) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        HWND search = GetDlgItem(dlg, IDC_SEARCH_EDIT);
        d.PressKey(Tree(dlg), 'F', Driver::kCtrl);  // from the tree into the search
        Driver::Type(search, L"PROXY");
        d.Settle();
        // Retries sits under Proxy (its own group is hidden), so the group's name finds it too.
        EXPECT_EQ(TreeRows(dlg), (Rows{L"Telnet over TCP +", L" Connection +", L"  Proxy +", L"   Proxy host ()",
                                       L"   Proxy type (None)", L"   Retries (Once)"}));
        EXPECT_EQ(Driver::Text(dlg, IDC_SEARCH_COUNT), L"3 of 22");
        Rows seen{SelectedLabel(dlg)};
        for (auto [key, modifiers] : {std::pair{VK_RETURN, 0u}, {VK_F3, 0u}, {VK_F3, 0u}, {VK_F3, unsigned{Driver::kShift}}}) {
            d.PressKey(search, key, modifiers);
            seen.push_back(SelectedLabel(dlg));
        }
        EXPECT_EQ(seen, (Rows{L"Proxy host ()", L"Proxy type (None)", L"Retries (Once)", L"Proxy host ()", L"Retries (Once)"}));
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        EXPECT_EQ(d.Focus(), search);
        // Esc empties the search: the whole tree again, groups as they were, the selection kept.
        d.PressKey(search, VK_ESCAPE);
        EXPECT_EQ(Driver::Text(dlg, IDC_SEARCH_EDIT) + Driver::Text(dlg, IDC_SEARCH_COUNT), L"");
        EXPECT_EQ(SelectedLabel(dlg), L"Retries (Always)");
        const Rows rows = TreeRows(dlg);
        EXPECT_EQ(rows.size(), 29u);
        EXPECT_EQ(rows[1], L" *Connection +");  // Retries changed below it
        EXPECT_EQ(rows[6], L"  *Proxy +");      // open, to show the selection
        EXPECT_EQ(rows[22], L" Printing");       // closed, as the request has it
        // Ctrl+F from the value's editor comes back to the search with its text selected.
        Driver::Type(search, L"zz");
        d.PressKey(GetDlgItem(dlg, IDC_VALUE_COMBO), 'F', Driver::kCtrl);
        EXPECT_EQ(d.Focus(), search);
        EXPECT_EQ(SendMessageW(search, EM_GETSEL, 0, 0), MAKELRESULT(0, 2));
        EXPECT_EQ(TreeRows(dlg), (Rows{L"Telnet over TCP"}));
        d.PressKey(search, VK_ESCAPE);
        EXPECT_TRUE(IsWindowVisible(dlg));
        d.PressKey(search, VK_ESCAPE);  // empty: Esc cancels the form as before
        d.WaitGone(dlg);
    });
    EXPECT_EQ(r.status, 1u);
    EXPECT_EQ(Utf8(r.reply), "");
}

// A group's elements and subgroups stand in the request's order, also an element after a subgroup
// and once a search has narrowed the tree and ended.
TEST_F(SettingsSearch, TheTreeKeepsTheRequestsOrderAroundASubgroup) {
    const std::u16string request = ReplaceFirst(SampleText("comms_request.xml"), u"Name=\"Password\" group=\"Security\"",
                                                u"Name=\"Password\" group=\"Connection\"");
    const Rows connection{L"Telnet over TCP +",
                          L" Connection +",
                          L"  Host name (alpha.example)",
                          L"  Port (23)",
                          L"  Timeout (seconds) (30)",
                          L"  Send keep-alives (on)",
                          L"  Proxy",
                          L"   Proxy host ()",
                          L"   Proxy type (None)",
                          L"   Retries (Once)",
                          L"  Password (******)",
                          L" Security +"};
    RunRequest(request, kTitle, [&](Driver& d, HWND dlg) {
        const auto top = [&] {
            Rows rows = TreeRows(dlg);
            rows.resize(connection.size());
            return rows;
        };
        EXPECT_EQ(top(), connection);
        Driver::Type(GetDlgItem(dlg, IDC_SEARCH_EDIT), L"o");
        d.PressKey(GetDlgItem(dlg, IDC_SEARCH_EDIT), VK_ESCAPE);
        EXPECT_EQ(top(), connection);
        d.Close(dlg);
    });
}

TEST_F(SettingsSearch, ChangedItemsStandInBoldAndCustomisedOnlyKeepsTheNonDefaults) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Host name");
        HWND edit = GetDlgItem(dlg, IDC_VALUE_EDIT);
        Driver::Type(edit, L"beta");
        d.Settle();
        const auto top = [&](std::size_t n) {
            const Rows rows = TreeRows(dlg);
            return Rows(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(std::min(n, rows.size())));
        };
        EXPECT_EQ(top(4), (Rows{L"Telnet over TCP +", L" *Connection +", L"  *Host name (beta)", L"  Port (23)"}));
        Driver::Type(edit, L"alpha.example");  // the value it opened with: plain again
        d.Settle();
        EXPECT_EQ(top(3), (Rows{L"Telnet over TCP +", L" Connection +", L"  Host name (alpha.example)"}));
        // Host, the certificate and the code page differ from their defaults.
        Driver::Tick(dlg, IDC_CUSTOMISED_ONLY);
        EXPECT_EQ(TreeRows(dlg).size(), 7u);
        EXPECT_EQ(top(8).back(), L"  Host code page ");
        Driver::Tick(dlg, IDC_CUSTOMISED_ONLY);
        EXPECT_EQ(TreeRows(dlg).size(), 29u);
        SelectElement(d, dlg, L"Port");
        Driver::Type(edit, L"2323");
    });
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Port", u"2323"}}));
}

// Reads the popup menu the dialog thread shows, then picks its first item with the keyboard.
std::wstring PickFirstMenuItem(Driver& d) {
    HWND menu = nullptr;
    for (int i = 0; i < 500 && !menu; ++i, Sleep(10))
        for (HWND w : ThreadWindowsOfClass(d.DialogThread(), L"#32768"))
            if (IsWindowVisible(w)) menu = w;
    if (!menu) throw DriverFailure{"no popup menu"};
    wchar_t text[128] = {};
    GetMenuStringW(reinterpret_cast<HMENU>(SendMessageW(menu, MN_GETHMENU, 0, 0)), 0, text, 128, MF_BYPOSITION);
    PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
    d.Settle();
    return text;
}

TEST_F(SettingsSearch, ResetTakesTheDefaultForAnElementOrAWholeGroup) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        HWND tree = Tree(dlg);
        HWND reset = GetDlgItem(dlg, IDC_RESET_VALUE);
        EXPECT_EQ(Driver::Text(reset), L"Reset");
        SelectElement(d, dlg, L"Port");
        EXPECT_FALSE(IsWindowEnabled(reset));  // 23 is its default
        SelectElement(d, dlg, L"Host name");
        ASSERT_TRUE(IsWindowEnabled(reset));
        Driver::Click(reset);
        d.Settle();
        EXPECT_EQ(Driver::Text(dlg, IDC_VALUE_EDIT), L"localhost");
        EXPECT_EQ(SelectedLabel(dlg), L"Host name (localhost)");
        EXPECT_FALSE(IsWindowEnabled(reset));
        SelectElement(d, dlg, L"Proxy type");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        SelectElement(d, dlg, L"Timeout");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"45");
        // The element's menu from the keyboard, then the group's: both back to their defaults.
        d.PressKey(tree, VK_APPS);
        EXPECT_EQ(PickFirstMenuItem(d), L"Reset to default");
        EXPECT_EQ(Driver::Text(dlg, IDC_VALUE_EDIT), L"30");
        SelectElement(d, dlg, L"Connection");
        d.PressKey(tree, VK_F10, Driver::kShift);
        EXPECT_EQ(PickFirstMenuItem(d), L"Reset group to defaults...");
        EXPECT_EQ(d.Answer(dlg, IDYES), L"Quorl|Reset 1 settings in Connection to their defaults?");
        EXPECT_EQ(ElementLabel(dlg, L"Proxy type"), L"Proxy type (None)");
    });
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Host", u"localhost"}}));
}

TEST_F(SettingsSearch, UndoAndRedoWalkBackAndForthAcrossElements) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        HWND tree = Tree(dlg);
        SelectElement(d, dlg, L"Port");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"2323");  // four keystrokes, one change
        SelectElement(d, dlg, L"Send keep-alives");
        Driver::Tick(dlg, IDC_VALUE_CHECK);
        SelectElement(d, dlg, L"Proxy type");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        SelectElement(d, dlg, L"Host name");
        Rows seen;
        for (int i = 0; i < 3; ++i) {
            d.PressKey(tree, 'Z', Driver::kCtrl);
            seen.push_back(SelectedLabel(dlg));
        }
        EXPECT_EQ(seen, (Rows{L"Proxy type (None)", L"Send keep-alives (on)", L"Port (23)"}));
        EXPECT_EQ(Driver::Text(dlg, IDC_VALUE_EDIT), L"23");
        d.PressKey(tree, 'Y', Driver::kCtrl);
        d.PressKey(tree, 'Y', Driver::kCtrl);
        EXPECT_EQ(SelectedLabel(dlg), L"Send keep-alives (off)");
        EXPECT_EQ(IsDlgButtonChecked(dlg, IDC_VALUE_CHECK), BST_UNCHECKED);
    });
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Port", u"2323"}, {u"KeepAlive", u"0"}}));
}

TEST_F(SettingsSearch, GrowsWithItsWindowAndOpensAgainAtTheSizeItClosedWith) {
    SIZE opened{}, grown{};
    const auto resize = [](Driver& d, HWND window, SIZE size) {
        SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        d.Settle();
        return SizeOf(window);
    };
    Run([&](Driver& d, HWND dlg) {
        opened = SizeOf(dlg);
        const SIZE tree = SizeOf(Tree(dlg));
        grown = resize(d, dlg, SIZE{opened.cx + 200, opened.cy + 150});
        const SIZE bigger = SizeOf(Tree(dlg));
        EXPECT_EQ(std::make_pair(bigger.cx - tree.cx, bigger.cy - tree.cy), std::make_pair(200L, 150L));
        RECT client{}, ok{};
        GetClientRect(dlg, &client);
        GetWindowRect(GetDlgItem(dlg, IDOK), &ok);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&ok), 2);
        EXPECT_EQ(ok.bottom, client.bottom - 10);  // the buttons keep to the bottom
        const SIZE smallest = resize(d, dlg, SIZE{opened.cx / 2, opened.cy / 2});
        EXPECT_EQ(std::make_pair(smallest.cx, smallest.cy), std::make_pair(opened.cx, opened.cy));
        resize(d, dlg, grown);
    });
    Run([&](Driver& d, HWND dlg) {
        EXPECT_EQ(std::make_pair(SizeOf(dlg).cx, SizeOf(dlg).cy), std::make_pair(grown.cx, grown.cy));
        d.Close(dlg, IDCANCEL);
    });
}

}  // namespace
}  // namespace qrl::test
