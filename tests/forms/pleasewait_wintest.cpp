// The please-wait window through fnOpenWait, and the framework's object dialogs.
#include "formsetup.h"
#include "kit/basedialog.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>


namespace qrl::test {
namespace {

std::vector<HWND> WaitWindows(DWORD thread = GetCurrentThreadId()) {
    return ThreadWindowsOfClass(thread, L"PleaseWaitWin");
}

void Pump() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

TEST(PleaseWait, OpensOnceClosesByPostAndByTheFirstDialog) {
    Product& product = Product::Get();
    ASSERT_TRUE(product.Loaded());
    const ParentWindow owner(100, 100, 400, 300);
    EXPECT_EQ(product.OpenWait(owner.Handle(), 1), 0);  // close with no window: nothing
    EXPECT_EQ(product.OpenWait(owner.Handle(), 0), 0);
    EXPECT_EQ(product.OpenWait(owner.Handle(), 2), 0);  // bit 0 clear: opens, but one is open already
    std::vector<HWND> windows = WaitWindows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(Driver::Text(windows[0]), L"Please wait");
    EXPECT_TRUE(IsWindowVisible(windows[0]));
    EXPECT_EQ(GetWindow(windows[0], GW_OWNER), owner.Handle());
    RECT r{};
    GetWindowRect(windows[0], &r);
    EXPECT_EQ(r.right - r.left, 180);
    EXPECT_EQ(r.bottom - r.top, 50);
    EXPECT_EQ(r.left, 100 + (400 - 180) / 2);
    EXPECT_EQ(r.top, 100 + (300 - 50) / 2);

    // Closing posts WM_CLOSE: the window goes when messages next run.
    EXPECT_EQ(product.OpenWait(owner.Handle(), 1), 0);
    EXPECT_EQ(WaitWindows().size(), 1u);
    Pump();
    EXPECT_TRUE(WaitWindows().empty());

    // The first dialog of a run ends the wait by itself.
    product.OpenWait(owner.Handle(), 0);
    ASSERT_EQ(WaitWindows().size(), 1u);
    Drive([&] { product.RunConfig2W(u"<Config ModuleType='Comms'/>", owner.Handle()); }, [&](Driver& d) {
        HWND dlg = d.WaitForDialog(L"Configure  ");
        EXPECT_TRUE(WaitWindows(d.DialogThread()).empty());
        d.Close(dlg, IDCANCEL);
    });
}

// The framework's object dialogs, on the module selection template of the DLL.
class ProbeDialog : public TBaseDialog {
public:
    using TBaseDialog::TBaseDialog;
    int inits = 0;
    HWND windowAtInit = nullptr;
    INT_PTR OnInit() override {
        ++inits;
        windowAtInit = Window();
        return TRUE;
    }
};

class CountingList : public TComboBox {
public:
    using TComboBox::TComboBox;
    int messages = 0;
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        ++messages;
        return TComboBox::WndProc(message, wParam, lParam);
    }
};

TEST(BaseDialog, AttachesFoundControlsAndEndsOnOkAndCancel) {
    ASSERT_TRUE(Product::Get().Loaded());
    ProbeDialog dialog(Product::Get().Module(), nullptr, IDD_SELECTMODULE);
    auto* list = new CountingList(&dialog, IDC_MODULELIST);  // owned by the dialog
    auto* missing = new TComboBox(&dialog, 999);
    INT_PTR result = 0;
    Drive([&] { result = dialog.DoModal(); }, [&](Driver& d) {
        HWND dlg = d.WaitForDialog(L"Module Selection");
        SendMessageW(GetDlgItem(dlg, IDC_MODULELIST), WM_NULL, 0, 0);
        EXPECT_GT(list->messages, 0);         // the list runs through the object's procedure
        EXPECT_EQ(missing->GetCurSel(), -1);  // no window for its id: never attached
        d.Close(dlg);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.inits, 1);
    EXPECT_NE(dialog.windowAtInit, nullptr);
    EXPECT_EQ(missing->Window(), nullptr);

    // A template that can't be loaded is not an OK.
    ProbeDialog broken(Product::Get().Module(), nullptr, 4242);
    EXPECT_NE(broken.DoModal(), IDOK);
    EXPECT_EQ(broken.inits, 0);
}

}  // namespace
}  // namespace qrl::test
