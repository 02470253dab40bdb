#include "forms/changemarks.h"

#include "request/session.h"

namespace qrl {

namespace {

bool Marked(const TTreeNode& node) { return node.kind == TreeNodeKind::Element || node.kind == TreeNodeKind::Group; }

}  // namespace

TChangeMarks::TChangeMarks(const TFormDef& form, std::vector<std::ptrdiff_t> parents)
    : form_(form), parents_(std::move(parents)), opened_(form.treeIndex.size()), changedBelow_(form.treeIndex.size(), 0) {
    parents_.resize(form.treeIndex.size(), -1);
    for (std::size_t i = 0; i < form.treeIndex.size(); ++i)
        if (const TElementDef* element = form.treeIndex[i].element) opened_[i].Share(openedTexts_, element->value);
}

std::vector<std::size_t> TChangeMarks::Update(std::size_t node) {
    std::vector<std::size_t> flipped;
    if (node >= opened_.size() || !form_.treeIndex[node].element) return flipped;
    const bool changed = form_.treeIndex[node].element->value != opened_[node].view();
    if (changed == (changedBelow_[node] > 0)) return flipped;
    // The element and each group above it; the root stays plain.
    for (std::ptrdiff_t n = static_cast<std::ptrdiff_t>(node); n >= 0; n = parents_[static_cast<std::size_t>(n)]) {
        const auto at = static_cast<std::size_t>(n);
        if (!Marked(form_.treeIndex[at])) continue;
        const bool was = changedBelow_[at] > 0;
        changedBelow_[at] = changed ? changedBelow_[at] + 1 : changedBelow_[at] - 1;
        if (was != (changedBelow_[at] > 0)) flipped.push_back(at);
    }
    return flipped;
}

}  // namespace qrl
