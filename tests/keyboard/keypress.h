// Presses on the keys of a keyboard picture, where the picture draws them. Win32 test support.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace qrl::test {

// The folder of the bundled .kdf files.
std::u16string SampleKdfPath();

// A left press on the key of `code` of a picture showing the first layout of `keyboardName` in the
// bundled `file`; false when the key is not there.
bool PressKey(HWND picture, const char* file, const char* keyboardName, int32_t code);

}  // namespace qrl::test
