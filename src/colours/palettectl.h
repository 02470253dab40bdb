// The `qrpalette` (16 colours to pick a foreground and a background from) and `qrcolpatch` (one
// plain colour) window classes. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

inline constexpr wchar_t kPaletteClass[] = L"qrpalette";
inline constexpr wchar_t kColourPatchClass[] = L"qrcolpatch";

bool RegisterPaletteClass(HINSTANCE instance);
void UnregisterPaletteClass(HINSTANCE instance);
bool RegisterColourPatchClass(HINSTANCE instance);
void UnregisterColourPatchClass(HINSTANCE instance);

}  // namespace qrl
