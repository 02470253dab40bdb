#include "colours/colourconfig.h"

#include "colours/colourhooks.h"
#include "text/textutil.h"

#include <utility>

namespace qrl {

namespace {

TColourSchemeList& schemesOf(TAttrDialogData& data) { return SessionColourSchemes(*data.session); }
const TColourSchemeList& schemesOf(const TAttrDialogData& data) {
    return SessionColourSchemes(std::as_const(*data.session));
}

void addItem(TAttrDialogData& data, uint32_t value, std::u16string text) {
    if (data.itemTexts.size() < kMaxListItems) data.itemValue[data.itemTexts.size()] = value;
    data.itemTexts.push_back(std::move(text));
}

bool listsCombination(const TAttrDialogData& data, const TListOptions& options, uint32_t i) {
    if ((i & kAttrInvisible) && !options.includeInvisible) return false;
    if (options.all) return (i & (kAttrBold | kAttrDim)) != (kAttrBold | kAttrDim);
    if (options.emulation) return (i & ~data.featuresUsed) == 0 || (i == 0 && data.alwaysListNormal);
    return false;
}

// The entry the current item edits: its features and override, or the colour map entry.
TResolvedAttr resolveSelected(const TAttrDialogData& data) {
    if (data.selectedKind == 2) return ResolveField(data, static_cast<int>(data.selectedValue));
    return ResolveFeature(data, static_cast<int>(data.selectedValue));
}

bool itemHasEntry(const TAttrDialogData& data, std::size_t size) { return data.selectedValue < size; }

}  // namespace

void ListAttributes(TAttrDialogData& data, const TListOptions& options, int width, const TMeasureFn& measure) {
    data.firstColourItem = -1;
    data.firstFieldItem = -1;
    data.itemTexts.clear();
    for (uint32_t i = 0; i < kCombinationCount; ++i)
        if (listsCombination(data, options, i)) addItem(data, i, FeatureListText(data, i, width, measure));
    data.firstColourItem = static_cast<int32_t>(data.itemTexts.size());
    for (uint32_t n = 0; n < kPaletteSize; ++n)
        if (options.all || (options.emulation && data.displayMode != 0 && data.colourDefined[n]))
            addItem(data, n, data.colourNames[n]);
    data.firstFieldItem = static_cast<int32_t>(data.itemTexts.size());
    for (uint32_t n = 0; n < kFieldCount; ++n)
        if (data.fieldDefined[n]) addItem(data, n, data.fieldNames[n]);
}

void SelectListItem(TAttrDialogData& data, uint32_t index) {
    data.selectedItem = index;
    const uint32_t value = index < kMaxListItems ? data.itemValue[index] : 0;
    const auto from = [&](int32_t start) { return start >= 0 && index >= static_cast<uint32_t>(start); };
    if (from(data.firstFieldItem)) {
        data.selectedKind = 2;
        data.shown = ResolveField(data, static_cast<int>(value));
        data.currentLabel = value < kFieldCount ? data.fieldNames[value] : std::u16string{};
    } else if (from(data.firstColourItem)) {
        data.selectedKind = 1;
        const uint32_t colour = data.working.colours[value % kColourMapSize];
        data.shown = TResolvedAttr{colour, colour, 0, colour, colour};
        data.currentLabel = value < kNameTableSize ? data.colourNames[value] : std::u16string{};
    } else if (index < kMaxListItems) {
        data.selectedKind = 0;
        data.shown = ResolveFeature(data, static_cast<int>(value));
        data.currentLabel = FeatureListText(data, value, true);
    }
    data.selectedValue = value;
    if (index < data.itemTexts.size()) data.currentLabel = data.itemTexts[index];
}

void OpenWorkingScheme(TAttrDialogData& data) {
    const TColourSchemeList& schemes = schemesOf(data);
    if (const TColourScheme* found = FindColourScheme(schemes, data.currentName))
        data.working = *found;
    else if (!schemes.empty())
        data.working = schemes.front();
}

std::vector<std::u16string> SchemeComboNames(const TAttrDialogData& data) {
    std::vector<std::u16string> names;
    for (const TColourScheme& scheme : schemesOf(data))
        if (scheme.operation != kSchemeDelete) names.push_back(scheme.name);
    return names;
}

bool IsCustom(const TAttrDialogData& data) { return data.working.name == data.customName; }

void StoreWorkingScheme(TAttrDialogData& data) {
    TColourSchemeList& schemes = schemesOf(data);
    TColourScheme* target = FindColourScheme(schemes, data.working.name);
    if (!target) {
        schemes.emplace_back();
        target = &schemes.back();
    }
    *target = data.working;
}

bool MarkCustom(TAttrDialogData& data) {
    const bool forks = !IsCustom(data);
    if (forks) {
        data.working.previousName = data.working.name;
        data.working.name = data.customName;
        data.currentName = data.customName;
        data.customModified = true;
    }
    data.working.operation = kSchemeUpdate;
    return forks;
}

TSchemeSwitch SelectScheme(TAttrDialogData& data, std::u16string_view name,
                           const std::function<bool()>& confirmLoseChanges) {
    if (name.empty() || name == data.working.name) return TSchemeSwitch::Unchanged;
    if (IsCustom(data) && data.customModified && !confirmLoseChanges()) return TSchemeSwitch::Declined;
    if (data.working.operation == kSchemeUpdate) StoreWorkingScheme(data);
    data.currentName = std::u16string(name);
    data.customModified = false;
    if (name != data.customName)
        if (const TColourScheme* found = FindColourScheme(std::as_const(schemesOf(data)), name)) data.working = *found;
    SelectListItem(data, data.selectedItem);
    return TSchemeSwitch::Switched;
}

void SaveSchemeAs(TAttrDialogData& data, std::u16string name) {
    data.newSchemeName = std::move(name);
    data.working.name = data.newSchemeName;
    data.working.operation = kSchemeUpdate;
    StoreWorkingScheme(data);
}

void RemoveWorkingScheme(TAttrDialogData& data) {
    if (TColourScheme* scheme = FindColourScheme(schemesOf(data), data.working.name))
        scheme->operation = kSchemeDelete;
    MarkCustom(data);
}

std::u16string RemoveSchemeQuestion(std::u16string_view removeScheme, std::u16string_view name) {
    return std::u16string(removeScheme) + u" \"" + std::u16string(name) + u"\"?";
}

void AcceptColourConfig(TAttrDialogData& data, std::u16string comboText) {
    StoreWorkingScheme(data);
    data.currentName = std::move(comboText);
}

TAttrEditView AttrEditView(const TAttrDialogData& data) {
    TAttrEditView view;
    TColourScheme const& s = data.working;
    view.featuresEnabled = data.selectedKind != 1;
    view.overrideEnabled = view.featuresEnabled && data.selectedItem != 0;
    if (data.selectedKind == 1) {
        view.single = true;
        view.paletteEnabled = true;
        view.first = view.second = data.shown.foreground;
        return view;
    }
    if (data.selectedKind == 2 && itemHasEntry(data, kFieldCount)) {
        view.features = s.fields[data.selectedValue].features;
        view.override = s.fields[data.selectedValue].override;
    } else if (data.selectedKind == 0 && itemHasEntry(data, kCombinationCount)) {
        view.features = s.features[data.selectedValue].features;
        view.override = s.features[data.selectedValue].override;
    }
    view.paletteEnabled = view.override || data.selectedValue == 0;
    view.targetsEnabled = view.paletteEnabled;
    view.first = data.shown.rawForeground;
    view.second = data.shown.rawBackground;
    return view;
}

TAttrEditView BeginAttrEdit(TAttrDialogData& data) {
    const TColourScheme& s = data.working;
    if (data.selectedKind == 1 && itemHasEntry(data, kColourMapSize))
        data.savedColour = s.colours[data.selectedValue];
    else if (data.selectedKind == 2 && itemHasEntry(data, kFieldCount))
        data.savedField = s.fields[data.selectedValue];
    else if (data.selectedKind == 0 && itemHasEntry(data, kCombinationCount))
        data.savedFeature = s.features[data.selectedValue];
    data.paletteBackup = s.palette;
    return AttrEditView(data);
}

namespace {

// Applies `edit` to the features and override of the current entry (combination or field) and
// resolves the shown colours again; a colour item has no such entry.
template <class Edit>
void editEntry(TAttrDialogData& data, Edit edit) {
    data.changed = true;
    TColourScheme& s = data.working;
    if (data.selectedKind == 2 && itemHasEntry(data, kFieldCount)) {
        TSchemeField& f = s.fields[data.selectedValue];
        edit(f.features, f.override, f.foreground, f.background);
    } else if (data.selectedKind == 0 && itemHasEntry(data, kCombinationCount)) {
        TSchemeFeature& f = s.features[data.selectedValue];
        edit(f.features, f.override, f.foreground, f.background);
    } else {
        return;
    }
    data.shown = resolveSelected(data);
}

}  // namespace

void ToggleAttrFeature(TAttrDialogData& data, uint32_t bit, bool on) {
    editEntry(data, [&](uint32_t& features, bool&, uint32_t&, uint32_t&) {
        features = on ? (features | bit) : (features & ~bit);
    });
}

void SetAttrOverride(TAttrDialogData& data, bool on) {
    editEntry(data, [&](uint32_t&, bool& override, uint32_t&, uint32_t&) { override = on; });
}

TPaletteMarks AttrPaletteMarks(const TAttrEditView& view, TPaletteTarget target) {
    if (view.single) return {true, view.first, view.first, u'X', u'B'};
    if (target == TPaletteTarget::Background) return {false, view.second, view.first, u'B', u'F'};
    return {false, view.first, view.second, u'F', u'B'};
}

void PickAttrColours(TAttrDialogData& data, uint32_t first, uint32_t second, TPaletteTarget target) {
    if (target == TPaletteTarget::Background) std::swap(first, second);
    if (data.selectedKind == 1) {
        data.changed = true;
        if (!itemHasEntry(data, kColourMapSize)) return;
        data.working.colours[data.selectedValue] = first;
        data.shown.foreground = data.shown.background = data.shown.rawForeground = data.shown.rawBackground = first;
        return;
    }
    editEntry(data, [&](uint32_t&, bool&, uint32_t& foreground, uint32_t& background) {
        foreground = first;
        background = second;
    });
}

TAttrEditLayout ChooseAttrEditLayout(int normalWidth, int normalHeight, int areaWidth, int areaHeight) {
    if (areaWidth <= 0 || areaHeight <= 0) return TAttrEditLayout::Normal;
    return normalWidth > areaWidth || normalHeight > areaHeight ? TAttrEditLayout::Small : TAttrEditLayout::Normal;
}

void CancelAttrEdit(TAttrDialogData& data) {
    TColourScheme& s = data.working;
    if (data.selectedKind == 1 && itemHasEntry(data, kColourMapSize))
        s.colours[data.selectedValue] = data.savedColour;
    else if (data.selectedKind == 2 && itemHasEntry(data, kFieldCount))
        s.fields[data.selectedValue] = data.savedField;
    else if (data.selectedKind == 0 && itemHasEntry(data, kCombinationCount))
        s.features[data.selectedValue] = data.savedFeature;
    s.palette = data.paletteBackup;
}

TAdvancedSettings LoadAdvancedSettings(const TAttrDialogData& data) {
    TAdvancedSettings a;
    a.disableBlink = !data.enableBlink;
    a.disableBlinkCfg = !data.enableBlinkCfg;
    a.disableInvis = !data.enableInvis;
    a.disableInvisCfg = !data.enableInvisCfg;
    a.boldMode = data.working.boldMode;
    a.dimMode = data.working.dimMode;
    a.boxStyle = data.boxStyle;
    a.mergeBoxes = data.mergeBoxes;
    a.background = data.working.useBgGraphic ? data.working.graphicMode + 1 : 0;
    a.graphicFile = data.working.graphicFile;
    return a;
}

void StoreAdvancedSettings(TAttrDialogData& data, const TAdvancedSettings& a) {
    data.enableBlink = !a.disableBlink;
    data.enableBlinkCfg = !a.disableBlinkCfg;
    data.enableInvis = !a.disableInvis;
    data.enableInvisCfg = !a.disableInvisCfg;
    data.working.boldMode = a.boldMode;
    data.working.dimMode = a.dimMode;
    data.boxStyle = a.boxStyle;
    data.mergeBoxes = a.mergeBoxes;
    data.working.useBgGraphic = a.background > 0;
    // "(none)" keeps the old mode, so choosing an image again restores it.
    if (a.background > 0) data.working.graphicMode = a.background - 1;
    data.working.graphicFile = a.graphicFile;
}

uint32_t PaletteStartIndex(const TAttrDialogData& data) {
    return data.shown.foreground < kPaletteSize ? data.shown.foreground : 15;
}

uint32_t SetPaletteEntry(TAttrDialogData& data, uint32_t red, uint32_t green, uint32_t blue) {
    const uint32_t colour = MakeColour(red, green, blue);
    data.paletteEdit[data.paletteIndex % kPaletteSize] = colour;
    data.changed = true;
    return colour;
}

}  // namespace qrl
