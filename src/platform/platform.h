// The few operating-system services that the portable code needs, behind one seam: a Win32
// implementation for the product (platform_win.cpp) and a POSIX one for the native build and its
// tests (platform_posix.cpp). Paths are given as Windows writes them; the POSIX side accepts "\" as
// a separator. Narrow paths are text in the runtime's "C" locale (a byte per character), wide paths
// are 16-bit text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrl::platform {

// Whether `path` can name a file at all: not empty, shorter than the platform's path limit of 260
// characters, no control characters, none of < > " |, a colon only behind a drive letter, and
// (with `pattern`) the wildcards * and ? only in the last part. Paths come from requests and
// hosts; every call below that takes one asks this first, and a path that fails counts as a
// file that isn't there. A relative path must also still fit once made full (fullPath).
bool isUsablePath(std::u16string_view path, bool pattern = false);

// Names (without folder) of the entries matching `pattern` ("folder\*.ext"; "*" and "?" as
// wildcards, case ignored) in the order the system returns them; nothing is sorted here.
// An unreadable or missing folder gives an empty list.
std::vector<std::string> listFiles(const std::string& pattern);
std::vector<std::u16string> listFiles(const std::u16string& pattern);
// The same, keeping only plain files: no folders, and nothing hidden or marked as a system file
// (on POSIX: no name beginning with ".").
std::vector<std::u16string> listPlainFiles(const std::u16string& pattern);

// The whole file as bytes, opened for reading and shared for reading and writing.
// False (and `bytes` empty) when it can't be opened or read.
bool readFile(const std::string& path, std::string& bytes);
bool readFile(const std::u16string& path, std::string& bytes);

// Creates or truncates the file and writes `bytes`; false on any failure.
bool writeFile(const std::u16string& path, std::string_view bytes);
// Adds `bytes` at the end of the file, creating it if needed; false on any failure.
bool appendFile(const std::u16string& path, std::string_view bytes);

// The low 32 bits of the file's modification time as the runtime's stat call gives it (seconds);
// 0 when the file can't be looked at.
uint32_t fileTimeStamp(const std::u16string& path);

// The absolute, normalised path as _wfullpath makes it with a buffer of 260 characters;
// empty when it doesn't fit, can't be made, or `path` is not usable (wildcards allowed).
std::u16string fullPath(const std::u16string& path);

// Milliseconds since some fixed point, wrapping at 2^32 (GetTickCount).
uint32_t tickCount();
void sleepMs(uint32_t milliseconds);

// WritePrivateProfileStringW: value null deletes the key, key null deletes the section, all
// three null asks the platform to flush what it caches. True on success.
bool writeProfileString(const char16_t* section, const char16_t* key, const char16_t* value,
                        const char16_t* file);

// WritePrivateProfileSectionW: the keys of the section replaced by these "key=value" lines, in
// their order; a missing section is added at the end. One write, however many lines.
bool writeProfileSection(const char16_t* section, const std::vector<std::u16string>& lines, const char16_t* file);

// GetPrivateProfileStringW and GetPrivateProfileIntW, straight from the file.
uint32_t getProfileString(const char16_t* section, const char16_t* key, const char16_t* defaultText,
                          char16_t* buffer, uint32_t size, const char16_t* file);
uint32_t getProfileInt(const char16_t* section, const char16_t* key, int32_t defaultValue,
                       const char16_t* file);

}  // namespace qrl::platform
