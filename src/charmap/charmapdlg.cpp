#include "charmap/charmapdlg.h"

#include "charmap/charmap_rc.h"
#include "charmap/charmapedit.h"
#include "charmap/charmapsession.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/gdiholders.h"
#include "kit/listrows.h"
#include "request/session.h"

#include <array>

namespace qrl {

namespace {

constexpr TTextKey kError{u"run_cpp_2586", u"Error"};
constexpr TTextKey kNoLanguage{u"run_cpp_2921", u"Could not edit character set\nNo language selected"};
constexpr TTextKey kNoCharset{u"run_cpp_2942", u"Could not get the character set from the Quorl kernel"};
constexpr TTextKey kInvalidName{u"cmapedit_cpp_711", u"There are invalid characters in the new language name!"};
constexpr TTextKey kNameInUse{u"cmapedit_cpp_716", u"This language name is already in use!"};

constexpr TDialogText kTableTexts[] = {
    {kDialogTitleId, {u"IDD_CHARSET_TABLE", u"Edit Character Set"}},
    {IDC_CHARSET_EDIT, {u"IDC_CHARSET_EDIT", u"Edit..."}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_CHARSET_HELP, kHelpText},
};
constexpr TDialogText kEntryTexts[] = {
    {kDialogTitleId, {u"IDD_CHARSET_ENTRY", u"Edit Character Set"}},
    {IDC_ENTRY_CHAR_LABEL, {u"IDC_ENTRY_CHAR", u"Character"}},
    {IDC_ENTRY_ERROR, {u"IDC_ENTRY_ERROR", u"error!"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_CHARSET_HELP, kHelpText},
};
constexpr TDialogText kAddTexts[] = {
    {kDialogTitleId, {u"IDD_ADD_LANGUAGE", u"Add New language"}},
    {IDC_LANGUAGE_NAME_LABEL, {u"IDC_LANGUAGE_NAME", u"New language name:"}},
    {IDC_LANGUAGE_BASE_LABEL, {u"IDC_LANGUAGE_BASE", u"Based on:"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_CHARSET_HELP, kHelpText},
};

// The list's columns, in dialog units.
constexpr std::array<int, 3> kTabStops{8, 56, 68};

void ShowError(HWND parent, const TTextKey& text) {
    MessageBoxW(parent, W(Translate(text)), W(Translate(kError)), MB_OK | MB_ICONERROR);
}

std::u16string MapCaption(const TCharMap& map) { return map.mapName + u", " + map.language; }

// Edit Character Set, one entry: a hexadecimal field and a character field that follow each other.
class EntryDlg : public TDialog {
public:
    EntryDlg(const TConfigSession& session, const TCharMap& map, TCharEntry entry)
        : session_(session), map_(map), entry_(std::move(entry)) {}
    uint32_t Value() const { return entry_.value; }

protected:
    std::span<const TDialogText> Texts() const override { return kEntryTexts; }
    INT_PTR OnInit() override {
        TBusyScope busy(updating_);
        SetControlText(Window(), IDC_ENTRY_TITLE, MapCaption(map_));
        SetControlText(Window(), IDC_ENTRY_SOURCE, entry_.source);
        SetControlText(Window(), IDC_ENTRY_HEX_LABEL, entry_.unicodeValue ? Translate(u"cmapedit_unicode", u"Unicode value")
                                                                          : Translate(u"cmapedit_ebcdic", u"EBDCID value"));
        EnableControl(Window(), IDC_ENTRY_CHAR_LABEL, entry_.unicodeValue);
        EnableControl(Window(), IDC_ENTRY_CHAR, entry_.unicodeValue);
        SendDlgItemMessageW(Window(), IDC_ENTRY_CHAR, EM_LIMITTEXT, 1, 0);
        // A host byte's character shows too, in a field that then can't be typed in.
        SetControlText(Window(), IDC_ENTRY_CHAR, CharEntryCharText(entry_.value));
        SetControlText(Window(), IDC_ENTRY_HEX, CharEntryHexText(entry_.value, entry_.unicodeValue));
        ShowControl(Window(), IDC_ENTRY_ERROR, false);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (updating_) return TRUE;
        if (id == IDC_ENTRY_HEX && code == EN_CHANGE) {
            OnHexChanged();
            return TRUE;
        }
        if (id == IDC_ENTRY_CHAR && code == EN_CHANGE) {
            OnCharChanged();
            return TRUE;
        }
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK:  // with the last valid value, even while "error!" shows
        case IDCANCEL: End(id); return TRUE;
        case IDC_CHARSET_HELP: session_.ShowHelp(u"charmap.edit_item"); return TRUE;
        default: return FALSE;
        }
    }

private:
    void OnHexChanged() {
        const std::optional<uint32_t> number = ParseCharEntryHex(GetControlText(Window(), IDC_ENTRY_HEX), entry_.unicodeValue);
        if (!number) {
            if (!errorShown_) MessageBeep(MB_OK);
            errorShown_ = true;
            ShowControl(Window(), IDC_ENTRY_ERROR, true);
            return;
        }
        errorShown_ = false;
        ShowControl(Window(), IDC_ENTRY_ERROR, false);
        entry_.value = *number;
        TBusyScope busy(updating_);
        SetControlText(Window(), IDC_ENTRY_CHAR, CharEntryCharText(entry_.value));
    }
    void OnCharChanged() {
        const std::u16string text = GetControlText(Window(), IDC_ENTRY_CHAR);
        if (text.empty()) return;
        entry_.value = text.front();
        TBusyScope busy(updating_);
        SetControlText(Window(), IDC_ENTRY_HEX, CharEntryHexText(entry_.value, entry_.unicodeValue));
    }

    const TConfigSession& session_;
    const TCharMap& map_;
    TCharEntry entry_;
    bool updating_ = false;
    bool errorShown_ = false;
};

// Edit Character Set, the table: one row per code, edits written at once (a reverse map's on OK).
class TableDlg : public TDialog {
public:
    TableDlg(const TConfigSession& session, TCharMap& map) : session_(session), map_(map), inverse_(BuildInverse(map)) {}

protected:
    std::span<const TDialogText> Texts() const override { return kTableTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND List() const { return GetDlgItem(Window(), IDC_CHARSET_LIST); }
    void EditRow();
    void DrawRow(const DRAWITEMSTRUCT& item) const;

    const TConfigSession& session_;
    TCharMap& map_;
    TCharInverse inverse_;
};

INT_PTR TableDlg::OnInit() {
    SetControlText(Window(), IDC_CHARSET_CAPTION, MapCaption(map_));
    TRedrawOff quiet(List());
    SendMessageW(List(), LB_RESETCONTENT, 0, 0);
    std::array<int, 3> stops = kTabStops;
    SendMessageW(List(), LB_SETTABSTOPS, stops.size(), reinterpret_cast<LPARAM>(stops.data()));
    const std::size_t rows = CharMapRowCount(map_);
    for (std::size_t row = 0; row < rows; ++row)
        SendMessageW(List(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(CharMapRowText(map_, inverse_, row))));
    return TRUE;
}

void TableDlg::EditRow() {
    const int selection = static_cast<int>(SendMessageW(List(), LB_GETCURSEL, 0, 0));
    const std::size_t row = selection < 0 ? 0 : static_cast<std::size_t>(selection);
    if (row >= CharMapRowCount(map_)) return;
    EntryDlg entry(session_, map_, CharEntryOf(map_, inverse_, row));
    if (entry.RunModal(Window(), IDD_CHARSET_ENTRY) != IDOK) return;
    StoreCharEntry(map_, inverse_, row, entry.Value());
    // The list's own selection, not the row: with none, row 0 changes while its text goes last.
    const std::u16string text = CharMapRowText(map_, inverse_, row);
    SendMessageW(List(), LB_DELETESTRING, static_cast<WPARAM>(selection), 0);
    SendMessageW(List(), LB_INSERTSTRING, static_cast<WPARAM>(selection), reinterpret_cast<LPARAM>(W(text)));
    SendMessageW(List(), LB_SETCURSEL, static_cast<WPARAM>(selection), 0);
}

void TableDlg::DrawRow(const DRAWITEMSTRUCT& item) const {
    if (item.itemID == static_cast<UINT>(-1)) return;
    HDC dc = item.hDC;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    FillRect(dc, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const auto length = SendMessageW(List(), LB_GETTEXTLEN, item.itemID, 0);
    if (length > 0) {
        std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
        SendMessageW(List(), LB_GETTEXT, item.itemID, reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(length));
        LOGFONTW base{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Window(), WM_GETFONT, 0, 0)), sizeof base, &base);
        if (text.front() == u'*') base.lfWeight = FW_BOLD;
        const TFont font(CreateFontIndirectW(&base));
        const TSelectObject selectedFont(dc, font.get());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        // Each tab-separated piece at its column: 0, then the tab stops.
        std::size_t start = 0;
        for (std::size_t column = 0; start <= text.size(); ++column) {
            const std::size_t end = std::min(text.find(u'\t', start), text.size());
            RECT units{column == 0 ? 0 : kTabStops[std::min(column, kTabStops.size()) - 1], 0, 0, 0};
            MapDialogRect(Window(), &units);
            RECT r = item.rcItem;
            r.left += units.left + 2;
            DrawTextW(dc, W(text.substr(start, end - start)), static_cast<int>(end - start), &r,
                      DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
            start = end + 1;
        }
    }
    if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(dc, &item.rcItem);
}

INT_PTR TableDlg::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && wParam == IDC_CHARSET_LIST) {
        DrawRow(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    return FALSE;
}

INT_PTR TableDlg::OnCommand(int id, int code) {
    if (id == IDC_CHARSET_LIST) {
        if (code == LBN_DBLCLK) EditRow();
        return TRUE;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_CHARSET_EDIT: EditRow(); return TRUE;
    case IDOK:
        if ((map_.flags & kCharMapReverse) != 0) ApplyInverse(map_, inverse_);
        End(IDOK);
        return TRUE;
    case IDCANCEL: End(IDCANCEL); return TRUE;
    case IDC_CHARSET_HELP: session_.ShowHelp(u"charmap.index"); return TRUE;
    default: return FALSE;
    }
}

// Add New language: a name that is new and the language it starts from.
class AddLanguageDlg : public TDialog {
public:
    AddLanguageDlg(const TConfigSession& session, const std::vector<std::u16string>& languages, std::u16string baseName)
        : session_(session), languages_(languages), baseName_(std::move(baseName)) {}
    const std::u16string& NewName() const { return newName_; }
    const std::u16string& BaseName() const { return baseName_; }

protected:
    std::span<const TDialogText> Texts() const override { return kAddTexts; }
    INT_PTR OnInit() override {
        HWND combo = GetDlgItem(Window(), IDC_LANGUAGE_BASE);
        const std::u16string standard = Translate(u"cmapedit_default", u"(default)");
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(standard)));
        int selection = 0;
        for (std::size_t i = 0; i < languages_.size(); ++i) {
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(languages_[i])));
            if (selection == 0 && languages_[i] == baseName_) selection = static_cast<int>(i) + 1;
        }
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(selection), 0);
        EnableControl(Window(), IDOK, false);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (id == IDC_LANGUAGE_NAME && code == EN_CHANGE) {
            EnableControl(Window(), IDOK, !GetControlText(Window(), IDC_LANGUAGE_NAME).empty());
            return TRUE;
        }
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK: Accept(); return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_CHARSET_HELP: session_.ShowHelp(u"charmap.add_lang"); return TRUE;
        default: return FALSE;
        }
    }

private:
    void Accept() {
        const int selection = static_cast<int>(SendDlgItemMessageW(Window(), IDC_LANGUAGE_BASE, CB_GETCURSEL, 0, 0));
        baseName_ = selection > 0 ? languages_[static_cast<std::size_t>(selection - 1)] : std::u16string();
        newName_ = GetControlText(Window(), IDC_LANGUAGE_NAME);
        switch (CheckNewLanguageName(newName_, languages_)) {
        case LanguageNameProblem::InvalidCharacters: ShowError(Window(), kInvalidName); return;
        case LanguageNameProblem::InUse: ShowError(Window(), kNameInUse); return;
        case LanguageNameProblem::None: End(IDOK); return;
        }
    }

    const TConfigSession& session_;
    const std::vector<std::u16string>& languages_;
    std::u16string baseName_;
    std::u16string newName_;
};

}  // namespace

bool EditCharacterSet(HWND parent, TConfigSession& session, TElementDef& element) {
    const TElementDef* language = session.FindElement(u"LanguageName");
    if (!language || language->value.empty()) {
        ShowError(parent, kNoLanguage);
        return false;
    }
    const std::u16string emName = session.link.EmulationName();
    TCharMap* map = FetchCharMap(session, emName, element.value, language->value);
    if (!map) {
        ShowError(parent, kNoCharset);
        return false;
    }
    TableDlg table(session, *map);
    table.RunModal(parent, IDD_CHARSET_TABLE);
    return false;
}

bool RunAddLanguage(HWND parent, const TConfigSession& session, const std::vector<std::u16string>& languages,
                    std::u16string& newName, std::u16string& baseName) {
    AddLanguageDlg dialog(session, languages, baseName);
    if (dialog.RunModal(parent, IDD_ADD_LANGUAGE) != IDOK) return false;
    newName = dialog.NewName();
    baseName = dialog.BaseName();
    return true;
}

}  // namespace qrl
