// Configure HotSpots, the editor of the "Hotspots" route: the sets of a HotSpot file, the hotspots
// of one set, and Save HotSpot Set. Win32 only.
#pragma once

#include <string>

#include "hotspots/hotspot.h"
#include "hotspots/hotspotfile.h"

namespace qrl {

class TConfigSession;

// What the hotspot dialogs share while they run.
struct THotSpotDialogData {
    TConfigSession* session = nullptr;  // not owned
    HotSpots hotspots;
    std::u16string fullPath;            // the file in use, with its directory
    HotSpot editing;                    // the record Configure HotSpot works on
};

// Runs the dialog on the request's file and set; on OK the set is written, the element "filename"
// takes the file in use and 1 is returned. Anything else: cancelled, nothing written.
int RunHotSpotDialog(TConfigSession& session, void* parent);

}  // namespace qrl
