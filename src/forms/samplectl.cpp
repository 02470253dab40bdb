#include "forms/samplectl.h"

#include "forms/basedialog.h"
#include "forms/samplemodel.h"

#include <memory>

namespace qrl {

namespace {

struct SampleWindow {
    TSampleState state;
    HFONT font = nullptr;  // the dialog's font (WM_SETFONT); not ours to delete
    UINT_PTR timer = 0;
};

constexpr UINT_PTR kBlinkTimer = 1;

SampleWindow* StateOf(HWND window) { return reinterpret_cast<SampleWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA)); }

// Selects an object for the lifetime of a scope and puts the old one back.
class SelectGuard {
public:
    SelectGuard(HDC dc, HGDIOBJ object) : dc_(dc), old_(object ? SelectObject(dc, object) : nullptr) {}
    ~SelectGuard() {
        if (old_) SelectObject(dc_, old_);
    }
    SelectGuard(const SelectGuard&) = delete;
    SelectGuard& operator=(const SelectGuard&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

class PenHolder {
public:
    explicit PenHolder(COLORREF colour) : pen_(CreatePen(PS_SOLID, 1, colour)) {}
    ~PenHolder() {
        if (pen_) DeleteObject(pen_);
    }
    PenHolder(const PenHolder&) = delete;
    PenHolder& operator=(const PenHolder&) = delete;
    HPEN get() const { return pen_; }

private:
    HPEN pen_;
};

void Paint(HWND window, SampleWindow& s) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    if (!dc) return;
    {
        RECT client;
        GetClientRect(window, &client);
        SelectGuard font(dc, s.font);
        const COLORREF colour = SampleTextColour(s.state);
        SIZE extent{};
        const int length = static_cast<int>(s.state.text.size());
        GetTextExtentPoint32W(dc, W(s.state.text), length, &extent);
        const int y = (client.bottom - client.top - extent.cy) / 2;
        SetTextColor(dc, colour);
        SetBkColor(dc, s.state.background);
        ExtTextOutW(dc, 4, y, ETO_OPAQUE, &client, W(s.state.text), static_cast<UINT>(length), nullptr);
        const auto lines = SampleDecorations(s.state.features, extent.cx, extent.cy, y);
        if (!lines.empty()) {
            PenHolder pen(colour);
            SelectGuard selected(dc, pen.get());
            for (const auto& line : lines) {
                MoveToEx(dc, line.front().x, line.front().y, nullptr);
                for (std::size_t i = 1; i < line.size(); ++i) LineTo(dc, line[i].x, line[i].y);
            }
        }
    }
    EndPaint(window, &ps);
}

LRESULT OnCreate(HWND window) {
    auto s = std::make_unique<SampleWindow>();
    s->timer = SetTimer(window, kBlinkTimer, kSampleBlinkMs, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(s.release()));
    return 0;
}

void OnDestroy(HWND window) {
    SampleWindow* s = StateOf(window);
    if (!s) return;
    if (s->timer) KillTimer(window, kBlinkTimer);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    delete s;
}

LRESULT CALLBACK SampleProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_CREATE) return OnCreate(window);
        SampleWindow* s = StateOf(window);
        if (s == nullptr) return DefWindowProcW(window, message, wParam, lParam);
        switch (message) {
        case WM_NCDESTROY: OnDestroy(window); break;
        case WM_PAINT: Paint(window, *s); return 0;
        case WM_ERASEBKGND: return 1;  // the paint fills everything
        case WM_SETFONT: s->font = reinterpret_cast<HFONT>(wParam); return 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(s->font);
        case WM_SETTEXT:
            s->state.text = U16(reinterpret_cast<const wchar_t*>(lParam));
            InvalidateRect(window, nullptr, FALSE);
            return TRUE;
        case WM_TIMER:
            s->state.visible = s->state.visible ? 0 : 1;
            InvalidateRect(window, nullptr, FALSE);
            return 0;
        case kSampleSetForeground:
            s->state.foreground = static_cast<std::uint32_t>(lParam);
            InvalidateRect(window, nullptr, FALSE);
            return 0;
        case kSampleSetBackground:
            s->state.background = static_cast<std::uint32_t>(lParam);
            InvalidateRect(window, nullptr, FALSE);
            return 0;
        case kSampleSetBlinkDisabled: s->state.blinkDisabled = static_cast<std::uint32_t>(wParam); return 0;
        case kSampleSetFeatures:
            s->state.features = static_cast<std::uint32_t>(lParam);
            InvalidateRect(window, nullptr, FALSE);
            return 0;
        default: break;
        }
    } catch (...) {
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

bool RegisterSampleClass(HINSTANCE instance) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = SampleProc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.lpszClassName = kSampleClass;
    return RegisterClassW(&wc) != 0;
}

void UnregisterSampleClass(HINSTANCE instance) { UnregisterClassW(kSampleClass, instance); }

}  // namespace qrl
