// T653X Colour Mapping Defaults: a colour pair for each attribute combination of the Tandem map.
#include "colours/colourmapdlg.h"

#include "colours/colours_rc.h"
#include "colours/contrast.h"
#include "colours/tandemcolourmap.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/gdiholders.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {

namespace {

constexpr TDialogText kTandemTexts[] = {
    {kDialogTitleId, {u"IDD_TANDEMCOLOUR", u"T653X Colour Mapping Defaults"}},
    {IDC_TANDEM_ATTRIBUTE_LABEL, {u"IDC_TANDEM_ATTRIBUTE", u"Attribute:"}},
    {IDC_TANDEM_FOREGROUND_LABEL, {u"IDC_TANDEM_FOREGROUND", u"Foreground:"}},
    {IDC_TANDEM_BACKGROUND_LABEL, {u"IDC_TANDEM_BACKGROUND", u"Background:"}},
    {IDC_TANDEM_DISABLE, {u"IDC_TANDEM_DISABLE", u"&Disable mapping"}},
    {IDC_TANDEM_PERSISTENCE, {u"IDC_TANDEM_PERSISTENCE", u"&Persistence"}},
    {IDC_TANDEM_RESET, {u"IDC_TANDEM_RESET", u"&Reset"}},
    {IDC_TANDEM_RELOAD, {u"IDC_TANDEM_RELOAD", u"R&eload All"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_TANDEM_HELP, kHelpText},
};

// The element that carries the "Disable mapping" flag beside the map.
constexpr const char16_t* kDisableElement = u"ColourMappingDisable";

class TandemColoursDlg : public TDialog {
public:
    TandemColoursDlg(const TConfigSession& session, TTandemColourMap& map, const TTandemColourMap& defaults,
                     bool disableMapping)
        : session_(session), map_(map), defaults_(defaults), disableMapping_(disableMapping) {}

protected:
    std::span<const TDialogText> Texts() const override { return kTandemTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // The map index of the selected list position (0 when none).
    std::size_t Index() const;
    void ShowByte();
    void DrawSample(const DRAWITEMSTRUCT& item);

    const TConfigSession& session_;
    TTandemColourMap& map_;
    const TTandemColourMap& defaults_;
    // Shown and clickable, but given back as they came in: the clicks are never read.
    bool disableMapping_;
    bool persistence_ = true;
    bool busy_ = false;
};

INT_PTR TandemColoursDlg::OnInit() {
    for (const TTandemColour& colour : kTandemColours) {
        SendDlgItemMessageW(Window(), IDC_TANDEM_FOREGROUND, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(colour.foregroundText)));
        SendDlgItemMessageW(Window(), IDC_TANDEM_BACKGROUND, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(colour.backgroundText)));
    }
    for (int position = 0; position < static_cast<int>(TTandemColourMap::kListedIndexes); ++position)
        SendDlgItemMessageW(Window(), IDC_TANDEM_ATTRIBUTES, LB_ADDSTRING, 0,
                            reinterpret_cast<LPARAM>(W(TandemAttributeText(position))));
    SetChecked(Window(), IDC_TANDEM_DISABLE, disableMapping_);
    SetChecked(Window(), IDC_TANDEM_PERSISTENCE, persistence_);
    SendDlgItemMessageW(Window(), IDC_TANDEM_ATTRIBUTES, LB_SETCURSEL, 0, 0);
    ShowByte();
    return TRUE;
}

std::size_t TandemColoursDlg::Index() const {
    const int position = static_cast<int>(SendDlgItemMessageW(Window(), IDC_TANDEM_ATTRIBUTES, LB_GETCURSEL, 0, 0));
    const int index = TandemIndexOfListPosition(position);
    return index < 0 ? 0 : static_cast<std::size_t>(index);
}

void TandemColoursDlg::ShowByte() {
    TBusyScope busy(busy_);
    const uint8_t pair = map_.bytes[Index()];
    SendDlgItemMessageW(Window(), IDC_TANDEM_FOREGROUND, CB_SETCURSEL,
                        static_cast<WPARAM>(TandemForegroundPosition(TTandemColourMap::Foreground(pair))), 0);
    SendDlgItemMessageW(Window(), IDC_TANDEM_BACKGROUND, CB_SETCURSEL,
                        static_cast<WPARAM>(TandemBackgroundPosition(TTandemColourMap::Background(pair))), 0);
    InvalidateRect(GetDlgItem(Window(), IDC_TANDEM_SAMPLE), nullptr, FALSE);
}

void TandemColoursDlg::DrawSample(const DRAWITEMSTRUCT& item) {
    const uint8_t pair = map_.bytes[Index()];
    const COLORREF foreground = kTandemColours[TTandemColourMap::Foreground(pair)].sample;
    const COLORREF background = kTandemColours[TTandemColourMap::Background(pair)].sample;
    HDC dc = item.hDC;
    const TBrush fill = MakeBrush(background);
    FillRect(dc, &item.rcItem, fill.get());
    const TSelectObject font(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(Window(), WM_GETFONT, 0, 0)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, foreground);
    const std::u16string text = Translate(u"emlolourdlg_cpp_267", u"Sample Text");
    RECT r = item.rcItem;
    DrawTextW(dc, W(text), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    const std::u16string contrast = ContrastText(ContrastRatio(foreground, background));
    if (GetControlText(Window(), IDC_TANDEM_CONTRAST) != contrast) SetControlText(Window(), IDC_TANDEM_CONTRAST, contrast);
}

INT_PTR TandemColoursDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && wParam == IDC_TANDEM_SAMPLE) {
        DrawSample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    return FALSE;
}

INT_PTR TandemColoursDlg::OnCommand(int id, int code) {
    if (busy_) return TRUE;
    switch (id) {
    case IDC_TANDEM_ATTRIBUTES:
        if (code == LBN_SELCHANGE) ShowByte();
        return TRUE;
    case IDC_TANDEM_FOREGROUND:
    case IDC_TANDEM_BACKGROUND:
        if (code == CBN_SELCHANGE) {
            const int position = static_cast<int>(SendDlgItemMessageW(Window(), id, CB_GETCURSEL, 0, 0));
            if (id == IDC_TANDEM_FOREGROUND)
                map_.SetForegroundPosition(Index(), position);
            else
                map_.SetBackgroundPosition(Index(), position);
            ShowByte();
        }
        return TRUE;
    default: break;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_TANDEM_RESET:
        map_.ResetIndex(Index());
        ShowByte();
        return TRUE;
    case IDC_TANDEM_RELOAD:
        map_.bytes = defaults_.bytes;
        ShowByte();
        return TRUE;
    case IDC_TANDEM_HELP: session_.ShowHelp(u"t653x.colours"); return TRUE;
    case IDOK:
    case IDCANCEL: End(id); return TRUE;
    default: return FALSE;  // the two flags' boxes: shown, never read
    }
}

}  // namespace

bool EditTandemColourMap(HWND parent, TConfigSession& session, TElementDef& element) {
    TTandemColourMap map;
    const TTandemColourMap defaults = map;
    map.Parse(element.value);
    TElementDef* disable = session.FindElement(kDisableElement);
    const bool disableMapping = disable && wtoi(disable->value) != 0;
    TandemColoursDlg dialog(session, map, defaults, disableMapping);
    if (dialog.RunModal(parent, IDD_TANDEM_COLOURS) != IDOK) return false;
    element.value = map.ToText();
    if (disable) disable->value = disableMapping ? u"1" : u"0";
    return true;
}

}  // namespace qrl
