// --cheatsheet REQUEST FILE: the key map's cheat sheet written without a window, the same bytes
// Configure Keyboard writes.
#pragma once

#include <string>

namespace qrl4host {

// 0 when written; 2 when the request can't be read or the file can't be written.
int writeCheatSheet(const std::u16string& request, const std::wstring& file);

}  // namespace qrl4host
