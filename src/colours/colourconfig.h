// The rules of Colour Configuration and its four sub-dialogs, on TAttrDialogData and without a
// window: which items the list shows, what the selected item looks like, how a change forks a named
// scheme into "(custom)", and what Save as, Remove, the attribute editor, the advanced settings and
// the palette editor do to the working scheme. The dialogs only move values between these and their
// controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "colours/attrdialogdata.h"

namespace qrl {

// The three show options of the main list.
struct TListOptions {
    bool all = false;
    bool emulation = true;
    bool includeInvisible = false;
};

// Measures a text as the list would draw it, in pixels.
using TMeasureFn = std::function<int(std::u16string_view)>;

// Rebuilds itemTexts, itemValue and the two range starts; the selection is left as it was.
void ListAttributes(TAttrDialogData& data, const TListOptions& options, int width, const TMeasureFn& measure);
// Makes list item `index` the current one: its kind, number, label and resolved colours.
void SelectListItem(TAttrDialogData& data, uint32_t index);

// Opening: the scheme named currentName (else the first of the list) becomes the working copy.
void OpenWorkingScheme(TAttrDialogData& data);
// The names the scheme combo lists: every scheme not marked for deletion, in list order.
std::vector<std::u16string> SchemeComboNames(const TAttrDialogData& data);
bool IsCustom(const TAttrDialogData& data);  // the working scheme is "(custom)"; Remove is disabled

// Copies the working scheme onto the list's scheme of its name, adding one at the end if needed.
void StoreWorkingScheme(TAttrDialogData& data);
// A change forks a named scheme into "(custom)"; true when it did (the combo and Remove follow).
bool MarkCustom(TAttrDialogData& data);

enum class TSchemeSwitch { Unchanged, Declined, Switched };
// A scheme chosen in the combo. `confirmLoseChanges` is asked only when unsaved custom changes would
// be lost; a No leaves everything as it was.
TSchemeSwitch SelectScheme(TAttrDialogData& data, std::u16string_view name,
                           const std::function<bool()>& confirmLoseChanges);
// Save as: the working scheme takes the name and is stored under it.
void SaveSchemeAs(TAttrDialogData& data, std::u16string name);
// Remove: the working scheme's list entry is marked for deletion and the working copy forks.
void RemoveWorkingScheme(TAttrDialogData& data);
// "Remove scheme" as translated, then the name in quotes and a question mark.
std::u16string RemoveSchemeQuestion(std::u16string_view removeScheme, std::u16string_view name);
// The main OK: the working scheme goes to the list and currentName becomes the combo's text.
void AcceptColourConfig(TAttrDialogData& data, std::u16string comboText);

// Edit Attribute: how the dialog looks for the current item.
struct TAttrEditView {
    uint32_t features = 0;
    bool override = false;
    bool featuresEnabled = false;
    bool overrideEnabled = false;
    bool paletteEnabled = false;
    bool single = false;  // a colour item: one selection, marked "X"
    bool targetsEnabled = false;  // the small layout's "F" and "B": with two colours to choose between
    uint32_t first = 0;
    uint32_t second = 0;
};
// Saves the entry and the palette for Cancel, and gives the opening view.
TAttrEditView BeginAttrEdit(TAttrDialogData& data);
TAttrEditView AttrEditView(const TAttrDialogData& data);
void ToggleAttrFeature(TAttrDialogData& data, uint32_t bit, bool on);
void SetAttrOverride(TAttrDialogData& data, bool on);

// Which colour the palette's first selection, and so a press of its left button, stands for: the
// foreground, or after "B" of the small layout the background (the second then stands for the other).
enum class TPaletteTarget { Foreground, Background };
// The palette control's selections and their marker letters.
struct TPaletteMarks {
    bool single = false;
    uint32_t first = 0;
    uint32_t second = 0;
    char16_t firstLetter = u'F';
    char16_t secondLetter = u'B';
};
TPaletteMarks AttrPaletteMarks(const TAttrEditView& view, TPaletteTarget target);
void PickAttrColours(TAttrDialogData& data, uint32_t first, uint32_t second,
                     TPaletteTarget target = TPaletteTarget::Foreground);

// Puts back the saved entry and palette; `changed` is left set, so the scheme still forks.
void CancelAttrEdit(TAttrDialogData& data);

// Edit Attribute's small layout, whose "F" and "B" stand in for a right button a pen does not have,
// is for a screen whose work area the normal layout's window does not fit (both in pixels). An area
// that could not be read keeps the normal layout.
enum class TAttrEditLayout { Normal, Small };
TAttrEditLayout ChooseAttrEditLayout(int normalWidth, int normalHeight, int areaWidth, int areaHeight);

// The feature boxes of Edit Attribute, in their order on the dialog.
struct TFeatureBox {
    const char16_t* text;
    uint32_t bit;
};
inline constexpr TFeatureBox kFeatureBoxes[] = {
    {u"Blin&k", kAttrBlink},         {u"&Underline", kAttrUnderline}, {u"&Overline", kAttrOverline},
    {u"S&trike out", kAttrStrikeOut}, {u"Bo&x", kFeatureBox},          {u"&Reverse", kAttrReverse},
    {u"&Bold", kAttrBold},           {u"&Dim", kAttrDim},             {u"&Invisible", kAttrInvisible},
};

// Advanced Attribute Configuration, as its controls show it.
struct TAdvancedSettings {
    bool disableBlink = false;
    bool disableBlinkCfg = false;
    bool disableInvis = false;
    bool disableInvisCfg = false;
    uint32_t boldMode = 0;
    uint32_t dimMode = 0;
    uint32_t boxStyle = 0;
    bool mergeBoxes = false;
    uint32_t background = 0;  // 0 "(none)", else the graphic mode + 1
    std::u16string graphicFile;
};
TAdvancedSettings LoadAdvancedSettings(const TAttrDialogData& data);
void StoreAdvancedSettings(TAttrDialogData& data, const TAdvancedSettings& settings);

// Configure Palette: the entry it opens on (the shown foreground, 15 when out of range) and the
// colour its three sliders or edits form, each taken as a byte.
uint32_t PaletteStartIndex(const TAttrDialogData& data);
uint32_t SetPaletteEntry(TAttrDialogData& data, uint32_t red, uint32_t green, uint32_t blue);

}  // namespace qrl
