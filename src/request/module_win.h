// What the DLL keeps from its loading: its instance, for dialogs and window classes.
#pragma once

#include <windows.h>

#include <array>

#include "request/elementdef.h"
#include "request/run.h"

namespace qrl {

HINSTANCE ModuleInstance();
void SetModuleInstance(HINSTANCE instance);

// The private window classes, registered at process attach in their fixed order and unregistered at
// detach. The table is in windowclasses_win.cpp.
void RegisterModuleClasses(HINSTANCE instance);
void UnregisterModuleClasses(HINSTANCE instance);

// The editors of the specialised module types, by EditorRoute; a null entry fails its run with 630.
// Each subsystem fills its entry in editors_win.cpp as its editor exists.
const std::array<TEditorRoute, kEditorRouteCount>& EditorRoutes();

// The editor behind a form's "Edit..." button for a special value type; it edits the element's
// value in place and returns true on OK. Null for a type whose editor does not exist yet.
using TSpecialValueEditor = bool (*)(HWND parent, TConfigSession& session, TElementDef& element);
TSpecialValueEditor SpecialValueEditor(ElementType type);

}  // namespace qrl
