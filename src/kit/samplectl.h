// The `qrsample` window class: a line of sample text in given colours, with real blinking.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace qrl {

inline constexpr wchar_t kSampleClass[] = L"qrsample";

bool RegisterSampleClass(HINSTANCE instance);

// Feeds a sample in its fixed order: the text, the two colours, the features, then whether blinking
// is off (the inverse of `blinkEnabled`); then it is repainted.
void ShowInSample(HWND sample, const std::u16string& text, COLORREF foreground, COLORREF background,
                  std::uint32_t features, bool blinkEnabled);
void UnregisterSampleClass(HINSTANCE instance);

}  // namespace qrl
