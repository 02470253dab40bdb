// Watches the dialogs that the module shows on this thread: saves a picture of each one once it has
// settled, then, for scripted runs, presses the next button of the script.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

namespace qrl4host {

struct TSnapshotOptions {
    std::wstring directory;     // empty: no pictures
    std::vector<int> presses;   // control ids to press, one per dialog, in the order they appear
    std::wstring select;        // before the first press: the tree item whose text starts so
    int chooseId = 0;           // before the first picture: this drop-down of the first dialog...
    int chooseRow = 0;          // ...gets this row, as a user's pick does; 0 as the id: none
    DWORD settleMs = 600;       // a dialog is pictured this long after it first shows
    DWORD timeoutMs = 0;        // a dialog still open this long after it showed gets Cancel; 0: never
    bool checkLayout = false;   // print each dialog's cut texts and stray controls when it has settled
};

// Starts the watch (a thread timer; the module's modal loops dispatch it). Call once.
void StartSnapshots(const TSnapshotOptions& options);
void StopSnapshots();
// The cut texts and stray controls found so far (with checkLayout).
int LayoutProblemCount();

}  // namespace qrl4host
