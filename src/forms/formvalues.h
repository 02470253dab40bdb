// How values travel between an element and the controls of a form: what a list is filled with,
// what a control shows at the start, and the writing counterparts of GetChoiceIndex and GetBool.
// Plain functions on the element; the dialog code only moves their results to and from controls.
#pragma once

#include "forms/formdef.h"

#include <string>
#include <vector>

namespace qrl {

class TElementDef;

// The stored value for position `index` of a choice. Without `values`, an int or char8 gives
// index - min (not the inverse of GetChoiceIndex unless min is 0); other types give "".
std::u16string ChoiceValue(const TElementDef& element, int index);
// Writes a boolean in the element's own terms (a `set` or `int` entry, a character, "1"/"0").
void SetBool(TElementDef& element, bool on);

// Whether a drop-down or list carries its value by position. Set once, when the template is built.
bool IsListBound(const TElementDef* element, ItemKind kind);

// What FillLists puts in a drop-down (kind 3) or list (kind 8). `useComboMessage` tells that the
// entries go with CB_ADDSTRING even to a list, which then stays empty: requests that want a
// filled list use a drop-down.
struct ListFill {
    std::vector<std::u16string> entries;
    bool useComboMessage = true;
};
ListFill ListEntries(const TElementDef& element, ItemKind kind);

// The text a radio button compares with its `value`: bools as "1"/"0", everything else as it is.
std::u16string RadioCompareText(const TElementDef& element);

// The element's label: its description, or its name when that is empty.
std::u16string ElementLabel(const TElementDef& element);
// The tree text of an element: label, a blank, the short text in brackets.
std::u16string ElementTreeText(const TElementDef& element);
// The short text without its brackets (the face name of a font, a printer's text, ...).
std::u16string ShortTextBare(const TElementDef& element);

// Rows of an int range in a list at most.
inline constexpr long long kMaxRangeRows = 65536;

// Edit controls hold at most this much at collection time (one fixed buffer of 1024).
inline constexpr std::size_t kCollectTextMax = 1023;

}  // namespace qrl
