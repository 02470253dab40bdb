#include "forms/settingsfilter.h"

#include "forms/formvalues.h"
#include "request/session.h"
#include "text/searchfold.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {

namespace {

// A separator no folded text contains, so that a search can't match across two fields.
constexpr char16_t kFieldBreak = u'\n';

std::vector<std::size_t> PreOrder(const std::vector<std::ptrdiff_t>& parents) {
    std::vector<std::vector<std::size_t>> children(parents.size());
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < parents.size(); ++i) {
        const std::ptrdiff_t p = parents[i];
        (p < 0 || static_cast<std::size_t>(p) >= parents.size() ? roots : children[static_cast<std::size_t>(p)]).push_back(i);
    }
    std::vector<std::size_t> order;
    order.reserve(parents.size());
    std::vector<std::size_t> stack(roots.rbegin(), roots.rend());
    while (!stack.empty()) {
        const std::size_t node = stack.back();
        stack.pop_back();
        order.push_back(node);
        stack.insert(stack.end(), children[node].rbegin(), children[node].rend());
    }
    return order;
}

}  // namespace

bool IsCustomised(const TElementDef& element) { return element.value != element.defaultValue; }

TSettingsFilter::TSettingsFilter(const TFormDef& form, const std::vector<TreeInsertion>& plan)
    : form_(form), parents_(form.treeIndex.size(), -1) {
    for (const TreeInsertion& step : plan) {
        if (step.node >= parents_.size()) continue;
        parents_[step.node] = step.parent;
        if (form.treeIndex[step.node].kind == TreeNodeKind::Group) groupTexts_[step.node] = step.text;
    }
    order_ = PreOrder(parents_);
    elements_.reserve(order_.size());
    for (std::size_t node : order_) {
        const TTreeNode& tree = form.treeIndex[node];
        if (tree.kind == TreeNodeKind::Element && tree.element) elements_.push_back(ElementText{node, tree.element, nullptr});
    }
}

TSettingsFilter::FoldedText TSettingsFilter::Fold(const ElementText& entry) const {
    const TElementDef& element = *entry.element;
    FoldedText texts{foldForSearch(ElementLabel(element)), element.value, foldForSearch(ShortTextBare(element))};
    for (std::u16string_view part : {std::u16string_view(element.description), std::u16string_view(element.group)})
        (texts.fixedText += kFieldBreak) += foldForSearch(part);
    const std::ptrdiff_t parent = parents_[entry.node];
    if (parent >= 0 && form_.treeIndex[static_cast<std::size_t>(parent)].kind == TreeNodeKind::Group) {
        const auto group = groupTexts_.find(static_cast<std::size_t>(parent));
        if (group != groupTexts_.end()) (texts.fixedText += kFieldBreak) += foldForSearch(group->second);
    }
    return texts;
}

TSettingsFilter::FoldedText& TSettingsFilter::Folded(ElementText& entry) {
    if (!entry.texts) entry.texts = std::make_unique<FoldedText>(Fold(entry));
    return *entry.texts;
}

bool TSettingsFilter::FoldAhead(std::size_t count) {
    for (; foldedAhead_ < elements_.size() && count > 0; ++foldedAhead_) {
        if (elements_[foldedAhead_].texts) continue;
        Folded(elements_[foldedAhead_]);
        --count;
    }
    return foldedAhead_ < elements_.size();
}

bool TSettingsFilter::Matches(ElementText& entry, std::u16string_view foldedSearch) {
    if (foldedSearch.empty()) return true;
    FoldedText& texts = Folded(entry);
    if (texts.fixedText.find(foldedSearch) != std::u16string::npos) return true;
    // The short text follows the value; it is folded again only when the value has changed.
    if (texts.shownValue != entry.element->value) {
        texts.shownValue = entry.element->value;
        texts.foldedShort = foldForSearch(ShortTextBare(*entry.element));
    }
    return texts.foldedShort.find(foldedSearch) != std::u16string::npos;
}

TFilterView TSettingsFilter::Apply(std::u16string_view search, bool customisedOnly) {
    TFilterView view;
    view.active = !search.empty() || customisedOnly;
    view.total = elements_.size();
    view.shown.assign(parents_.size(), view.active ? 0 : 1);
    if (!view.active) {
        for (const ElementText& entry : elements_) view.matches.push_back(entry.node);
        return view;
    }
    const std::u16string folded = foldForSearch(search);
    for (ElementText& entry : elements_) {
        if (customisedOnly && !IsCustomised(*entry.element)) continue;
        if (!Matches(entry, folded)) continue;
        view.matches.push_back(entry.node);
        // The element and every node above it stay; stop at the first one already kept.
        for (std::ptrdiff_t n = static_cast<std::ptrdiff_t>(entry.node); n >= 0 && !view.shown[static_cast<std::size_t>(n)];
             n = parents_[static_cast<std::size_t>(n)])
            view.shown[static_cast<std::size_t>(n)] = 1;
    }
    for (std::size_t node : order_)
        if (parents_[node] < 0) view.shown[node] = 1;  // the root stays, also with no match
    return view;
}

std::u16string MatchCountText(const TFilterView& view, std::u16string_view search) {
    if (search.empty()) return {};
    return decimal(static_cast<long long>(view.matches.size())) + u" of " + decimal(static_cast<long long>(view.total));
}

std::ptrdiff_t StepMatch(const std::vector<std::size_t>& matches, std::ptrdiff_t current, bool forward) {
    if (matches.empty()) return -1;
    const auto at = std::find(matches.begin(), matches.end(), static_cast<std::size_t>(current < 0 ? 0 : current));
    if (current < 0 || at == matches.end())
        return static_cast<std::ptrdiff_t>(forward ? matches.front() : matches.back());
    const std::size_t i = static_cast<std::size_t>(at - matches.begin());
    const std::size_t n = matches.size();
    return static_cast<std::ptrdiff_t>(matches[forward ? (i + 1) % n : (i + n - 1) % n]);
}

}  // namespace qrl
