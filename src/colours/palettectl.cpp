#include "colours/palettectl.h"

#include "colours/palettemodel.h"
#include "kit/basedialog.h"
#include "kit/controlkit.h"
#include "kit/gdiholders.h"

#include <algorithm>

namespace qrl {

namespace {

class PaletteCtl : public TCustomControl {
public:
    explicit PaletteCtl(HWND window) : TCustomControl(window) {
        std::copy(DefaultPalette().begin(), DefaultPalette().end(), colours_.begin());
        Layout();
    }

    bool PaintsWholeClient() const override { return true; }
    void OnPaint(HDC dc, const RECT& client) override;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Layout();
    void Press(LPARAM point, bool rightButton);
    LRESULT Changed() {
        Invalidate();
        return 0;
    }

    TPaletteSelection selection_;
    std::array<uint32_t, kPaletteSize> colours_{};
    TPaletteGeometry geometry_;
    TFont font_;  // made on every resize
};

void PaletteCtl::Layout() {
    RECT client{};
    GetClientRect(Window(), &client);
    geometry_ = PaletteGeometry(client.right - client.left, client.bottom - client.top);
    font_.Reset(CreateFontW(geometry_.cellSize - 2, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Arial"));
}

void PaletteCtl::OnPaint(HDC dc, const RECT& client) {
    FillRect(dc, &client, GetSysColorBrush(COLOR_WINDOW));
    TSelectObject pen(dc, GetStockObject(BLACK_PEN));
    for (std::size_t i = 0; i < kPaletteSize; ++i) {
        const TBrush brush = MakeBrush(colours_[i]);
        TSelectObject selected(dc, brush.get());
        const TCellRect& c = geometry_.cells[i];
        // One pixel larger right and below, so that neighbours share their edge.
        Rectangle(dc, c.left, c.top, c.right + 1, c.bottom + 1);
    }
    if (!IsWindowEnabled(Window())) return;
    TSelectObject font(dc, font_.get());
    SetBkMode(dc, TRANSPARENT);
    for (const TPaletteMarker& marker : PaletteMarkers(selection_)) {
        if (marker.cell < 0 || marker.cell >= static_cast<int>(kPaletteSize)) continue;
        const std::size_t cell = static_cast<std::size_t>(marker.cell);
        SetTextColor(dc, MarkerIsWhite(colours_[cell]) ? RGB(255, 255, 255) : RGB(0, 0, 0));
        const TCellRect& c = geometry_.cells[cell];
        RECT r{c.left, c.top, c.right, c.bottom};
        DrawTextW(dc, W(marker.text), static_cast<int>(marker.text.size()), &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
}

void PaletteCtl::Press(LPARAM point, bool rightButton) {
    if (!IsWindowEnabled(Window())) return;
    const int cell = PaletteHit(geometry_, static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point)));
    if (!PaletteClick(selection_, rightButton, cell)) return;
    Invalidate();
    // The selections travel in the notification itself, first low and second high.
    SendMessageW(GetParent(Window()), WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID(Window())),
                 MAKELPARAM(selection_.first, selection_.second));
}

LRESULT PaletteCtl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case WM_SIZE: Layout(); return Changed();
    case WM_LBUTTONDOWN: Press(lParam, false); return 0;
    case WM_RBUTTONDOWN: Press(lParam, true); return 0;
    case WM_ENABLE: return Changed();
    case kPaletteSetFirst:
        selection_.first = index;
        if (selection_.single) selection_.second = index;
        return Changed();
    case kPaletteSetSecond: selection_.second = index; return Changed();
    case kPaletteSetSingle: selection_.single = wParam != 0; return Changed();
    case kPaletteSetColours:
        if (lParam) std::copy_n(reinterpret_cast<const uint32_t*>(lParam), kPaletteSize, colours_.begin());
        return Changed();
    case kPaletteGetFirst: return selection_.first;
    case kPaletteGetSecond: return selection_.second;
    case kPaletteSetFirstLetter: selection_.firstLetter = static_cast<char16_t>(wParam); return Changed();
    case kPaletteSetSecondLetter: selection_.secondLetter = static_cast<char16_t>(wParam); return Changed();
    default: return TCustomControl::OnMessage(message, wParam, lParam);
    }
}

class ColourPatchCtl : public TCustomControl {
public:
    using TCustomControl::TCustomControl;

    void OnPaint(HDC dc, const RECT& client) override {
        const TBrush brush = MakeBrush(colour_);
        TSelectObject selected(dc, brush.get());
        Rectangle(dc, client.left, client.top, client.right - 1, client.bottom - 1);
    }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != kPatchSetColour) return TCustomControl::OnMessage(message, wParam, lParam);
        colour_ = static_cast<uint32_t>(lParam);
        Invalidate();
        return 0;
    }

private:
    uint32_t colour_ = kPatchStartColour;
};

}  // namespace

bool RegisterPaletteClass(HINSTANCE instance) { return RegisterControlClass<PaletteCtl>(instance, kPaletteClass); }
void UnregisterPaletteClass(HINSTANCE instance) { UnregisterClassW(kPaletteClass, instance); }
bool RegisterColourPatchClass(HINSTANCE instance) {
    return RegisterControlClass<ColourPatchCtl>(instance, kColourPatchClass);
}
void UnregisterColourPatchClass(HINSTANCE instance) { UnregisterClassW(kColourPatchClass, instance); }

}  // namespace qrl
