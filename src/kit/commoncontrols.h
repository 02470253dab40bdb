// Version 6 of the common controls for the module's own windows, whatever the host's manifest says:
// the DLL carries a manifest of its own (resource 2) and every entry point that shows windows runs
// inside the activation context made from it. Win32 only.
#pragma once

#include "kit/dlgtemplate.h"

#include <windows.h>

#include <string>
#include <string_view>

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

// Under Wine, Wine's user32 asks the loader for the common controls' library by name for every
// window of a redirected class (a button, an edit, a label, a list or combo box) it creates. When the
// host loaded that library under its system path first, each ask opens and maps the whole file
// again: 1.3 ms a control, most of a dialog's opening. The name the active context gives the class
// ("6.0.2600.2982!Button") makes the same window without asking. Windows has no such cost, so there,
// as under Wine without a context or for a class not registered yet, the plain names stay.
// The versioned name of a class, or empty to keep the plain one.
std::u16string VersionedClassName(std::u16string_view className);
// A copy of a template naming its controls' classes so; empty to use the template as it is.
TemplateBytes WithVersionedClasses(const std::uint8_t* data, std::size_t size);

// At unload: the context made on first use is released.
void ReleaseCommonControlsContext();

}  // namespace qrl
