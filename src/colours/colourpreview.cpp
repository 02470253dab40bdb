#include "colours/colourpreview.h"

#include "colours/colourconfig.h"
#include "colours/contrast.h"
#include "kit/features.h"
#include "locale/language.h"

namespace qrl {

TPreviewSample PreviewSample(const TPalette& palette, const TResolvedAttr& shown, TVisionPreview preview) {
    const uint32_t foreground = palette[shown.foreground & 15];
    const uint32_t background = palette[shown.background & 15];
    const double ratio = PreviewContrast(foreground, background, preview);
    return {SimulateVision(foreground, preview), SimulateVision(background, preview), ContrastText(ratio),
            ratio < kMinimumReadableContrast};
}

TPalette SimulatedPalette(const TPalette& palette, TVisionPreview preview) {
    TPalette seen{};
    for (std::size_t i = 0; i < seen.size(); ++i) seen[i] = SimulateVision(palette[i], preview);
    return seen;
}

namespace {

// The raw foreground that the bold or dim colour action turns into `shown`; `shown` itself when no
// action applies or none gives it.
uint32_t RawForegroundFor(const TAttrDialogData& data, uint32_t shown) {
    const uint32_t features = data.shown.features;
    const bool bold = (features & kAttrBold) != 0;
    if (!bold && (features & kAttrDim) == 0) return shown;
    const uint32_t action = bold ? data.working.boldMode : data.working.dimMode;
    for (uint32_t raw = 0; raw < kPaletteSize; ++raw)
        if (ApplyColourAction(action, raw) == shown) return raw;
    return shown;
}

}  // namespace

std::optional<TPalettePick> FixContrastPick(const TAttrDialogData& data, TVisionPreview preview) {
    if (data.selectedKind == 1 || !AttrEditView(data).paletteEnabled) return std::nullopt;
    if ((data.shown.features & kAttrInvisible) != 0 && data.enableInvisCfg) return std::nullopt;
    const TPalette& palette = data.working.palette;
    if (!PreviewSample(palette, data.shown, preview).hardToRead) return std::nullopt;
    const uint32_t fixed = FixContrastIndex(palette, data.shown.foreground, data.shown.background, preview);
    TPalettePick pick{data.shown.rawForeground, data.shown.rawBackground};
    // Reverse shows the entry's background as the text colour.
    if ((data.shown.features & kAttrReverse) != 0)
        pick.second = fixed;
    else
        pick.first = RawForegroundFor(data, fixed);
    return pick;
}

std::vector<std::u16string> ContrastCheckRows(const std::vector<TContrastFinding>& findings) {
    if (findings.empty()) return {Translate(u"contrast_none_hard", u"No combination is hard to read")};
    std::vector<std::u16string> rows;
    rows.reserve(findings.size());
    for (const TContrastFinding& finding : findings) rows.push_back(finding.text);
    return rows;
}

std::optional<uint32_t> ListRowOfCombination(const TAttrDialogData& data, uint32_t combination) {
    const std::size_t listed = data.firstColourItem >= 0 ? static_cast<std::size_t>(data.firstColourItem)
                                                         : data.itemTexts.size();
    for (std::size_t row = 0; row < listed && row < kMaxListItems; ++row)
        if (data.itemValue[row] == combination) return static_cast<uint32_t>(row);
    return std::nullopt;
}

TNormalPair NormalPairOf(const TAttrDialogData& data) {
    return {data.working.features[0].foreground, data.working.features[0].background};
}

void StoreNormalPair(TAttrDialogData& data, const TNormalPair& normal) {
    data.working.features[0].foreground = normal.foreground;
    data.working.features[0].background = normal.background;
}

void ImportPalette(TAttrDialogData& data, const TImportedPalette& imported, TNormalPair& normal) {
    data.paletteEdit = PaletteFromAnsi(imported.ansi);
    if (imported.foreground) normal.foreground = NearestPaletteIndex(data.paletteEdit, *imported.foreground);
    if (imported.background) normal.background = NearestPaletteIndex(data.paletteEdit, *imported.background);
    data.changed = true;
}

std::string ExportPalette(const TAttrDialogData& data, const TNormalPair& normal) {
    const bool forked = IsCustom(data) && !data.working.previousName.empty();
    return WriteTerminalScheme(forked ? data.working.previousName : data.working.name, data.paletteEdit,
                               data.paletteEdit[normal.foreground & 15], data.paletteEdit[normal.background & 15]);
}

}  // namespace qrl
