// Export, Import and Cheat Sheet of Configure Keyboard: the file dialogs, the question of how to
// import, and the messages; the files themselves are keymapfile's and keymapcheatsheet's. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

class KeymapSettings;

// Writes the session's key map to a file the user names.
void ExportKeyMapFile(HWND owner, const KeymapSettings& settings);
// Reads a file the user names into the session's key map, replacing or merging as the user says;
// true when the map changed. A file that doesn't read changes nothing and says why.
bool ImportKeyMapFile(HWND owner, KeymapSettings& settings);
// Writes the key map's cheat sheet to a file the user names.
void SaveCheatSheet(HWND owner, const KeymapSettings& settings);

}  // namespace qrl
