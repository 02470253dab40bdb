#include "kit/addedcontrol.h"

#include "kit/basedialog.h"
#include "kit/commoncontrols.h"

#include <commctrl.h>

namespace qrl {

HWND AddDialogControl(HWND dialog, const TAddedControl& control, HWND previous) {
    RECT size{0, 0, control.width, control.height};
    MapDialogRect(dialog, &size);
    return AddDialogControl(dialog, control, previous, size,
                            reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0)));
}

HWND AddDialogControl(HWND dialog, const TAddedControl& control, HWND previous, const RECT& place, HFONT font) {
    const std::u16string versioned = VersionedClassName(U16(control.className));
    HWND window = CreateWindowExW(control.exStyle, versioned.empty() ? control.className : W(versioned), W(control.text), control.style | WS_CHILD,
                                  place.left, place.top, place.right - place.left, place.bottom - place.top, dialog,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)),
                                  reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE)), nullptr);
    if (!window) return nullptr;
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SetWindowPos(window, previous ? previous : HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return window;
}

void SetCueBanner(HWND dialog, int id, const std::u16string& text) {
    SendDlgItemMessageW(dialog, id, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(W(text)));
}

}  // namespace qrl
