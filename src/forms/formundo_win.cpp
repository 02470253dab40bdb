// Undo and redo in the settings dialog: the value goes back (or forward) through the same steps
// as an edit, and the tree selects the element it belongs to.
#include "kit/basedialog.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "request/session.h"

namespace qrl {

void ReplayChange(HWND dialog, TFormRun& run, bool undo) {
    if (!run.undo) return;
    const std::optional<TValueChange> change = undo ? run.undo->Undo() : run.undo->Redo();
    if (!change || change->node >= run.form.treeIndex.size()) return;
    TElementDef* element = run.form.treeIndex[change->node].element;
    if (!element) return;
    TBusyScope replaying(run.replaying);
    element->value = undo ? change->before : change->after;
    if (static_cast<std::ptrdiff_t>(change->node) != run.currentIndex) {
        // The selection shows the element with its new value; a field that fails validation keeps
        // the selection, and the value changes behind it.
        TBusyScope keep(run.keepFocus);
        SelectTreeNode(dialog, run, change->node);
    } else {
        ShowEditor(dialog, run, true);
    }
    if (static_cast<std::ptrdiff_t>(change->node) == run.currentIndex) {
        RefreshTreeItem(dialog, run);
    } else {
        RefreshTreeNode(dialog, run, change->node);
    }
}

}  // namespace qrl
