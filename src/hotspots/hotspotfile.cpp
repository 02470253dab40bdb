#include "hotspots/hotspotfile.h"

#include <map>
#include <unordered_map>

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

// A section read once, its keys looked up without regard to case; of two equal keys the first counts,
// as the profile functions read. A value is cut as a read into the value buffer cuts it.
class SectionValues {
public:
    SectionValues(const std::u16string& section, const std::u16string& file) {
        for (auto& [key, value] : GetIniSection(section.c_str(), file.c_str())) {
            if (value.size() >= kValueBuffer) value.resize(kValueBuffer - 1);
            values_.emplace(Fold(key), std::move(value));
        }
    }
    bool Has(std::u16string_view key) const { return values_.count(Fold(key)) != 0; }
    std::u16string Value(std::u16string_view key) const {
        const auto found = values_.find(Fold(key));
        return found == values_.end() ? std::u16string{} : found->second;
    }

private:
    static std::u16string Fold(std::u16string_view key) {
        std::u16string folded{key};
        for (char16_t& c : folded) c = foldCase(c);
        return folded;
    }
    std::unordered_map<std::u16string, std::u16string> values_;
};

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
    const SectionValues values(section, file);

    foreground = ParseColourText(values.Value(u"FGndColour"), u',');
    // A missing BGndColour is grey; an empty one (the emulation's colour, as Write stores it) is not.
    background = ParseColourText(values.Has(u"BGndColour") ? values.Value(u"BGndColour") : kDefaultBackground, u',');
    // `Delay` belongs to the terminal; it is neither kept nor written back.
    const std::u16string on = values.Value(u"On");
    enabled = on.empty() || wtoi(on) != 0;

    const std::u16string redirect = values.Value(u"Set");
    if (!redirect.empty() && depth < kMaxRedirections) {
        // The section only points at the real set.
        readSection(file, redirect, depth + 1);
    } else {
        HotSpot record;
        for (int n = 1;; ++n) {
            const std::u16string text = values.Value(hsKey(n));
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

    // The section goes and comes back whole at the file's end, in one write however many hotspots.
    std::vector<std::u16string> lines{u"FGndColour=" + FormatColourText(foreground, u','),
                                      u"BGndColour=" + FormatColourText(background, u','),
                                      u"On=" + decimal(enabled ? 1 : 0)};
    int n = 1;
    for (const HotSpot& spot : spots)
        if (spot.fromFile) lines.push_back(hsKey(n++) + u"=" + FormatHotSpotRecord(spot));
    bool ok = WriteIniString(section.c_str(), nullptr, nullptr, fileName);
    ok = WriteIniSection(section.c_str(), lines, fileName) && ok;
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
