#include <windows.h>

#include "forms/pleasewait.h"
#include "request/hostlink_win.h"
#include "request/module_win.h"

namespace qrl {

namespace {
HINSTANCE g_instance = nullptr;
}

HINSTANCE ModuleInstance() { return g_instance; }
void SetModuleInstance(HINSTANCE instance) { g_instance = instance; }

}  // namespace qrl

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
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
            qrl::SetProcessHostChannel(nullptr);
            qrl::SetModuleInstance(nullptr);
        }
    } catch (...) {
    }
    return TRUE;
}
