// Configure HotSpot and its Configure HotSpot Match String: one hotspot record edited in place.
// Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

struct THotSpotDialogData;

// Runs Configure HotSpot on data.editing. On OK the record holds the user's values, with record
// type 2, and true is returned; on Cancel the record is to be dropped.
bool RunHotSpotEdit(HWND parent, THotSpotDialogData& data);

}  // namespace qrl
