#include "kit/listrows.h"

#include "kit/basedialog.h"
#include "kit/rowchange.h"

namespace qrl {

namespace {

// Room for `count` rows of about `chars` characters, reserved once instead of row by row.
void ReserveRows(HWND list, std::size_t count, std::size_t chars) {
    SendMessageW(list, LB_INITSTORAGE, count, static_cast<LPARAM>(count * (chars + 1) * sizeof(wchar_t)));
}

// Deletes the run of rows the change removes and inserts `rows` in its place.
void ReplaceRows(HWND list, const TRowChange& change, std::span<const std::u16string> rows) {
    if (change.removed == 0 && rows.empty()) return;
    TRedrawOff quiet(list);
    for (std::size_t i = 0; i < change.removed; ++i) SendMessageW(list, LB_DELETESTRING, change.first, 0);
    for (std::size_t i = 0; i < rows.size(); ++i)
        SendMessageW(list, LB_INSERTSTRING, change.first + i, reinterpret_cast<LPARAM>(W(rows[i])));
}

}  // namespace

// For a window that leaves WM_SETREDRAW to the default procedure, turning drawing back on sets its
// visible style; a hidden control is left alone, as it draws nothing anyway and must stay hidden.
TRedrawOff::TRedrawOff(HWND control)
    : control_((GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0 ? control : nullptr) {
    if (control_) SendMessageW(control_, WM_SETREDRAW, FALSE, 0);
}

TRedrawOff::~TRedrawOff() {
    if (!control_) return;
    SendMessageW(control_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(control_, nullptr, TRUE);
}

void FillListRows(HWND list, std::span<const std::u16string> rows) {
    TRedrawOff quiet(list);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    ReserveRows(list, rows.size(), 16);
    for (const std::u16string& row : rows) SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(row)));
}

void TShownRows::Show(HWND list, std::vector<std::u16string> rows) {
    if (static_cast<std::size_t>(SendMessageW(list, LB_GETCOUNT, 0, 0)) != shown_.size()) shown_.clear();
    if (shown_.empty()) {
        FillListRows(list, rows);
        shown_ = std::move(rows);
        return;
    }
    const TRowChange change = ChangedRun(shown_, rows);
    ReplaceRows(list, change, std::span(rows).subspan(change.first, change.inserted));
    shown_ = std::move(rows);
}

bool TShownRows::Change(HWND list, const TRowChange& change, const std::vector<std::u16string>& rows) {
    const std::size_t count = static_cast<std::size_t>(SendMessageW(list, LB_GETCOUNT, 0, 0));
    const bool fits = count == shown_.size() && change.first <= count && change.removed <= count - change.first &&
                      change.inserted == rows.size();
    if (!fits) return false;
    ReplaceRows(list, change, rows);
    const auto at = shown_.begin() + static_cast<std::ptrdiff_t>(change.first);
    shown_.erase(at, at + static_cast<std::ptrdiff_t>(change.removed));
    shown_.insert(shown_.begin() + static_cast<std::ptrdiff_t>(change.first), rows.begin(), rows.end());
    return true;
}

}  // namespace qrl
