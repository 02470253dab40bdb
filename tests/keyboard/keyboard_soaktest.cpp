// The classic key map editor's four dialogs and the press-key window through the "KeyMap" route, and
// the keyboard picture made, drawn to scale, pressed and destroyed with its keyboard, each a few
// hundred times in one process: the drawing style's fonts, brushes and pen must go with the layout.
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "keyboard/kdf.h"
#include "keyboard/keyboard_rc.h"
#include "keyboard/keyboardctl.h"

#include <gtest/gtest.h>

#include <cstdio>

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
            HWND byEmul = d.WaitForDialog(L"Keyboard Configuration", 15000, 0);
            d.OpenAndClose(byEmul, IDC_ADD_PKEY, L"Select a Physical Key", IDCANCEL);
            d.Close(byEmul, IDCANCEL);
        }, 0).code == 2;
    });
}

TEST(Soak, KeyboardPicture) {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(RegisterKeyboardClass(instance));
    const std::string path = std::string(QRL_SOURCE_DIR) + "/samples/keyboards/at102.kdf";
    ExpectNoGrowth(200, [&](int) {
        GKbKeyboard keyboard;
        std::FILE* file = std::fopen(path.c_str(), "rb");
        if (!file) return false;
        GKbHdr header;
        const int read = readKeyboard(header, file, "pc", keyboard);
        std::fclose(file);
        if (read != kKdfOk) return false;
        keyboard.setOwners();
        HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 640, 220, nullptr, nullptr,
                                      nullptr, nullptr);
        HWND control = CreateWindowExW(0, kKeyboardClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 600, 200, parent,
                                       nullptr, instance, nullptr);
        KeyboardCtl* picture = KeyboardOf(control);
        if (!picture) return false;
        picture->setLayout(&keyboard.layout(0));
        UpdateWindow(control);
        picture->selectKey(0x41, true);
        UpdateWindow(control);
        const bool drawn = keyboard.layout(0).Scaled;
        DestroyWindow(parent);
        return drawn;
    });
    UnregisterKeyboardClass(instance);
}

}  // namespace
}  // namespace qrl::test
