#include "kit/samplectl.h"

#include "kit/basedialog.h"
#include "kit/controlkit.h"
#include "kit/dpi.h"
#include "kit/gdiholders.h"
#include "kit/samplemodel.h"

namespace qrl {

namespace {

constexpr UINT_PTR kBlinkTimer = 1;

class SampleCtl : public TCustomControl {
public:
    explicit SampleCtl(HWND window)
        : TCustomControl(window), timer_(SetTimer(window, kBlinkTimer, kSampleBlinkMs, nullptr)) {}
    ~SampleCtl() override {
        if (timer_) KillTimer(Window(), kBlinkTimer);
    }

    bool PaintsWholeClient() const override { return true; }
    void OnPaint(HDC dc, const RECT& client) override;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    template <class T>
    LRESULT Set(T& field, T value) {
        field = value;
        Invalidate();
        return 0;
    }

    TSampleState state_;
    HFONT font_ = nullptr;  // the dialog's font (WM_SETFONT); not ours to delete
    UINT_PTR timer_;
};

void SampleCtl::OnPaint(HDC dc, const RECT& client) {
    TSelectObject font(dc, font_);
    const COLORREF colour = SampleTextColour(state_);
    SIZE extent{};
    const int length = static_cast<int>(state_.text.size());
    GetTextExtentPoint32W(dc, W(state_.text), length, &extent);
    const int y = (client.bottom - client.top - extent.cy) / 2;
    SetTextColor(dc, colour);
    SetBkColor(dc, state_.background);
    // The model puts the text 4 pixels from the left, as at 96 dots per inch; the lines follow the text.
    constexpr int kModelLeft = 4;
    const int shift = ScaleToDpi(kModelLeft, WindowDpi(Window())) - kModelLeft;
    ExtTextOutW(dc, kModelLeft + shift, y, ETO_OPAQUE, &client, W(state_.text), static_cast<UINT>(length), nullptr);
    const auto lines = SampleDecorations(state_.features, extent.cx, extent.cy, y);
    if (lines.empty()) return;
    const TPen pen = MakePen(colour);
    TSelectObject selected(dc, pen.get());
    for (const auto& line : lines) {
        MoveToEx(dc, line.front().x + shift, line.front().y, nullptr);
        for (std::size_t i = 1; i < line.size(); ++i) LineTo(dc, line[i].x + shift, line[i].y);
    }
}

LRESULT SampleCtl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETFONT: font_ = reinterpret_cast<HFONT>(wParam); return 0;
    case WM_GETFONT: return reinterpret_cast<LRESULT>(font_);
    case WM_SETTEXT:
        Set(state_.text, U16(reinterpret_cast<const wchar_t*>(lParam)));
        return TRUE;
    case WM_TIMER: return Set(state_.visible, state_.visible ? 0u : 1u);
    case kSampleSetForeground: return Set(state_.foreground, static_cast<std::uint32_t>(lParam));
    case kSampleSetBackground: return Set(state_.background, static_cast<std::uint32_t>(lParam));
    case kSampleSetBlinkDisabled: state_.blinkDisabled = static_cast<std::uint32_t>(wParam); return 0;
    case kSampleSetFeatures: return Set(state_.features, static_cast<std::uint32_t>(lParam));
    default: return TCustomControl::OnMessage(message, wParam, lParam);
    }
}

}  // namespace

bool RegisterSampleClass(HINSTANCE instance) { return RegisterControlClass<SampleCtl>(instance, kSampleClass); }

void ShowInSample(HWND sample, const std::u16string& text, COLORREF foreground, COLORREF background,
                  std::uint32_t features, bool blinkEnabled) {
    SetWindowTextW(sample, W(text));
    SendMessageW(sample, kSampleSetForeground, 0, static_cast<LPARAM>(foreground));
    SendMessageW(sample, kSampleSetBackground, 0, static_cast<LPARAM>(background));
    SendMessageW(sample, kSampleSetFeatures, 0, static_cast<LPARAM>(features));
    SendMessageW(sample, kSampleSetBlinkDisabled, blinkEnabled ? 0 : 1, 0);
    InvalidateRect(sample, nullptr, FALSE);
}

void UnregisterSampleClass(HINSTANCE instance) { UnregisterClassW(kSampleClass, instance); }

}  // namespace qrl
