// The classic key map editor: "by physical key" and "by emulation key", the user switching between
// them, with the advanced settings and the choice of a physical key. Win32 only.
#pragma once

namespace qrl {

class KeymapSettings;

// The editor's loop over the two dialogs; 1 for OK, 2 for Cancel. Works on the settings' session.
int RunClassicKeymap(void* parent, KeymapSettings& settings);

// Advanced Keyboard Configuration on the settings: keypad and Caps Lock. Both editors open it.
void RunKeymapAdvanced(void* parent, KeymapSettings& settings);

}  // namespace qrl
