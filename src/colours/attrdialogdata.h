// What the colour dialogs work on: a working copy of one scheme, the name tables as the dialog shows
// them, and the element values of the colour settings. Plain data, so that the rules that turn an
// attribute into the colours shown can be used and tested without a window.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "colours/colourscheme.h"
#include "colours/colourtexts.h"

namespace qrl {

class TConfigSession;

inline constexpr std::size_t kMaxListItems = 528;  // 256 combinations, 16 colours, 16 fields, and room

// The colours an attribute resolves to, and the entry's own pair (what the palette control marks).
struct TResolvedAttr {
    uint32_t foreground = 7;
    uint32_t background = 0;
    uint32_t features = 0;
    uint32_t rawForeground = 0;
    uint32_t rawBackground = 0;
};

struct TAttrDialogData {
    TConfigSession* session = nullptr;  // not owned
    std::u16string currentName;
    std::u16string customName;
    TColourScheme working;
    int32_t firstColourItem = -1;
    int32_t firstFieldItem = -1;
    uint32_t featuresUsed = 0;
    uint8_t normalForeground = 15;
    uint8_t normalBackground = 0;
    uint32_t displayMode = 0;
    TNameTable shortNames;
    TNameTable longNames;
    TNameTable colourNames;
    TNameTable fieldNames;
    std::array<bool, kNameTableSize> colourDefined{};
    std::array<bool, kNameTableSize> fieldDefined{};
    bool alwaysListNormal = true;
    std::array<uint32_t, kMaxListItems> itemValue{};
    std::vector<std::u16string> itemTexts;
    std::u16string currentLabel;
    TResolvedAttr shown;
    uint32_t selectedItem = 0;
    uint32_t selectedValue = 0;
    uint32_t selectedKind = 0;  // 0 attribute combination, 1 colour, 2 field
    TSchemeFeature savedFeature;
    uint32_t savedColour = 0;
    TSchemeField savedField;
    bool enableBlink = false;
    bool enableBlinkCfg = false;
    bool enableInvis = false;
    bool enableInvisCfg = false;
    bool mergeBoxes = false;
    uint32_t boxStyle = 0;
    bool changed = false;
    std::u16string newSchemeName;
    bool customModified = false;
    uint32_t paletteIndex = 0;
    std::array<uint32_t, kPaletteSize> paletteEdit{};
    std::array<uint32_t, kPaletteSize> paletteBackup{};
};

// The dialog's copies of the name tables: what the host sent, else the (translated) defaults. A colour
// counts as defined where the host described it, or every colour when it described none; a field only
// where it was described.
void LoadAttrDialogNames(TAttrDialogData& data, const TNameTable& shortFeatureNames,
                         const TNameTable& longFeatureNames, const TNameTable& colourDescriptions,
                         const TNameTable& fieldDescriptions, const TColourTexts& texts);
// The same from anything that holds the four tables under their usual names (the session,
// TAttrNameTables).
template <class Tables>
void LoadAttrDialogNames(TAttrDialogData& data, const Tables& sent, const TColourTexts& texts) {
    LoadAttrDialogNames(data, sent.shortFeatureNames, sent.longFeatureNames, sent.colourDescriptions,
                        sent.fieldDescriptions, texts);
}

// Builds the dialog data from the session: "(custom)" as the custom name, a blank working scheme, the
// name tables, and the colour settings as the request's Data sent them (absent: empty, numbers 0).
void LoadAttrDialogData(TAttrDialogData& data, TConfigSession& session);
// Writes CurrScheme, DisplayMode, EnableBlink, EnableBlinkCfg, EnableInvis, EnableInvisCfg, MergeBoxes
// and BoxStyle back into the session's element definitions, in decimal; a name without a definition
// is skipped.
void StoreAttrDialogData(const TAttrDialogData& data, TConfigSession& session);

// How combination i (0 to 255) of the working scheme is shown; outside that range the starting
// value, 7 on 0 with no features.
TResolvedAttr ResolveFeature(const TAttrDialogData& data, int combination);
// The same for a field entry; the override alone decides, so field 0 may have colours of its own.
TResolvedAttr ResolveField(const TAttrDialogData& data, int field);

// The names of a combination's attributes joined by "+", Invisible first and Blink last; the name of
// index 0 for the combination 0.
std::u16string FeatureListText(const TAttrDialogData& data, uint32_t combination, bool useLongNames);
// The long form if `measure` finds it at most `width` wide, else the short form.
std::u16string FeatureListText(const TAttrDialogData& data, uint32_t combination, int width,
                               const std::function<int(std::u16string_view)>& measure);

}  // namespace qrl
