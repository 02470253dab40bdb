#include "hotspots/hotspotpaint_win.h"

#include "kit/basedialog.h"
#include "kit/dpi.h"
#include "kit/gdiholders.h"
#include "locale/language.h"

#include <algorithm>

namespace qrl {

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kDarkGrey = RGB(64, 64, 64);
constexpr COLORREF kGrey = RGB(128, 128, 128);

void FillPixels(HDC dc, int left, int top, int right, int bottom, COLORREF colour) {
    const TBrush brush = MakeBrush(colour);
    const RECT r{left, top, right, bottom};
    FillRect(dc, &r, brush.get());
}

// The samples are drawn at the resolution of the window they are in; the measures below are as at
// 96 dots per inch.
UINT DrawingDpi(HDC dc) { return WindowDpi(WindowFromDC(dc)); }

void DrawDecoration(HDC dc, const RECT& area, const TDecorationStep& step) {
    const UINT dpi = DrawingDpi(dc);
    const int inset = ScaleToDpi(step.inset, dpi);
    const int line = std::max(1, ScaleToDpi(1, dpi));
    RECT r = area;
    InflateRect(&r, -inset, -inset);
    if (r.right <= r.left || r.bottom <= r.top) return;
    switch (step.kind) {
    case Decoration::LightEdge:
        FillPixels(dc, r.left, r.top, r.left + line, r.bottom, kWhite);
        FillPixels(dc, r.left, r.top, r.right, r.top + line, kWhite);
        break;
    case Decoration::DarkEdge:
        FillPixels(dc, r.right - line, r.top, r.right, r.bottom, kDarkGrey);
        FillPixels(dc, r.left, r.bottom - line, r.right, r.bottom, kDarkGrey);
        break;
    case Decoration::Corners:
        FillPixels(dc, r.right - line, r.top, r.right, r.top + line, kGrey);
        FillPixels(dc, r.left, r.bottom - line, r.left + line, r.bottom, kGrey);
        break;
    case Decoration::Border: {
        const TBrush brush = MakeBrush(step.colour);
        for (int i = 0; i < line && r.right > r.left && r.bottom > r.top; ++i) {
            FrameRect(dc, &r, brush.get());
            InflateRect(&r, -1, -1);
        }
        break;
    }
    }
}

// The samples' text: Arial, 18 high, bold, centred with 3 pixels kept free above and below.
void DrawCentredText(HDC dc, const RECT& area, const std::u16string& text, COLORREF colour) {
    const UINT dpi = DrawingDpi(dc);
    const TFont font(CreateFontW(ScaleToDpi(18, dpi), 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                 CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Arial"));
    const TSelectObject selected(dc, font.get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    RECT r = area;
    InflateRect(&r, 0, -ScaleToDpi(3, dpi));
    DrawTextW(dc, W(text), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

}  // namespace

void DrawStyleSample(HDC dc, const RECT& area, const TStyleSample& sample, const std::u16string& text) {
    if (sample.systemFill) {
        FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
    } else {
        FillPixels(dc, area.left, area.top, area.right, area.bottom, sample.fill);
    }
    DrawCentredText(dc, area, text, sample.text);
    for (const TDecorationStep& step : sample.decorations) DrawDecoration(dc, area, step);
}

void DrawColourSample(HDC dc, const RECT& area, uint32_t foreground, uint32_t background) {
    FillPixels(dc, area.left, area.top, area.right, area.bottom, background);
    DrawCentredText(dc, area, Translate(u"hotspotcolours_text", u"Text"), foreground);
}

}  // namespace qrl
