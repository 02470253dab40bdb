// The classic key map editor's four dialogs and the press-key window, a few hundred times in one
// process through the "KeyMap" route.
#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "keyboard/keyboard_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, ClassicKeymap) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request = SampleText("classic_keymap_request.xml");
    ExpectNoGrowth(200, [&](int) {
        RunResult r;
        const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [](Driver& d) {
            HWND byPhys = d.WaitForDialog(L"Keyboard Configuration", 15000, 0);
            d.OpenAndClose(byPhys, IDC_ADVANCED, L"Advanced Keyboard Configuration", IDOK);
            Driver::Click(byPhys, IDC_PRESS_KEY);
            d.Settle(0);
            PostMessageW(FindWindowW(L"PressKeyWin", nullptr), WM_KEYDOWN, VK_F2, 0);
            d.Settle(0);
            Driver::Click(byPhys, IDC_LIST_BYEMUL);
            d.WaitGone(byPhys);
            HWND byEmul = d.WaitForDialog(L"Keyboard Configuration", 15000, 0);
            d.OpenAndClose(byEmul, IDC_ADD_PKEY, L"Select a Physical Key", IDCANCEL);
            Driver::Click(byEmul, IDCANCEL);
            d.WaitGone(byEmul);
        });
        return failures.empty() && r.code == 2;
    });
}

}  // namespace
}  // namespace qrl::test
