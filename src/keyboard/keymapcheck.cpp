#include "keyboard/keymapcheck.h"

#include "keyboard/keymaprules.h"
#include "text/textutil.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace qrl {

namespace {

// Virtual keys of the combinations Windows keeps.
constexpr uint32_t kVkTab = 0x09;
constexpr uint32_t kVkEscape = 0x1B;
constexpr uint32_t kVkSpace = 0x20;
constexpr uint32_t kVkDelete = 0x2E;
constexpr uint32_t kVkLeftWindows = 0x5B;
constexpr uint32_t kVkRightWindows = 0x5C;
constexpr uint32_t kVirtualKeyMask = 0xFF;

// A string in a finding is cut, so that one row stays one row.
constexpr std::size_t kShownStringLength = 24;

// Names for the keys that Windows keeps, for when the request's key list lacks them.
std::u16string WindowsKeyName(uint32_t virtualKey) {
    switch (virtualKey) {
    case kVkTab: return u"Tab";
    case kVkEscape: return u"Esc";
    case kVkSpace: return u"Space";
    case kVkDelete: return u"Del";
    case kVkLeftWindows: return u"Left Windows";
    case kVkRightWindows: return u"Right Windows";
    default: return {};
    }
}

std::u16string Quoted(const std::u16string& text) {
    if (text.size() <= kShownStringLength) return u"\"" + text + u"\"";
    return u"\"" + text.substr(0, kShownStringLength - 1) + u"\u2026\"";
}

std::u16string EmulationKeyName(const std::vector<KeyName>& emulationKeys, uint32_t code) {
    const KeyName* key = FindKeyName(emulationKeys, code);
    return key ? key->Name : decimal(static_cast<int32_t>(code));
}

// What the three lists hold for one PC code: its entry count in each and its first entry.
struct CodeEntries {
    std::size_t maps = 0, strings = 0, globals = 0;
    uint32_t emKey = 0;
    const std::u16string* string = nullptr;
    const std::u16string* global = nullptr;
};

std::map<uint32_t, CodeEntries> EntriesByCode(const TKeyData& keys) {
    std::map<uint32_t, CodeEntries> codes;
    for (const KeyMapEntry& entry : keys.keyMap)
        if (CodeEntries& code = codes[entry.PKey]; code.maps++ == 0) code.emKey = entry.EmKey;
    for (const KeyString& entry : keys.keyStrings)
        if (CodeEntries& code = codes[entry.PKey]; code.strings++ == 0) code.string = &entry.Text;
    for (const KeyString& entry : keys.globalKeyStrings)
        if (CodeEntries& code = codes[entry.PKey]; code.globals++ == 0) code.global = &entry.Text;
    return codes;
}

class Checker {
public:
    Checker(const TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes)
        : keys_(keys), codes_(EntriesByCode(keys)) {
        for (const KeyName& key : keys.physicalKeys) knownPc_.insert(static_cast<uint32_t>(key.Id));
        for (uint32_t code : pcKeyboardCodes) knownPc_.insert(code & ~kModMask);
        for (const KeyName& key : keys.emulationKeys) knownEm_.insert(static_cast<uint32_t>(key.Id));
        for (const KeyName& key : keys.physicalKeys) pcNames_.emplace(static_cast<uint32_t>(key.Id), &key);
    }

    std::vector<KeyMapFinding> Run() {
        for (const auto& [code, entries] : codes_) InSeveralLists(code, entries);
        for (const auto& [code, entries] : codes_) Duplicates(code, entries);
        for (const auto& [code, entries] : codes_) Unknown(code);
        UnknownEmulationKeys();
        for (const auto& [code, entries] : codes_)
            if (IsKeptByWindows(code))
                Add(KeyMapFindingKind::KeptByWindows, code, 0, u"Windows keeps this key; the mapping never runs");
        NeverSent();
        return std::move(findings_);
    }

private:
    std::u16string Name(uint32_t code) const {
        const auto key = pcNames_.find(code & ~kModMask);
        if (key != pcNames_.end()) return GraphicModifierPrefix(code) + key->second->Name;
        return CheckKeyName({}, code);
    }

    void Add(KeyMapFindingKind kind, uint32_t pcCode, uint32_t emCode, const std::u16string& what) {
        const std::u16string subject = pcCode ? Name(pcCode) : EmulationKeyName(keys_.emulationKeys, emCode);
        findings_.push_back({kind, subject + u": " + what, pcCode, emCode});
    }

    void InSeveralLists(uint32_t code, const CodeEntries& entries) {
        if ((entries.maps > 0) + (entries.strings > 0) + (entries.globals > 0) < 2) return;
        std::vector<std::u16string> parts;  // in the editor's precedence: the first is what it shows
        if (entries.global) parts.push_back(u"global string " + Quoted(*entries.global));
        if (entries.string) parts.push_back(u"string " + Quoted(*entries.string));
        if (entries.maps) parts.push_back(u"emulation key " + EmulationKeyName(keys_.emulationKeys, entries.emKey));
        std::u16string text;
        for (const std::u16string& part : parts) text += (text.empty() ? u"" : u", ") + part;
        Add(KeyMapFindingKind::InSeveralLists, code, 0, text);
    }

    void Duplicates(uint32_t code, const CodeEntries& entries) {
        const std::pair<std::size_t, const char16_t*> lists[] = {
            {entries.maps, u"the key map"}, {entries.strings, u"the strings"}, {entries.globals, u"the global strings"}};
        for (const auto& [count, list] : lists)
            if (count > 1)
                Add(KeyMapFindingKind::Duplicate, code, 0,
                    decimal(static_cast<long long>(count)) + u" entries in " + list + u"; only the first is shown and edited");
    }

    void Unknown(uint32_t code) {
        if (!knownPc_.count(code & ~kModMask))
            Add(KeyMapFindingKind::Unknown, code, 0, u"the code is on no PC keyboard and not in the PC key list");
    }

    void UnknownEmulationKeys() {
        std::set<std::pair<uint32_t, uint32_t>> seen;
        for (const KeyMapEntry& entry : keys_.keyMap)
            if (!knownEm_.count(entry.EmKey) && seen.insert({entry.PKey, entry.EmKey}).second) {
                findings_.push_back({KeyMapFindingKind::Unknown,
                                     Name(entry.PKey) + u": emulation key " + decimal(static_cast<int32_t>(entry.EmKey)) +
                                         u" is not in the emulation key list",
                                     entry.PKey, entry.EmKey});
            }
    }

    // An emulation key counts as sent when some code shows it in the editor and Windows lets the
    // emulator have that code.
    void NeverSent() {
        std::unordered_set<uint32_t> sent;
        for (const auto& [code, entries] : codes_)
            if (entries.maps && !entries.strings && !entries.globals && !IsKeptByWindows(code)) sent.insert(entries.emKey);
        std::unordered_set<uint32_t> named;
        for (const KeyName& key : keys_.emulationKeys) {
            const auto code = static_cast<uint32_t>(key.Id);
            if (!sent.count(code) && named.insert(code).second)
                findings_.push_back({KeyMapFindingKind::NeverSent, key.Name + u": no PC key sends it", 0, code});
        }
    }

    const TKeyData& keys_;
    std::map<uint32_t, CodeEntries> codes_;
    std::unordered_set<uint32_t> knownPc_;
    std::unordered_set<uint32_t> knownEm_;
    std::unordered_map<uint32_t, const KeyName*> pcNames_;  // the first entry of each Id
    std::vector<KeyMapFinding> findings_;
};

template <typename Entry>
std::size_t RemoveLaterEntries(std::vector<Entry>& list) {
    std::unordered_set<uint32_t> seen;
    const auto firstGone = std::remove_if(list.begin(), list.end(), [&](const Entry& e) { return !seen.insert(e.PKey).second; });
    const auto removed = static_cast<std::size_t>(list.end() - firstGone);
    list.erase(firstGone, list.end());
    return removed;
}

template <typename Entry>
std::size_t CountLaterEntries(const std::vector<Entry>& list) {
    std::unordered_set<uint32_t> seen;
    return static_cast<std::size_t>(
        std::count_if(list.begin(), list.end(), [&](const Entry& e) { return !seen.insert(e.PKey).second; }));
}

}  // namespace

std::vector<KeyMapFinding> CheckKeyMap(const TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes) {
    return Checker(keys, pcKeyboardCodes).Run();
}

std::vector<uint32_t> KeyCodesOf(const KbKeyboard& keyboard) {
    std::vector<uint32_t> codes;
    for (const KbLayout& layout : keyboard.Layouts)
        for (const KbKey& key : layout.Keys) {
            codes.push_back(static_cast<uint32_t>(key.Code));
            if (key.AltCode) codes.push_back(static_cast<uint32_t>(key.AltCode));
        }
    return codes;
}

bool IsKeptByWindows(uint32_t code) {
    const uint32_t key = code & kVirtualKeyMask;
    const bool alt = (code & kModAlt) != 0;
    const bool ctrl = (code & kModCtrl) != 0;
    switch (key) {
    case kVkLeftWindows:
    case kVkRightWindows: return true;
    case kVkTab:
    case kVkSpace: return alt;
    case kVkEscape: return alt || ctrl;
    case kVkDelete: return alt && ctrl;
    default: return false;
    }
}

std::size_t CountDuplicates(const TKeyData& keys) {
    return CountLaterEntries(keys.keyMap) + CountLaterEntries(keys.keyStrings) + CountLaterEntries(keys.globalKeyStrings);
}

std::size_t RemoveDuplicates(TKeyData& keys) {
    return RemoveLaterEntries(keys.keyMap) + RemoveLaterEntries(keys.keyStrings) + RemoveLaterEntries(keys.globalKeyStrings);
}

std::u16string CheckKeyName(const std::vector<KeyName>& physicalKeys, uint32_t code) {
    if (std::u16string name = GraphicKeyName(physicalKeys, code); !name.empty()) return name;
    const uint32_t id = code & ~kModMask;
    std::u16string name = (id & ~(kExtendedKey | kVirtualKeyMask)) == 0 ? WindowsKeyName(id & kVirtualKeyMask) : u"";
    if (name.empty()) name = u"key " + decimal(static_cast<int32_t>(id));
    return GraphicModifierPrefix(code) + name;
}

}  // namespace qrl
