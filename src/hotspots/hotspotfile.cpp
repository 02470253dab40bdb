#include "hotspots/hotspotfile.h"

#include <map>

#include "keyboard/keymapdata.h"
#include "keyboard/keymaprules.h"
#include "locale/inicache.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// A key's value is read into a buffer of this many characters, its terminator included.
constexpr uint32_t kValueBuffer = 512;
// Sections that name each other in `Set` would send the reader round for ever; past this many
// redirections the section is read as it stands.
constexpr int kMaxRedirections = 8;
constexpr uint32_t kMaxListBuffer = 1u << 22;

constexpr std::u16string_view kDefaultBackground = u"192, 192, 192";

std::u16string readValue(const std::u16string& section, const char16_t* key, const std::u16string& file) {
    char16_t buffer[kValueBuffer];
    const uint32_t length = GetIniString(section.c_str(), key, u"", buffer, kValueBuffer, file.c_str());
    return std::u16string(buffer, length < kValueBuffer ? length : kValueBuffer - 1);
}

// A list of zero-ended names (sections, or the keys of one section), read with a buffer that
// grows until the list surely fitted: an ini line holds at most 2047 characters, so once less
// than half of a buffer of at least 8192 is used, the next name would have fitted too.
std::vector<std::u16string> readNameList(const char16_t* section, const std::u16string& file) {
    std::vector<char16_t> buffer(8192);
    uint32_t used = 0;
    for (;;) {
        const auto size = static_cast<uint32_t>(buffer.size());
        used = GetIniString(section, nullptr, nullptr, buffer.data(), size, file.c_str());
        if (used < size / 2 || size >= kMaxListBuffer) break;
        buffer.assign(buffer.size() * 2, u'\0');
    }
    std::vector<std::u16string> names;
    std::u16string_view rest(buffer.data(), std::min<std::size_t>(used, buffer.size()));
    while (!rest.empty()) {
        const std::size_t end = rest.find(u'\0');
        if (end == 0) break;  // the list's closing zero
        names.emplace_back(rest.substr(0, end));
        rest = end == std::u16string_view::npos ? std::u16string_view{} : rest.substr(end + 1);
    }
    return names;
}

// The profile functions give a key's default only when the section is missing, not when the key
// is; a section without `BGndColour` must still read the grey default, while an empty value (the
// emulation's colour, as Write stores it) must not.
bool hasKey(const std::u16string& section, std::u16string_view key, const std::u16string& file) {
    for (const std::u16string& name : readNameList(section.c_str(), file))
        if (iequals(name, key)) return true;
    return false;
}

std::u16string hsKey(int n) { return u"HS" + decimal(n); }

}  // namespace

void HotSpots::Read(const char16_t* fileName, const char16_t* setNameArg) {
    spots.remove_if([](const HotSpot& spot) { return spot.fromFile; });
    count = static_cast<int64_t>(spots.size());
    nextId = 1;
    needsKeyConversion = false;
    if (!fileName || !*fileName || !setNameArg || !*setNameArg) {
        Changed();
        return;
    }
    readSection(fileName, setNameArg, 0);
}

void HotSpots::readSection(const std::u16string& file, std::u16string_view setNameArg, int depth) {
    // What follows a dot in an emulation's name is not part of its set's name.
    const std::u16string section{setNameArg.substr(0, setNameArg.find(u'.'))};

    foreground = ParseColourText(readValue(section, u"FGndColour", file), u',');
    background = hasKey(section, u"BGndColour", file)
                     ? ParseColourText(readValue(section, u"BGndColour", file), u',')
                     : ParseColourText(kDefaultBackground, u',');
    // `Delay` belongs to the terminal; it is neither kept nor written back.
    const std::u16string on = readValue(section, u"On", file);
    enabled = on.empty() || wtoi(on) != 0;

    const std::u16string redirect = readValue(section, u"Set", file);
    if (!redirect.empty() && depth < kMaxRedirections) {
        // The section only points at the real set.
        readSection(file, redirect, depth + 1);
    } else {
        HotSpot record;
        for (int n = 1;; ++n) {
            const std::u16string text = readValue(section, hsKey(n).c_str(), file);
            if (text.empty()) break;
            ParseHotSpotRecord(text, record);
            if (record.needsConversion) needsKeyConversion = true;
            Add(record);
        }
        Sort();
    }
    setName = section;
    Changed();
}

bool HotSpots::Write(const char16_t* fileName, const char16_t* setNameArg) {
    if (!dirty) return true;
    const std::u16string section = setNameArg ? std::u16string{setNameArg} : setName;
    // Without a file or a section name there is nowhere to store the set: the changes stay.
    if (!fileName || !*fileName || section.empty()) return false;

    bool ok = WriteIniString(section.c_str(), nullptr, nullptr, fileName);
    ok = WriteIniString(section.c_str(), u"FGndColour", FormatColourText(foreground, u',').c_str(), fileName) && ok;
    ok = WriteIniString(section.c_str(), u"BGndColour", FormatColourText(background, u',').c_str(), fileName) && ok;
    ok = WriteIniString(section.c_str(), u"On", decimal(enabled ? 1 : 0).c_str(), fileName) && ok;
    int n = 1;
    for (const HotSpot& spot : spots)
        if (spot.fromFile)
            ok = WriteIniString(section.c_str(), hsKey(n++).c_str(), FormatHotSpotRecord(spot).c_str(), fileName) && ok;
    dirty = !ok;
    return ok;
}

int32_t HotSpots::Add(const HotSpot& spot) {
    HotSpot& added = spots.emplace_back(spot);
    added.id = nextId++;
    ++count;
    return added.id;
}

void HotSpots::Sort() {
    // list::sort is a stable merge sort.
    spots.sort([](const HotSpot& a, const HotSpot& b) { return icompare(a.description, b.description) < 0; });
}

void HotSpots::Clear() {
    spots.clear();
    count = 0;
    Changed();
}

HotSpot* HotSpots::Find(int32_t id) {
    for (HotSpot& spot : spots)
        if (spot.id == id) return &spot;
    return nullptr;
}

bool HotSpots::Remove(int32_t id) {
    for (auto it = spots.begin(); it != spots.end(); ++it) {
        if (it->id != id) continue;
        spots.erase(it);
        --count;
        return true;
    }
    return false;
}

void HotSpots::ConvertKeys(const TKeyData& keys) {
    if (!needsKeyConversion) return;
    // Physical key number -> the name of the emulation key it is mapped to; the first chain wins.
    std::map<int32_t, std::u16string> names;
    for (const KeyName& key : keys.physicalKeys) {
        const KeyMapEntry* mapped = FindKeyMapEntry(keys.keyMap, static_cast<uint32_t>(key.Id));
        if (!mapped) continue;
        if (const KeyName* target = FindKeyName(keys.emulationKeys, mapped->EmKey)) names.emplace(key.Id, target->Name);
    }
    for (HotSpot& spot : spots) {
        if (!spot.needsConversion) continue;
        const auto found = names.find(spot.keyCode);
        if (found != names.end()) {
            spot.sendString = u"{" + found->second + u"}";
            spot.recordType = kRecordText;
        }
        spot.needsConversion = false;
    }
    needsKeyConversion = false;
    dirty = true;  // so that the next save stores the new form
}

std::vector<std::u16string> HotSpotSetNames(const std::u16string& fileName) {
    std::vector<std::u16string> names = readNameList(nullptr, fileName);
    std::erase_if(names, [](const std::u16string& name) { return iequals(name, u"version"); });
    return names;
}

}  // namespace qrl
