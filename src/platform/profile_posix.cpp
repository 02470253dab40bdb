// Profile (ini) files for the native build. A write reads the file into sections and keys, changes
// them and writes the whole file back, as Windows under Wine does, so that the same writes give the
// same bytes in both builds: CR LF line ends, no blank lines, white space around "=" and at the ends
// of a line removed, lines without "=" kept as keys without a value.
#include "platform/platform.h"

#include "text/textutil.h"

#include <optional>

namespace qrl::platform {

namespace {

enum class Encoding { Ansi, Utf8, Utf16Le, Utf16Be };

struct ProfileKey {
    std::u16string name;
    std::optional<std::u16string> value;  // none: a line without "="
};

struct ProfileSection {
    std::u16string name;  // empty: the part before the first header, written without one
    std::vector<ProfileKey> keys;
};

struct Profile {
    Encoding encoding = Encoding::Ansi;
    std::vector<ProfileSection> sections;
};

// Blank and tab to CR, not the runtime's wider set (no no-break space); ^Z counts as white
// space too: DOS editors ended files with it.
bool isProfileSpace(char16_t c) { return c == u' ' || (c >= 9 && c <= 13) || c == 0x1A; }

std::u16string_view trimStart(std::u16string_view s) {
    while (!s.empty() && isProfileSpace(s.front())) s.remove_prefix(1);
    return s;
}
std::u16string_view trimEnd(std::u16string_view s) {
    while (!s.empty() && isProfileSpace(s.back())) s.remove_suffix(1);
    return s;
}
std::u16string_view trim(std::u16string_view s) { return trimEnd(trimStart(s)); }

// Names and values are zero-terminated texts on Windows; a zero read from the file ends them.
std::u16string upToZero(std::u16string_view s) { return std::u16string{s.substr(0, s.find(u'\0'))}; }

std::u16string fromUtf16Bytes(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned a = static_cast<unsigned char>(bytes[2 * i]);
        const unsigned b = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(bigEndian ? (a << 8) | b : (b << 8) | a);
    }
    return text;
}

std::u16string decode(std::string_view bytes, Encoding& encoding) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        encoding = Encoding::Utf8;
        return utf8ToUtf16(bytes.substr(3));
    }
    if (bytes.starts_with("\xFF\xFE")) {
        encoding = Encoding::Utf16Le;
        return fromUtf16Bytes(bytes.substr(2), false);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        encoding = Encoding::Utf16Be;
        return fromUtf16Bytes(bytes.substr(2), true);
    }
    encoding = Encoding::Ansi;
    return latin1ToUtf16(bytes);
}

std::string encode(std::u16string_view text, Encoding encoding) {
    switch (encoding) {
    case Encoding::Ansi:
        return utf16ToLatin1(text);
    case Encoding::Utf8:
        return "\xEF\xBB\xBF" + utf16ToUtf8(text);
    case Encoding::Utf16Le:
    case Encoding::Utf16Be: {
        const bool big = encoding == Encoding::Utf16Be;
        std::string bytes = big ? "\xFE\xFF" : "\xFF\xFE";
        for (char16_t c : text) {
            const char hi = static_cast<char>(c >> 8), lo = static_cast<char>(c & 0xFF);
            bytes += big ? hi : lo;
            bytes += big ? lo : hi;
        }
        return bytes;
    }
    }
    return {};
}

Profile parse(std::u16string_view text) {
    Profile profile;
    profile.sections.emplace_back();
    std::size_t pos = 0;
    while (pos < text.size()) {
        // A lone CR ends a line as well as LF does.
        std::size_t next = text.find_first_of(u"\r\n", pos);
        next = next == std::u16string_view::npos ? text.size() : next + 1;
        const std::u16string_view line = trim(text.substr(pos, next - pos));
        pos = next;
        if (line.empty()) continue;
        if (line.front() == u'[') {
            const std::size_t close = line.rfind(u']');
            if (close != std::u16string_view::npos) {
                profile.sections.push_back({upToZero(trim(line.substr(1, close - 1))), {}});
                continue;
            }
        }
        std::u16string_view name = line;
        std::optional<std::u16string> value;
        const std::size_t eq = line.find(u'=');
        if (eq != std::u16string_view::npos) {
            name = trimEnd(line.substr(0, eq));
            value = upToZero(trimStart(line.substr(eq + 1)));
        }
        // Of several lines in a row that have no name ("=x"), only the first is kept.
        std::vector<ProfileKey>& keys = profile.sections.back().keys;
        if (!name.empty() || keys.empty() || !keys.back().name.empty())
            keys.push_back({upToZero(name), std::move(value)});
    }
    return profile;
}

std::u16string serialise(const Profile& profile) {
    std::u16string text;
    for (const ProfileSection& section : profile.sections) {
        if (!section.name.empty()) text += u'[' + section.name + u"]\r\n";
        for (const ProfileKey& key : section.keys) {
            text += key.name;
            if (key.value) text += u'=' + *key.value;
            text += u"\r\n";
        }
    }
    return text;
}

// A file that can't be read counts as empty; writing it back then decides whether the write works.
Profile load(const char16_t* file) {
    std::string bytes;
    Encoding encoding = Encoding::Ansi;
    Profile profile = parse(readFile(std::u16string{file}, bytes) ? decode(bytes, encoding) : std::u16string{});
    profile.encoding = encoding;
    return profile;
}

ProfileSection* findSection(Profile& profile, std::u16string_view name) {
    for (ProfileSection& section : profile.sections)
        if (!section.name.empty() && iequals(section.name, name)) return &section;
    return nullptr;
}

ProfileKey* findKey(ProfileSection& section, std::u16string_view name) {
    for (ProfileKey& key : section.keys)
        if (iequals(key.name, name)) return &key;
    return nullptr;
}

bool deleteSection(Profile& profile, std::u16string_view name) {
    for (auto it = profile.sections.begin(); it != profile.sections.end(); ++it) {
        if (!it->name.empty() && iequals(it->name, name)) {
            profile.sections.erase(it);
            return true;
        }
    }
    return false;
}

// The key goes from the first section of that name that has it.
bool deleteKey(Profile& profile, std::u16string_view sectionName, std::u16string_view keyName) {
    for (ProfileSection& section : profile.sections) {
        if (section.name.empty() || !iequals(section.name, sectionName)) continue;
        for (auto it = section.keys.begin(); it != section.keys.end(); ++it) {
            if (iequals(it->name, keyName)) {
                section.keys.erase(it);
                return true;
            }
        }
    }
    return false;
}

// Names are matched and stored without white space at their ends, the value without white space
// at its start. Writing the value a key has already changes nothing and leaves the file alone.
bool setValue(Profile& profile, std::u16string_view sectionName, std::u16string_view keyName,
              std::u16string_view value) {
    sectionName = trim(sectionName);
    keyName = trim(keyName);
    value = trimStart(value);
    ProfileSection* section = findSection(profile, sectionName);
    if (!section) {
        profile.sections.push_back({std::u16string{sectionName}, {}});
        section = &profile.sections.back();
    }
    ProfileKey* key = findKey(*section, keyName);
    if (!key) {
        section->keys.push_back({std::u16string{keyName}, std::nullopt});
        key = &section->keys.back();
    }
    if (key->value && *key->value == value) return false;
    key->value = std::u16string{value};
    return true;
}

// The value of a key as GetPrivateProfileString hands it out: one pair of matching quotes around
// it is taken off.
std::u16string_view unquote(std::u16string_view value) {
    if (value.size() > 1 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

// Puts the texts one after another, each zero-ended, and a final zero. A list that doesn't fit
// is cut, its last text ended by two zeros, and the result is size - 2.
uint32_t fillList(const std::vector<std::u16string>& texts, char16_t* buffer, uint32_t size) {
    if (size == 0) return 0;
    if (size == 1) {
        buffer[0] = 0;
        return 0;
    }
    uint32_t used = 0;
    for (const std::u16string& text : texts) {
        if (used + text.size() + 1 > size - 1) {
            const uint32_t room = size - 2 - used;
            text.copy(buffer + used, room);
            buffer[size - 2] = 0;
            buffer[size - 1] = 0;
            return size - 2;
        }
        text.copy(buffer + used, text.size());
        used += static_cast<uint32_t>(text.size());
        buffer[used++] = 0;
    }
    buffer[used] = 0;
    return used;
}

}  // namespace

bool writeProfileString(const char16_t* section, const char16_t* key, const char16_t* value,
                        const char16_t* file) {
    // Nothing is cached on this side, so the flush request (all null) has nothing to do; Windows
    // answers it with FALSE, and so do we.
    if (!file || !section) return false;
    Profile profile = load(file);
    bool changed = false;
    if (!key)
        changed = deleteSection(profile, section);
    else if (!value)
        changed = deleteKey(profile, section, key);
    else
        changed = setValue(profile, section, key, value);
    if (!changed) return true;
    return writeFile(file, encode(serialise(profile), profile.encoding));
}

bool writeProfileSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file) {
    if (!file || !section) return false;
    Profile profile = load(file);
    const std::u16string_view name = trim(section);
    ProfileSection* found = findSection(profile, name);
    if (!found) {
        profile.sections.push_back({std::u16string{name}, {}});
        found = &profile.sections.back();
    }
    found->keys.clear();
    for (std::u16string_view line : lines) {
        const std::size_t eq = line.find(u'=');
        if (eq == std::u16string_view::npos) {
            found->keys.push_back({std::u16string{trim(line)}, std::nullopt});
        } else {
            found->keys.push_back({std::u16string{trim(line.substr(0, eq))}, std::u16string{trimStart(line.substr(eq + 1))}});
        }
    }
    return writeFile(file, encode(serialise(profile), profile.encoding));
}

uint32_t getProfileString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                          char16_t* buffer, uint32_t size, const char16_t* file) {
    if (!buffer || size == 0) return 0;
    Profile profile = file ? load(file) : Profile{};
    std::vector<std::u16string> names;
    if (!section) {
        for (const ProfileSection& s : profile.sections)
            if (!s.name.empty()) names.push_back(s.name);
        return fillList(names, buffer, size);
    }
    ProfileSection* found = findSection(profile, trim(section));
    if (!key) {
        if (found)
            for (const ProfileKey& k : found->keys)
                if (!k.name.empty() && k.name.front() != u';' && k.value) names.push_back(k.name);
        return fillList(names, buffer, size);
    }
    const ProfileKey* entry = found ? findKey(*found, trim(key)) : nullptr;
    std::u16string_view text = defaultText ? std::u16string_view{defaultText} : std::u16string_view{};
    if (entry && entry->value)
        text = *entry->value;
    else
        while (!text.empty() && text.back() == u' ') text.remove_suffix(1);  // as Windows trims a default
    text = unquote(text);
    const std::size_t n = std::min<std::size_t>(text.size(), size - 1);
    text.copy(buffer, n);
    buffer[n] = 0;
    return static_cast<uint32_t>(n);
}

uint32_t getProfileInt(const char16_t* section, const char16_t* key, int32_t defaultValue,
                       const char16_t* file) {
    char16_t buffer[256];
    if (getProfileString(section, key, u"", buffer, 256, file) == 0) return static_cast<uint32_t>(defaultValue);
    return static_cast<uint32_t>(wcstolBase10(buffer));
}

}  // namespace qrl::platform
