// What the DLL keeps from its loading: its instance, for dialogs and window classes.
#pragma once

#include <windows.h>

#include <array>

#include "request/run.h"

namespace qrl {

HINSTANCE ModuleInstance();
void SetModuleInstance(HINSTANCE instance);

// The private window classes, registered at process attach in their fixed order and unregistered at
// detach. Each subsystem fills its entry in windowclasses_win.cpp as its control exists.
void RegisterModuleClasses(HINSTANCE instance);
void UnregisterModuleClasses(HINSTANCE instance);

// The editors of the specialised module types, by EditorRoute; a null entry fails its run with 630.
// Each subsystem fills its entry in editors_win.cpp as its editor exists.
const std::array<TEditorRoute, kEditorRouteCount>& EditorRoutes();

}  // namespace qrl
