// Configure Mouse, the editor of the "MouseMap" route. Win32 only.
#pragma once

namespace qrl {

class TConfigSession;

// Runs the dialog on the session's mouse map; 1 when the user accepted (the map holds the
// changes), anything else when not.
int RunMouseDialog(TConfigSession& session, void* parent);

}  // namespace qrl
