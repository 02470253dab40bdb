#include "keyboard/keyboardctl.h"

#include "kit/controlkit.h"
#include "kit/gdiholders.h"
#include "kit/listrows.h"
#include "keyboard/keylook.h"

#include <algorithm>
#include <string>

namespace qrl {

namespace {

RECT ToRect(const KbRect& r) { return RECT{r.left, r.top, r.right, r.bottom}; }

// The style's GDI objects are made here and released by the model through this function, so the
// portable layout never calls GDI itself.
void ReleaseStyleObjects(KeyStyle& style) {
    for (void** object : {&style.FaceBrush, &style.SelectedBrush, &style.MappedBrush, &style.HighlightBrush,
                          &style.ShadowBrush, &style.SingleCharFont, &style.LongFont, &style.InactivePen}) {
        if (*object) DeleteObject(static_cast<HGDIOBJ>(*object));
        *object = nullptr;
    }
}

HFONT ArialFont(int height) {
    return CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Arial");
}

// Builds the drawing style once the layout's BaseSize is known; the old objects go first.
void BuildStyle(KeyStyle& style) {
    style.releaseObjects();
    style.EdgeOuter = style.EdgeInner = GetSystemMetrics(SM_CYBORDER);
    style.FaceColour = GetSysColor(COLOR_BTNFACE);
    style.TextColour = GetSysColor(COLOR_BTNTEXT);
    style.HighlightColour = GetSysColor(COLOR_BTNHIGHLIGHT);
    style.ShadowColour = GetSysColor(COLOR_BTNSHADOW);
    style.InactiveTextColour = GetSysColor(COLOR_BTNSHADOW);
    style.FaceBrush = CreateSolidBrush(style.FaceColour);
    style.SelectedBrush = CreateSolidBrush(style.SelectedColour);
    style.MappedBrush = CreateSolidBrush(style.MappedColour);
    style.HighlightBrush = CreateSolidBrush(style.HighlightColour);
    style.ShadowBrush = CreateSolidBrush(style.ShadowColour);
    style.SingleCharFont = ArialFont(KeyStyle::singleCharFontHeight(style.BaseSize));
    style.LongFont = ArialFont(KeyStyle::longFontHeight(style.BaseSize));
    style.InactivePen = CreatePen(PS_SOLID, GetSystemMetrics(SM_CYBORDER), style.ShadowColour);
    style.ReleaseObjectsFn = &ReleaseStyleObjects;
}

void FillStrip(HDC dc, int left, int top, int right, int bottom, void* brush) {
    const RECT r{left, top, right, bottom};
    FillRect(dc, &r, static_cast<HBRUSH>(brush));
}

void DrawGlyph(HDC dc, const RECT& labelRect, const TGlyph& glyph, const TKeyLook& look) {
    const KbRect square = GlyphSquare({labelRect.left, labelRect.top, labelRect.right, labelRect.bottom});
    const RECT clear = ToRect(square);
    SetBkColor(dc, look.background);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &clear, nullptr, 0, nullptr);
    const TPen pen = MakePen(look.text, GetSystemMetrics(SM_CYBORDER));
    const TBrush brush = MakeBrush(look.text);
    const TSelectObject selectedPen(dc, pen.get());
    const TSelectObject selectedBrush(dc, glyph.hollow ? GetStockObject(HOLLOW_BRUSH) : brush.get());
    std::vector<POINT> points;
    for (const KbPoint& p : GlyphPoints(glyph, square)) points.push_back({p.x, p.y});
    Polygon(dc, points.data(), static_cast<int>(points.size()));
}

void DrawKey(HDC dc, const GKbKey& key, std::int32_t state, const KeyStyle& style) {
    const TKeyLook look = KeyLookFor(key, state, key.Selected, style);
    RECT rect = ToRect(key.Rect);
    {
        const TSelectObject brush(dc, GetStockObject(HOLLOW_BRUSH));
        const TSelectObject pen(dc, look.inactive ? static_cast<HGDIOBJ>(style.InactivePen) : GetStockObject(BLACK_PEN));
        Rectangle(dc, rect.left, rect.top, rect.right, rect.bottom);
    }
    InflateRect(&rect, -1, -1);
    RECT inner = rect;
    InflateRect(&inner, -style.EdgeInner, -style.EdgeInner);
    const bool selected = look.face == KeyFace::Selected;
    FillRect(dc, &inner, static_cast<HBRUSH>(selected ? style.SelectedBrush
                                             : look.mapped ? style.MappedBrush
                                                           : style.FaceBrush));
    if (look.bevel) {
        // Raised: light above and left, shadow below and right. Pressed in: shadow above and left.
        void* topLeft = selected ? style.ShadowBrush : style.HighlightBrush;
        FillStrip(dc, rect.left, rect.top, rect.right, rect.top + style.EdgeInner, topLeft);
        FillStrip(dc, rect.left, rect.top, rect.left + style.EdgeInner, rect.bottom, topLeft);
        if (!selected) {
            FillStrip(dc, rect.left + style.EdgeOuter, rect.bottom - style.EdgeOuter, rect.right, rect.bottom,
                      style.ShadowBrush);
            FillStrip(dc, rect.right - style.EdgeOuter, rect.top + style.EdgeOuter, rect.right, rect.bottom,
                      style.ShadowBrush);
        }
    }
    RECT label = ToRect(key.Rect);
    InflateRect(&label, -(style.EdgeInner + 1), -(style.EdgeInner + 1));
    if (look.glyph) {
        if (const std::optional<TGlyph> glyph = GlyphFor(look.label)) DrawGlyph(dc, label, *glyph, look);
        return;
    }
    const TSelectObject font(dc, look.singleChar ? style.SingleCharFont : style.LongFont);
    SetBkColor(dc, look.background);
    SetTextColor(dc, look.text);
    DrawTextA(dc, look.label.c_str(), static_cast<int>(look.label.size()), &label,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

class KeyboardWindow final : public TCustomControl, public KeyboardCtl {
public:
    explicit KeyboardWindow(HWND window) : TCustomControl(window) {}

    bool PaintsWholeClient() const override { return true; }
    void OnPaint(HDC dc, const RECT& client) override;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void setLayout(GKbLayout* layout) override {
        layout_ = layout;
        InvalidateRect(Window(), nullptr, TRUE);
    }
    GKbLayout* layout() const override { return layout_; }
    GKbKey* selectKey(std::int32_t code, bool applyState) override;
    void deselectCode(std::int32_t code) override;
    void clearSelection(bool all) override;
    void markMapped(std::int32_t code, bool value) override;
    void clearMarks() override;
    void setMarks(const std::vector<std::uint32_t>& codes) override;
    void toggleModifier(const GKbKey& key) override;
    std::int32_t getState() const override { return layout_ ? layout_->State : 0; }
    void setShift(std::int32_t codeBits) override {
        if (layout_) layout_->setState(shiftFromCode(codeBits));
        Invalidate();
    }

private:
    void RepaintKey(const GKbKey& key) const {
        const RECT r = ToRect(key.Rect);
        InvalidateRect(Window(), &r, FALSE);
    }
    void OnPress(LPARAM point, UINT notice) const;

    GKbLayout* layout_ = nullptr;
};

void KeyboardWindow::OnPaint(HDC dc, const RECT& client) {
    const TBrush background = MakeBrush(GetSysColor(COLOR_BTNFACE));
    FillRect(dc, &client, background.get());
    if (!layout_) return;
    if (!layout_->Scaled) {
        // Worked out on the first paint only: a later resize keeps the scale.
        layout_->scaleTo(client.right - client.left, client.bottom - client.top);
        BuildStyle(layout_->Style);
    }
    SetBkMode(dc, OPAQUE);
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        const GKbKey& key = layout_->key(i);
        DrawKey(dc, key, key.Owner ? layout_->State : 0, layout_->Style);
    }
}

void KeyboardWindow::OnPress(LPARAM point, UINT notice) const {
    if (!layout_) return;
    GKbKey* key = layout_->hitTest(static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point)));
    if (!key || shiftEntry(*key, layout_->State).Inactive) return;
    SendMessageW(GetParent(Window()), notice, static_cast<WPARAM>(GetDlgCtrlID(Window())), reinterpret_cast<LPARAM>(key));
}

LRESULT KeyboardWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN: OnPress(lParam, kKeyPressedLeft); return 0;
    case WM_RBUTTONDOWN: OnPress(lParam, kKeyPressedRight); return 0;
    default: return TCustomControl::OnMessage(message, wParam, lParam);
    }
}

GKbKey* KeyboardWindow::selectKey(std::int32_t code, bool applyState) {
    if (!layout_) return nullptr;
    std::int32_t state = 0;
    GKbKey* key = layout_->findKey(code, state);
    if (!key) return nullptr;
    key->Selected = true;
    if (applyState) {
        layout_->setState(state);
        Invalidate();
    }
    RepaintKey(*key);
    return key;
}

void KeyboardWindow::deselectCode(std::int32_t code) {
    if (!layout_) return;
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        GKbKey& key = layout_->key(i);
        if (key.Code != code) continue;
        key.Selected = false;
        RepaintKey(key);
        return;
    }
}

void KeyboardWindow::clearSelection(bool all) {
    if (!layout_) return;
    const std::int32_t base = all ? 0 : layout_->State;
    RECT joined{};
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        GKbKey& key = layout_->key(i);
        if (!key.Selected) continue;
        // Latched modifiers stay pressed unless everything goes.
        if (!all && key.ModifierMask != 0 && !isMapped(key, base)) continue;
        key.Selected = false;
        const RECT r = ToRect(key.Rect);
        UnionRect(&joined, &joined, &r);
    }
    if (!layout_->Keys.empty()) InvalidateRect(Window(), &joined, FALSE);
}

void KeyboardWindow::markMapped(std::int32_t code, bool value) {
    if (!layout_) return;
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        GKbKey& key = layout_->key(i);
        if (key.Code != code) continue;  // the whole code: one with modifiers finds no key
        if (key.Mapped[0] != value) {
            key.Mapped[0] = value;
            RepaintKey(key);
        }
        return;
    }
}

void KeyboardWindow::clearMarks() {
    if (!layout_) return;
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        layout_->key(i).Mapped.fill(false);
        layout_->key(i).AltMapped.fill(false);
    }
}

// One pass over the keys: as with markMapped, only the first key of a code is marked.
void KeyboardWindow::setMarks(const std::vector<std::uint32_t>& codes) {
    if (!layout_) return;
    clearMarks();
    std::vector<std::uint32_t> unmarked(codes);
    std::sort(unmarked.begin(), unmarked.end());
    unmarked.erase(std::unique(unmarked.begin(), unmarked.end()), unmarked.end());
    for (std::size_t i = 0; i < layout_->Keys.size(); ++i) {
        GKbKey& key = layout_->key(i);
        const auto at = std::lower_bound(unmarked.begin(), unmarked.end(), static_cast<std::uint32_t>(key.Code));
        if (at == unmarked.end() || *at != static_cast<std::uint32_t>(key.Code)) continue;
        key.Mapped[0] = true;
        unmarked.erase(at);
    }
    InvalidateRect(Window(), nullptr, FALSE);
}

void KeyboardWindow::toggleModifier(const GKbKey& key) {
    if (layout_ && key.ModifierMask != 0) layout_->setState(layout_->State ^ key.ModifierMask);
    Invalidate();
}

}  // namespace

bool RegisterKeyboardClass(HINSTANCE instance) {
    return RegisterControlClass<KeyboardWindow>(instance, kKeyboardClass);
}

void UnregisterKeyboardClass(HINSTANCE instance) { UnregisterClassW(kKeyboardClass, instance); }

KeyboardCtl* KeyboardOf(HWND window) {
    wchar_t name[16] = {};
    if (!window || !GetClassNameW(window, name, 16) || lstrcmpiW(name, kKeyboardClass) != 0) return nullptr;
    auto* state = reinterpret_cast<TCustomControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return state ? static_cast<KeyboardWindow*>(state) : nullptr;
}

void KeyList::setKeys(const std::vector<KeyName>* keys) {
    keys_ = keys;
    TRedrawOff quiet(list_);
    SendMessageW(list_, LB_RESETCONTENT, 0, 0);
    if (!keys_) return;
    for (const KeyName& key : *keys_)
        SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(key.Name.c_str()));
}

void KeyList::selectCode(std::int32_t id) {
    int row = -1;
    if (keys_)
        for (std::size_t i = 0; i < keys_->size() && row < 0; ++i)
            if ((*keys_)[i].Id == id) row = static_cast<int>(i);
    SendMessageW(list_, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

void KeyList::clear() { SendMessageW(list_, LB_SETCURSEL, static_cast<WPARAM>(-1), 0); }

std::int32_t KeyList::selectedId() const {
    const LRESULT row = SendMessageW(list_, LB_GETCURSEL, 0, 0);
    if (!keys_ || row < 0 || static_cast<std::size_t>(row) >= keys_->size()) return -1;
    return (*keys_)[static_cast<std::size_t>(row)].Id;
}

}  // namespace qrl
