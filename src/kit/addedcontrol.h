// Controls that a dialog makes itself at start-up, beside those of its template: the same font,
// a place in the tab order, sizes in dialog units. Win32 only.
#pragma once

#include <windows.h>

#include <string>

namespace qrl {

struct TAddedControl {
    int id;
    const wchar_t* className;
    std::u16string text;
    DWORD style;  // WS_CHILD is added
    DWORD exStyle;
    int width, height;  // dialog units
};

// Makes the control at the dialog's top left, in the dialog's font, and puts it after `previous`
// in the tab order (null: first). Null when it can't be made; a dialog goes on without it.
HWND AddDialogControl(HWND dialog, const TAddedControl& control, HWND previous);
// The same at `place` (pixels of the client area, not the control's own size) in `font`.
HWND AddDialogControl(HWND dialog, const TAddedControl& control, HWND previous, const RECT& place, HFONT font);

// The grey hint an empty edit shows. Only edits of the common controls' version 6 know the
// message; older ones ignore it and stay blank.
void SetCueBanner(HWND dialog, int id, const std::u16string& text);

}  // namespace qrl
