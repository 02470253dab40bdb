// A registry key of the current user, created along its path if needed and closed at the end of
// the scope. Win32 only.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

namespace qrl {

class TRegistryKey {
public:
    // Opens (creating) HKEY_CURRENT_USER\parts[0]\parts[1]...; get() is null when a step fails.
    explicit TRegistryKey(std::initializer_list<const wchar_t*> parts);
    ~TRegistryKey();
    TRegistryKey(const TRegistryKey&) = delete;
    TRegistryKey& operator=(const TRegistryKey&) = delete;

    HKEY get() const { return key_; }
    // A REG_SZ value of at most maxChars characters; false when it can't be read.
    bool ReadString(const std::u16string& name, std::size_t maxChars, std::u16string& value) const;
    void WriteString(const std::u16string& name, const std::u16string& value) const;

private:
    HKEY key_ = nullptr;
};

// Where the module keeps what it remembers between runs.
inline TRegistryKey ModuleRegistryKey() { return TRegistryKey{L"Software", L"Marlowick", L"Quorl4", L"qrl4cfg"}; }

}  // namespace qrl
