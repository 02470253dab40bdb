// The "Press Key" window: a small popup that catches the next key press and posts it to its owner
// as message 1025 (the key message's wParam and lParam), then closes. A click or losing the focus
// closes it without a word. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

inline constexpr wchar_t kPressKeyClass[] = L"PressKeyWin";
inline constexpr UINT kKeyPressedMessage = 1025;

bool RegisterPressKeyClass(HINSTANCE instance);
void UnregisterPressKeyClass(HINSTANCE instance);

// Opens the window centred on `dialog`, with the focus.
HWND ShowPressKeyWindow(HWND dialog);

}  // namespace qrl
