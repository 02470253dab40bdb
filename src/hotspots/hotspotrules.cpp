#include "hotspots/hotspotrules.h"

#include <algorithm>
#include <iterator>

#include "text/textutil.h"

namespace qrl {

namespace {
bool isSeparator(char16_t c) { return c == u'\\' || c == u'/'; }
}  // namespace

std::u16string HotSpotFileForRequest(std::u16string_view directory, std::u16string_view path) {
    if (directory.empty() || !istartsWith(path, directory)) return std::u16string{path};
    std::u16string_view rest = path.substr(directory.size());
    // "C:\hs" must not claim "C:\hsp\a.hsp": the directory ends at a separator.
    if (!isSeparator(directory.back())) {
        if (rest.empty() || !isSeparator(rest.front())) return std::u16string{path};
        rest.remove_prefix(1);
    }
    return std::u16string{rest};
}

int HotSpotIndexOf(const HotSpots& set, int32_t id) {
    int index = 0;
    for (const HotSpot& spot : set.spots) {
        if (spot.id == id) return index;
        ++index;
    }
    return -1;
}

int ApplyEditedHotSpot(HotSpots& set, int32_t id, const HotSpot& edited) {
    HotSpot* spot = set.Find(id);
    if (!spot) return -1;
    *spot = edited;
    spot->id = id;
    set.dirty = true;
    set.Sort();
    return HotSpotIndexOf(set, id);
}

int ApplyNewHotSpot(HotSpots& set, const HotSpot& created) {
    const int32_t id = set.Add(created);
    set.dirty = true;
    set.Sort();
    return HotSpotIndexOf(set, id);
}

int ApplyCopiedHotSpot(HotSpots& set, const HotSpot& copy) {
    set.Add(copy);
    set.dirty = true;
    return static_cast<int>(set.spots.size()) - 1;
}

int ApplyDeleteHotSpot(HotSpots& set, int index) {
    if (index < 0 || index >= static_cast<int>(set.spots.size())) return -1;
    set.Remove(std::next(set.spots.begin(), index)->id);
    set.dirty = true;
    return std::min(index, static_cast<int>(set.spots.size()) - 1);
}

SaveOnYes SaveOnYesFor(const HotSpots& set) { return set.setName.empty() ? SaveOnYes::SaveAs : SaveOnYes::Write; }

std::u16string SaveQuestionText(std::u16string_view lead, std::u16string_view setName) {
    std::u16string text{lead};
    text += setName;
    text += u"'?";
    return text;
}

int ColourScrollTarget(int position, int code, int thumb) {
    constexpr int kLine = 25;
    constexpr int kPage = 60;
    constexpr int kMax = 255;
    int target = position;
    switch (code) {
    case 0: target = position - kLine; break;
    case 1: target = position + kLine; break;
    case 2: target = position - kPage; break;
    case 3: target = position + kPage; break;
    case 4:
    case 5: target = thumb; break;
    case 6: target = 0; break;
    case 7: target = kMax; break;
    default: break;  // end of scroll and the rest change nothing
    }
    return std::clamp(target, 0, kMax);
}

uint32_t PaletteRelativeColour(int red, int green, int blue) {
    auto byte = [](int v) { return static_cast<uint32_t>(std::clamp(v, 0, 255)); };
    return 0x02000000u | byte(blue) << 16 | byte(green) << 8 | byte(red);
}

bool IsEmulationColour(uint32_t colour) { return colour >= kDefaultColour - 1; }

TStyleSample StyleSampleFor(int32_t style, bool held, uint32_t background, uint32_t foreground) {
    TStyleSample sample;
    sample.fill = background == kDefaultColour ? kSampleGrey : background;
    sample.text = foreground == kDefaultColour ? 0 : foreground;
    using D = Decoration;
    auto bevel = [&](int inset) {
        sample.decorations.push_back({D::LightEdge, inset, 0});
        sample.decorations.push_back({D::DarkEdge, inset, 0});
        sample.decorations.push_back({D::Corners, inset, 0});
    };
    if (held) {
        // Odd values in the held rule are kept as found in sets in use.
        constexpr int32_t kHeldSystem = 263;
        constexpr int32_t kHeldLight = 259;
        if (style == 8 || style == kHeldSystem) {
            sample.systemFill = true;
        } else {
            sample.decorations.push_back({D::Border, 0, style == kHeldLight ? kSampleLightGrey : kSampleBlack});
        }
        return sample;
    }
    switch (style) {
    case 0: break;
    case 1: sample.decorations = {{D::LightEdge, 0, 0}, {D::Corners, 0, 0}}; break;
    case 2: sample.decorations = {{D::DarkEdge, 0, 0}, {D::Corners, 0, 0}}; break;
    case 3: bevel(0); break;
    case 4: sample.decorations = {{D::Border, 0, kSampleBlack}}; break;
    case 5: sample.decorations = {{D::Border, 0, kSampleBlack}}; bevel(1); break;
    case 6: sample.decorations = {{D::Border, 0, kSampleBlack}}; bevel(2); break;
    case 7: bevel(0); bevel(1); break;
    default: sample.systemFill = true; break;
    }
    return sample;
}

}  // namespace qrl
