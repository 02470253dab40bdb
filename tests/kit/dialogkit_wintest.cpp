// The dialog kit's guarantees, which every dialog of the module relies on: the texts of a dialog's
// table, exceptions kept out of the dialog manager, the end of the object's tie to its window, the
// custom control's state living exactly as long as its window, and nothing of the module left
// running in a window once the DLL is unloaded. (The shared buttons' texts: the layout walk's.)
#include "formsetup.h"
#include "kit/controlkit.h"
#include "kit/dialogkit.h"
#include "kit/listrows.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>

#include <span>
#include <stdexcept>

namespace qrl::test {
namespace {

constexpr TDialogText kProbeTexts[] = {
    {kDialogTitleId, {u"kit_probe_title", u"Kit probe"}},
    {IDOK, {u"kit_probe_ok", u"Go"}},
    {4711, {u"kit_probe_missing", u"No such control"}},  // skipped
};

class KitProbe : public TDialog {
public:
    int throwingClicks = 0;
    bool destroyed = false;
    HWND windowAtDestroy = nullptr;

protected:
    std::span<const TDialogText> Texts() const override { return kProbeTexts; }
    INT_PTR OnCommand(int id, int code) override {
        if (id == IDOK && code == BN_CLICKED) {
            ++throwingClicks;
            throw std::runtime_error("a handler that fails");
        }
        if (id == IDCANCEL) End(7);
        return TRUE;
    }
    void OnDestroy() override {
        destroyed = true;
        windowAtDestroy = Window();
    }
};

TEST(DialogKit, TranslatesItsTableSurvivesAThrowingHandlerAndLetsGoOfItsWindow) {
    ASSERT_TRUE(Product::Get().Loaded());
    KitProbe dialog;
    INT_PTR result = 0;
    Drive([&] { result = dialog.RunModal(nullptr, IDD_SELECTMODULE, Product::Get().Module()); }, [&](Driver& d) {
        HWND dlg = d.WaitForDialog(L"Kit probe");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDOK)), L"Go");
        SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        EXPECT_TRUE(IsWindow(dlg) && IsWindowVisible(dlg));
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(dialog.throwingClicks, 1);
    EXPECT_EQ(result, 7);
    EXPECT_TRUE(dialog.destroyed);
    EXPECT_NE(dialog.windowAtDestroy, nullptr);  // still there for the last call
    EXPECT_EQ(dialog.Window(), nullptr);
}

// A request may give one of its own controls the id of an ending button; only a click ends.
TEST(DialogKit, FormEndsOnAClickOfItsOkIdNotOnAnEditsChanges) {
    ASSERT_TRUE(Product::Get().Loaded());
    const RunResult r = RunRequest(
        u"<Config ModuleType='Emul'><DTD><Element Name='S' Type='text' Default='a'/></DTD>"
        u"<Interface StartForm='f'><Form Name='f' Title='Typed OK' Width='160' Height='60'"
        u" Font='MS Shell Dlg' FontSize='8'><Edit Element='S' Action='OK' Width='80' Height='12'/>"
        u"<Button Action='Cancel' Caption='Cancel' Top='20' Width='50' Height='14'/></Form></Interface>"
        u"<Data><Item Element='S' Value='a'/></Data></Config>",
        L"Typed OK", [](Driver& d, HWND dlg) {
            Driver::Type(GetDlgItem(dlg, IDOK), L"typed");
            d.Settle();
            EXPECT_TRUE(IsWindowVisible(dlg));
            d.Close(dlg, IDCANCEL);
        });
    EXPECT_EQ(r.code, 1);
}

// A control that counts its live states, throws while painting, and reports clicks to its parent.
int g_liveStates = 0;

class ProbeCtl : public TCustomControl {
public:
    explicit ProbeCtl(HWND window) : TCustomControl(window) { ++g_liveStates; }
    ~ProbeCtl() override { --g_liveStates; }
    void OnPaint(HDC, const RECT&) override { throw std::runtime_error("a drawing that fails"); }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_LBUTTONUP) {
            NotifyParent(kClicked);
            return 0;
        }
        return TCustomControl::OnMessage(message, wParam, lParam);
    }
    static constexpr int kClicked = 77;
};

TEST(ControlKit, StateLivesAsLongAsTheWindowAndFailuresStayInside) {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(RegisterControlClass<ProbeCtl>(instance, L"kitprobectl"));
    ParentWindow parent;
    for (int i = 0; i < 50; ++i) {
        HWND control = CreateWindowExW(0, L"kitprobectl", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, parent.Handle(),
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(300 + i)), instance, nullptr);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(g_liveStates, 1);
        InvalidateRect(control, nullptr, TRUE);
        UpdateWindow(control);  // the paint throws: caught, and the area counts as painted
        EXPECT_FALSE(GetUpdateRect(control, nullptr, FALSE));
        SendMessageW(control, WM_LBUTTONUP, 0, 0);
        ASSERT_FALSE(parent.messages.empty());
        EXPECT_EQ(parent.messages.back().wParam, MAKEWPARAM(300 + i, ProbeCtl::kClicked));
        EXPECT_EQ(parent.messages.back().lParam, reinterpret_cast<LPARAM>(control));
        DestroyWindow(control);
        EXPECT_EQ(g_liveStates, 0);
    }
    UnregisterClassW(L"kitprobectl", instance);
}

// A copy of the DLL, so that FreeLibrary really unloads it while the test's own copy stays.
TEST(DialogKit, UnloadingTheModuleTakesItsPleaseWaitWindowAlong) {
    const std::wstring copy = TempDir() + L"qrl4cfg_unload_test.dll";
    ASSERT_TRUE(CopyFileW(ProductPath().c_str(), copy.c_str(), FALSE));
    HMODULE module = LoadLibraryW(copy.c_str());
    ASSERT_NE(module, nullptr);
    using OpenWaitFn = int (*)(HWND, unsigned char);
    auto openWait = reinterpret_cast<OpenWaitFn>(reinterpret_cast<void*>(GetProcAddress(module, "fnOpenWait")));
    ASSERT_NE(openWait, nullptr);
    const ParentWindow owner;
    openWait(owner.Handle(), 0);
    HWND wait = nullptr;
    for (HWND w : ThreadWindowsOfClass(GetCurrentThreadId(), L"PleaseWaitWin"))
        if (GetWindow(w, GW_OWNER) == owner.Handle()) wait = w;
    ASSERT_NE(wait, nullptr);
    FreeLibrary(module);
    EXPECT_FALSE(IsWindow(wait));
    // Whatever else is queued for this thread still runs without reaching the unloaded module.
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    DeleteFileW(copy.c_str());
}

// A list changed only where its rows differ must end with the rows asked for, whatever run changed.
TEST(DialogKit, ListsChangedRunByRunEndWithTheRowsAskedFor) {
    const ParentWindow parent;
    HWND shown = CreateWindowExW(0, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, parent.Handle(), nullptr, nullptr, nullptr);
    TShownRows rows;
    for (const std::vector<std::u16string>& wanted : {std::vector<std::u16string>{u"a", u"b", u"c", u"d"},
                                                       {u"a", u"c", u"d"}, {u"a", u"x", u"y", u"d"}, {}}) {
        rows.Show(shown, wanted);
        std::vector<std::u16string> got;
        for (LRESULT i = 0, n = SendMessageW(shown, LB_GETCOUNT, 0, 0); i < n; ++i) {
            wchar_t text[16] = {};
            SendMessageW(shown, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            got.emplace_back(reinterpret_cast<const char16_t*>(text));
        }
        EXPECT_EQ(got, wanted);
    }
}

}  // namespace
}  // namespace qrl::test
