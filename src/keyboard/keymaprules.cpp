#include "keyboard/keymaprules.h"

#include <algorithm>

#include "text/textutil.h"

namespace qrl {

namespace {

template <class Entry>
auto firstOf(std::vector<Entry>& list, uint32_t code) {
    return std::find_if(list.begin(), list.end(), [code](const Entry& e) { return e.PKey == code; });
}

template <class Entry>
bool removeFirst(std::vector<Entry>& list, uint32_t code) {
    const auto it = firstOf(list, code);
    if (it == list.end()) return false;
    list.erase(it);
    return true;
}

// Codes in names and messages read as the documents write them: signed decimal.
std::u16string codeText(uint32_t code) { return decimal(static_cast<int32_t>(code)); }

}  // namespace

const KeyString* FindKeyString(const std::vector<KeyString>& list, uint32_t code) {
    for (const KeyString& entry : list)
        if (entry.PKey == code) return &entry;
    return nullptr;
}

const KeyMapEntry* FindKeyMapEntry(const std::vector<KeyMapEntry>& list, uint32_t code) {
    for (const KeyMapEntry& entry : list)
        if (entry.PKey == code) return &entry;
    return nullptr;
}

KeyMappingKind MappingKindOf(const TKeyData& keys, uint32_t code) {
    if (FindKeyString(keys.globalKeyStrings, code)) return KeyMappingKind::GlobalString;
    if (FindKeyString(keys.keyStrings, code)) return KeyMappingKind::String;
    if (FindKeyMapEntry(keys.keyMap, code)) return KeyMappingKind::EmulationKey;
    return KeyMappingKind::None;
}

void SetKeyString(std::vector<KeyString>& list, uint32_t code, std::u16string_view text) {
    const auto it = firstOf(list, code);
    if (it != list.end())
        it->Text = text;
    else
        list.push_back(KeyString{code, std::u16string{text}});
}

bool RemoveKeyString(std::vector<KeyString>& list, uint32_t code) { return removeFirst(list, code); }
bool RemoveKeyMapEntry(std::vector<KeyMapEntry>& list, uint32_t code) { return removeFirst(list, code); }

std::size_t RemoveAllKeyMapEntries(std::vector<KeyMapEntry>& list, uint32_t code) {
    return std::erase_if(list, [code](const KeyMapEntry& e) { return e.PKey == code; });
}

void MapToGlobalString(TKeyData& keys, uint32_t code, std::u16string_view text) {
    SetKeyString(keys.globalKeyStrings, code, text);
}

void MapToString(TKeyData& keys, uint32_t code, std::u16string_view text) {
    RemoveKeyString(keys.globalKeyStrings, code);
    SetKeyString(keys.keyStrings, code, text);
}

void MapToEmulationKeyReplacing(TKeyData& keys, uint32_t code, uint32_t shownCode, uint32_t emKey) {
    RemoveKeyString(keys.globalKeyStrings, code);
    RemoveKeyString(keys.keyStrings, code);
    RemoveAllKeyMapEntries(keys.keyMap, shownCode);
    if (code != 0 && emKey != 0) keys.keyMap.push_back(KeyMapEntry{code, emKey});
}

void MapToEmulationKeyInPlace(TKeyData& keys, uint32_t code, uint32_t emKey) {
    RemoveKeyString(keys.globalKeyStrings, code);
    RemoveKeyString(keys.keyStrings, code);
    const auto it = firstOf(keys.keyMap, code);
    if (it != keys.keyMap.end())
        it->EmKey = emKey;
    else
        keys.keyMap.push_back(KeyMapEntry{code, emKey});
}

void UnmapKey(TKeyData& keys, uint32_t code) {
    RemoveKeyString(keys.globalKeyStrings, code);
    RemoveKeyString(keys.keyStrings, code);
    RemoveKeyMapEntry(keys.keyMap, code);
}

std::vector<uint32_t> PhysicalCodesFor(const std::vector<KeyMapEntry>& keyMap, uint32_t emKey, std::size_t limit) {
    std::vector<uint32_t> codes;
    for (const KeyMapEntry& entry : keyMap) {
        if (codes.size() >= limit) break;
        if (entry.EmKey == emKey) codes.push_back(entry.PKey);
    }
    return codes;
}

uint32_t MappedCode(uint32_t keyCode, uint32_t modifiers) { return (keyCode & ~kModMask) | (modifiers & kModMask); }

uint32_t ClassicMappedCode(const KeyName& key, uint32_t modifiers) {
    return static_cast<uint32_t>(key.Id) | (modifiers & kModMask & static_cast<uint32_t>(key.Shift));
}

uint32_t PhysicalCodeOfKeyPress(uint32_t virtualKey, uint64_t lparam) {
    constexpr uint64_t kExtendedFlag = uint64_t{1} << 24;
    if (virtualKey == 0) return 0;
    // Windows flags NumLock as extended; the key lists know it without the bit.
    if ((lparam & kExtendedFlag) != 0 && virtualKey != kNumLockKey) return virtualKey + kExtendedKey;
    return virtualKey;
}

const KeyName* FindKeyName(const std::vector<KeyName>& list, uint32_t id) {
    for (const KeyName& key : list)
        if (static_cast<uint32_t>(key.Id) == id) return &key;
    return nullptr;
}

std::u16string GraphicKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code) {
    const KeyName* key = FindKeyName(physicalKeys, code & ~kModMask);
    return key ? GraphicModifierPrefix(code) + key->Name : std::u16string();
}

std::u16string GraphicModifierPrefix(uint32_t code) {
    std::u16string prefix;
    if (code & kModShift) prefix += u"Sh+";
    if (code & kModAlt) prefix += u"Alt+";
    if (code & kModCtrl) prefix += u"Ctrl+";
    return prefix;
}

std::u16string ClassicKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code) {
    const KeyName* key = FindKeyName(physicalKeys, code & ~kModMask);
    if (!key) return u"unknown key (" + codeText(code) + u")";
    std::u16string name = key->Name;
    if (code & kModCtrl) name += u" + Ctrl";
    if (code & kModShift) name += u" + Shift";
    if (code & kModAlt) name += u" + Alt";
    return name;
}

std::u16string ClassicEmulationKeyName(const std::vector<KeyName>& emulationKeys, uint32_t code) {
    const KeyName* key = FindKeyName(emulationKeys, code);
    return key ? key->Name : u"Unknown key (" + codeText(code) + u")";
}

std::u16string ReplacementQuestion(const TKeyData& keys, uint32_t code) {
    constexpr std::u16string_view kLineEnd = u"\r\n";
    std::u16string parts;
    int count = 0;
    const auto addPart = [&](std::u16string_view what, std::u16string_view text) {
        parts += what;
        parts += u'"';
        parts += text;
        parts += u'"';
        parts += kLineEnd;
        ++count;
    };
    if (const KeyString* global = FindKeyString(keys.globalKeyStrings, code)) addPart(u"global string ", global->Text);
    if (const KeyString* string = FindKeyString(keys.keyStrings, code)) addPart(u"string ", string->Text);
    if (const KeyMapEntry* entry = FindKeyMapEntry(keys.keyMap, code))
        addPart(u"emulation key ", ClassicEmulationKeyName(keys.emulationKeys, entry->EmKey));
    if (count == 0) return {};

    std::u16string text = u"Physical key \"" + ClassicKeyName(keys.physicalKeys, code) + u"\" is already mapped to";
    text += kLineEnd;
    text += parts;
    text += kLineEnd;
    text += count == 1 ? u"This mapping will be removed. Proceed?" : u"These mappings will be removed. Proceed?";
    return text;
}

}  // namespace qrl
