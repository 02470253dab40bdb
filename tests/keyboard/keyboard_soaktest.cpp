// The classic key map editor's four dialogs and the press-key window; Configure Keyboard with a key
// mapped on its pictures (the two keyboards read, drawn to scale, pressed and destroyed with their
// pictures): each a few hundred times in one process, the drawing styles' fonts, brushes and pens
// going with their layouts.
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "keyboard/keyboard_rc.h"
#include "keypress.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, ClassicKeymap) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request = SampleText("classic_keymap_request.xml");
    ExpectNoGrowth(200, [&](int) {
        return RunRequest(request, L"Keyboard Configuration", [](Driver& d, HWND byPhys) {
            d.OpenAndClose(byPhys, IDC_ADVANCED, L"Advanced Keyboard Configuration", IDOK);
            Driver::Click(byPhys, IDC_PRESS_KEY);
            d.Settle(0);
            PostMessageW(FindWindowW(L"PressKeyWin", nullptr), WM_KEYDOWN, VK_F2, 0);
            d.Settle(0);
            d.Close(byPhys, IDC_LIST_BYEMUL);
            HWND byEmul = d.WaitForDialog(L"Select a Physical Key", 15000, 0);
            Driver::Click(byEmul, IDC_ADD_PKEY);  // the select dialog, of the same title
            d.Close(d.WaitForPopup(byEmul), IDCANCEL);
            d.Close(byEmul, IDCANCEL);
        }, 0).code == 2;
    });
}

TEST(Soak, GraphicKeymap) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        ReplaceFirst(SampleText("keymap_request.xml"), u"samples\\keyboards", SampleKdfPath());
    ExpectNoGrowth(200, [&](int run) {
        bool pressed = false;
        const RunResult r = RunRequest(request, L"Configure Keyboard", [&](Driver& d, HWND dlg) {
            pressed = PressKey(GetDlgItem(dlg, IDC_PC_PICTURE), "at102.kdf", "pc", 112 + run % 3) &&
                      PressKey(GetDlgItem(dlg, IDC_EM_PICTURE), "IBM5250.kdf", "IBM5250", 146);
            Driver::Click(dlg, ID_MAPSET);
            d.Settle(0);
            d.Close(dlg);
        }, 0);
        return pressed && r.code == 0 && r.reply.find(u"emkey=\"146\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
