// Key Map Check: the check's findings, one a row. A row can be gone to (the dialog closes and names
// the finding), and the entries the editor can never show can be removed, after a question. Win32.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "keyboard/keymapcheck.h"

namespace qrl {

// True when the user chose a row to go to; `chosen` is then that finding. `keys` loses its
// duplicates if the user agrees, whatever the result.
bool RunKeyMapCheck(HWND parent, TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes, KeyMapFinding& chosen);

}  // namespace qrl
