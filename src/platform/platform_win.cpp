// Win32 side of the platform seam. wchar_t is 16-bit here, so char16_t text passes through by cast.
#include "platform/platform.h"

#include <windows.h>

#include <sys/stat.h>
#include <cstdlib>

namespace qrl::platform {

namespace {

const wchar_t* wide(const char16_t* s) { return reinterpret_cast<const wchar_t*>(s); }
const wchar_t* wide(const std::u16string& s) { return wide(s.c_str()); }

bool isDotEntry(const char* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}
bool isDotEntry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

// Owns a file handle: closed on every way out, a failed allocation included.
class FileHandle {
public:
    explicit FileHandle(HANDLE h) : h_(h) {}
    ~FileHandle() {
        if (valid()) CloseHandle(h_);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    bool valid() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return h_; }
    // Closes now, for the writer that must know whether the close succeeded.
    bool close() {
        const bool ok = CloseHandle(h_) != 0;
        h_ = INVALID_HANDLE_VALUE;
        return ok;
    }

private:
    HANDLE h_;
};

bool readHandle(const FileHandle& file, std::string& bytes) {
    bytes.clear();
    if (!file.valid()) return false;
    LARGE_INTEGER size{};
    bool ok = GetFileSizeEx(file.get(), &size) != 0 && size.QuadPart >= 0 && size.QuadPart < (1LL << 31);
    if (ok) {
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        std::size_t done = 0;
        while (ok && done < bytes.size()) {
            DWORD got = 0;
            ok = ReadFile(file.get(), bytes.data() + done, static_cast<DWORD>(bytes.size() - done), &got, nullptr) != 0;
            if (ok && got == 0) break;  // the file shrank meanwhile
            done += got;
        }
        bytes.resize(done);
    }
    if (!ok) bytes.clear();
    return ok;
}

// A path the file calls may be given: usable as it stands and still within the limit once full.
bool usable(const std::u16string& path, bool pattern = false) {
    return isUsablePath(path, pattern) && !fullPath(path).empty();
}
bool usable(const std::string& path, bool pattern = false) {
    std::u16string wide;  // "C"-locale text: a byte per character
    for (const unsigned char c : path) wide.push_back(c);
    return usable(wide, pattern);
}

}  // namespace

std::vector<std::string> listFiles(const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA data{};
    if (!usable(pattern, true)) return names;
    HANDLE h = FindFirstFileA(pattern.c_str(), &data);
    if (h == INVALID_HANDLE_VALUE) return names;
    do {
        if (!isDotEntry(data.cFileName)) names.emplace_back(data.cFileName);
    } while (FindNextFileA(h, &data));
    FindClose(h);
    return names;
}

std::vector<std::u16string> listFiles(const std::u16string& pattern) {
    std::vector<std::u16string> names;
    WIN32_FIND_DATAW data{};
    if (!usable(pattern, true)) return names;
    HANDLE h = FindFirstFileW(wide(pattern), &data);
    if (h == INVALID_HANDLE_VALUE) return names;
    do {
        if (!isDotEntry(data.cFileName)) names.emplace_back(reinterpret_cast<const char16_t*>(data.cFileName));
    } while (FindNextFileW(h, &data));
    FindClose(h);
    return names;
}

std::vector<std::u16string> listPlainFiles(const std::u16string& pattern) {
    constexpr DWORD kNotPlain = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;
    std::vector<std::u16string> names;
    WIN32_FIND_DATAW data{};
    if (!usable(pattern, true)) return names;
    HANDLE h = FindFirstFileW(wide(pattern), &data);
    if (h == INVALID_HANDLE_VALUE) return names;
    do {
        if ((data.dwFileAttributes & kNotPlain) == 0)
            names.emplace_back(reinterpret_cast<const char16_t*>(data.cFileName));
    } while (FindNextFileW(h, &data));
    FindClose(h);
    return names;
}

bool readFile(const std::string& path, std::string& bytes) {
    bytes.clear();
    if (!usable(path)) return false;
    return readHandle(FileHandle{CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)},
                      bytes);
}

bool readFile(const std::u16string& path, std::string& bytes) {
    bytes.clear();
    if (!usable(path)) return false;
    return readHandle(FileHandle{CreateFileW(wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr)},
                      bytes);
}

namespace {

bool writeAll(HANDLE file, std::string_view bytes) {
    bool ok = true;
    std::size_t done = 0;
    while (ok && done < bytes.size()) {
        DWORD put = 0;
        ok = WriteFile(file, bytes.data() + done, static_cast<DWORD>(bytes.size() - done), &put, nullptr) != 0 && put > 0;
        done += put;
    }
    return ok;
}

}  // namespace

bool writeFile(const std::u16string& path, std::string_view bytes) {
    if (!usable(path)) return false;
    FileHandle file{CreateFileW(wide(path), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr)};
    if (!file.valid()) return false;
    const bool ok = writeAll(file.get(), bytes);
    return file.close() && ok;
}

bool appendFile(const std::u16string& path, std::string_view bytes) {
    if (!usable(path)) return false;
    // Append-only access: every write lands at the end, also with other processes writing.
    FileHandle file{CreateFileW(wide(path), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)};
    if (!file.valid()) return false;
    const bool ok = writeAll(file.get(), bytes);
    return file.close() && ok;
}

uint32_t fileTimeStamp(const std::u16string& path) {
    struct _stat64 st{};
    if (!usable(path)) return 0;
    if (_wstat64(wide(path), &st) != 0) return 0;
    return static_cast<uint32_t>(st.st_mtime);
}

std::u16string fullPath(const std::u16string& path) {
    wchar_t buffer[MAX_PATH];
    if (!isUsablePath(path, true)) return {};
    if (!_wfullpath(buffer, wide(path), MAX_PATH)) return {};
    return reinterpret_cast<const char16_t*>(buffer);
}

uint32_t tickCount() { return GetTickCount(); }

void sleepMs(uint32_t milliseconds) { Sleep(milliseconds); }

bool writeProfileString(const char16_t* section, const char16_t* key, const char16_t* value,
                        const char16_t* file) {
    if (file && !usable(file)) return false;
    return WritePrivateProfileStringW(wide(section), wide(key), wide(value), wide(file)) != 0;
}

bool writeProfileSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file) {
    if (!section || !file || !usable(file)) return false;
    std::u16string list;
    for (const std::u16string& line : lines) {
        list += line;
        list.push_back(u'\0');
    }
    list.push_back(u'\0');
    return WritePrivateProfileSectionW(wide(section), wide(list), wide(file)) != 0;
}

uint32_t getProfileString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                          char16_t* buffer, uint32_t size, const char16_t* file) {
    if (file && !usable(file)) {
        // Answered as for a file that isn't there: no names, or the default.
        if (!buffer || size == 0) return 0;
        std::u16string_view text = section && key && defaultText ? defaultText : u"";
        text = text.substr(0, size - 1);
        text.copy(buffer, text.size());
        buffer[text.size()] = 0;
        if (text.empty() && size > 1) buffer[1] = 0;
        return static_cast<uint32_t>(text.size());
    }
    return GetPrivateProfileStringW(wide(section), wide(key), wide(defaultText),
                                    reinterpret_cast<wchar_t*>(buffer), size, wide(file));
}

uint32_t getProfileInt(const char16_t* section, const char16_t* key, int32_t defaultValue,
                       const char16_t* file) {
    if (file && !usable(file)) return static_cast<uint32_t>(defaultValue);
    return GetPrivateProfileIntW(wide(section), wide(key), defaultValue, wide(file));
}

}  // namespace qrl::platform
