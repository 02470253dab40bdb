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
        Drive([&] { code = Product::Get().MacroAssist(nullptr, text, 256, std::u16string(u"Enter\0", 6), nullptr, 7); },
              [](Driver& d) {
                  HWND dlg = d.WaitForDialog(L"Macro Assistant", 15000, 0);
                  Driver::SelectRow(dlg, IDC_TOKEN_LIST, 2);
                  Driver::Choose(dlg, IDC_TOKEN_TYPE, 3);  // Function: the panel with most controls
                  d.Close(dlg);
              });
        return code == 0 && text == u"ab\\r{.Connect()}{.Pause(5)}";
    });
}

}  // namespace
}  // namespace qrl::test
