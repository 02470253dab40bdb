#include "colours/colourconfigdlg.h"

#include <commctrl.h>
#include <commdlg.h>

#include "colours/colourconfig.h"
#include "colours/colourpreview.h"
#include "colours/colours_rc.h"
#include "colours/colourtoolsdlg.h"
#include "colours/contrast.h"
#include "colours/palettemodel.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "kit/gdiholders.h"
#include "kit/samplectl.h"
#include "request/session.h"
#include "text/textutil.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace qrl {

namespace {

constexpr TDialogText kConfigTexts[] = {
    {kDialogTitleId, {u"IDD_ATTR_CONFIG", u"Colour Configuration"}},
    {IDC_SCHEME_LABEL, {u"IDC_SCHEME_LABEL", u"Scheme:"}},
    {IDC_SCHEME_SAVEAS, {u"IDC_SCHEME_SAVEAS", u"Save as..."}},
    {IDC_SCHEME_REMOVE, {u"IDC_SCHEME_REMOVE", u"Remove"}},
    {IDC_ATTRLIST_LABEL, {u"IDC_ATTRLIST_LABEL", u"Attributes:"}},
    {IDC_SHOW_GROUP, {u"IDC_SHOW_GROUP", u"Show"}},
    {ID_ALL, {u"ID_ALL", u"All"}},
    {ID_EMUSED, {u"ID_EMUSED", u"Emulation"}},
    {ID_ATTRINVIS, {u"ID_ATTRINVIS", u"Include invis."}},
    {IDC_ATTREDIT, {u"IDC_ATTREDIT", u"Change..."}},
    {IDC_ATTR_ADVANCED, {u"IDC_ADVANCED", u"Advanced..."}},
    {IDC_PREVIEW_LABEL, {u"IDC_PREVIEW_LABEL", u"Preview as:"}},
    {IDC_CONTRAST_CHECK, {u"IDC_CONTRAST_CHECK", u"Chec&k..."}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDHELP, kHelpText},
};

constexpr TTextKey kLoseChanges{u"attrmapdlg_cpp_370", u"Lose changes to custom scheme?"};
constexpr TTextKey kRemoveScheme{u"attrmapdlg_cpp_430", u"Remove scheme"};

// The sample of either dialog, drawn from the current item in the working palette as the preview
// shows it, and the contrast of its two colours; true when that is hard to read.
bool ShowCurrentItem(HWND dialog, int sampleId, int contrastId, const TAttrDialogData& data,
                     TVisionPreview preview) {
    const TPreviewSample sample = PreviewSample(data.working.palette, data.shown, preview);
    ShowInSample(GetDlgItem(dialog, sampleId), data.currentLabel, sample.foreground, sample.background,
                 data.shown.features, data.enableBlinkCfg);
    SetControlText(dialog, contrastId, sample.contrast);
    InvalidateRect(GetDlgItem(dialog, contrastId), nullptr, TRUE);  // its colour may change with the same text
    return sample.hardToRead;
}

// The "Preview as:" drop-down of either dialog, on `preview`.
void FillPreviewChoices(HWND dialog, TVisionPreview preview) {
    const auto names = VisionPreviewNames();
    FillComboRows(dialog, IDC_PREVIEW, names, static_cast<int>(preview));
}

TVisionPreview ChosenPreview(HWND dialog) {
    const int row = ComboSelection(dialog, IDC_PREVIEW);
    return row >= 0 && static_cast<std::size_t>(row) < kVisionPreviewCount ? static_cast<TVisionPreview>(row)
                                                                            : TVisionPreview::Normal;
}

// WM_CTLCOLORSTATIC of either dialog: the contrast figure in the warning colour while it is low.
INT_PTR ColourContrastFigure(HWND dialog, int contrastId, bool hardToRead, WPARAM dc, LPARAM control) {
    if (!hardToRead || reinterpret_cast<HWND>(control) != GetDlgItem(dialog, contrastId)) return FALSE;
    return StaticTextColour(dc, WarningTextColour());
}

void ShowHelp(const TAttrDialogData& data, std::u16string_view topic) {
    if (data.session) data.session->ShowHelp(topic);
}

bool AskYesNo(HWND owner, const std::u16string& question) {
    return MessageBoxW(owner, W(question), kProgramTitle, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

class ColourConfigDlg : public TDialog {
public:
    explicit ColourConfigDlg(TAttrDialogData& data) : data_(data) {}

protected:
    std::span<const TDialogText> Texts() const override { return kConfigTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CTLCOLORSTATIC)
            return ColourContrastFigure(Window(), IDC_ATTRCONTRAST, hardToRead_, wParam, lParam);
        return TDialog::OnMessage(message, wParam, lParam);
    }

private:
    void FillSchemes() {
        FillComboRows(Window(), IDC_SCHEME, SchemeComboNames(data_));
        SelectComboText(Window(), IDC_SCHEME, data_.working.name);
        EnableControl(Window(), IDC_SCHEME_REMOVE, !IsCustom(data_));
    }
    TListOptions ShowOptions() const {
        return {IsChecked(Window(), ID_ALL), IsChecked(Window(), ID_EMUSED), IsChecked(Window(), ID_ATTRINVIS)};
    }
    void ListItems();
    void ShowItem() { hardToRead_ = ShowCurrentItem(Window(), IDC_ATTRSAMPLE, IDC_ATTRCONTRAST, data_, preview_); }
    void SelectItem(uint32_t index) {
        SelectListItem(data_, index);
        ShowItem();
    }
    // After any edit: a named scheme forks into "(custom)", which the combo then shows.
    void Fork() {
        if (!MarkCustom(data_)) return;
        SelectComboText(Window(), IDC_SCHEME, data_.currentName);
        EnableControl(Window(), IDC_SCHEME_REMOVE, false);
    }
    void ChooseScheme();
    void Change();
    void Remove();
    void CheckContrast();

    TAttrDialogData& data_;
    TVisionPreview preview_ = TVisionPreview::Normal;  // the dialog's own: never stored, never in a reply
    bool hardToRead_ = false;
};

INT_PTR ColourConfigDlg::OnInit() {
    // The combo's edit shows "(custom)", which is no row of its list; names are only chosen.
    SendMessageW(FindWindowExW(GetDlgItem(Window(), IDC_SCHEME), nullptr, L"Edit", nullptr), EM_SETREADONLY, TRUE, 0);
    OpenWorkingScheme(data_);
    FillSchemes();
    CheckRadioButton(Window(), ID_ALL, ID_EMUSED, ID_EMUSED);
    SetChecked(Window(), ID_ATTRINVIS, false);
    FillPreviewChoices(Window(), preview_);
    ListItems();
    SendDlgItemMessageW(Window(), IDC_ATTRLIST, LB_SETCURSEL, 0, 0);
    SelectItem(0);
    return TRUE;
}

void ColourConfigDlg::ListItems() {
    HWND list = GetDlgItem(Window(), IDC_ATTRLIST);
    RECT client{};
    GetClientRect(list, &client);
    TWindowDC dc(list);
    TSelectObject font(dc.get(), reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
    const auto measure = [&](std::u16string_view text) {
        SIZE extent{};
        GetTextExtentPoint32W(dc.get(), reinterpret_cast<const wchar_t*>(text.data()), static_cast<int>(text.size()),
                              &extent);
        return static_cast<int>(extent.cx);
    };
    ListAttributes(data_, ShowOptions(), client.right - client.left, measure);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::u16string& text : data_.itemTexts)
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(text)));
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

void ColourConfigDlg::ChooseScheme() {
    const int row = ComboSelection(Window(), IDC_SCHEME);
    if (row == CB_ERR) return;
    std::u16string name(static_cast<std::size_t>(SendDlgItemMessageW(Window(), IDC_SCHEME, CB_GETLBTEXTLEN, row, 0)),
                        u'\0');
    SendDlgItemMessageW(Window(), IDC_SCHEME, CB_GETLBTEXT, row, reinterpret_cast<LPARAM>(name.data()));
    const auto ask = [&] { return AskYesNo(Window(), Translate(kLoseChanges)); };
    switch (SelectScheme(data_, name, ask)) {
    case TSchemeSwitch::Declined: SelectComboText(Window(), IDC_SCHEME, data_.currentName); break;
    case TSchemeSwitch::Switched:
        ShowItem();
        EnableControl(Window(), IDC_SCHEME_REMOVE, !IsCustom(data_));
        break;
    case TSchemeSwitch::Unchanged: break;
    }
}

void ColourConfigDlg::Change() {
    data_.changed = false;
    RunAttrEditDialog(Window(), data_, preview_);
    SelectItem(data_.selectedItem);
    if (data_.changed) Fork();
}

void ColourConfigDlg::Remove() {
    if (!AskYesNo(Window(), RemoveSchemeQuestion(Translate(kRemoveScheme), data_.working.name))) return;
    RemoveWorkingScheme(data_);
    FillSchemes();
}

// Go to selects the finding's combination, as a click in the list does.
void ColourConfigDlg::CheckContrast() {
    const std::vector<TContrastFinding> findings = CheckSchemeContrast(data_, ShowOptions(), preview_);
    const std::optional<uint32_t> chosen =
        RunContrastCheckDialog(Window(), ContrastCheckRows(findings), !findings.empty());
    if (!chosen || *chosen >= findings.size()) return;
    const std::optional<uint32_t> row = ListRowOfCombination(data_, findings[*chosen].combination);
    if (!row) return;
    SendDlgItemMessageW(Window(), IDC_ATTRLIST, LB_SETCURSEL, *row, 0);
    SelectItem(*row);
}

INT_PTR ColourConfigDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDC_PREVIEW:
        if (code == CBN_SELCHANGE) {
            preview_ = ChosenPreview(Window());
            ShowItem();
        }
        return TRUE;
    case IDC_CONTRAST_CHECK:
        if (code == BN_CLICKED) CheckContrast();
        return TRUE;
    case IDC_SCHEME:
        if (code == CBN_SELCHANGE) ChooseScheme();
        return TRUE;
    case IDC_ATTRLIST:
        if (code == LBN_SELCHANGE) {
            const LRESULT row = SendDlgItemMessageW(Window(), IDC_ATTRLIST, LB_GETCURSEL, 0, 0);
            if (row != LB_ERR) SelectItem(static_cast<uint32_t>(row));
        } else if (code == LBN_DBLCLK) {
            Change();
        }
        return TRUE;
    case ID_ALL:
    case ID_EMUSED:
    case ID_ATTRINVIS:
        if (code == BN_CLICKED) ListItems();
        return TRUE;
    case IDC_ATTREDIT:
        if (code == BN_CLICKED) Change();
        return TRUE;
    case IDC_ATTR_ADVANCED:
        if (code == BN_CLICKED && RunAdvancedAttrDialog(Window(), data_)) {
            SelectItem(data_.selectedItem);
            Fork();
        }
        return TRUE;
    case IDC_SCHEME_SAVEAS:
        if (code == BN_CLICKED && RunSaveSchemeDialog(Window(), data_)) {
            SaveSchemeAs(data_, data_.newSchemeName);
            FillSchemes();
        }
        return TRUE;
    case IDC_SCHEME_REMOVE:
        if (code == BN_CLICKED) Remove();
        return TRUE;
    case IDHELP:
        if (code == BN_CLICKED) ShowHelp(data_, u"");
        return TRUE;
    case IDOK:
        if (code == BN_CLICKED) {
            AcceptColourConfig(data_, GetControlText(Window(), IDC_SCHEME));
            End(IDOK);
        }
        return TRUE;
    case IDCANCEL:
        if (code == BN_CLICKED) End(IDCANCEL);
        return TRUE;
    default: return FALSE;
    }
}

// Edit Attribute

constexpr TDialogText kEditTexts[] = {
    {kDialogTitleId, {u"IDD_ATTR_CHANGE", u"Edit Attribute"}},
    {IDC_ATTR_LABEL, {u"IDC_ATTR_LABEL", u"Attribute = "}},
    {IDC_FEATURES_GROUP, {u"IDC_FEATURES_GROUP", u"Features"}},
    {IDC_FEATURE_FIRST + 0, {u"IDC_FEATURE_BLINK", kFeatureBoxes[0].text}},
    {IDC_FEATURE_FIRST + 1, {u"IDC_FEATURE_UNDERLINE", kFeatureBoxes[1].text}},
    {IDC_FEATURE_FIRST + 2, {u"IDC_FEATURE_OVERLINE", kFeatureBoxes[2].text}},
    {IDC_FEATURE_FIRST + 3, {u"IDC_FEATURE_STRIKEOUT", kFeatureBoxes[3].text}},
    {IDC_FEATURE_FIRST + 4, {u"IDC_FEATURE_BOX", kFeatureBoxes[4].text}},
    {IDC_FEATURE_FIRST + 5, {u"IDC_FEATURE_REVERSE", kFeatureBoxes[5].text}},
    {IDC_FEATURE_FIRST + 6, {u"IDC_FEATURE_BOLD", kFeatureBoxes[6].text}},
    {IDC_FEATURE_FIRST + 7, {u"IDC_FEATURE_DIM", kFeatureBoxes[7].text}},
    {IDC_FEATURE_FIRST + 8, {u"IDC_FEATURE_INVISIBLE", kFeatureBoxes[8].text}},
    {IDC_OVERRIDE, {u"IDC_OVERRIDE", u"O&verride colour"}},
    {IDC_PALETTE_CFG, {u"IDC_PALETTE_CFG", u"&Palette..."}},
    {IDC_FIX_CONTRAST, {u"IDC_FIX_CONTRAST", u"Fix &contrast"}},
    {IDC_PREVIEW_LABEL, {u"IDC_PREVIEW_LABEL", u"Preview as:"}},
    {IDC_ATTR_FOREGROUND, {u"IDC_ATTR_FOREGROUND", u"F"}},  // the small layout's
    {IDC_ATTR_BACKGROUND, {u"IDC_ATTR_BACKGROUND", u"B"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDHELP, kHelpText},
};
constexpr int kFeatureBoxCount = static_cast<int>(std::size(kFeatureBoxes));

class AttrEditDlg : public TDialog {
public:
    AttrEditDlg(TAttrDialogData& data, TVisionPreview preview) : data_(data), preview_(preview) {}

protected:
    std::span<const TDialogText> Texts() const override { return kEditTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CTLCOLORSTATIC)
            return ColourContrastFigure(Window(), IDC_ATTR_CHANGE_CONTRAST, hardToRead_, wParam, lParam);
        return TDialog::OnMessage(message, wParam, lParam);
    }

private:
    LRESULT ToPalette(UINT message, WPARAM wParam, LPARAM lParam = 0) const {
        return SendDlgItemMessageW(Window(), IDC_ATTR_PALETTE, message, wParam, lParam);
    }
    void ShowEntry(const TAttrEditView& view);
    void ShowMarks(const TAttrEditView& view);
    // The palette, and the small layout's "F" and "B" (the normal layout has none: skipped).
    void EnablePalette(const TAttrEditView& view) {
        EnableControl(Window(), IDC_ATTR_PALETTE, view.paletteEnabled);
        EnableControl(Window(), IDC_ATTR_FOREGROUND, view.targetsEnabled);
        EnableControl(Window(), IDC_ATTR_BACKGROUND, view.targetsEnabled);
    }
    void Target(TPaletteTarget target) {
        target_ = target;
        ShowMarks(AttrEditView(data_));
    }
    // The sample and the palette as the preview shows them; Fix contrast while the pair is hard to read.
    void ShowSample() {
        hardToRead_ = ShowCurrentItem(Window(), IDC_ATTR_CHANGE_SAMPLE, IDC_ATTR_CHANGE_CONTRAST, data_, preview_);
        EnableControl(Window(), IDC_FIX_CONTRAST, FixContrastPick(data_, preview_).has_value());
    }
    void ShowPalette() const {
        const TPalette seen = SimulatedPalette(data_.working.palette, preview_);
        ToPalette(kPaletteSetColours, 0, reinterpret_cast<LPARAM>(seen.data()));
    }
    void FixContrast();

    TAttrDialogData& data_;
    TVisionPreview preview_;
    TNormalPair normalBackup_;  // a palette import may set the Normal pair, which Cancel puts back
    bool hardToRead_ = false;
    TPaletteTarget target_ = TPaletteTarget::Foreground;
};

INT_PTR AttrEditDlg::OnInit() {
    SetControlText(Window(), IDC_ATTR_LABEL, GetControlText(Window(), IDC_ATTR_LABEL) + data_.currentLabel);
    const TAttrEditView view = BeginAttrEdit(data_);
    normalBackup_ = NormalPairOf(data_);
    FillPreviewChoices(Window(), preview_);
    ShowPalette();
    ShowMarks(view);
    ShowEntry(view);
    ShowSample();
    return TRUE;
}

void AttrEditDlg::ShowMarks(const TAttrEditView& view) {
    const TPaletteMarks marks = AttrPaletteMarks(view, target_);
    ToPalette(kPaletteSetFirstLetter, marks.firstLetter);
    ToPalette(kPaletteSetSecondLetter, marks.secondLetter);
    ToPalette(kPaletteSetSingle, marks.single ? 1 : 0);
    ToPalette(kPaletteSetFirst, marks.first);
    if (!marks.single) ToPalette(kPaletteSetSecond, marks.second);
}

void AttrEditDlg::ShowEntry(const TAttrEditView& view) {
    for (int i = 0; i < kFeatureBoxCount; ++i) {
        SetChecked(Window(), IDC_FEATURE_FIRST + i, (view.features & kFeatureBoxes[i].bit) != 0);
        EnableControl(Window(), IDC_FEATURE_FIRST + i, view.featuresEnabled);
    }
    SetChecked(Window(), IDC_OVERRIDE, view.override);
    EnableControl(Window(), IDC_OVERRIDE, view.overrideEnabled);
    EnablePalette(view);
}

INT_PTR AttrEditDlg::OnCommand(int id, int code) {
    if (id >= IDC_FEATURE_FIRST && id < IDC_FEATURE_FIRST + kFeatureBoxCount) {
        if (code == BN_CLICKED) {
            ToggleAttrFeature(data_, kFeatureBoxes[id - IDC_FEATURE_FIRST].bit, IsChecked(Window(), id));
            ShowSample();
        }
        return TRUE;
    }
    switch (id) {
    case IDC_OVERRIDE:
        if (code == BN_CLICKED) {
            SetAttrOverride(data_, IsChecked(Window(), IDC_OVERRIDE));
            EnablePalette(AttrEditView(data_));
            ShowSample();
        }
        return TRUE;
    case IDC_ATTR_PALETTE:  // the palette's own notification carries no code
        PickAttrColours(data_, static_cast<uint32_t>(ToPalette(kPaletteGetFirst, 0)),
                        static_cast<uint32_t>(ToPalette(kPaletteGetSecond, 0)), target_);
        ShowSample();
        return TRUE;
    case IDC_ATTR_FOREGROUND:
        if (code == BN_CLICKED) Target(TPaletteTarget::Foreground);
        return TRUE;
    case IDC_ATTR_BACKGROUND:
        if (code == BN_CLICKED) Target(TPaletteTarget::Background);
        return TRUE;
    case IDC_PALETTE_CFG:
        if (code == BN_CLICKED && RunPaletteDialog(Window(), data_)) {
            // An import may have given the Normal attribute new colours, which this item may show.
            SelectListItem(data_, data_.selectedItem);
            ShowPalette();
            ShowMarks(AttrEditView(data_));
            ShowSample();
        }
        return TRUE;
    case IDC_FIX_CONTRAST:
        if (code == BN_CLICKED) FixContrast();
        return TRUE;
    case IDC_PREVIEW:
        if (code == CBN_SELCHANGE) {
            preview_ = ChosenPreview(Window());
            ShowPalette();
            ShowSample();
        }
        return TRUE;
    case IDHELP:
        if (code == BN_CLICKED) ShowHelp(data_, u"colours.edit");
        return TRUE;
    case IDOK:
        if (code == BN_CLICKED) End(IDOK);
        return TRUE;
    case IDCANCEL:
        if (code == BN_CLICKED) {
            CancelAttrEdit(data_);
            StoreNormalPair(data_, normalBackup_);
            End(IDCANCEL);
        }
        return TRUE;
    default: return FALSE;
    }
}

// The pick goes the way of a palette click, so the scheme forks as a click makes it.
void AttrEditDlg::FixContrast() {
    const std::optional<TPalettePick> pick = FixContrastPick(data_, preview_);
    if (!pick) return;
    PickAttrColours(data_, pick->first, pick->second);
    ShowMarks(AttrEditView(data_));
    ShowSample();
}

// Advanced Attribute Configuration

constexpr TDialogText kAdvancedTexts[] = {
    {kDialogTitleId, {u"IDD_ATTR_ADVANCED_PPC", u"Advanced Attribute Configuration"}},
    {IDC_DISABLE_BLINK, {u"IDC_DISABLE_BLINK", u"Disable blink in emulation"}},
    {IDC_DISABLE_BLINK_CFG, {u"IDC_DISABLE_BLINK_CFG", u"Disable blink in config window"}},
    {IDC_DISABLE_INVIS, {u"IDC_DISABLE_INVIS", u"Disable invisible in emulation"}},
    {IDC_DISABLE_INVIS_CFG, {u"IDC_DISABLE_INVIS_CFG", u"Disable invisible in config window"}},
    {IDC_BOLD_LABEL, {u"IDC_BOLD_LABEL", u"Bold:"}},
    {IDC_DIM_LABEL, {u"IDC_DIM_LABEL", u"Dim:"}},
    {IDC_BOX_STYLE_LABEL, {u"IDC_BOX_STYLE_LABEL", u"Box style:"}},
    {IDC_MERGE_BOXES, {u"IDC_MERGE_BOXES", u"Merge vertically adjacent boxes"}},
    {IDC_BACKGROUND_LABEL, {u"IDC_BACKGROUND_LABEL", u"Background:"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDHELP, kHelpText},
};

constexpr TTextKey kBrowseTitle{u"attrmapdlg_cpp_1024", u"Browse a Background Graphic"};

class AdvancedAttrDlg : public TDialog {
public:
    explicit AdvancedAttrDlg(TAttrDialogData& data) : data_(data) {}

protected:
    std::span<const TDialogText> Texts() const override { return kAdvancedTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    void Browse();
    uint32_t Row(int id) const {
        const int row = ComboSelection(Window(), id);
        return row < 0 ? 0 : static_cast<uint32_t>(row);
    }

    TAttrDialogData& data_;
};

INT_PTR AdvancedAttrDlg::OnInit() {
    const TAdvancedSettings a = LoadAdvancedSettings(data_);
    const TColourTexts& texts = ColourTexts();
    SetChecked(Window(), IDC_DISABLE_BLINK, a.disableBlink);
    SetChecked(Window(), IDC_DISABLE_BLINK_CFG, a.disableBlinkCfg);
    SetChecked(Window(), IDC_DISABLE_INVIS, a.disableInvis);
    SetChecked(Window(), IDC_DISABLE_INVIS_CFG, a.disableInvisCfg);
    FillComboRows(Window(), IDC_BOLD_MODE, texts.colourActions, static_cast<int>(a.boldMode));
    FillComboRows(Window(), IDC_DIM_MODE, texts.colourActions, static_cast<int>(a.dimMode));
    FillComboRows(Window(), IDC_BOX_STYLE, texts.boxStyles, static_cast<int>(a.boxStyle));
    SetChecked(Window(), IDC_MERGE_BOXES, a.mergeBoxes);
    FillComboRows(Window(), IDC_BACKGROUND_MODE, texts.backgroundModes, static_cast<int>(a.background));
    SetControlText(Window(), IDC_GRAPHIC_FILE, a.graphicFile);
    return TRUE;
}

void AdvancedAttrDlg::Browse() {
    TOpenFileRequest request;
    request.title = Translate(kBrowseTitle);
    request.filter = BuildBrowseFilter(u"Bitmap files (*.bmp)|*.BMP|", u"All files|*.*|");
    request.initialFile = GetControlText(Window(), IDC_GRAPHIC_FILE);
    request.defaultExtension = u"*.BMP";
    request.flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    const std::u16string chosen = ChooseFileToOpen(Window(), request);
    if (!chosen.empty()) SetControlText(Window(), IDC_GRAPHIC_FILE, chosen);
}

INT_PTR AdvancedAttrDlg::OnCommand(int id, int code) {
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_GRAPHIC_BROWSE: Browse(); return TRUE;
    case IDHELP: ShowHelp(data_, u"colours.advanced"); return TRUE;
    case IDOK: {
        TAdvancedSettings a;
        a.disableBlink = IsChecked(Window(), IDC_DISABLE_BLINK);
        a.disableBlinkCfg = IsChecked(Window(), IDC_DISABLE_BLINK_CFG);
        a.disableInvis = IsChecked(Window(), IDC_DISABLE_INVIS);
        a.disableInvisCfg = IsChecked(Window(), IDC_DISABLE_INVIS_CFG);
        a.boldMode = Row(IDC_BOLD_MODE);
        a.dimMode = Row(IDC_DIM_MODE);
        a.boxStyle = Row(IDC_BOX_STYLE);
        a.mergeBoxes = IsChecked(Window(), IDC_MERGE_BOXES);
        a.background = Row(IDC_BACKGROUND_MODE);
        a.graphicFile = GetControlText(Window(), IDC_GRAPHIC_FILE);
        StoreAdvancedSettings(data_, a);
        End(IDOK);
        return TRUE;
    }
    case IDCANCEL: End(IDCANCEL); return TRUE;
    default: return FALSE;
    }
}

// Save Colour Scheme

constexpr TDialogText kSaveTexts[] = {
    {kDialogTitleId, {u"IDD_ATTR_SAVESCHEME", u"Save Colour Scheme"}},
    {IDC_SCHEME_NAME_LABEL, {u"IDC_SCHEME_NAME_LABEL", u"Scheme name:"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDHELP, kHelpText},
};

class SaveSchemeDlg : public TDialog {
public:
    explicit SaveSchemeDlg(TAttrDialogData& data) : data_(data) {}

protected:
    std::span<const TDialogText> Texts() const override { return kSaveTexts; }
    INT_PTR OnInit() override {
        SetControlText(Window(), IDC_SCHEME_NAME, data_.working.previousName);
        EnableControl(Window(), IDOK, !data_.working.previousName.empty());
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        switch (id) {
        case IDC_SCHEME_NAME:
            if (code == EN_CHANGE) EnableControl(Window(), IDOK, !GetControlText(Window(), IDC_SCHEME_NAME).empty());
            return TRUE;
        case IDHELP:
            if (code == BN_CLICKED) ShowHelp(data_, u"colours.save_scheme");
            return TRUE;
        case IDOK:
            // The default button answers Enter even while disabled: an empty name is never taken.
            if (code == BN_CLICKED && !GetControlText(Window(), IDC_SCHEME_NAME).empty()) {
                data_.newSchemeName = GetControlText(Window(), IDC_SCHEME_NAME);
                End(IDOK);
            }
            return TRUE;
        case IDCANCEL:
            if (code == BN_CLICKED) End(IDCANCEL);
            return TRUE;
        default: return FALSE;
        }
    }

private:
    TAttrDialogData& data_;
};

// Configure Palette

constexpr TDialogText kPaletteTexts[] = {
    {kDialogTitleId, {u"IDD_ATTR_PALCFG", u"Configure Palette"}},
    {IDC_PAL_INDEX_LABEL, {u"IDC_PAL_INDEX_LABEL", u"Colour:"}},
    {IDC_PAL_RED_LABEL, {u"IDC_PAL_RED_LABEL", u"Red:"}},
    {IDC_PAL_GREEN_LABEL, {u"IDC_PAL_GREEN_LABEL", u"Green:"}},
    {IDC_PAL_BLUE_LABEL, {u"IDC_PAL_BLUE_LABEL", u"Blue:"}},
    {IDC_PAL_IMPORT, {u"IDC_PAL_IMPORT", u"&Import..."}},
    {IDC_PAL_EXPORT, {u"IDC_PAL_EXPORT", u"E&xport..."}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDHELP, kHelpText},
};

// Slider and number edit of each component, red first.
constexpr int kSliders[3] = {IDC_PAL_RED_SLIDER, IDC_PAL_GREEN_SLIDER, IDC_PAL_BLUE_SLIDER};
constexpr int kNumbers[3] = {IDC_PAL_RED, IDC_PAL_GREEN, IDC_PAL_BLUE};

class PaletteDlg : public TDialog {
public:
    explicit PaletteDlg(TAttrDialogData& data) : data_(data) {}

protected:
    std::span<const TDialogText> Texts() const override { return kPaletteTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    int Slider(int i) const { return static_cast<int>(SendDlgItemMessageW(Window(), kSliders[i], TBM_GETPOS, 0, 0)); }
    void ShowIndex(uint32_t index);
    void Apply(const int (&parts)[3], bool fromSliders);
    void Import() {
        if (const std::optional<TImportedPalette> imported = AskPaletteToImport(Window())) {
            ImportPalette(data_, *imported, normal_);
            ShowIndex(data_.paletteIndex);
        }
    }

    TAttrDialogData& data_;
    TNormalPair normal_;  // the Normal attribute's pair, as an import may set it; stored on OK
    bool busy_ = false;  // set while the dialog itself writes its number edits
};

INT_PTR PaletteDlg::OnInit() {
    data_.paletteEdit = data_.working.palette;
    normal_ = NormalPairOf(data_);
    std::vector<std::u16string> rows;
    for (int i = 0; i < 16; ++i) rows.push_back(decimal(i));
    const uint32_t start = PaletteStartIndex(data_);
    FillComboRows(Window(), IDC_PAL_INDEX, rows, static_cast<int>(start));
    for (int slider : kSliders) SendDlgItemMessageW(Window(), slider, TBM_SETRANGE, TRUE, MAKELPARAM(0, 255));
    ShowIndex(start);
    return TRUE;
}

void PaletteDlg::ShowIndex(uint32_t index) {
    data_.paletteIndex = index % 16;
    const uint32_t colour = data_.paletteEdit[data_.paletteIndex];
    TBusyScope busy(busy_);
    for (int i = 0; i < 3; ++i) {
        const int part = static_cast<int>((colour >> (8 * i)) & 0xFF);
        SendDlgItemMessageW(Window(), kSliders[i], TBM_SETPOS, TRUE, part);
        SetControlNumber(Window(), kNumbers[i], part);
    }
    SendDlgItemMessageW(Window(), IDC_PAL_PATCH, kPatchSetColour, 0, static_cast<LPARAM>(colour));
}

void PaletteDlg::Apply(const int (&parts)[3], bool fromSliders) {
    const auto byte = [](int part) { return static_cast<uint32_t>(part) & 0xFF; };
    const uint32_t colour = SetPaletteEntry(data_, byte(parts[0]), byte(parts[1]), byte(parts[2]));
    SendDlgItemMessageW(Window(), IDC_PAL_PATCH, kPatchSetColour, 0, static_cast<LPARAM>(colour));
    TBusyScope busy(busy_);
    for (int i = 0; i < 3; ++i) {
        if (fromSliders)
            SetControlNumber(Window(), kNumbers[i], parts[i]);
        else
            SendDlgItemMessageW(Window(), kSliders[i], TBM_SETPOS, TRUE, parts[i]);
    }
}

INT_PTR PaletteDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_HSCROLL) return TDialog::OnMessage(message, wParam, lParam);
    const int parts[3] = {Slider(0), Slider(1), Slider(2)};
    Apply(parts, true);
    return TRUE;
}

INT_PTR PaletteDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDC_PAL_INDEX:
        if (code == CBN_SELCHANGE) ShowIndex(static_cast<uint32_t>(std::max(0, ComboSelection(Window(), id))));
        return TRUE;
    case IDC_PAL_RED:
    case IDC_PAL_GREEN:
    case IDC_PAL_BLUE:
        if (code == EN_CHANGE && !busy_) {
            const int parts[3] = {wtoi(GetControlText(Window(), IDC_PAL_RED)), wtoi(GetControlText(Window(), IDC_PAL_GREEN)),
                                  wtoi(GetControlText(Window(), IDC_PAL_BLUE))};
            Apply(parts, false);
        }
        return TRUE;
    case IDC_PAL_IMPORT:
        if (code == BN_CLICKED) Import();
        return TRUE;
    case IDC_PAL_EXPORT:
        if (code == BN_CLICKED) AskWhereToExport(Window(), ExportPalette(data_, normal_));
        return TRUE;
    case IDHELP:
        if (code == BN_CLICKED) ShowHelp(data_, u"colours.palette");
        return TRUE;
    case IDOK:
        if (code == BN_CLICKED) {
            data_.working.palette = data_.paletteEdit;
            StoreNormalPair(data_, normal_);
            End(IDOK);
        }
        return TRUE;
    case IDCANCEL:
        if (code == BN_CLICKED) End(IDCANCEL);
        return TRUE;
    default: return FALSE;
    }
}

// The window size in pixels of one of our templates (all extended ones), in the font of `dialog`,
// which shares it; empty when the template can't be read.
SIZE TemplateWindowSize(HWND dialog, int templateId) {
    // The head of an extended template, as the resource compiler lays it out.
    struct {
        WORD version, signature;  // 1 and 0xFFFF
        DWORD helpId, exStyle, style;
        WORD items;
        short x, y, cx, cy;  // dialog units
    } head{};
    HINSTANCE instance = FormsInstance();
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    const void* bytes = resource ? LockResource(LoadResource(instance, resource)) : nullptr;
    if (!bytes || SizeofResource(instance, resource) < sizeof head) return {};
    std::memcpy(&head, bytes, sizeof head);
    RECT rect{0, 0, head.cx, head.cy};
    if (head.signature != 0xFFFF || !MapDialogRect(dialog, &rect) ||
        !AdjustWindowRectEx(&rect, head.style, FALSE, head.exStyle))
        return {};
    return SIZE{rect.right - rect.left, rect.bottom - rect.top};
}

// Edit Attribute in the layout that fits the screen less its task bars.
int AttrEditTemplate(HWND parent) {
    RECT area{};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0)) return IDD_ATTR_CHANGE;
    const SIZE normal = TemplateWindowSize(parent, IDD_ATTR_CHANGE);
    return ChooseAttrEditLayout(normal.cx, normal.cy, area.right - area.left, area.bottom - area.top) ==
                   TAttrEditLayout::Small
               ? IDD_ATTR_CHANGE_SMALL
               : IDD_ATTR_CHANGE;
}

template <class Dialog>
bool RunOn(HWND parent, TAttrDialogData& data, int templateId) {
    Dialog dialog(data);
    return dialog.RunModal(parent, templateId) == IDOK;
}

}  // namespace

bool RunAttrEditDialog(HWND parent, TAttrDialogData& data, TVisionPreview preview) {
    AttrEditDlg dialog(data, preview);
    return dialog.RunModal(parent, AttrEditTemplate(parent)) == IDOK;
}
bool RunAdvancedAttrDialog(HWND parent, TAttrDialogData& data) {
    return RunOn<AdvancedAttrDlg>(parent, data, IDD_ATTR_ADVANCED_PPC);
}
bool RunSaveSchemeDialog(HWND parent, TAttrDialogData& data) {
    return RunOn<SaveSchemeDlg>(parent, data, IDD_ATTR_SAVESCHEME);
}
bool RunPaletteDialog(HWND parent, TAttrDialogData& data) { return RunOn<PaletteDlg>(parent, data, IDD_ATTR_PALCFG); }

int RunColourDialog(TConfigSession& session, void* parent) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};  // the palette editor's sliders
    InitCommonControlsEx(&classes);
    ColourTexts();  // the fixed texts come from the language of the first colour request
    auto data = std::make_unique<TAttrDialogData>();
    LoadAttrDialogData(*data, session);
    ColourConfigDlg dialog(*data);
    const int result = static_cast<int>(dialog.RunModal(static_cast<HWND>(parent), IDD_ATTR_CONFIG));
    if (result == IDOK) StoreAttrDialogData(*data, session);
    return result;
}

}  // namespace qrl
