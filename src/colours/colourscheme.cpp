#include "colours/colourscheme.h"

#include "text/textutil.h"

namespace qrl {

const std::array<uint32_t, kPaletteSize>& DefaultPalette() {
    static const std::array<uint32_t, kPaletteSize> palette{
        MakeColour(0, 0, 0),       MakeColour(0, 0, 127),     MakeColour(0, 127, 0),
        MakeColour(0, 127, 127),   MakeColour(127, 0, 0),     MakeColour(127, 0, 127),
        MakeColour(127, 127, 0),   MakeColour(192, 192, 192), MakeColour(127, 127, 127),
        MakeColour(0, 0, 255),     MakeColour(0, 255, 0),     MakeColour(0, 255, 255),
        MakeColour(255, 0, 0),     MakeColour(255, 0, 255),   MakeColour(255, 255, 0),
        MakeColour(255, 255, 255),
    };
    return palette;
}

TColourScheme::TColourScheme() : palette(DefaultPalette()) {
    for (std::size_t i = 0; i < colours.size(); ++i) colours[i] = static_cast<uint32_t>(i);
}

TColourScheme* FindColourScheme(TColourSchemeList& list, std::u16string_view name) {
    for (TColourScheme& scheme : list)
        if (iequals(scheme.name, name)) return &scheme;
    return nullptr;
}

const TColourScheme* FindColourScheme(const TColourSchemeList& list, std::u16string_view name) {
    return FindColourScheme(const_cast<TColourSchemeList&>(list), name);
}

uint32_t PackFeatureWord(uint32_t features, uint32_t foreground, uint32_t background) {
    return (features & 0xFFFF) | ((foreground & 0xFF) << 16) | ((background & 0xFF) << 24);
}

void UnpackFeatureWord(uint32_t word, uint32_t& features, uint32_t& foreground, uint32_t& background) {
    features = word & 0xFFFF;
    foreground = (word >> 16) & 0xFF;
    background = (word >> 24) & 0xFF;
}

uint32_t ApplyColourAction(uint32_t action, uint32_t index) {
    switch (action) {
    case kActionNextColour: return (index + 1) & 15;
    case kActionPreviousColour: return (index - 1) & 15;
    case kActionNextGroup: return (index | 8) & 15;
    case kActionPreviousGroup: return index & 7;
    case kActionToggleGroup: return (index ^ 8) & 15;
    default: return index & 15;
    }
}

}  // namespace qrl
