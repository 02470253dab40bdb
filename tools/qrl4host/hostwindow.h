// The host's side of the link: a hidden window that answers the module's link message from options.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qrl4host {

struct THostOptions {
    std::u16string authDirectory;             // code 123
    std::u16string emulationName;             // code 8204
    std::vector<std::u16string> exchangeReplies;  // code 8437, in turn; the last one repeats
    std::size_t nextExchange = 0;
    LRESULT mapsSavedResult = 0;              // code 8438
    LRESULT deleteLanguageResult = 0;         // code 8439
    LRESULT addLanguageResult = 0;            // code 8440
    uint32_t attributeForeground = 0xFFFFFF;  // code 1
    uint32_t attributeBackground = 0x000000;
};

inline constexpr UINT kLinkMessage = WM_APP + 0x100;

// Creates the hidden link window; it answers kLinkMessage from `options`, which must outlive it.
HWND CreateLinkWindow(HINSTANCE instance, THostOptions* options);

// Prints 16-bit text to standard output as UTF-8.
void PrintText(const char* label, std::u16string_view text);

}  // namespace qrl4host
