// The cheat sheet of a key map: one self-contained XHTML page to print (A4, landscape) with both
// keyboards drawn from their layouts, each PC key labelled with what it sends unshifted and with
// Shift, Ctrl and Alt, each emulation key with the PC keys that send it, and a table of every
// mapping by PC key. No script and no outside file. Portable: the dialog and the host program
// write the same bytes.
#pragma once

#include <string>

#include "keyboard/kdf.h"
#include "keyboard/keymapdata.h"

namespace qrl {

class KeymapSettings;

struct TCheatSheetInput {
    const TKeyData* keys = nullptr;
    std::u16string emName;
    const KbLayout* pcLayout = nullptr;  // null: that keyboard is left out of the drawing
    const KbLayout* emLayout = nullptr;
};

// The page as UTF-8 bytes.
std::string WriteCheatSheet(const TCheatSheetInput& input);

// The page of a key map job: its keys, and the two keyboards of its .kdf files in the layouts the
// settings choose.
std::string CheatSheetFor(const KeymapSettings& settings);

// "EMNAME-keymap.html": the name the sheet is offered under.
std::u16string CheatSheetFileName(const KeymapSettings& settings);

}  // namespace qrl
