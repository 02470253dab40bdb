// The please-wait window through fnOpenWait.
#include "formsetup.h"
#include "kit/basedialog.h"

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
    // 180 by 50, centred on the owner.
    EXPECT_EQ(std::vector<LONG>({r.right - r.left, r.bottom - r.top, r.left, r.top}),
              std::vector<LONG>({180, 50, 100 + (400 - 180) / 2, 100 + (300 - 50) / 2}));

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

}  // namespace
}  // namespace qrl::test
