// The DLL's wiring: its window classes, the editors of the specialised routes and the editors
// behind a form's buttons, each table filled from the subsystems.
#pragma once

#include <windows.h>

#include <array>

#include "forms/editortable.h"
#include "request/run.h"

namespace qrl {

// The private window classes, registered at process attach in their fixed order and unregistered at
// detach. The table is in windowclasses_win.cpp.
void RegisterModuleClasses(HINSTANCE instance);
void UnregisterModuleClasses(HINSTANCE instance);

// The editors of the specialised module types, by EditorRoute; a null entry fails its run with 630.
// Each subsystem fills its entry in editors_win.cpp as its editor exists.
const std::array<TEditorRoute, kEditorRouteCount>& EditorRoutes();

// The editors that the settings dialog's buttons open, from their subsystems (editors_win.cpp).
const TFormEditors& FormEditors();

}  // namespace qrl
