#include "colours/attrdialogdata.h"

#include <utility>

namespace qrl {

void LoadAttrDialogNames(TAttrDialogData& data, const TNameTable& shortFeatureNames,
                         const TNameTable& longFeatureNames, const TNameTable& colourDescriptions,
                         const TNameTable& fieldDescriptions, const TColourTexts& texts) {
    bool anyColour = false;
    for (std::size_t i = 0; i < kNameTableSize; ++i) {
        const auto pick = [](const std::u16string& given, const std::u16string& fallback) {
            return given.empty() ? fallback : given;
        };
        data.shortNames[i] = pick(shortFeatureNames[i], texts.shortFeatureNames[i]);
        data.longNames[i] = pick(longFeatureNames[i], texts.longFeatureNames[i]);
        data.colourNames[i] = pick(colourDescriptions[i], texts.colourNames[i]);
        data.colourDefined[i] = !colourDescriptions[i].empty();
        anyColour = anyColour || data.colourDefined[i];
        data.fieldNames[i] = fieldDescriptions[i];
        data.fieldDefined[i] = !fieldDescriptions[i].empty();
    }
    if (!anyColour) data.colourDefined.fill(true);
}

namespace {

// Steps shared by combinations and fields once the pair is chosen: Bold/Dim action on the foreground,
// then Reverse, then Invisible; in that order, so the action sees the unswapped pair.
void finish(const TAttrDialogData& data, TResolvedAttr& r) {
    const TColourScheme& s = data.working;
    if (r.features & kAttrBold)
        r.foreground = ApplyColourAction(s.boldMode, r.foreground);
    else if (r.features & kAttrDim)
        r.foreground = ApplyColourAction(s.dimMode, r.foreground);
    if (r.features & kAttrReverse) std::swap(r.foreground, r.background);
    if ((r.features & kAttrInvisible) && data.enableInvisCfg) r.foreground = r.background;
}

}  // namespace

TResolvedAttr ResolveFeature(const TAttrDialogData& data, int combination) {
    TResolvedAttr r;
    if (combination < 0 || combination >= static_cast<int>(kCombinationCount)) return r;
    const TSchemeFeature& entry = data.working.features[static_cast<std::size_t>(combination)];
    r.rawForeground = entry.foreground;
    r.rawBackground = entry.background;
    // Entry 0 is the scheme's normal pair and has no override of its own.
    const TSchemeFeature& pair = (combination == 0 || !entry.override) ? data.working.features[0] : entry;
    r.foreground = pair.foreground;
    r.background = pair.background;
    r.features = entry.features;
    finish(data, r);
    return r;
}

TResolvedAttr ResolveField(const TAttrDialogData& data, int field) {
    TResolvedAttr r;
    // Only 16 field entries exist; anything beyond is treated as out of range.
    if (field < 0 || field >= static_cast<int>(kFieldCount)) return r;
    const TSchemeField& entry = data.working.fields[static_cast<std::size_t>(field)];
    r.rawForeground = entry.foreground;
    r.rawBackground = entry.background;
    const TSchemeFeature& normal = data.working.features[0];
    r.foreground = entry.override ? entry.foreground : normal.foreground;
    r.background = entry.override ? entry.background : normal.background;
    r.features = entry.features;
    finish(data, r);
    return r;
}

std::u16string FeatureListText(const TAttrDialogData& data, uint32_t combination, bool useLongNames) {
    const TNameTable& names = useLongNames ? data.longNames : data.shortNames;
    if (combination == 0) return names[0];
    std::u16string text;
    // Bit value 2^(k-1) has the name at index k; walk from Invisible (128, index 8) down to Blink.
    for (std::size_t index = 8; index >= 1; --index) {
        if (!(combination & (1u << (index - 1)))) continue;
        if (!text.empty()) text += u'+';
        text += names[index];
    }
    return text;
}

std::u16string FeatureListText(const TAttrDialogData& data, uint32_t combination, int width,
                               const std::function<int(std::u16string_view)>& measure) {
    std::u16string text = FeatureListText(data, combination, true);
    if (measure(text) <= width) return text;
    return FeatureListText(data, combination, false);
}

}  // namespace qrl
