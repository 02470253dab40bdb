#include "forms/undostack.h"

#include "request/session.h"

namespace qrl {

TUndoStack::TUndoStack(const TFormDef& form) : known_(form.treeIndex.size()) {
    for (std::size_t i = 0; i < form.treeIndex.size(); ++i)
        if (const TElementDef* element = form.treeIndex[i].element) known_[i].Share(openedTexts_, element->value);
}

void TUndoStack::Note(std::size_t node, const std::u16string& value, bool typing) {
    if (node >= known_.size() || known_[node].view() == value) return;
    if (typing && open_ && !done_.empty() && done_.back().node == node) {
        done_.back().after = value;
    } else {
        done_.push_back(TValueChange{node, known_[node].str(), value});
    }
    open_ = typing;
    known_[node] = value;
    undone_.clear();
}

std::optional<TValueChange> TUndoStack::Undo() {
    open_ = false;
    if (done_.empty()) return std::nullopt;
    TValueChange change = std::move(done_.back());
    done_.pop_back();
    known_[change.node] = change.before;
    undone_.push_back(change);
    return change;
}

std::optional<TValueChange> TUndoStack::Redo() {
    open_ = false;
    if (undone_.empty()) return std::nullopt;
    TValueChange change = std::move(undone_.back());
    undone_.pop_back();
    known_[change.node] = change.after;
    done_.push_back(change);
    return change;
}

}  // namespace qrl
