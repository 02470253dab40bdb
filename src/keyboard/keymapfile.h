// Key map files, for sharing a map between sessions and people: an XML document with the root
// `KeyMapFile` and a `version`, the names of the two keyboards it was made for, and the three
// mappings written as the reply writes them. Portable: the dialog only chooses the file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "keyboard/keymapdata.h"

namespace qrl {

inline constexpr std::u16string_view kKeyMapFileVersion = u"1";

struct TKeyMapFile {
    std::u16string pcKeyboard;  // the PC keyboard's .kdf stem
    std::u16string emKeyboard;  // the emulation's name
    std::vector<KeyMapEntry> keyMap;
    std::vector<KeyString> keyStrings;
    std::vector<KeyString> globalKeyStrings;
};

// A file's map, or why it gave none, with the line and column (1-based) where the fault stands.
struct TKeyMapFileRead {
    TKeyMapFile file;
    std::u16string error;
    int line = 0;
    int column = 0;
    bool ok() const { return error.empty(); }
};

// The three mappings of `keys` with the keyboards' names, as UTF-8 bytes.
std::string WriteKeyMapFile(const TKeyData& keys, std::u16string_view pcKeyboard, std::u16string_view emKeyboard);
// Reads a file's bytes (UTF-8, a byte-order mark allowed). Entries read as the request's do: a
// number that doesn't read is 0, and children of other tags are passed over.
TKeyMapFileRead ReadKeyMapFile(std::string_view bytes);
// "line 3, column 7: " and the reason.
std::u16string KeyMapFileMessage(const TKeyMapFileRead& read);

enum class TKeyMapImport { Replace, Merge };
// Replace: the three mappings become the file's. Merge: every PC code the file maps loses its
// entries in all three lists, and the file's entries are appended, so the file's mapping of a code
// is the one that shows.
void ImportKeyMap(TKeyData& keys, const TKeyMapFile& file, TKeyMapImport mode);

}  // namespace qrl
