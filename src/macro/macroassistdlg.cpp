#include "macro/macroassistdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/listrows.h"
#include "macro/macro_rc.h"
#include "macro/macroassist.h"
#include "request/hostlink.h"

#include <array>
#include <utility>

namespace qrl {

namespace {

constexpr TDialogText kMacroAssistTexts[] = {
    {kDialogTitleId, {u"IDD_MACRO_ASSIST", u"Macro Assistant"}},
    {IDC_MACRO_TEXT_CAPTION, {u"IDC_STATIC_86", u"Macro text:"}},
    {IDC_INSERT_BEFORE, {u"IDC_INSERTBEFORE", u"Insert before"}},
    {IDC_INSERT_AFTER, {u"IDC_INSERTAFTER", u"Insert after"}},
    {IDC_DELETE_TOKEN, {u"IDC_DELETE", u"Delete"}},
    {IDC_MOVE_UP, {u"IDC_MOVEUP", u"Move up"}},
    {IDC_MOVE_DOWN, {u"IDC_MOVEDOWN", u"Move down"}},
    {IDC_PANEL_MARKER, {u"IDC_MARKER1", u"Marker1"}},
    {IDC_TEXT_PROMPT, {u"IDC_TEXTPROMPT", u"Text:"}},
    {IDC_CHAR_PROMPT, {u"IDC_CHARPROMPT", u"Character:"}},
    {IDC_HEX_PROMPT, {u"IDC_HEXPROMPT", u"Hex value:"}},
    {IDC_EMKEY_PROMPT, {u"IDC_EMKEYPROMPT", u"Emulation key:"}},
    {IDC_EMKEY_WARNING, {u"IDC_EMKEYWARNING", u"Static"}},
    {IDC_FUNC_PROMPT, {u"IDC_FUNCPROMPT", u"Function name:"}},
    {IDC_PARAM_PROMPT1, {u"IDC_PARAMPROMPT1", u"Prompt 1:"}},
    {IDC_PARAM_PROMPT2, {u"IDC_PARAMPROMPT2", u"Prompt 2:"}},
    {IDC_PARAM_PROMPT3, {u"IDC_PARAMPROMPT3", u"Prompt 3:"}},
    {IDC_CLASSIC_PROMPT, {u"IDC_CLFUNCPROMPT", u"Classic function:"}},
    {IDC_CLASSIC_PARAM_PROMPT, {u"IDC_CLPARAMPROMPT1", u"Parameter:"}},
    {IDC_DELIMITER_PROMPT, {u"IDC_CLPARAMPROMPT2", u"Delimiter:"}},
    {IDC_IDENT_PROMPT, {u"IDC_EXPRPROMPT1", u"Identifier:"}},
    {IDC_OPERATOR_PROMPT, {u"IDC_EXPRPROMPT2", u"Operator:"}},
    {IDC_VALUE_PROMPT, {u"IDC_EXPRPROMPT3", u"Value:"}},
    {IDC_LABEL_PROMPT, {u"IDC_LABELPROMPT", u"Label name:"}},
};

// Each panel is the run of controls from its first to its last id, in the template's order.
struct PanelRun {
    MacroPanel panel;
    int first;
    int last;
};
constexpr PanelRun kPanels[] = {
    {MacroPanel::Text, IDC_TEXT_PROMPT, IDC_TEXT_EDIT},
    {MacroPanel::Character, IDC_CHAR_PROMPT, IDC_BYTE_LIST},
    {MacroPanel::EmulationKey, IDC_EMKEY_PROMPT, IDC_EMKEY_WARNING},
    {MacroPanel::Function, IDC_FUNC_PROMPT, IDC_PARAM3},
    {MacroPanel::Classic, IDC_CLASSIC_PROMPT, IDC_DELIMITER},
    {MacroPanel::Condition, IDC_IDENT_PROMPT, IDC_VALUE},
    {MacroPanel::Label, IDC_LABEL_PROMPT, IDC_LABEL},
};

constexpr std::array<std::pair<int, int>, 3> kParamFields = {
    {{IDC_PARAM_PROMPT1, IDC_PARAM1}, {IDC_PARAM_PROMPT2, IDC_PARAM2}, {IDC_PARAM_PROMPT3, IDC_PARAM3}}};

// The host's help message number for the Assistant, whatever the request's link said.
constexpr uint32_t kHelpMessage = 1081;

class MacroAssistDlg : public TDialog {
public:
    MacroAssistDlg(std::u16string& text, const std::vector<std::u16string>& keyNames, uint64_t hostWindow,
                   uint32_t mode)
        : text_(text), assist_(mode, keyNames), hostWindow_(hostWindow) {}

protected:
    std::span<const TDialogText> Texts() const override { return kMacroAssistTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    struct Panel {
        MacroPanel panel;
        int first;
        std::vector<HWND> controls;
    };

    HWND Item(int id) const { return GetDlgItem(Window(), id); }
    int Selection(int id) const;
    void Select(int id, int row) const;
    void FillLists() const;
    void BuildPanels();

    void FillTokenList();
    // The rows an edit changed, and the selection.
    void ShowRowChange(const TRowChange& change);
    void JoinText();
    void ShowToken();
    void ShowPanel(MacroPanel panel);
    void LoadFunctionFields();
    void LoadClassicFields();
    void RefreshKeyWarning();
    // After an edit: the list and the text follow it.
    void Changed(const TRowChange& change);
    void Changed() { Changed(assist_.CurrentRowChange()); }
    bool OnEdit(int id, int code);
    bool OnListButton(int id);

    std::u16string& text_;
    TMacroAssist assist_;
    uint64_t hostWindow_;
    std::vector<Panel> panels_;
    int currentPanel_ = -1;  // first control id of the panel in view
    bool panelBusy_ = false;
    bool listBusy_ = false;
    TShownRows tokenRows_;
    bool textBusy_ = false;
};

int MacroAssistDlg::Selection(int id) const {
    return static_cast<int>(SendMessageW(Item(id), CB_GETCURSEL, 0, 0));
}

void MacroAssistDlg::Select(int id, int row) const { SendMessageW(Item(id), CB_SETCURSEL, static_cast<WPARAM>(row), 0); }

void MacroAssistDlg::FillLists() const {
    std::vector<std::u16string> rows;
    for (int32_t type : assist_.AllowedTypes()) rows.push_back(tokenTypeName(type));
    FillComboRows(Window(), IDC_TOKEN_TYPE, rows);
    rows.clear();
    for (const MacroCharRow& row : macroNamedChars()) rows.emplace_back(row.Caption);
    FillComboRows(Window(), IDC_CHAR_LIST, rows);
    rows.clear();
    for (uint32_t code = 0; code < 256; ++code) rows.push_back(macroByteCaption(code));
    FillComboRows(Window(), IDC_BYTE_LIST, rows);
    rows.clear();
    for (const MacroOperatorRow& row : macroOperators()) rows.emplace_back(row.Text);
    FillComboRows(Window(), IDC_OPERATOR_LIST, rows);
    FillComboRows(Window(), IDC_IDENT_LIST, std::vector<std::u16string>{u"r"});
    rows.clear();
    for (const MacroClassicRow& row : macroClassics())
        rows.push_back(u"\\" + std::u16string(1, row.Letter) + u"  " + row.Name);
    FillComboRows(Window(), IDC_CLASSIC_LIST, rows);
    rows.clear();
    for (const MacroFunctionRow& row : macroFunctions()) rows.emplace_back(row.Name);
    FillComboRows(Window(), IDC_FUNC_LIST, rows);
    FillComboRows(Window(), IDC_EMKEY_LIST, assist_.KeyNames());
}

void MacroAssistDlg::BuildPanels() {
    const RECT marker = ControlRect(Item(IDC_PANEL_MARKER));
    for (const PanelRun& run : kPanels) {
        Panel panel{run.panel, run.first, {}};
        for (HWND control = Item(run.first); control; control = GetWindow(control, GW_HWNDNEXT)) {
            panel.controls.push_back(control);
            if (GetDlgCtrlID(control) == run.last) break;
        }
        const RECT first = ControlRect(panel.controls.front());
        for (HWND control : panel.controls) {
            const RECT r = ControlRect(control);
            SetWindowPos(control, nullptr, r.left + marker.left - first.left, r.top + marker.top - first.top, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        panels_.push_back(std::move(panel));
    }
}

INT_PTR MacroAssistDlg::OnInit() {
    // Room for the longest type name before the token's text.
    int tabStop = 80;
    SendMessageW(Item(IDC_TOKEN_LIST), LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
    // A macro may be longer than an edit takes by default; nothing of the user's text may be cut.
    for (int id : {IDC_MACRO_TEXT, IDC_TEXT_EDIT, IDC_PARAM1, IDC_PARAM2, IDC_PARAM3, IDC_CLASSIC_PARAM, IDC_VALUE,
                   IDC_LABEL})
        SendMessageW(Item(id), EM_LIMITTEXT, 0, 0);
    FillLists();
    BuildPanels();
    {
        TBusyScope busy(textBusy_);
        SetControlText(Window(), IDC_MACRO_TEXT, text_);
    }
    assist_.Parse(text_);
    assist_.Select(0);
    FillTokenList();
    ShowToken();
    // The caret starts before the text instead of the whole macro being selected: a key pressed
    // by mistake does not replace a long macro, and a long edit is not laid out again to select it.
    SetFocus(Item(IDC_MACRO_TEXT));
    return FALSE;
}

void MacroAssistDlg::FillTokenList() {
    TBusyScope busy(listBusy_);
    HWND list = Item(IDC_TOKEN_LIST);
    tokenRows_.Show(list, assist_.Rows());
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(assist_.Selected()), 0);
}

void MacroAssistDlg::ShowRowChange(const TRowChange& change) {
    TBusyScope busy(listBusy_);
    HWND list = Item(IDC_TOKEN_LIST);
    if (!tokenRows_.Change(list, change, assist_.RowsOf(change))) tokenRows_.Show(list, assist_.Rows());
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(assist_.Selected()), 0);
}

void MacroAssistDlg::JoinText() {
    TBusyScope busy(textBusy_);
    SetEditText(Item(IDC_MACRO_TEXT), assist_.Joined());
}

void MacroAssistDlg::ShowPanel(MacroPanel panel) {
    int wanted = -1;
    for (const Panel& p : panels_)
        if (p.panel == panel) wanted = p.first;
    if (wanted == currentPanel_) return;
    currentPanel_ = wanted;
    for (const Panel& p : panels_)
        for (HWND control : p.controls) ShowWindow(control, p.first == wanted ? SW_SHOW : SW_HIDE);
}

void MacroAssistDlg::ShowToken() {
    TBusyScope busy(panelBusy_);
    const MacroToken* token = assist_.Current();
    if (!token) {
        Select(IDC_TOKEN_TYPE, -1);
        ShowPanel(MacroPanel::None);
        return;
    }
    Select(IDC_TOKEN_TYPE, assist_.TypeRow());
    ShowPanel(assist_.Panel());
    switch (assist_.Panel()) {
    case MacroPanel::Text: SetControlText(Window(), IDC_TEXT_EDIT, token->Text); break;
    case MacroPanel::Character:
        Select(IDC_BYTE_LIST, assist_.ByteRow());
        Select(IDC_CHAR_LIST, assist_.CharRow());
        break;
    case MacroPanel::EmulationKey:
        SetControlText(Window(), IDC_EMKEY_LIST, token->Name);
        RefreshKeyWarning();
        break;
    case MacroPanel::Function:
        Select(IDC_FUNC_LIST, assist_.FunctionRow());
        LoadFunctionFields();
        break;
    case MacroPanel::Classic:
        Select(IDC_CLASSIC_LIST, assist_.ClassicRow());
        LoadClassicFields();
        break;
    case MacroPanel::Condition:
        Select(IDC_OPERATOR_LIST, assist_.OperatorRow());
        Select(IDC_IDENT_LIST, 0);
        SetControlText(Window(), IDC_VALUE, assist_.ValueText());
        break;
    case MacroPanel::Label: SetControlText(Window(), IDC_LABEL, token->Label); break;
    case MacroPanel::None: break;
    }
}

void MacroAssistDlg::LoadFunctionFields() {
    TBusyScope busy(panelBusy_);
    const std::array<MacroField, 3> fields = assist_.LoadFunctionFields();
    for (size_t i = 0; i < fields.size(); ++i) {
        const auto [promptId, fieldId] = kParamFields[i];
        ShowControl(Window(), promptId, fields[i].shown);
        ShowControl(Window(), fieldId, fields[i].shown);
        if (!fields[i].shown) continue;
        SetControlText(Window(), promptId, fields[i].prompt);
        SetStyleBits(Item(fieldId), ES_NUMBER, fields[i].number ? ES_NUMBER : 0);
        SetControlText(Window(), fieldId, fields[i].text);
    }
}

void MacroAssistDlg::LoadClassicFields() {
    TBusyScope busy(panelBusy_);
    const MacroField field = assist_.ClassicField();
    SetControlText(Window(), IDC_CLASSIC_PARAM_PROMPT, field.prompt);
    SetControlText(Window(), IDC_CLASSIC_PARAM, field.text);
    SetControlText(Window(), IDC_DELIMITER, assist_.DelimiterText());
}

void MacroAssistDlg::RefreshKeyWarning() {
    SetControlText(Window(), IDC_EMKEY_WARNING, assist_.KeyWarning(GetControlText(Window(), IDC_EMKEY_LIST)));
}

void MacroAssistDlg::Changed(const TRowChange& change) {
    ShowRowChange(change);
    JoinText();
}

// The edits of the panels' controls; false for a notification that is none of them.
bool MacroAssistDlg::OnEdit(int id, int code) {
    const bool selection = code == CBN_SELCHANGE;
    const bool typed = code == EN_CHANGE;
    const auto text = [&](int control) { return GetControlText(Window(), control); };
    if (id == IDC_TOKEN_TYPE && selection) {
        assist_.ChooseType(Selection(id));
        Changed();
        ShowToken();
    } else if (id == IDC_TEXT_EDIT && typed) {
        assist_.SetText(text(id));
        Changed();
    } else if (id == IDC_CHAR_LIST && selection) {
        assist_.ChooseCharRow(Selection(id), Selection(IDC_BYTE_LIST));
        Changed();
        TBusyScope busy(panelBusy_);
        Select(IDC_BYTE_LIST, assist_.ByteRow());
    } else if (id == IDC_BYTE_LIST && selection) {
        assist_.ChooseByte(Selection(id));
        Changed();
        TBusyScope busy(panelBusy_);
        Select(IDC_CHAR_LIST, assist_.CharRow());
    } else if (id == IDC_EMKEY_LIST && selection) {
        const int row = Selection(id);
        if (row >= 0 && static_cast<size_t>(row) < assist_.KeyNames().size())
            assist_.SetKeyName(assist_.KeyNames()[static_cast<size_t>(row)]);
        Changed();
        SetControlText(Window(), IDC_EMKEY_WARNING, u"");
    } else if (id == IDC_EMKEY_LIST && code == CBN_EDITCHANGE) {
        assist_.SetKeyName(text(id));
        Changed();
        RefreshKeyWarning();
    } else if (id == IDC_FUNC_LIST && selection) {
        assist_.ChooseFunction(Selection(id));
        Changed();
        LoadFunctionFields();
    } else if ((id == IDC_PARAM1 || id == IDC_PARAM2 || id == IDC_PARAM3) && typed) {
        assist_.SetFunctionParams({text(IDC_PARAM1), text(IDC_PARAM2), text(IDC_PARAM3)});
        Changed();
    } else if (id == IDC_CLASSIC_LIST && selection) {
        assist_.ChooseClassic(Selection(id));
        Changed();
        LoadClassicFields();
    } else if (id == IDC_CLASSIC_PARAM && typed) {
        assist_.SetClassicParam(text(id));
        Changed();
    } else if (id == IDC_DELIMITER && typed) {
        assist_.SetDelimiter(text(id));
        Changed();
    } else if (id == IDC_OPERATOR_LIST && selection) {
        assist_.ChooseOperator(Selection(id));
        Changed();
    } else if (id == IDC_VALUE && typed) {
        assist_.SetValue(text(id));
        Changed();
    } else if (id == IDC_LABEL && typed) {
        assist_.SetLabel(text(id));
        Changed();
    } else {
        return false;
    }
    return true;
}

bool MacroAssistDlg::OnListButton(int id) {
    TRowChange change;
    switch (id) {
    case IDC_INSERT_BEFORE: change = assist_.InsertBefore(); break;
    case IDC_INSERT_AFTER: change = assist_.InsertAfter(); break;
    case IDC_DELETE_TOKEN: change = assist_.Delete(); break;
    case IDC_MOVE_UP: change = assist_.MoveUp(); break;
    case IDC_MOVE_DOWN: change = assist_.MoveDown(); break;
    default: return false;
    }
    Changed(change);
    ShowToken();
    return true;
}

INT_PTR MacroAssistDlg::OnCommand(int id, int code) {
    if (id == IDC_MACRO_TEXT) {
        if (code == EN_CHANGE && !textBusy_) {
            assist_.Parse(GetControlText(Window(), id));
            FillTokenList();
            ShowToken();
        }
        return TRUE;
    }
    if (id == IDC_TOKEN_LIST) {
        if (code == LBN_SELCHANGE && !listBusy_) {
            assist_.Select(static_cast<int>(SendMessageW(Item(id), LB_GETCURSEL, 0, 0)));
            ShowToken();
        }
        return TRUE;
    }
    if (code == BN_CLICKED) {
        switch (id) {
        case IDOK:
            text_ = GetControlText(Window(), IDC_MACRO_TEXT);
            End(IDOK);
            return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_MACRO_HELP:
            if (hostWindow_ != 0) HostLink{hostWindow_, kHelpMessage, nullptr}.ShowHelp(u"macro.index", {});
            return TRUE;
        default:
            if (OnListButton(id)) return TRUE;
        }
    }
    if (panelBusy_) return TRUE;
    return OnEdit(id, code) ? TRUE : FALSE;
}

}  // namespace

int runMacroAssistant(HWND parent, std::u16string& text, const std::vector<std::u16string>& keyNames, uint64_t hostWindow,
                      uint32_t mode) {
    MacroAssistDlg dialog(text, keyNames, hostWindow, mode);
    return static_cast<int>(dialog.RunModal(parent, IDD_MACRO_ASSIST));
}

}  // namespace qrl
