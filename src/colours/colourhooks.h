// How the colour model joins a request session: its Data items, its reply block, and where the
// session keeps the scheme list.
#pragma once

#include "colours/colourscheme.h"

namespace qrl {

class TConfigSession;
class TRequestHooks;

// The session's colourSchemes, in request order; made empty on first use.
TColourSchemeList& SessionColourSchemes(TConfigSession& session);
// The same for reading; an empty list when the request had none.
const TColourSchemeList& SessionColourSchemes(const TConfigSession& session);

// Installs the readers of the colourschemelist and attrnames items and the writer of the
// ColourSchemeList reply block.
void InstallColourHooks(TRequestHooks& hooks);

}  // namespace qrl
