// The built-in form at any size: a sizing border, the size it opens with as its smallest, the
// layout run again on every resize, and the size remembered beside the last selection.
#include "kit/basedialog.h"
#include "kit/dpi.h"
#include "kit/registrykey.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/layout.h"
#include "request/session.h"

#include <algorithm>

namespace qrl {

namespace {

// Sizes are stored as at 96 dots per inch, so that they mean the same on another screen.
constexpr std::int32_t kStoredDpi = 96;

std::u16string SizeValueName(const std::u16string& moduleType) { return moduleType + u".WindowSize"; }

std::int32_t ScreenDpi(HWND window) { return static_cast<std::int32_t>(WindowDpi(window)); }

TWindowSize OuterSize(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return TWindowSize{r.right - r.left, r.bottom - r.top};
}

void Resize(HWND window, const TWindowSize& size, UINT flags = 0) {
    SetWindowPos(window, nullptr, 0, 0, size.width, size.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
}

}  // namespace

void MakeSizable(HWND dialog, TFormRun& run) {
    // The border is added to the frame the template made, around the same client area, so that
    // the form opens laid out exactly as it always has.
    RECT client{};
    GetClientRect(dialog, &client);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(dialog, GWL_STYLE)) | WS_THICKFRAME;
    SetWindowLongPtrW(dialog, GWL_STYLE, static_cast<LONG_PTR>(style));
    AdjustWindowRectEx(&client, style, FALSE, static_cast<DWORD>(GetWindowLongPtrW(dialog, GWL_EXSTYLE)));
    run.smallestSize = TWindowSize{client.right - client.left, client.bottom - client.top};
    // One resize to the remembered size, so that the form is laid out once.
    TWindowSize size = run.smallestSize;
    std::u16string stored;
    if (ModuleRegistryKey().ReadString(SizeValueName(run.session.moduleType), 40, stored)) {
        if (const std::optional<TWindowSize> wanted = ParseWindowSize(stored)) {
            const TWindowSize scaled = ScaleWindowSize(*wanted, kStoredDpi, ScreenDpi(dialog));
            size = TWindowSize{std::max(scaled.width, size.width), std::max(scaled.height, size.height)};
        }
    }
    Resize(dialog, size, SWP_FRAMECHANGED);
}

void OnFormSized(HWND dialog, TFormRun& run) {
    if (run.smallestSize.width == 0) return;  // not sizable: a request's own form
    if (LayOutBuiltInForm(dialog, run)) InvalidateRect(dialog, nullptr, TRUE);
}

void LimitFormSize(const TFormRun& run, MINMAXINFO& limits) {
    if (run.smallestSize.width == 0) return;
    limits.ptMinTrackSize = POINT{run.smallestSize.width, run.smallestSize.height};
}

void ScaleFormLayout(TFormRun& run, UINT oldDpi, UINT newDpi) {
    const auto from = static_cast<std::int32_t>(oldDpi), to = static_cast<std::int32_t>(newDpi);
    for (auto& [id, rect] : run.layoutSource) rect = ScaleRect(rect, from, to);
    // The kit has moved every control; the next layout places them all again.
    run.laidOut.clear();
    run.laidOutClient = TRect{};
    if (run.smallestSize.width != 0) run.smallestSize = ScaleWindowSize(run.smallestSize, from, to);
    run.boldTreeFont.Reset();  // made again from the tree's new font
}

void StoreWindowSize(HWND dialog, const TFormRun& run) {
    if (run.smallestSize.width == 0) return;
    const TWindowSize size = ScaleWindowSize(OuterSize(dialog), ScreenDpi(dialog), kStoredDpi);
    ModuleRegistryKey().WriteString(SizeValueName(run.session.moduleType), WindowSizeText(size));
}

}  // namespace qrl
