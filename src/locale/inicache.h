// The process-wide reader of ini files. Reading a profile key by key through the platform is slow,
// so each file is parsed once and lookups are answered from memory; a file is parsed again when its
// time stamp changes (looked at no more often than every intervalMs). Writes go to the platform and
// drop the file from the cache.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qrl {

class TIntervalTimerSink {
public:
    virtual void OnTimer() = 0;

protected:
    virtual ~TIntervalTimerSink() = default;
};

struct IniEntry {
    std::u16string key;  // for a raw entry: the whole line as it stood, its LF included
    std::u16string value;
    bool raw = false;    // a comment or blank line, kept so that a save writes it back
};

struct IniSection {
    std::u16string name;
    std::vector<IniEntry> entries;
};

struct IniFileRecord {
    std::u16string path;  // full path; compared without regard to case
    std::vector<IniSection> sections;
    uint32_t lastCheckTick = 0;  // when the time stamp was last looked at
    uint32_t fileTime = 0;       // low 32 bits of the modification time at the last load
    bool dirty = false;
};

// The file format of the cache: a byte per character, CR dropped, lines of at most 2047 characters.
std::vector<IniSection> parseIniText(std::string_view bytes);
// Sections and entries back to bytes: the low eight bits of each character, LF written as CR LF.
std::string formatIniText(const std::vector<IniSection>& sections);

class IniFileCache : public TIntervalTimerSink {
public:
    using TickSource = uint32_t (*)();

    // `ticks` replaces the system's millisecond counter (for tests); null means the system's.
    explicit IniFileCache(TickSource ticks = nullptr);
    ~IniFileCache() override;  // flushes
    IniFileCache(const IniFileCache&) = delete;
    IniFileCache& operator=(const IniFileCache&) = delete;

    // The one instance of the process, made on first use.
    static IniFileCache& instance();

    // Saves every record marked dirty. Nothing marks one in this system, since every write goes
    // through WriteIniString; no timer is started for the cache.
    void OnTimer() override;

    // As GetPrivateProfileStringW, from the cache. section null: the names of all sections;
    // key null: the keys of the section; a present section without the key gives "", not the default.
    uint32_t GetIniString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                          char16_t* buffer, uint32_t size, const char16_t* file);
    // As GetPrivateProfileIntW, from the cache; a present section without the key gives 0.
    int32_t GetIniInt(const char16_t* section, const char16_t* key, int32_t defaultValue, const char16_t* file);
    // Drops the file from the cache, then writes through the platform.
    bool WriteIniString(const char16_t* section, const char16_t* key, const char16_t* value, const char16_t* file);
    // The keys and values of a section in file order (empty when it is missing), in one lookup.
    std::vector<std::pair<std::u16string, std::u16string>> GetIniSection(const char16_t* section, const char16_t* file);
    // Drops the file from the cache, then replaces the section's keys by "key=value" lines in one write.
    bool WriteIniSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file);

    std::vector<IniFileRecord> files;
    int32_t enabled = 1;      // zero: reads go straight to the platform
    int32_t intervalMs = 5000;

private:
    // The record of `file`, loaded if new; a null or unusable name gets an empty record that is
    // not kept.
    const IniFileRecord& findFile(const char16_t* file);
    void load(IniFileRecord& record);
    void save(IniFileRecord& record);
    void flush();
    uint32_t now() const;

    TickSource ticks_;
    std::recursive_mutex lock_;  // a critical section: the owning thread may enter again
};

// The process-wide cache's operations.
uint32_t GetIniString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                      char16_t* buffer, uint32_t size, const char16_t* file);
int32_t GetIniInt(const char16_t* section, const char16_t* key, int32_t defaultValue, const char16_t* file);
bool WriteIniString(const char16_t* section, const char16_t* key, const char16_t* value, const char16_t* file);
std::vector<std::pair<std::u16string, std::u16string>> GetIniSection(const char16_t* section, const char16_t* file);
bool WriteIniSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file);

}  // namespace qrl
