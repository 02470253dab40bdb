// Version 6 of the common controls for the module's own windows, whatever the host's manifest says:
// the DLL carries a manifest of its own (resource 2) and every entry point that shows windows runs
// inside the activation context made from it. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

// Activates the module's context for a scope and deactivates it on every way out. Under Wine it also
// watches the thread's windows go: Wine's version 6 static keeps the font it is given in memory of
// its own that it frees only for an icon, so every label would leave that behind; a static that
// shows no image is made an icon as its window goes, and its memory is freed.
// Without a context (a program that links the dialogs directly, a module without the manifest) it
// does nothing, and the windows get whatever the process has.
class TCommonControlsScope {
public:
    TCommonControlsScope();
    ~TCommonControlsScope();
    TCommonControlsScope(const TCommonControlsScope&) = delete;
    TCommonControlsScope& operator=(const TCommonControlsScope&) = delete;

private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
    HHOOK labelHook_ = nullptr;
};

// At unload: the context made on first use is released.
void ReleaseCommonControlsContext();

}  // namespace qrl
