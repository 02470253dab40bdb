// How the mouse map joins a request session: its Data item, its reply block, and where the session
// keeps the map.
#pragma once

#include "mouse/mousemap.h"

namespace qrl {

class TConfigSession;
class TRequestHooks;

// The session's mouseMap; made empty on first use.
TMouseMap& SessionMouseMap(TConfigSession& session);
// The same for reading; an empty map when the request had none.
const TMouseMap& SessionMouseMap(const TConfigSession& session);

// Installs the reader of the mousemap item and the writer of the MouseMap reply block.
void InstallMouseHooks(TRequestHooks& hooks);

}  // namespace qrl
