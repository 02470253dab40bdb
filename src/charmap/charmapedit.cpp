#include "charmap/charmapedit.h"

#include <algorithm>

#include "request/elementdef.h"
#include "text/textutil.h"

namespace qrl {

namespace {

bool IsReverse(const TCharMap& map) { return (map.flags & kCharMapReverse) != 0; }
bool HostBytes(const TCharMap& map) { return (map.flags & kCharMapHostBytes) != 0; }

std::u16string Hex(uint32_t value, std::size_t digits) {
    std::u16string text = hexUpper(value);
    if (text.size() < digits) text.insert(0, digits - text.size(), u'0');
    return text;
}

// "%4.4X", a blank, and the character's name.
std::u16string CodeWithName(uint32_t code) { return Hex(code, 4) + u" " + CharacterName(code); }

uint16_t EntryAt(const std::vector<uint16_t>& table, std::size_t code) {
    return code < table.size() ? table[code] : static_cast<uint16_t>(code);
}

}  // namespace

TCharInverse BuildInverse(const TCharMap& map) {
    TCharInverse inverse;
    for (std::size_t c = 0; c < inverse.size(); ++c) inverse[c] = static_cast<uint16_t>(c);
    for (std::size_t i = 0; i < map.map.size(); ++i)
        if (map.map[i] < inverse.size()) inverse[map.map[i]] = static_cast<uint16_t>(i);
    return inverse;
}

std::size_t CharMapRowCount(const TCharMap& map) {
    if (IsReverse(map)) return 256;
    if (map.length == 0 || map.start > 255) return 0;
    const std::size_t last = std::min<std::size_t>(std::size_t{map.start} + map.length - 1, 255);
    return last - map.start + 1;
}

std::u16string CharMapRowText(const TCharMap& map, const TCharInverse& inverse, std::size_t row) {
    if (IsReverse(map)) {
        const uint16_t unicode = inverse[row & 0xFF];
        return std::u16string(unicode != (row & 0xFF) ? u"*" : u"") + u"\t" + CodeWithName(unicode) + u"\t<-\t" +
               Hex(static_cast<uint32_t>(row & 0xFF), 2);
    }
    const std::size_t code = map.start + row;
    const uint16_t entry = EntryAt(map.map, code);
    const std::u16string mark = entry != EntryAt(map.defaultMap, code) ? u"*" : u"";
    if (HostBytes(map)) return mark + u"\t" + CodeWithName(static_cast<uint32_t>(code)) + u"\t->\t" + Hex(entry, 2);
    return mark + u"\t" + Hex(static_cast<uint32_t>(code), 2) + u"\t->\t" + CodeWithName(entry);
}

TCharEntry CharEntryOf(const TCharMap& map, const TCharInverse& inverse, std::size_t row) {
    TCharEntry entry;
    if (IsReverse(map)) {
        entry.source = Hex(static_cast<uint32_t>(row & 0xFF), 2);
        entry.value = inverse[row & 0xFF];
        return entry;
    }
    const std::size_t code = map.start + row;
    entry.unicodeValue = !HostBytes(map);
    entry.source = HostBytes(map) ? CodeWithName(static_cast<uint32_t>(code)) : Hex(static_cast<uint32_t>(code), 2);
    entry.value = EntryAt(map.map, code);
    return entry;
}

std::u16string CharEntryHexText(uint32_t value, bool unicodeValue) { return Hex(value, unicodeValue ? 4 : 2); }

std::u16string CharEntryCharText(uint32_t value) {
    // Printable as the runtime's iswprint sees it: the blank is, controls and surrogates are not.
    if (value < 32 || value == 127 || (value >= 128 && value < 160) || (value >= 0xD800 && value < 0xE000) ||
        value > 0xFFFF)
        return {};
    return std::u16string(1, static_cast<char16_t>(value));
}

std::optional<uint32_t> ParseCharEntryHex(std::u16string_view text, bool unicodeValue) {
    std::size_t consumed = 0;
    const uint32_t number = wcstoulBase16(text, &consumed);
    for (std::size_t i = consumed; i < text.size(); ++i)
        if (!isRuntimeSpace(text[i])) return std::nullopt;
    if (number > (unicodeValue ? 0xFFFFu : 0xFFu)) return std::nullopt;
    return number;
}

void StoreCharEntry(TCharMap& map, TCharInverse& inverse, std::size_t row, uint32_t value) {
    if (IsReverse(map))
        inverse[row & 0xFF] = static_cast<uint16_t>(value);
    else
        map.SetEntry(map.start + row, static_cast<uint16_t>(value));
    map.modified = true;
}

void ApplyInverse(TCharMap& map, const TCharInverse& inverse) {
    map.map = map.defaultMap;
    for (std::size_t c = 0; c < inverse.size(); ++c)
        if (inverse[c] != c) map.SetEntry(inverse[c], static_cast<uint16_t>(c));
}

LanguageNameProblem CheckNewLanguageName(std::u16string_view name, const std::vector<std::u16string>& languages) {
    if (name.find_first_of(u"[]") != std::u16string_view::npos) return LanguageNameProblem::InvalidCharacters;
    if (std::find(languages.begin(), languages.end(), name) != languages.end()) return LanguageNameProblem::InUse;
    return LanguageNameProblem::None;
}

}  // namespace qrl
