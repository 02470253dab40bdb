#include "locale/inicache.h"

#include "platform/platform.h"
#include "text/textutil.h"

#include <pthread.h>

#include <algorithm>

namespace qrl {

namespace {

// A line longer than this is read as several, as a fixed line buffer of 2048 reads it.
constexpr std::size_t kMaxLine = 2047;
constexpr uint32_t kLockRetryMs = 10;

// Waits for the lock by trying and sleeping rather than blocking, as the cache always has.
class IniLock {
public:
    explicit IniLock(std::recursive_mutex& m) : m_(m) {
        while (!m_.try_lock()) platform::sleepMs(kLockRetryMs);
    }
    ~IniLock() { m_.unlock(); }
    IniLock(const IniLock&) = delete;
    IniLock& operator=(const IniLock&) = delete;

private:
    std::recursive_mutex& m_;
};

std::u16string_view trimEnd(std::u16string_view s) {
    while (!s.empty() && isRuntimeSpace(s.back())) s.remove_suffix(1);
    return s;
}

bool isRawLine(std::u16string_view line) {
    if (line.front() == u';') return true;
    return std::all_of(line.begin(), line.end(),
                       [](char16_t c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u';'; });
}

void parseIniLine(std::u16string_view line, std::vector<IniSection>& sections) {
    line = line.substr(0, line.find(u'\0'));  // the line buffer is a C string
    if (line.empty()) return;
    if (line.front() == u'[') {
        const std::size_t close = line.find(u']', 1);
        if (close != std::u16string_view::npos) sections.push_back({std::u16string{line.substr(1, close - 1)}, {}});
        return;
    }
    // Before the first section everything is dropped; inside one, comments and blank lines are kept.
    if (sections.empty()) return;
    std::vector<IniEntry>& entries = sections.back().entries;
    if (isRawLine(line)) {
        entries.push_back({std::u16string{line}, {}, true});
        return;
    }
    const std::size_t eq = line.find(u'=');
    if (eq == std::u16string_view::npos) return;
    entries.push_back({std::u16string{trimEnd(line.substr(0, eq))}, std::u16string{trimEnd(line.substr(eq + 1))}, false});
}

const IniSection* findSection(const IniFileRecord& record, std::u16string_view name) {
    for (const IniSection& section : record.sections)
        if (iequals(section.name, name)) return &section;
    return nullptr;
}

const IniEntry* findEntry(const IniSection& section, std::u16string_view key) {
    for (const IniEntry& entry : section.entries)
        if (!entry.raw && iequals(entry.key, key)) return &entry;
    return nullptr;
}

// A list of zero-ended texts: whole texts only, while the list stays within size - 2 characters,
// then one more zero. Returns the characters used before that last zero.
uint32_t fillList(const std::vector<std::u16string_view>& texts, char16_t* buffer, uint32_t size) {
    uint32_t used = 0;
    for (std::u16string_view text : texts) {
        if (size < 2 || used + text.size() + 1 > size - 2) break;
        text.copy(buffer + used, text.size());
        used += static_cast<uint32_t>(text.size());
        buffer[used++] = 0;
    }
    buffer[used] = 0;
    return used;
}

// At most size characters, the terminating zero among them.
uint32_t copyText(std::u16string_view text, char16_t* buffer, uint32_t size) {
    const std::size_t n = std::min<std::size_t>(text.size(), size - 1);
    text.copy(buffer, n);
    buffer[n] = 0;
    return static_cast<uint32_t>(n);
}

}  // namespace

std::vector<IniSection> parseIniText(std::string_view bytes) {
    std::vector<IniSection> sections;
    std::u16string line;
    for (const char byte : bytes) {
        if (byte == '\r') continue;
        line += static_cast<char16_t>(static_cast<unsigned char>(byte));
        if (byte == '\n' || line.size() == kMaxLine) {
            parseIniLine(line, sections);
            line.clear();
        }
    }
    if (!line.empty()) parseIniLine(line, sections);
    return sections;
}

std::string formatIniText(const std::vector<IniSection>& sections) {
    std::u16string text;
    for (const IniSection& section : sections) {
        text += u'[' + section.name + u"]\n";
        for (const IniEntry& entry : section.entries) {
            if (entry.raw)
                text += entry.key;  // brings its own line end, if it had one
            else
                text += entry.key + u'=' + entry.value + u'\n';
        }
    }
    std::string bytes;
    bytes.reserve(text.size() + text.size() / 8);
    for (const char16_t c : text) {
        if (c == u'\n') bytes += '\r';
        bytes += static_cast<char>(c & 0xFF);
    }
    return bytes;
}

IniFileCache::IniFileCache(TickSource ticks) : ticks_(ticks ? ticks : platform::tickCount) {}

IniFileCache::~IniFileCache() {
    flush();
    // The lock is initialised statically, and std::recursive_mutex then never destroys it; the
    // threads library may have allocated for it on first use. A DLL that is freed and loaded
    // again would lose that each time.
    pthread_mutex_destroy(lock_.native_handle());
}

IniFileCache& IniFileCache::instance() {
    static IniFileCache cache;
    return cache;
}

uint32_t IniFileCache::now() const { return ticks_(); }

void IniFileCache::OnTimer() {
    IniLock lock(lock_);
    flush();
}

void IniFileCache::flush() {
    for (IniFileRecord& record : files)
        if (record.dirty) save(record);
}

void IniFileCache::load(IniFileRecord& record) {
    // The platform may hold changes of its own to this file; have them written first.
    platform::writeProfileString(nullptr, nullptr, nullptr, record.path.c_str());
    std::string bytes;
    if (!platform::readFile(record.path, bytes)) return;
    record.sections = parseIniText(bytes);
    record.dirty = false;
    record.lastCheckTick = now();
    record.fileTime = platform::fileTimeStamp(record.path);
}

void IniFileCache::save(IniFileRecord& record) {
    if (!platform::writeFile(record.path, formatIniText(record.sections))) return;
    record.dirty = false;
    record.lastCheckTick = now();
    record.fileTime = platform::fileTimeStamp(record.path);
}

namespace {
// Full path of a file the cache may hold; empty for a name that cannot be a file.
std::u16string cachePath(const char16_t* file) {
    if (!file) return {};
    std::u16string path = platform::fullPath(file);
    return platform::isUsablePath(path) ? path : std::u16string{};
}
}  // namespace

const IniFileRecord& IniFileCache::findFile(const char16_t* file) {
    static const IniFileRecord noFile;  // no usable file: answered as a file that doesn't exist
    std::u16string path = cachePath(file);
    if (path.empty()) return noFile;
    for (IniFileRecord& record : files) {
        if (!iequals(record.path, path)) continue;
        const uint32_t tick = now();
        if (tick - record.lastCheckTick >= static_cast<uint32_t>(intervalMs)) {
            record.lastCheckTick = tick;
            if (platform::fileTimeStamp(record.path) != record.fileTime) {
                record.sections.clear();
                load(record);
            }
        }
        return record;
    }
    files.push_back({});
    IniFileRecord& record = files.back();
    record.path = std::move(path);
    load(record);
    return record;
}

uint32_t IniFileCache::GetIniString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                                    char16_t* buffer, uint32_t size, const char16_t* file) {
    IniLock lock(lock_);
    if (!enabled) return platform::getProfileString(section, key, defaultText, buffer, size, file);
    if (!buffer || size == 0) return 0;
    const IniFileRecord& record = findFile(file);
    std::vector<std::u16string_view> list;
    if (!section) {
        for (const IniSection& s : record.sections) list.push_back(s.name);
        return fillList(list, buffer, size);
    }
    const IniSection* found = findSection(record, section);
    if (!key) {
        if (found)
            for (const IniEntry& entry : found->entries)
                if (!entry.raw) list.push_back(entry.key);
        return fillList(list, buffer, size) + 1;
    }
    if (!found) return copyText(defaultText ? defaultText : u"", buffer, size);
    const IniEntry* entry = findEntry(*found, key);
    return copyText(entry ? std::u16string_view{entry->value} : std::u16string_view{}, buffer, size);
}

int32_t IniFileCache::GetIniInt(const char16_t* section, const char16_t* key, int32_t defaultValue,
                                const char16_t* file) {
    IniLock lock(lock_);
    if (!enabled) return static_cast<int32_t>(platform::getProfileInt(section, key, defaultValue, file));
    if (!section || !key || !file) return defaultValue;
    const IniSection* found = findSection(findFile(file), section);
    if (!found) return defaultValue;
    const IniEntry* entry = findEntry(*found, key);
    return entry ? wcstolBase10(entry->value) : 0;
}

bool IniFileCache::WriteIniString(const char16_t* section, const char16_t* key, const char16_t* value,
                                  const char16_t* file) {
    IniLock lock(lock_);
    if (file) {
        const std::u16string path = cachePath(file);
        if (path.empty()) return false;  // not a file: nothing to write to
        std::erase_if(files, [&](const IniFileRecord& record) { return iequals(record.path, path); });
    }
    return platform::writeProfileString(section, key, value, file);
}

std::vector<std::pair<std::u16string, std::u16string>> IniFileCache::GetIniSection(const char16_t* section,
                                                                                const char16_t* file) {
    IniLock lock(lock_);
    std::vector<std::pair<std::u16string, std::u16string>> entries;
    if (!section) return entries;
    if (!enabled) {
        // Straight from the platform, key by key.
        // A list of names that fills the buffer to within its two closing nulls was cut: grow and
        // read again, so that a large hotspot set is read whole.
        std::vector<char16_t> names(1u << 16);
        uint32_t used = 0;
        while ((used = platform::getProfileString(section, nullptr, nullptr, names.data(),
                                                  static_cast<uint32_t>(names.size()), file)) +
                   2 >= names.size() &&
               names.size() < (1u << 26))
            names.resize(names.size() * 2);
        std::u16string_view rest(names.data(), used);
        std::vector<char16_t> value(2048);
        while (!rest.empty() && rest.front() != 0) {
            const std::u16string key{rest.substr(0, rest.find(u'\0'))};
            const uint32_t n = platform::getProfileString(section, key.c_str(), u"", value.data(),
                                                          static_cast<uint32_t>(value.size()), file);
            entries.emplace_back(key, std::u16string(value.data(), n));
            rest.remove_prefix(std::min(rest.size(), key.size() + 1));
        }
        return entries;
    }
    if (const IniSection* found = findSection(findFile(file), section))
        for (const IniEntry& entry : found->entries)
            if (!entry.raw) entries.emplace_back(entry.key, entry.value);
    return entries;
}

bool IniFileCache::WriteIniSection(const char16_t* section, const std::vector<std::u16string>& lines,
                                   const char16_t* file) {
    IniLock lock(lock_);
    const std::u16string path = cachePath(file);
    if (path.empty()) return false;
    std::erase_if(files, [&](const IniFileRecord& record) { return iequals(record.path, path); });
    return platform::writeProfileSection(section, lines, file);
}

std::vector<std::pair<std::u16string, std::u16string>> GetIniSection(const char16_t* section, const char16_t* file) {
    return IniFileCache::instance().GetIniSection(section, file);
}

bool WriteIniSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file) {
    return IniFileCache::instance().WriteIniSection(section, lines, file);
}

uint32_t GetIniString(const char16_t* section, const char16_t* key, const char16_t* defaultText, char16_t* buffer,
                      uint32_t size, const char16_t* file) {
    return IniFileCache::instance().GetIniString(section, key, defaultText, buffer, size, file);
}

int32_t GetIniInt(const char16_t* section, const char16_t* key, int32_t defaultValue, const char16_t* file) {
    return IniFileCache::instance().GetIniInt(section, key, defaultValue, file);
}

bool WriteIniString(const char16_t* section, const char16_t* key, const char16_t* value, const char16_t* file) {
    return IniFileCache::instance().WriteIniString(section, key, value, file);
}

}  // namespace qrl
