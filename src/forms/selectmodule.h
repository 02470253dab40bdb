// The module selection dialog (resource IDD_SELECTMODULE) of the module button.
#pragma once

#include <windows.h>

namespace qrl {

class TConfigSession;

// Sorts the first module list by description and lets the user pick one. Returns the position in
// the sorted list, or a negative number for none.
int SelectModule(HWND parent, TConfigSession& session);

}  // namespace qrl
