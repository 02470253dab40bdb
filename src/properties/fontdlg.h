// The platform's font choice on a font value. Win32 only.
#pragma once

#include <windows.h>

#include <string>

namespace qrl {

// Opens the font dialog on `value`, offering the fonts that suit the element named `name`; false
// when the user cancelled. On true `value` holds the chosen font and `shown` its face name.
bool ChooseFontValue(HWND parent, const std::u16string& name, std::u16string& value, std::u16string& shown);

}  // namespace qrl
