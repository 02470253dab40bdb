// The `qrsample` window class: a line of sample text in given colours, with real blinking.
#pragma once

#include <windows.h>

namespace qrl {

inline constexpr wchar_t kSampleClass[] = L"qrsample";

bool RegisterSampleClass(HINSTANCE instance);
void UnregisterSampleClass(HINSTANCE instance);

}  // namespace qrl
