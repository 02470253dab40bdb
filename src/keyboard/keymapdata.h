// The key data of a request: the two key lists (physical and emulation keys) that travel one way,
// and the three mappings (key map, key strings, global key strings) that the editors change and the
// reply gives back. The session owns them as one record, TKeyData.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace AdvXMLParser {
class Element;
}

namespace qrl {

class TConfigSession;
class TElementDef;
class TReadNotes;
class TRequestHooks;

// Modifier bits of a mapped code.
inline constexpr uint32_t kModShift = 0x100;
inline constexpr uint32_t kModCtrl = 0x200;
inline constexpr uint32_t kModAlt = 0x400;
inline constexpr uint32_t kModMask = kModShift | kModCtrl | kModAlt;
// A physical key code with this bit is an extended key; NumLock never carries it.
inline constexpr uint32_t kExtendedKey = 0x4000;
inline constexpr uint32_t kNumLockKey = 144;

// An entry of physicalKeys or emulationKeys.
struct KeyName {
    std::u16string Name;
    int32_t Id = 0;     // key code without modifiers
    int32_t Shift = 0;  // the modifier bits this key may carry
};

// The names of a key list, in its order: what the Macro Assistant offers.
std::vector<std::u16string> NamesOf(const std::vector<KeyName>& keys);

// One physical code (modifiers included) sending one emulation key.
struct KeyMapEntry {
    uint32_t PKey = 0;
    uint32_t EmKey = 0;
};

// One physical code sending a text (macro text, used as it is).
struct KeyString {
    uint32_t PKey = 0;
    std::u16string Text;
};

// The session's key data: every list in document order, duplicates kept as they came.
struct TKeyData {
    std::vector<KeyName> physicalKeys;
    std::vector<KeyName> emulationKeys;
    std::vector<KeyMapEntry> keyMap;
    std::vector<KeyString> keyStrings;
    std::vector<KeyString> globalKeyStrings;
};

// The session's key data, made on first use.
TKeyData& KeyDataOf(TConfigSession& session);
// The session's key data, or an empty record when the request brought none.
const TKeyData& KeyDataOf(const TConfigSession& session);

// Readers of the children of one `Data` item. Children of another tag are skipped; a missing
// attribute reads as empty text, and so as 0 for a number.
// `notes` (optional) hears of children passed over and of numbers that read leniently.
void readKeyNames(std::vector<KeyName>& list, const AdvXMLParser::Element& item,
                  TReadNotes* notes = nullptr);  // <Key Name Id Shift>
void readKeyMap(std::vector<KeyMapEntry>& list, const AdvXMLParser::Element& item,
                TReadNotes* notes = nullptr);  // <Map pkey emkey>
void readKeyStrings(std::vector<KeyString>& list, const AdvXMLParser::Element& item,
                    TReadNotes* notes = nullptr);  // <Map pkey string>

// The items of the three mappings as the reply writes them, under `parent`: `Item Element="KeyMap"`
// and `Item Element=name` with one `Map` for each entry. Key map files write the same.
void writeKeyMap(AdvXMLParser::Element& parent, const std::vector<KeyMapEntry>& list);
void writeKeyStrings(AdvXMLParser::Element& parent, std::u16string_view name, const std::vector<KeyString>& list);

// The `Data` hooks of the three key types, by the element's definition.
void ReadKeyListItem(TConfigSession& session, const TElementDef& def, const AdvXMLParser::Element& item);
void ReadKeyMapItem(TConfigSession& session, const TElementDef& def, const AdvXMLParser::Element& item);
void ReadKeyStringItem(TConfigSession& session, const TElementDef& def, const AdvXMLParser::Element& item);
// Reply blocks: `Item Element="KeyMap"`, and "KeyStrings" or "GlobalKeyStrings" by the definition's
// name (any other name writes nothing). A list of no entries still writes its item.
void WriteKeyMapItem(const TConfigSession& session, const TElementDef& def, AdvXMLParser::Element& data);
void WriteKeyStringItem(const TConfigSession& session, const TElementDef& def, AdvXMLParser::Element& data);

// Installs the three hooks above for keylist, keymaplist and keystringlist.
void InstallKeyDataHooks(TRequestHooks& hooks);

}  // namespace qrl
