// Configure Keyboard opened a few hundred times in one process, a key mapped on the pictures each
// time: the two keyboards read and drawn, their styles' fonts and brushes.
#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "keyboard/keyboard_rc.h"
#include "keypress.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, GraphicKeymap) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        ReplaceFirst(SampleText("keymap_request.xml"), u"samples\\keyboards", SampleKdfPath());
    ExpectNoGrowth(200, [&](int run) {
        RunResult r;
        bool pressed = false;
        const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
            HWND dlg = d.WaitForDialog(L"Configure Keyboard", 15000, 0);
            pressed = PressKey(GetDlgItem(dlg, IDC_PC_PICTURE), "at102.kdf", "pc", 112 + run % 3) &&
                      PressKey(GetDlgItem(dlg, IDC_EM_PICTURE), "IBM5250.kdf", "IBM5250", 146);
            Driver::Click(dlg, ID_MAPSET);
            d.Settle(0);
            Driver::Click(dlg, IDOK);
            d.WaitGone(dlg);
        });
        return failures.empty() && pressed && r.code == 0 && r.reply.find(u"emkey=\"146\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
