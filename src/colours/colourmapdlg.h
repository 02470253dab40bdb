// The colour map editors of the emulations, opened by a form's "Edit..." button on an element of
// type `5250colrs` or `tandemcolrs`. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

class TConfigSession;
class TElementDef;

// IBM5250 Attribute Configuration on the element's value; on OK the value becomes the map's
// stream form and true is returned.
bool Edit5250ColourMap(HWND parent, TConfigSession& session, TElementDef& element);
// T653X Colour Mapping Defaults on the element's value; on OK the value becomes the map's stream
// form (and ColourMappingDisable, if defined, its flag) and true is returned.
bool EditTandemColourMap(HWND parent, TConfigSession& session, TElementDef& element);

}  // namespace qrl
