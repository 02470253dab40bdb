#include "kit/registrykey.h"

#include <algorithm>
#include <vector>

namespace qrl {

namespace {

void CloseKey(HKEY key) {
    if (key && key != HKEY_CURRENT_USER) RegCloseKey(key);
}

}  // namespace

TRegistryKey::TRegistryKey(std::initializer_list<const wchar_t*> parts) {
    HKEY current = HKEY_CURRENT_USER;
    for (const wchar_t* part : parts) {
        HKEY next = nullptr;
        const LSTATUS status =
            RegCreateKeyExW(current, part, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &next, nullptr);
        CloseKey(current);
        if (status != ERROR_SUCCESS) return;
        current = next;
    }
    key_ = current;
}

TRegistryKey::~TRegistryKey() { CloseKey(key_); }

bool TRegistryKey::ReadString(const std::u16string& name, std::size_t maxChars, std::u16string& value) const {
    if (!key_) return false;
    std::vector<wchar_t> buffer(maxChars + 1, L'\0');
    DWORD size = static_cast<DWORD>(maxChars * sizeof(wchar_t));  // bytes, at most
    if (RegQueryValueExW(key_, reinterpret_cast<const wchar_t*>(name.c_str()), nullptr, nullptr,
                         reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS)
        return false;
    // A value stored without its terminator ends where its bytes end.
    buffer[std::min<std::size_t>(size / sizeof(wchar_t), maxChars)] = L'\0';
    value.assign(reinterpret_cast<const char16_t*>(buffer.data()));
    return true;
}

void TRegistryKey::WriteString(const std::u16string& name, const std::u16string& value) const {
    if (!key_) return;
    RegSetValueExW(key_, reinterpret_cast<const wchar_t*>(name.c_str()), 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(char16_t)));
}

}  // namespace qrl
