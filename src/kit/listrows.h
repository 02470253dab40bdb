// Filling list boxes and combo boxes without a repaint per row. Under a redraw that follows every
// added row, a list of thousands of rows takes seconds to fill; the host's window hangs meanwhile.
#pragma once

#include <windows.h>

#include "kit/rowchange.h"

#include <span>
#include <string>
#include <vector>

namespace qrl {

// Turns a control's drawing off for a scope and repaints it once at the end.
class TRedrawOff {
public:
    explicit TRedrawOff(HWND control);
    ~TRedrawOff();
    TRedrawOff(const TRedrawOff&) = delete;
    TRedrawOff& operator=(const TRedrawOff&) = delete;

private:
    HWND control_;
};

// Empties a list box and adds `rows` in order.
void FillListRows(HWND list, std::span<const std::u16string> rows);

// The rows a list box shows, kept beside it so that a new set of rows changes only the run of rows
// that differs. Whoever else changes the list's rows calls Forget.
class TShownRows {
public:
    void Show(HWND list, std::vector<std::u16string> rows);
    // A change the caller already knows: `change.removed` rows from `change.first` give way to
    // `rows` (change.inserted of them), without building and comparing every row. False, and
    // nothing done, when the list no longer shows what was last shown here; Show then.
    bool Change(HWND list, const TRowChange& change, const std::vector<std::u16string>& rows);
    void Forget() { shown_.clear(); }

private:
    std::vector<std::u16string> shown_;
};

}  // namespace qrl
