// The rules that keep a key map meaningful. One mapped physical code may stand in all three lists
// at once; global strings come first, then strings, then the key map, and within a list the first
// entry of a code counts. Both editors (graphic and classic) change the lists only through these.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "keyboard/keymapdata.h"

namespace qrl {

// What a physical code does, by precedence. The numbers are the graphic editor's mapping kinds.
enum class KeyMappingKind : int32_t { None = 0, EmulationKey = 1, String = 2, GlobalString = 3 };

// The first entry of `code`, or null.
const KeyString* FindKeyString(const std::vector<KeyString>& list, uint32_t code);
const KeyMapEntry* FindKeyMapEntry(const std::vector<KeyMapEntry>& list, uint32_t code);

// The kind of mapping that a code shows.
KeyMappingKind MappingKindOf(const TKeyData& keys, uint32_t code);

// Updates the text of the first entry of `code`, or appends one.
void SetKeyString(std::vector<KeyString>& list, uint32_t code, std::u16string_view text);
// Removes the first entry of `code`; false when there was none.
bool RemoveKeyString(std::vector<KeyString>& list, uint32_t code);
bool RemoveKeyMapEntry(std::vector<KeyMapEntry>& list, uint32_t code);
// Removes every entry of `code`; returns how many went.
std::size_t RemoveAllKeyMapEntries(std::vector<KeyMapEntry>& list, uint32_t code);

// Mapping to a global string touches neither of the other lists.
void MapToGlobalString(TKeyData& keys, uint32_t code, std::u16string_view text);
// Mapping to a string drops the code's global string and leaves the key map alone.
void MapToString(TKeyData& keys, uint32_t code, std::u16string_view text);
// Mapping to an emulation key as the graphic editor does it: drops the code's global string and
// string, removes every key map entry of `shownCode` (the code as it stood mapped), and appends
// (code, emKey) when both are non-zero. So an emKey of 0 only unmaps.
void MapToEmulationKeyReplacing(TKeyData& keys, uint32_t code, uint32_t shownCode, uint32_t emKey);
// Mapping to an emulation key as the classic editor does it: drops the code's global string and
// string, then the first key map entry of the code gets emKey, or one is appended.
void MapToEmulationKeyInPlace(TKeyData& keys, uint32_t code, uint32_t emKey);
// Removes the first entry of the code from each of the three lists.
void UnmapKey(TKeyData& keys, uint32_t code);

// The physical codes mapped to an emulation key, in list order, at most `limit` of them.
std::vector<uint32_t> PhysicalCodesFor(const std::vector<KeyMapEntry>& keyMap, uint32_t emKey, std::size_t limit);

// A key code with the modifier state: bits 8 to 10 cleared, then those of `modifiers` set.
uint32_t MappedCode(uint32_t keyCode, uint32_t modifiers);
// The classic editor's code of a key: its Id with the wanted modifiers its Shift mask allows.
uint32_t ClassicMappedCode(const KeyName& key, uint32_t modifiers);
// The physical code of a key press: the virtual key, with the extended bit when bit 24 of the
// message's lparam says so, except for NumLock. 0 for a virtual key of 0.
uint32_t PhysicalCodeOfKeyPress(uint32_t virtualKey, uint64_t lparam);

// The entry of that Id, or null.
const KeyName* FindKeyName(const std::vector<KeyName>& list, uint32_t id);

// Name of a mapped code in the graphic editor: "Sh+", "Alt+", "Ctrl+" and the key's name; empty
// when no physical key has the code's Id.
std::u16string GraphicKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code);
// The modifiers of that name alone: "Sh+", "Alt+", "Ctrl+" as the code has them.
std::u16string GraphicModifierPrefix(uint32_t code);
// Name in the classic editor: the key's name, " + Ctrl", " + Shift", " + Alt"; or
// "unknown key (code)".
std::u16string ClassicKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code);
// Name of an emulation code in the classic editor, or "Unknown key (code)".
std::u16string ClassicEmulationKeyName(const std::vector<KeyName>& emulationKeys, uint32_t code);

// The question the classic editor asks before a physical code takes a new emulation key: what the
// code is mapped to now, one line per list that holds it, ending in "This mapping will be
// removed. Proceed?" (or "These mappings ..."). Empty when the code is not mapped; UnmapKey then
// removes what the question named.
std::u16string ReplacementQuestion(const TKeyData& keys, uint32_t code);

}  // namespace qrl
