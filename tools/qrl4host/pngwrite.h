// Writes 24-bit pictures as PNG files, uncompressed (stored deflate blocks): no library needed,
// and the files stay small enough for dialog pictures.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qrl4host {

// `rgb` holds height rows of width pixels, three bytes each (red, green, blue), top row first.
bool WritePng(const std::wstring& path, uint32_t width, uint32_t height, const std::vector<uint8_t>& rgb);

}  // namespace qrl4host
