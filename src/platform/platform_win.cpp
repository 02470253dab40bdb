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

bool readHandle(HANDLE h, std::string& bytes) {
    bytes.clear();
    if (h == INVALID_HANDLE_VALUE) return false;
    LARGE_INTEGER size{};
    bool ok = GetFileSizeEx(h, &size) != 0 && size.QuadPart >= 0 && size.QuadPart < (1LL << 31);
    if (ok) {
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        std::size_t done = 0;
        while (ok && done < bytes.size()) {
            DWORD got = 0;
            ok = ReadFile(h, bytes.data() + done, static_cast<DWORD>(bytes.size() - done), &got, nullptr) != 0;
            if (ok && got == 0) break;  // the file shrank meanwhile
            done += got;
        }
        bytes.resize(done);
    }
    CloseHandle(h);
    if (!ok) bytes.clear();
    return ok;
}

}  // namespace

std::vector<std::string> listFiles(const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA data{};
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
    return readHandle(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr),
                      bytes);
}

bool readFile(const std::u16string& path, std::string& bytes) {
    return readHandle(CreateFileW(wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr),
                      bytes);
}

bool writeFile(const std::u16string& path, std::string_view bytes) {
    HANDLE h = CreateFileW(wide(path), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return false;
    bool ok = true;
    std::size_t done = 0;
    while (ok && done < bytes.size()) {
        DWORD put = 0;
        ok = WriteFile(h, bytes.data() + done, static_cast<DWORD>(bytes.size() - done), &put, nullptr) != 0 && put > 0;
        done += put;
    }
    return CloseHandle(h) != 0 && ok;
}

uint32_t fileTimeStamp(const std::u16string& path) {
    struct _stat64 st{};
    if (_wstat64(wide(path), &st) != 0) return 0;
    return static_cast<uint32_t>(st.st_mtime);
}

std::u16string fullPath(const std::u16string& path) {
    wchar_t buffer[MAX_PATH];
    if (!_wfullpath(buffer, wide(path), MAX_PATH)) return {};
    return reinterpret_cast<const char16_t*>(buffer);
}

uint32_t tickCount() { return GetTickCount(); }

void sleepMs(uint32_t milliseconds) { Sleep(milliseconds); }

bool writeProfileString(const char16_t* section, const char16_t* key, const char16_t* value,
                        const char16_t* file) {
    return WritePrivateProfileStringW(wide(section), wide(key), wide(value), wide(file)) != 0;
}

uint32_t getProfileString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                          char16_t* buffer, uint32_t size, const char16_t* file) {
    return GetPrivateProfileStringW(wide(section), wide(key), wide(defaultText),
                                    reinterpret_cast<wchar_t*>(buffer), size, wide(file));
}

uint32_t getProfileInt(const char16_t* section, const char16_t* key, int32_t defaultValue,
                       const char16_t* file) {
    return GetPrivateProfileIntW(wide(section), wide(key), defaultValue, wide(file));
}

}  // namespace qrl::platform
