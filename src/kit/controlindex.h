// A dialog's controls by id, listed once. Every GetDlgItem asks the window manager again (a round
// trip to the server under Wine); a dialog that works dozens of controls at each step keeps this
// instead. Controls added later are found on first use. Win32 only.
#pragma once

#include <windows.h>

#include <unordered_map>

namespace qrl {

class TControlIndex {
public:
    // The control of `dialog` with this id (the first in the tab order, as GetDlgItem finds it);
    // null when it has none. A dialog's controls must outlive the index's use of them.
    HWND Find(HWND dialog, int id);

private:
    void List(HWND dialog);

    HWND dialog_ = nullptr;
    std::unordered_map<int, HWND> windows_;
};

}  // namespace qrl
