// The Macro Assistant opened, edited and accepted a few hundred times in one process.
#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/soak.h"
#include "macro/macro_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, MacroAssistant) {
    ASSERT_TRUE(Product::Get().Loaded());
    ExpectNoGrowth(200, [](int) {
        std::u16string text = u"ab\\r{Enter}{.Pause(5)}";
        int code = -1;
        const auto failures = RunDriven(
            [&] { code = Product::Get().MacroAssist(nullptr, text, 256, std::u16string(u"Enter\0", 6), nullptr, 7); },
            [](Driver& d) {
                HWND dlg = d.WaitForDialog(L"Macro Assistant", 15000, 0);
                HWND list = GetDlgItem(dlg, IDC_TOKEN_LIST);
                SendMessageW(list, LB_SETCURSEL, 2, 0);
                SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_TOKEN_LIST, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
                Driver::Choose(dlg, IDC_TOKEN_TYPE, 3);  // Function: the panel with most controls
                Driver::Click(dlg, IDOK);
                d.WaitGone(dlg);
            });
        return failures.empty() && code == 0 && text == u"ab\\r{.Connect()}{.Pause(5)}";
    });
}

}  // namespace
}  // namespace qrl::test
