#include "keypress.h"

#include "keyboard/graphickeymap.h"
#include "text/textutil.h"

namespace qrl::test {

std::u16string SampleKdfPath() { return toU16(QRL_SOURCE_DIR "/samples/keyboards"); }

// The layout is scaled to the control as the control scales it on its first paint, so the key's
// middle is where the picture draws it.
bool PressKey(HWND picture, const char* file, const char* keyboardName, int32_t code) {
    UpdateWindow(picture);
    GKbKeyboard keyboard;
    if (LoadKeyboard(SampleKdfPath() + u"/" + toU16(file), keyboardName, keyboard) != kKdfOk) return false;
    GKbLayout& layout = keyboard.layout(0);
    RECT client{};
    GetClientRect(picture, &client);
    layout.scaleTo(client.right, client.bottom);
    int32_t state = 0;
    const GKbKey* key = layout.findKey(code, state);
    if (!key) return false;
    const LPARAM point = MAKELPARAM((key->Rect.left + key->Rect.right) / 2, (key->Rect.top + key->Rect.bottom) / 2);
    SendMessageW(picture, WM_LBUTTONDOWN, 0, point);
    return true;
}

}  // namespace qrl::test
