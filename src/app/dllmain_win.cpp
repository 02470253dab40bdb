#include <windows.h>

#include "kit/basedialog.h"
#include "kit/commoncontrols.h"
#include "kit/pleasewait.h"
#include "app/hostlink_win.h"
#include "app/module_win.h"

// The C++ runtime's release of its own buffers (the emergency exception pool), which it keeps until
// the process ends; not declared in any header.
namespace __gnu_cxx {
void __freeres() noexcept;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    // Nothing may leave this function; registration failures only leave a control unusable.
    try {
        if (reason == DLL_PROCESS_ATTACH) {
            qrl::SetModuleInstance(instance);
            qrl::SetProcessHostChannel(&qrl::WindowHostChannel());
            qrl::RegisterModuleClasses(instance);
        } else if (reason == DLL_PROCESS_DETACH) {
            // A window whose class goes would otherwise call into the unloaded module.
            qrl::DestroyPleaseWait();
            qrl::UnregisterModuleClasses(instance);
            qrl::ReleaseCommonControlsContext();
            qrl::SetProcessHostChannel(nullptr);
            qrl::SetModuleInstance(nullptr);
            // Freed by the host rather than the process ending: give the runtime's buffers back.
            if (!reserved) __gnu_cxx::__freeres();
        }
    } catch (...) {
    }
    return TRUE;
}
