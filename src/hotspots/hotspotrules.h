// What the hotspot dialogs decide without a window: the file name kept in the request, the list's
// selection after each edit, the save question, the colour bars and the style sample as data.
// The dialogs (hotspotsdlg.cpp and friends) only apply these.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hotspots/hotspotfile.h"

namespace qrl {

// The name kept as hotspotFile after a file is chosen: relative to `directory` when `path` lies
// inside it (case ignored, as paths are), else `path` as given.
std::u16string HotSpotFileForRequest(std::u16string_view directory, std::u16string_view path);

// List positions are list order; -1 is no selection.
int HotSpotIndexOf(const HotSpots& set, int32_t id);
// Each edit marks the set dirty and returns the item to select afterwards.
int ApplyEditedHotSpot(HotSpots& set, int32_t id, const HotSpot& edited);  // sorts
int ApplyNewHotSpot(HotSpots& set, const HotSpot& created);               // sorts
int ApplyCopiedHotSpot(HotSpots& set, const HotSpot& copy);               // appended, unsorted
int ApplyDeleteHotSpot(HotSpots& set, int index);                         // same place, or the last

// What Yes to the save question does.
enum class SaveOnYes { Write, SaveAs };
SaveOnYes SaveOnYesFor(const HotSpots& set);
std::u16string SaveQuestionText(std::u16string_view lead, std::u16string_view setName);

// The colour dialog.
inline constexpr uint32_t kEmulationBackgroundShown = 8421504;  // grey, while the flag is on
int ColourScrollTarget(int position, int code, int thumb);
uint32_t PaletteRelativeColour(int red, int green, int blue);
// A colour as given to the dialog: all ones (or one less) means the emulation's.
bool IsEmulationColour(uint32_t colour);

// The style sample of the owner-drawn button.
enum class Decoration { LightEdge, DarkEdge, Corners, Border };
struct TDecorationStep {
    Decoration kind;
    int inset;       // pixels in from the button's edge
    uint32_t colour; // for Border; the edges and corners have fixed colours
    bool operator==(const TDecorationStep&) const = default;
};
struct TStyleSample {
    bool systemFill = false;  // the platform's button colour instead of `fill`
    uint32_t fill = 0;
    uint32_t text = 0;
    std::vector<TDecorationStep> decorations;  // in drawing order
};
inline constexpr uint32_t kSampleGrey = 8421504;
inline constexpr uint32_t kSampleLightGrey = 12632256;
inline constexpr uint32_t kSampleBlack = 0;
// The colours given are the hotspot's own when overrideColour is on, otherwise the set's.
TStyleSample StyleSampleFor(int32_t style, bool held, uint32_t background, uint32_t foreground);

}  // namespace qrl
