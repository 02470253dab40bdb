// Configure Keyboard, the graphic key map editor: the emulation's and the PC's keyboard pictures
// (or key lists), mapping PC keys to emulation keys, strings and global strings; and Keyboard
// Selection for each keyboard's layout. Win32 only.
#pragma once

namespace qrl {

class KeymapSettings;

// Runs the editor on the settings' session; 1 for OK, 2 for Cancel. The session's key lists hold
// every change, and the caller drops them on Cancel.
int runKeymapDialog(void* parent, KeymapSettings& settings);

}  // namespace qrl
