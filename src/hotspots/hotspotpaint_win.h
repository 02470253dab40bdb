// The two samples of the hotspot dialogs: the button a hotspot becomes, in its style, and the text
// in a set's or a hotspot's colours. Win32 only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "hotspots/hotspotrules.h"

namespace qrl {

// Fills `area`, writes `text` centred in it and draws the sample's decorations over it.
void DrawStyleSample(HDC dc, const RECT& area, const TStyleSample& sample, const std::u16string& text);
// A rectangle in `background` with the word of the colour sample centred in `foreground`.
void DrawColourSample(HDC dc, const RECT& area, uint32_t foreground, uint32_t background);

}  // namespace qrl
