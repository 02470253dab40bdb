// The colour scheme record: how each of the 256 attribute combinations of the emulation is shown,
// with its palette, colour map, field entries and background image. Shared by the request reader,
// the reply writer and the colour dialogs; nothing here knows about a user interface.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/features.h"

namespace qrl {

inline constexpr std::size_t kPaletteSize = 16;
inline constexpr std::size_t kColourMapSize = 256;
inline constexpr std::size_t kCombinationCount = 256;
inline constexpr std::size_t kFieldCount = 16;

// The pending operation of a scheme: what the reply tells the host about it.
inline constexpr uint32_t kSchemeUntouched = 0;
inline constexpr uint32_t kSchemeUpdate = 1;
inline constexpr uint32_t kSchemeDelete = 2;

// Colour actions that imitate Bold and Dim by changing the foreground index.
inline constexpr uint32_t kActionNextColour = 0;
inline constexpr uint32_t kActionPreviousColour = 1;
inline constexpr uint32_t kActionNextGroup = 2;
inline constexpr uint32_t kActionPreviousGroup = 3;
inline constexpr uint32_t kActionToggleGroup = 4;
inline constexpr std::size_t kColourActionCount = 5;

// Background image modes.
inline constexpr uint32_t kGraphicCentre = 0;
inline constexpr uint32_t kGraphicTile = 1;
inline constexpr uint32_t kGraphicStretch = 2;

// A colour with red in the low byte, as the platform stores it.
constexpr uint32_t MakeColour(uint32_t red, uint32_t green, uint32_t blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}

const std::array<uint32_t, kPaletteSize>& DefaultPalette();

struct TSchemeFeature {
    bool override = false;    // the entry's own colours count
    uint32_t features = 0;    // low 16 bits only
    uint32_t foreground = 0;  // colour indexes; the text form keeps one byte of each
    uint32_t background = 0;
};

struct TSchemeField {
    bool override = false;
    bool secondFlag = false;  // carried from request to reply unchanged; nothing reads it
    uint32_t features = 0;
    uint32_t foreground = 0;
    uint32_t background = 0;
};

struct TColourScheme {
    TColourScheme();  // default palette, identity colour map, everything else zero

    std::u16string name;          // key of the list, compared without regard to case
    std::u16string previousName;  // default for Save as; never sent
    uint32_t operation = kSchemeUntouched;
    std::array<uint32_t, kPaletteSize> palette{};
    std::array<uint32_t, kColourMapSize> colours{};
    std::array<TSchemeFeature, kCombinationCount> features{};
    std::array<TSchemeField, kFieldCount> fields{};
    uint32_t boldMode = 0;
    uint32_t dimMode = 0;
    bool useBgGraphic = false;
    std::u16string graphicFile;
    uint32_t graphicMode = kGraphicCentre;
};

// Schemes in request order; new ones go at the end, so indexes stay valid during a dialog.
using TColourSchemeList = std::vector<TColourScheme>;

TColourScheme* FindColourScheme(TColourSchemeList& list, std::u16string_view name);
const TColourScheme* FindColourScheme(const TColourSchemeList& list, std::u16string_view name);

// Packing of a feature or field entry in the text form: features in bits 0-15, foreground index in
// bits 16-23, background index in bits 24-31.
uint32_t PackFeatureWord(uint32_t features, uint32_t foreground, uint32_t background);
void UnpackFeatureWord(uint32_t word, uint32_t& features, uint32_t& foreground, uint32_t& background);

// What a Bold or Dim colour action does to a colour index (0 to 15).
uint32_t ApplyColourAction(uint32_t action, uint32_t index);

}  // namespace qrl
