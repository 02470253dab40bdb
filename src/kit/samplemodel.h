// What the `qrsample` control draws: a line of text in the colours and with the features of an
// attribute combination, blinking for real. Plain data and geometry; samplectl.cpp paints it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kit/features.h"

namespace qrl {

// Messages of the control (numbered from the platform's first user message).
inline constexpr unsigned kSampleSetForeground = 1025;    // colour in lParam
inline constexpr unsigned kSampleSetBackground = 1026;    // colour in lParam
inline constexpr unsigned kSampleSetBlinkDisabled = 1027; // flag in wParam
inline constexpr unsigned kSampleSetFeatures = 1028;      // features in lParam
inline constexpr unsigned kSampleBlinkMs = 500;

struct TSampleState {
    std::u16string text = u"Sample";
    std::uint32_t foreground = 8355711;  // (127, 127, 127)
    std::uint32_t background = 0;
    std::uint32_t features = 0;
    std::uint32_t visible = 1;  // blink phase
    std::uint32_t blinkDisabled = 0;
};

// The text colour of this moment: the background during the dark half of a blink.
std::uint32_t SampleTextColour(const TSampleState& state);

struct TPoint {
    int x = 0, y = 0;
    bool operator==(const TPoint&) const = default;
};
// The lines drawn over the text, each a polyline; text of width w and height h at top y, 4 from the left.
std::vector<std::vector<TPoint>> SampleDecorations(std::uint32_t features, int w, int h, int y);

}  // namespace qrl
