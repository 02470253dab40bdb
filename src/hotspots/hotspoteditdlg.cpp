#include "hotspots/hotspoteditdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "hotspots/hotspotcoloursdlg.h"
#include "hotspots/hotspotpaint_win.h"
#include "hotspots/hotspotrules.h"
#include "hotspots/hotspots_rc.h"
#include "hotspots/hotspotsdlg.h"
#include "keyboard/keymapdata.h"
#include "macro/macroassistdlg.h"
#include "request/session.h"
#include "text/textutil.h"

#include <utility>

namespace qrl {

namespace {

constexpr TDialogText kEditTexts[] = {
    {kDialogTitleId, {u"IDD_CFG_HOTSPOT", u"Configure HotSpot"}},
    {IDC_HS_DESCRIPTION_LABEL, {u"IDC_HS_DESCRIPTION", u"&Description"}},
    {IDC_HS_SEND_LABEL, {u"IDC_HS_SEND", u"&Send String"}},
    {IDC_HS_STYLE_LABEL, {u"IDC_HS_STYLE", u"B&utton Style"}},
    {IDC_HS_PERMANENT, {u"IDC_HS_PERMANENT", u"&Permanent"}},
    {IDC_HS_RELATIVE, {u"IDC_HS_RELATIVE", u"Relativ&e to Match String"}},
    {IDC_HS_MATCH, {u"IDC_HS_MATCH", u"String to &Match ..."}},
    {IDC_HS_AREA_GROUP, {u"IDC_HS_AREA", u"Area"}},
    {IDC_HS_LEFT_LABEL, {u"IDC_HS_LEFT", u"&Left"}},
    {IDC_HS_TOP_LABEL, {u"IDC_HS_TOP", u"&Top"}},
    {IDC_HS_RIGHT_LABEL, {u"IDC_HS_RIGHT", u"&Right"}},
    {IDC_HS_BOTTOM_LABEL, {u"IDC_HS_BOTTOM", u"&Bottom"}},
    {IDC_HS_OVERRIDE, {u"IDC_HS_OVERRIDE", u"Override the colour for this hotspot"}},
    {IDC_HS_SET_COLOUR, {u"IDC_HS_SET_COLOUR", u"Set colour..."}},
    {IDOK, {u"IDOK", u"&OK"}},
    {IDCANCEL, {u"IDCANCEL", u"&Cancel"}},
    {IDC_HS_HELP, {u"IDHELP", u"&Help"}},
};

constexpr TTextKey kStyleTexts[kButtonStyleCount] = {
    {u"hotspoteditdlg_cpp_21", u"Style0 - Background highlight"},
    {u"hotspoteditdlg_cpp_22", u"Style1 - Background highlight and left/top edges"},
    {u"hotspoteditdlg_cpp_23", u"Style2 - Background highlight and right/bottom edges"},
    {u"hotspoteditdlg_cpp_24", u"Style3 - Background highlight and a raised look"},
    {u"hotspoteditdlg_cpp_25", u"Style4 - Background highlight and a border"},
    {u"hotspoteditdlg_cpp_26", u"Style5 - Background highlight, the border and a raised look"},
    {u"hotspoteditdlg_cpp_27", u"Style6 - Background highlight, the border and a higher raised look"},
    {u"hotspoteditdlg_cpp_28", u"Style7 - Background highlight and a higher raised look"},
    {u"hotspoteditdlg_cpp_29", u"Style8 - Invisible"},
};

// The two texts of the sample button share one key.
constexpr const char16_t* kSampleKey = u"hotspoteditdlg_cpp_396";

constexpr TDialogText kMatchTexts[] = {
    {kDialogTitleId, {u"IDD_HS_MATCHSTRING", u"Configure HotSpot Match String"}},
    {IDC_HS_STRING_LABEL, {u"IDC_HS_STRING", u"&String"}},
    {IDC_HS_PRE_LABEL, {u"IDC_HS_PRE", u"P&re chars"}},
    {IDC_HS_POST_LABEL, {u"IDC_HS_POST", u"P&ost chars"}},
    {IDC_HS_CASE, {u"IDC_HS_CASE", u"&Case sensitive"}},
    {IDC_HS_WILDCARDS, {u"IDC_HS_WILDCARDS", u"&Wildcards"}},
    {IDC_HS_AUTO, {u"IDC_HS_AUTO", u"&Auto-execute"}},
    {IDOK, {u"IDOK", u"&OK"}},
    {IDCANCEL, {u"IDCANCEL", u"&Cancel"}},
    {IDC_HS_HELP, {u"IDHELP", u"&Help"}},
};

constexpr TTextKey kPrePostTexts[] = {
    {u"hotspotmatch_prepost_0", u"Exclude pre/post chars from hotspot region"},
    {u"hotspotmatch_prepost_1", u"Include pre/post chars in hotspot region"},
    {u"hotspotmatch_prepost_2", u"Include pre/post chars as blanks"},
};

void FillCombo(HWND dialog, int id, std::span<const TTextKey> texts, int selection) {
    std::vector<std::u16string> rows;
    for (const TTextKey& text : texts) rows.push_back(Translate(text));
    FillComboRows(dialog, id, rows, selection);
}

class MatchStringDlg : public TDialog {
public:
    MatchStringDlg(const TConfigSession& session, HotSpot& spot) : session_(session), spot_(spot) {}

protected:
    std::span<const TDialogText> Texts() const override { return kMatchTexts; }
    INT_PTR OnInit() override {
        SetControlText(Window(), IDC_HS_STRING, spot_.matchString);
        SetControlText(Window(), IDC_HS_PRE, spot_.preChars);
        SetControlText(Window(), IDC_HS_POST, spot_.postChars);
        SetChecked(Window(), IDC_HS_CASE, spot_.caseSensitive != 0);
        SetChecked(Window(), IDC_HS_WILDCARDS, spot_.wildcards);
        SetChecked(Window(), IDC_HS_AUTO, spot_.autoExecute != 0);
        FillCombo(Window(), IDC_HS_PREPOST, kPrePostTexts, spot_.prePostMode);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK: ReadBack(); End(IDOK); return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_HS_HELP: session_.ShowHelp(u"hotspots.string"); return TRUE;
        default: return FALSE;
        }
    }

private:
    void ReadBack() {
        spot_.matchString = GetControlText(Window(), IDC_HS_STRING);
        spot_.preChars = GetControlText(Window(), IDC_HS_PRE);
        spot_.postChars = GetControlText(Window(), IDC_HS_POST);
        spot_.caseSensitive = IsChecked(Window(), IDC_HS_CASE) ? 1 : 0;
        spot_.wildcards = IsChecked(Window(), IDC_HS_WILDCARDS);
        spot_.autoExecute = IsChecked(Window(), IDC_HS_AUTO) ? 1 : 0;
        spot_.prePostMode = ComboSelection(Window(), IDC_HS_PREPOST);
    }

    const TConfigSession& session_;
    HotSpot& spot_;
};

class HotSpotEditDlg : public TDialog {
public:
    explicit HotSpotEditDlg(THotSpotDialogData& data) : data_(data), spot_(data.editing) {}

protected:
    std::span<const TDialogText> Texts() const override { return kEditTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void ShowChoices();
    void RepaintSample() const { InvalidateRect(GetDlgItem(Window(), IDC_HS_SAMPLE), nullptr, FALSE); }
    void DrawSample(const DRAWITEMSTRUCT& item) const;
    void RunAssistant();
    void Accept();

    THotSpotDialogData& data_;
    HotSpot& spot_;
};

INT_PTR HotSpotEditDlg::OnInit() {
    SendDlgItemMessageW(Window(), IDC_HS_DESCRIPTION, EM_LIMITTEXT, 0, 0);
    SendDlgItemMessageW(Window(), IDC_HS_SEND, EM_LIMITTEXT, 0, 0);
    SetControlText(Window(), IDC_HS_DESCRIPTION, spot_.description);
    SendDlgItemMessageW(Window(), IDC_HS_DESCRIPTION, EM_SETSEL, 0, 0);  // the start of a long text shows
    SendDlgItemMessageW(Window(), IDC_HS_DESCRIPTION, EM_SCROLLCARET, 0, 0);
    SetControlText(Window(), IDC_HS_SEND, spot_.sendString);
    FillCombo(Window(), IDC_HS_STYLE, kStyleTexts, spot_.buttonStyle);
    SetControlNumber(Window(), IDC_HS_LEFT, spot_.left);
    SetControlNumber(Window(), IDC_HS_TOP, spot_.top);
    SetControlNumber(Window(), IDC_HS_RIGHT, spot_.right);
    SetControlNumber(Window(), IDC_HS_BOTTOM, spot_.bottom);
    SetChecked(Window(), spot_.permanent ? IDC_HS_PERMANENT : IDC_HS_RELATIVE, true);
    SetChecked(Window(), IDC_HS_OVERRIDE, spot_.overrideColour);
    ShowChoices();
    SetControlText(Window(), IDC_HS_SAMPLE, Translate(kSampleKey, u"Up"));
    return TRUE;
}

void HotSpotEditDlg::ShowChoices() {
    EnableControl(Window(), IDC_HS_MATCH, !spot_.permanent);
    EnableControl(Window(), IDC_HS_SET_COLOUR, spot_.overrideColour);
    RepaintSample();
}

void HotSpotEditDlg::DrawSample(const DRAWITEMSTRUCT& item) const {
    const bool held = (item.itemState & ODS_SELECTED) != 0;
    const HotSpots& set = data_.hotspots;
    const uint32_t background = spot_.overrideColour ? spot_.background : set.background;
    const uint32_t foreground = spot_.overrideColour ? spot_.foreground : set.foreground;
    DrawStyleSample(item.hDC, item.rcItem, StyleSampleFor(spot_.buttonStyle, held, background, foreground),
                    Translate(kSampleKey, held ? u"Down" : u"Up"));
}

void HotSpotEditDlg::RunAssistant() {
    std::u16string text = GetControlText(Window(), IDC_HS_SEND);
    const TConfigSession& session = *data_.session;
    if (runMacroAssistant(Window(), text, NamesOf(KeyDataOf(session).emulationKeys), session.link.window, kMacroTextMode) ==
        IDOK)
        SetControlText(Window(), IDC_HS_SEND, text);
}

void HotSpotEditDlg::Accept() {
    spot_.left = wtoi(GetControlText(Window(), IDC_HS_LEFT));
    spot_.top = wtoi(GetControlText(Window(), IDC_HS_TOP));
    spot_.right = wtoi(GetControlText(Window(), IDC_HS_RIGHT));
    spot_.bottom = wtoi(GetControlText(Window(), IDC_HS_BOTTOM));
    spot_.description = GetControlText(Window(), IDC_HS_DESCRIPTION);
    spot_.sendString = GetControlText(Window(), IDC_HS_SEND);
    spot_.recordType = kRecordText;  // whatever it was read as, an edited hotspot holds text
    spot_.overrideColour = IsChecked(Window(), IDC_HS_OVERRIDE);
    End(IDOK);
}

INT_PTR HotSpotEditDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && wParam == IDC_HS_SAMPLE) {
        DrawSample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    return FALSE;
}

INT_PTR HotSpotEditDlg::OnCommand(int id, int code) {
    if (id == IDC_HS_STYLE) {
        if (code != CBN_SELCHANGE) return FALSE;
        spot_.buttonStyle = ComboSelection(Window(), IDC_HS_STYLE);
        RepaintSample();
        return TRUE;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_HS_PERMANENT:
    case IDC_HS_RELATIVE:
        spot_.permanent = IsChecked(Window(), IDC_HS_PERMANENT);
        ShowChoices();
        return TRUE;
    case IDC_HS_OVERRIDE:
        spot_.overrideColour = IsChecked(Window(), IDC_HS_OVERRIDE);
        ShowChoices();
        return TRUE;
    case IDC_HS_SET_COLOUR:
        if (RunHotSpotColours(Window(), *data_.session, spot_.foreground, spot_.background)) RepaintSample();
        return TRUE;
    case IDC_HS_MATCH: {
        MatchStringDlg match(*data_.session, spot_);
        match.RunModal(Window(), IDD_HS_MATCHSTRING);
        return TRUE;
    }
    case IDC_HS_ASSIST: RunAssistant(); return TRUE;
    case IDC_HS_HELP: data_.session->ShowHelp(u"hotspots.edit"); return TRUE;
    case IDOK: Accept(); return TRUE;
    case IDCANCEL: End(IDCANCEL); return TRUE;
    default: return FALSE;
    }
}

}  // namespace

bool RunHotSpotEdit(HWND parent, THotSpotDialogData& data) {
    HotSpotEditDlg dialog(data);
    return dialog.RunModal(parent, IDD_CFG_HOTSPOT) == IDOK;
}

}  // namespace qrl
