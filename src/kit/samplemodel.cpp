#include "kit/samplemodel.h"

namespace qrl {

std::uint32_t SampleTextColour(const TSampleState& s) {
    if ((s.features & kAttrBlink) && s.visible == 0 && s.blinkDisabled == 0) return s.background;
    return s.foreground;
}

std::vector<std::vector<TPoint>> SampleDecorations(std::uint32_t features, int w, int h, int y) {
    std::vector<std::vector<TPoint>> lines;
    if (features & kAttrUnderline) lines.push_back({{4, y + h}, {w + 4, y + h}});
    if (features & kAttrOverline) lines.push_back({{4, y}, {w + 4, y}});
    if (features & kAttrStrikeOut) lines.push_back({{4, y + h / 2}, {w + 4, y + h / 2}});
    if (features & kFeatureBox) lines.push_back({{3, y}, {w + 5, y}, {w + 5, y + h}, {3, y + h}, {3, y}});
    return lines;
}

}  // namespace qrl
