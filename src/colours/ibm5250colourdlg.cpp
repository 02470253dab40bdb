// IBM5250 Attribute Configuration: the part of the 5250 colour map that belongs to the terminal
// type in force, one attribute code at a time, with a blinking example in the host's colours.
#include "colours/colourmapdlg.h"

#include "colours/colours_rc.h"
#include "colours/contrast.h"
#include "colours/ibm5250colourmap.h"
#include "colours/ibm5250example.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/gdiholders.h"
#include "request/session.h"
#include "text/textutil.h"

#include <array>

namespace qrl {

namespace {

constexpr TDialogText k5250Texts[] = {
    {kDialogTitleId, {u"IDD_5250COLOUR", u"IBM5250 Attribute Configuration"}},
    {IDC_5250_TERMINAL_LABEL, {u"IDC_5250_TERMINAL", u"Terminal:"}},
    {IDC_5250_ATTRIBUTE_LABEL, {u"IDC_5250_ATTRIBUTE", u"Attribute:"}},
    {IDC_5250_DESCRIPTION_LABEL, {u"IDC_5250_DESCRIPTION", u"Description:"}},
    {IDC_5250_FEATURES, {u"IDC_5250_FEATURES", u"Features"}},
    {IDC_5250_BLINK, {u"IDC_5250_BLINK", u"B&link"}},
    {IDC_5250_UNDERSCORE, {u"IDC_5250_UNDERSCORE", u"&Underscore"}},
    {IDC_5250_HIGH, {u"IDC_5250_HIGH", u"High Intensit&y"}},
    {IDC_5250_REVERSE, {u"IDC_5250_REVERSE", u"&Reverse"}},
    {IDC_5250_INVISIBLE, {u"IDC_5250_INVISIBLE", u"&Invisible"}},
    {IDC_5250_COLSEP, {u"IDC_5250_COLSEP", u"Column &Separator"}},
    {IDC_5250_FOREGROUND_LABEL, {u"IDC_5250_FOREGROUND", u"Foreground:"}},
    {IDC_5250_BACKGROUND_LABEL, {u"IDC_5250_BACKGROUND", u"Background:"}},
    {IDC_5250_REVERT, {u"IDC_5250_REVERT", u"Revert to &Default"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
};

struct TFeatureBox {
    int id;
    uint32_t bit;
};
constexpr std::array<TFeatureBox, 6> kFeatureBoxes{{
    {IDC_5250_BLINK, f5250::Blink},
    {IDC_5250_UNDERSCORE, f5250::Underscore},
    {IDC_5250_HIGH, f5250::HighIntensity},
    {IDC_5250_REVERSE, f5250::Reverse},
    {IDC_5250_INVISIBLE, f5250::Invisible},
    {IDC_5250_COLSEP, f5250::ColumnSeparator},
}};

constexpr UINT_PTR kBlinkTimer = 1;
constexpr UINT kBlinkMs = 500;

class Ibm5250ColoursDlg : public TDialog {
public:
    Ibm5250ColoursDlg(const TConfigSession& session, T5250ColourMap& map, const T5250TerminalType& terminal)
        : session_(session), map_(map), terminal_(terminal), monochrome_(terminal.Monochrome()) {
        for (std::size_t row = 0; row < T5250ColourMap::kRows; ++row) edits_[row] = map.EditOf(row, monochrome_);
    }
    // The edit copy goes back into the map: only the part of the terminal kind in force.
    void StoreEdits() const {
        for (std::size_t row = 0; row < T5250ColourMap::kRows; ++row) map_.Store(row, edits_[row], monochrome_);
    }

protected:
    std::span<const TDialogText> Texts() const override { return k5250Texts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDestroy() override { KillTimer(Window(), kBlinkTimer); }

private:
    T5250Edit& Edit() { return edits_[selected_]; }
    void ShowRow();
    void OnFeature(const TFeatureBox& box);
    void OnColour(int comboId);
    void RepaintExample() const { InvalidateRect(GetDlgItem(Window(), IDC_5250_EXAMPLE), nullptr, FALSE); }
    void DrawExample(const DRAWITEMSTRUCT& item);

    const TConfigSession& session_;
    T5250ColourMap& map_;
    const T5250TerminalType& terminal_;
    bool monochrome_;
    std::array<T5250Edit, T5250ColourMap::kRows> edits_{};
    std::size_t selected_ = 0;
    T5250Example example_;
    bool busy_ = false;
};

INT_PTR Ibm5250ColoursDlg::OnInit() {
    HWND attributes = GetDlgItem(Window(), IDC_5250_ATTRIBUTE);
    for (std::size_t row = 0; row < T5250ColourMap::kRows; ++row) {
        const std::u16string code = hexLower(map_.rows[row].code);
        SendMessageW(attributes, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(code)));
    }
    SendMessageW(attributes, CB_SETCURSEL, 0, 0);
    SetControlText(Window(), IDC_5250_TERMINAL, std::u16string(terminal_.model) + terminal_.kindText);
    for (int id : {IDC_5250_FOREGROUND, IDC_5250_BACKGROUND})
        for (const T5250ColourChoice& choice : k5250ColourChoices)
            SendDlgItemMessageW(Window(), id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(choice.text)));
    ShowRow();
    SetTimer(Window(), kBlinkTimer, kBlinkMs, nullptr);
    SetFocus(attributes);  // not the read-only terminal text
    return FALSE;
}

void Ibm5250ColoursDlg::ShowRow() {
    TBusyScope busy(busy_);
    const T5250Row& row = map_.rows[selected_];
    SetControlText(Window(), IDC_5250_DESCRIPTION, monochrome_ ? row.monoText : row.colourText);
    const T5250Edit& edit = Edit();
    for (const TFeatureBox& box : kFeatureBoxes)
        SetChecked(Window(), box.id, (edit.features & box.bit) != 0);
    // The combos take the colour values as positions, unmapped: value 3 shows position 3.
    SendDlgItemMessageW(Window(), IDC_5250_FOREGROUND, CB_SETCURSEL, edit.foreground, 0);
    SendDlgItemMessageW(Window(), IDC_5250_BACKGROUND, CB_SETCURSEL, edit.background, 0);
    example_ = ExampleOf(edit, example_);
    RepaintExample();
}

void Ibm5250ColoursDlg::OnFeature(const TFeatureBox& box) {
    const bool on = IsChecked(Window(), box.id);
    Edit().features = on ? Edit().features | box.bit : Edit().features & ~box.bit;
    example_ = ExampleOf(Edit(), example_);
    RepaintExample();
}

void Ibm5250ColoursDlg::OnColour(int comboId) {
    const int position = static_cast<int>(SendDlgItemMessageW(Window(), comboId, CB_GETCURSEL, 0, 0));
    const bool foreground = comboId == IDC_5250_FOREGROUND;
    if (monochrome_) {
        // Nothing is stored; the example shows the monochrome colours.
        example_.foreground = T5250ColourMap::kMonoForeground;
        example_.background = T5250ColourMap::kMonoBackground;
    } else if (position >= 0 && position < static_cast<int>(k5250ColourChoices.size())) {
        const uint8_t value = k5250ColourChoices[static_cast<std::size_t>(position)].value;
        (foreground ? Edit().foreground : Edit().background) = value;
        (foreground ? example_.foreground : example_.background) = value;
    }
    RepaintExample();
}

void Ibm5250ColoursDlg::DrawExample(const DRAWITEMSTRUCT& item) {
    THostAttributeColourRecord colours;
    colours.kind = ExampleHostAttribute(example_);
    colours.attribute1 = example_.background;
    colours.attribute2 = example_.foreground;
    session_.link.AttributeColours(colours);
    const COLORREF foreground = colours.foreground & 0xFFFFFFu;
    const COLORREF background = colours.background & 0xFFFFFFu;
    const bool hidden = ExampleHidden(example_);
    const COLORREF text = hidden ? background : foreground;

    HDC dc = item.hDC;
    const TBrush fill = MakeBrush(background);
    FillRect(dc, &item.rcItem, fill.get());
    const TSelectObject font(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(Window(), WM_GETFONT, 0, 0)));
    SetBkMode(dc, OPAQUE);
    SetBkColor(dc, background);
    SetTextColor(dc, text);
    const std::u16string sample = ExampleText(example_);
    TextOutW(dc, item.rcItem.left + 7, item.rcItem.top + 7, W(sample), static_cast<int>(sample.size()));
    if (example_.underline && !hidden) {
        const TPen pen = MakePen(foreground);
        const TSelectObject selected(dc, pen.get());
        MoveToEx(dc, item.rcItem.left + 8, item.rcItem.top + 22, nullptr);
        LineTo(dc, item.rcItem.left + 91, item.rcItem.top + 22);
    }
    const std::u16string contrast = ContrastText(ContrastRatio(foreground, background));
    if (GetControlText(Window(), IDC_5250_CONTRAST) != contrast) SetControlText(Window(), IDC_5250_CONTRAST, contrast);
}

INT_PTR Ibm5250ColoursDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == kBlinkTimer) {
        example_.blinkPhase = !example_.blinkPhase;
        RepaintExample();
        return TRUE;
    }
    if (message == WM_DRAWITEM && wParam == IDC_5250_EXAMPLE) {
        DrawExample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    return FALSE;
}

INT_PTR Ibm5250ColoursDlg::OnCommand(int id, int code) {
    if (busy_) return TRUE;
    if (id == IDC_5250_ATTRIBUTE || id == IDC_5250_FOREGROUND || id == IDC_5250_BACKGROUND) {
        if (code != CBN_SELCHANGE) return TRUE;
        if (id != IDC_5250_ATTRIBUTE) {
            OnColour(id);
            return TRUE;
        }
        const LRESULT row = SendDlgItemMessageW(Window(), IDC_5250_ATTRIBUTE, CB_GETCURSEL, 0, 0);
        selected_ = row >= 0 && row < static_cast<LRESULT>(T5250ColourMap::kRows) ? static_cast<std::size_t>(row) : 0;
        ShowRow();
        return TRUE;
    }
    if (code != BN_CLICKED) return FALSE;
    for (const TFeatureBox& box : kFeatureBoxes)
        if (box.id == id) {
            OnFeature(box);
            return TRUE;
        }
    switch (id) {
    case IDC_5250_REVERT:
        Edit() = map_.DefaultEditOf(selected_, monochrome_);
        ShowRow();
        return TRUE;
    case IDOK:
    case IDCANCEL: End(id); return TRUE;
    default: return FALSE;
    }
}

}  // namespace

bool Edit5250ColourMap(HWND parent, TConfigSession& session, TElementDef& element) {
    T5250ColourMap map;
    map.Parse(element.value);
    const TElementDef* mode = session.FindElement(u"IBM 5250 Mode");
    const T5250TerminalType& terminal = Find5250TerminalType(mode ? std::u16string_view(mode->value) : u"");
    Ibm5250ColoursDlg dialog(session, map, terminal);
    if (dialog.RunModal(parent, IDD_5250_COLOURS) != IDOK) return false;
    dialog.StoreEdits();
    element.value = map.ToText();
    return true;
}

}  // namespace qrl
