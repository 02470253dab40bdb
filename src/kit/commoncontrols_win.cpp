#include "kit/commoncontrols.h"

#include "kit/basedialog.h"

#include <atomic>
#include <deque>
#include <utility>

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

// What the loader keeps for a redirected class: the versioned name follows this record.
struct TClassRedirection {
    ULONG size;
    ULONG flags;
    ULONG nameLength;  // bytes
    ULONG nameOffset;  // from the record
    ULONG moduleLength;
    ULONG moduleOffset;  // from the section
};

std::u16string LookUpVersionedName(std::u16string_view className) {
    const std::wstring key(className.begin(), className.end());
    ACTCTX_SECTION_KEYED_DATA data{};
    data.cbSize = sizeof data;
    if (!FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_WINDOW_CLASS_REDIRECTION, key.c_str(), &data) ||
        !data.lpData || data.ulLength < sizeof(TClassRedirection))
        return {};
    const auto* record = static_cast<const TClassRedirection*>(data.lpData);
    if (record->nameOffset > data.ulLength || record->nameLength > data.ulLength - record->nameOffset) return {};
    const auto* name = reinterpret_cast<const char16_t*>(static_cast<const BYTE*>(data.lpData) + record->nameOffset);
    std::u16string versioned(name, record->nameLength / sizeof(char16_t));
    // A class nobody registered yet keeps its plain name, whose creation loads the library.
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    if (versioned.empty() || !GetClassInfoExW(nullptr, W(versioned), &info)) return {};
    return versioned;
}

// The names of one template's classes, each looked up once.
struct TVersionedNames {
    std::deque<std::pair<std::u16string, std::u16string>> known;

    static std::u16string_view Rename(std::u16string_view className, void* context) {
        auto& names = static_cast<TVersionedNames*>(context)->known;
        for (const auto& [plain, versioned] : names)
            if (plain == className) return versioned;
        return names.emplace_back(className, LookUpVersionedName(className)).second;
    }
};

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

std::u16string VersionedClassName(std::u16string_view className) {
    static const bool underWine = RunsUnderWine();
    return underWine ? LookUpVersionedName(className) : std::u16string{};
}

TemplateBytes WithVersionedClasses(const std::uint8_t* data, std::size_t size) {
    static const bool underWine = RunsUnderWine();
    if (!underWine) return {};
    TVersionedNames names;
    return RenameControlClasses(data, size, &TVersionedNames::Rename, &names);
}

void ReleaseCommonControlsContext() {
    HANDLE context = g_context.exchange(nullptr);
    if (context && context != INVALID_HANDLE_VALUE) ReleaseActCtx(context);
}

}  // namespace qrl
