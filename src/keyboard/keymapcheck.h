// Checking a key map for what the editor can't show and what never runs: a code in more than one
// list, a second entry of a code in one list, codes and emulation keys no keyboard knows, keys that
// Windows keeps for itself, and emulation keys no PC key sends. Portable: the dialog only lists it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "keyboard/kdf.h"
#include "keyboard/keymapdata.h"

namespace qrl {

// Kinds of findings, in the order the check lists them.
enum class KeyMapFindingKind { InSeveralLists, Duplicate, Unknown, KeptByWindows, NeverSent };

struct KeyMapFinding {
    KeyMapFindingKind kind = KeyMapFindingKind::InSeveralLists;
    std::u16string text;
    uint32_t pcCode = 0;  // the PC code the finding is about, 0 for an emulation key
    uint32_t emCode = 0;  // the emulation key of a NeverSent finding (or an unknown one)
};

// `pcKeyboardCodes`: the key codes on the PC keyboard's picture, which count as known beside the
// physical key list.
std::vector<KeyMapFinding> CheckKeyMap(const TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes = {});

// Every key code on a keyboard's layouts (a key's AltCode too): the codes a picture can show.
std::vector<uint32_t> KeyCodesOf(const KbKeyboard& keyboard);

// Whether Windows keeps a mapped code for itself, so that the emulator never receives it.
bool IsKeptByWindows(uint32_t code);

// How many entries the editor can never show (the second and later of a code in one list).
std::size_t CountDuplicates(const TKeyData& keys);
// Removes them, keeping each code's first entry; returns how many went.
std::size_t RemoveDuplicates(TKeyData& keys);

// A mapped code named for the user: the graphic editor's name, or for a key not in the list its
// modifiers and a name Windows gives it ("Tab", "Esc") or "key 123".
std::u16string CheckKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code);

}  // namespace qrl
