// The contrast of a text colour on a background, as the web's accessibility guidelines (WCAG 2)
// define it, so that the colour dialogs can warn when text will be hard to read.
#pragma once

#include <cstdint>
#include <string>

namespace qrl {

// Colours are 0x00BBGGRR, red in the low byte; a top byte is ignored. The ratio runs from 1
// (the same colour) to 21 (black on white), whichever of the two is the lighter.
double ContrastRatio(uint32_t foreground, uint32_t background);

// Below this, normal text counts as hard to read.
inline constexpr double kMinimumReadableContrast = 4.5;

// "3.2:1": the ratio cut, not rounded, to one decimal, so 4.49 never shows as a passing 4.5.
std::u16string ContrastFigure(double ratio);
// "Contrast 3.2:1", with " \u2013 hard to read" appended when the ratio is below the minimum.
std::u16string ContrastText(double ratio);

}  // namespace qrl
