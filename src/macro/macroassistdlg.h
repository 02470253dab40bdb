// The Macro Assistant dialog: the one entry through which forms, key map, hot spot and mouse map
// editors and the fnMacroAssist export edit a macro text. Win32 only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qrl {

// The mode of a field that takes any macro text (a hotspot's or a mouse action's send string).
inline constexpr uint32_t kMacroTextMode = 7;

// Runs the dialog modally on `parent`; 1 for OK, which replaces `text` with the dialog's macro
// text (whether it parses or not), 2 for Cancel. `hostWindow` (may be 0) answers the Help button;
// `mode` is the macro level: 1 escapes, 3 also emulation keys, any other the full language.
int runMacroAssistant(HWND parent, std::u16string& text, const std::vector<std::u16string>& keyNames,
                      uint64_t hostWindow, uint32_t mode);

}  // namespace qrl
