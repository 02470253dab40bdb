#include "kit/commoncontrols.h"

#include "kit/basedialog.h"

#include <atomic>

namespace qrl {

namespace {

// Made on first use rather than at load: creating a context reads the module's resources, which
// is better kept out of the loader's lock. Null until made; INVALID_HANDLE_VALUE when it can't be.
std::atomic<HANDLE> g_context{nullptr};

HANDLE ModuleContext() {
    HANDLE context = g_context.load();
    if (context) return context;
    HINSTANCE instance = ModuleInstance();
    if (!instance) return INVALID_HANDLE_VALUE;
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = instance;
    request.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
    HANDLE made = CreateActCtxW(&request);
    HANDLE expected = nullptr;
    if (!g_context.compare_exchange_strong(expected, made)) {
        if (made != INVALID_HANDLE_VALUE) ReleaseActCtx(made);
        return expected;
    }
    return made;
}

}  // namespace

TCommonControlsScope::TCommonControlsScope() {
    HANDLE context = ModuleContext();
    if (context != INVALID_HANDLE_VALUE) active_ = ActivateActCtx(context, &cookie_) != FALSE;
}

TCommonControlsScope::~TCommonControlsScope() {
    if (active_) DeactivateActCtx(0, cookie_);
}

void ReleaseCommonControlsContext() {
    HANDLE context = g_context.exchange(nullptr);
    if (context && context != INVALID_HANDLE_VALUE) ReleaseActCtx(context);
}

}  // namespace qrl
