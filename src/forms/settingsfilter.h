// The search over the built-in form's tree: which elements a search text (and "Customised only")
// keeps, which groups stay to hold them, the order in which the matches are visited, and the
// "N of M" count. Plain data over the form's tree index; the dialog rebuilds the tree from it.
#pragma once

#include "forms/formtree.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qrl {

struct TFilterView {
    bool active = false;                // a search text or "Customised only": the tree is narrowed
    std::vector<char> shown;            // per tree node: kept in the narrowed tree
    std::vector<std::size_t> matches;   // element nodes that match, in the order the tree shows them
    std::size_t total = 0;              // element nodes of the tree (hidden elements have none)
};

class TSettingsFilter {
public:
    // `plan` is what BuildTreeIndex returned for `form`; the filter keeps pointers into the form's
    // tree index, so it lives no longer than that index.
    TSettingsFilter(const TFormDef& form, const std::vector<TreeInsertion>& plan);

    // Elements whose label, description, group or short text contains `search` (case and accents
    // ignored); with `customisedOnly` only those whose value differs from their default.
    TFilterView Apply(std::u16string_view search, bool customisedOnly);

    // Folds the texts of up to `count` more elements, so that the first search need not fold them
    // all while the user waits; false once every element's are.
    bool FoldAhead(std::size_t count);

    // Tree nodes in the order the tree shows them (parents before children).
    const std::vector<std::size_t>& DisplayOrder() const { return order_; }
    // Per tree node, its parent's position; -1 at the top.
    const std::vector<std::ptrdiff_t>& Parents() const { return parents_; }

private:
    struct FoldedText {
        std::u16string fixedText;   // folded label, description, group and group label
        std::u16string shownValue;  // the value whose folded short text is cached
        std::u16string foldedShort;
    };
    // An element's texts are folded by the first search that reads them or by folding ahead, not
    // when the dialog opens.
    struct ElementText {
        std::size_t node;
        const TElementDef* element;
        std::unique_ptr<FoldedText> texts;
    };
    bool Matches(ElementText& entry, std::u16string_view foldedSearch);
    FoldedText& Folded(ElementText& entry);
    FoldedText Fold(const ElementText& entry) const;

    const TFormDef& form_;
    std::unordered_map<std::size_t, std::u16string> groupTexts_;  // a group node's label as the tree shows it
    std::vector<std::ptrdiff_t> parents_;
    std::vector<std::size_t> order_;
    std::vector<ElementText> elements_;  // in display order
    std::size_t foldedAhead_ = 0;        // elements_ before this have their texts folded
};

// "N of M" while a search text is given; empty otherwise.
std::u16string MatchCountText(const TFilterView& view, std::u16string_view search);

// The match after (or before) `current`, wrapping; the first (or last) one when `current` is no
// match. -1 when there are none.
std::ptrdiff_t StepMatch(const std::vector<std::size_t>& matches, std::ptrdiff_t current, bool forward);

// An element counts as customised when its value text differs from its `Default`.
bool IsCustomised(const TElementDef& element);

}  // namespace qrl
