// The please-wait window that a host may open before a long request; the first dialog closes it.
#pragma once

#include <windows.h>

namespace qrl {

inline constexpr wchar_t kPleaseWaitClass[] = L"PleaseWaitWin";

// Opens the window centred on `parent` unless one is open.
void OpenPleaseWait(HWND parent);
// Posts WM_CLOSE to the open window, if any, and forgets it.
void ClosePleaseWait();
// At unload: the open window, if any, is destroyed (or, on another thread, cut off from our code)
// before its class goes, so that no later message jumps into the unloaded module.
void DestroyPleaseWait();
// The open window, or null.
HWND PleaseWaitWindow();

bool RegisterPleaseWaitClass(HINSTANCE instance);
void UnregisterPleaseWaitClass(HINSTANCE instance);

}  // namespace qrl
