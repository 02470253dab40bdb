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

bool RunsUnderWine() {
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll && GetProcAddress(ntdll, "wine_get_version");
}

// Every static but those that show an image: their memory holds the image, which the switch would
// treat as an icon.
bool IsLabel(HWND window) {
    wchar_t name[16] = {};
    if (!GetClassNameW(window, name, 16) || lstrcmpiW(name, L"Static") != 0) return false;
    switch (GetWindowLongW(window, GWL_STYLE) & SS_TYPEMASK) {
    case SS_ICON:
    case SS_BITMAP:
    case SS_ENHMETAFILE: return false;
    default: return true;
    }
}

BOOL CALLBACK MakeLabelAnIcon(HWND window, LPARAM) {
    if (IsLabel(window))
        SetWindowLongW(window, GWL_STYLE, (GetWindowLongW(window, GWL_STYLE) & ~SS_TYPEMASK) | SS_ICON);
    return TRUE;
}

// Every window the thread destroys, with all it holds: a hook sees each one while its controls are
// still there, also the platform's own dialogs and message boxes.
LRESULT CALLBACK ReleaseLabelsOnDestroy(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_DESTROYWND) {
        const auto window = reinterpret_cast<HWND>(wParam);
        MakeLabelAnIcon(window, 0);
        EnumChildWindows(window, MakeLabelAnIcon, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

TCommonControlsScope::TCommonControlsScope() {
    HANDLE context = ModuleContext();
    if (context != INVALID_HANDLE_VALUE) active_ = ActivateActCtx(context, &cookie_) != FALSE;
    static const bool underWine = RunsUnderWine();
    if (active_ && underWine) labelHook_ = SetWindowsHookExW(WH_CBT, ReleaseLabelsOnDestroy, nullptr, GetCurrentThreadId());
}

TCommonControlsScope::~TCommonControlsScope() {
    if (labelHook_) UnhookWindowsHookEx(labelHook_);
    if (active_) DeactivateActCtx(0, cookie_);
}

void ReleaseCommonControlsContext() {
    HANDLE context = g_context.exchange(nullptr);
    if (context && context != INVALID_HANDLE_VALUE) ReleaseActCtx(context);
}

}  // namespace qrl
