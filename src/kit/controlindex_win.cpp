#include "kit/controlindex.h"

namespace qrl {

void TControlIndex::List(HWND dialog) {
    dialog_ = dialog;
    windows_.clear();
    // One listing of the whole family; the children of controls (a combo box's edit) are skipped.
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM p) -> BOOL {
            auto* self = reinterpret_cast<TControlIndex*>(p);
            if (GetParent(child) == self->dialog_) self->windows_.try_emplace(GetDlgCtrlID(child), child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(this));
}

HWND TControlIndex::Find(HWND dialog, int id) {
    if (dialog != dialog_) List(dialog);
    if (auto it = windows_.find(id); it != windows_.end()) return it->second;
    HWND added = GetDlgItem(dialog, id);
    if (added) windows_.emplace(id, added);
    return added;
}

}  // namespace qrl
