#include "mouse/mousedlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "keyboard/keymapdata.h"
#include "locale/language.h"
#include "macro/macroassistdlg.h"
#include "mouse/mouse_rc.h"
#include "mouse/mousehooks.h"
#include "mouse/mousenames.h"
#include "request/session.h"

#include <utility>

namespace qrl {

namespace {

constexpr TDialogText kMouseTexts[] = {
    {kDialogTitleId, {u"IDD_MOUSECFG", u"Configure Mouse"}},
    {IDC_MOUSE_BUTTON_GROUP, {u"IDC_MOUSE_BUTTON_GROUP", u"Button"}},
    {IDC_MOUSE_LEFT, {u"IDC_MOUSE_LEFT", u"Left"}},
    {IDC_MOUSE_MIDDLE, {u"IDC_MOUSE_MIDDLE", u"Middle"}},
    {IDC_MOUSE_RIGHT, {u"IDC_MOUSE_RIGHT", u"Right"}},
    {IDC_MOUSE_CLICK_GROUP, {u"IDC_MOUSE_CLICK_GROUP", u"Click"}},
    {IDC_MOUSE_CLICK, {u"IDC_MOUSE_CLICK", u"Click"}},
    {IDC_MOUSE_DOUBLE, {u"IDC_MOUSE_DOUBLE", u"Double click"}},
    {IDC_MOUSE_SHIFT_GROUP, {u"IDC_MOUSE_SHIFT_GROUP", u"Shift state"}},
    {IDC_MOUSE_CTRL, {u"IDC_MOUSE_CTRL", u"Ctrl"}},
    {IDC_MOUSE_SHIFT, {u"IDC_MOUSE_SHIFT", u"Shift"}},
    {IDC_MOUSE_ALT, {u"IDC_MOUSE_ALT", u"Alt"}},
    {IDC_MOUSE_ACTION_LABEL, {u"IDC_MOUSE_ACTION_LABEL", u"Action:"}},
    {IDC_MOUSE_DEFAULTS, {u"IDC_MOUSE_DEFAULTS", u"Restore default settings..."}},
    {IDOK, {u"IDOK", u"Ok"}},
    {IDCANCEL, {u"IDCANCEL", u"Cancel"}},
    {IDC_MOUSE_HELP, {u"IDHELP", u"&Help"}},
};

class MouseDlg : public TDialog {
public:
    explicit MouseDlg(TConfigSession& session) : session_(session), map_(SessionMouseMap(session)) {}

protected:
    std::span<const TDialogText> Texts() const override { return kMouseTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    bool Checked(int id) const { return IsChecked(Window(), id); }
    TMouseEvent CurrentEvent() const;
    void ShowParamControls(const TMouseParamView& view);
    void ShowEvent();
    void StoreAction();
    void RunAssistant();
    void RestoreDefaults();

    TConfigSession& session_;
    TMouseMap& map_;
    bool busy_ = false;  // set while the dialog itself fills the action controls
};

INT_PTR MouseDlg::OnInit() {
    HWND combo = GetDlgItem(Window(), IDC_MOUSE_ACTION);
    for (const std::u16string& name : MouseNames().actions)
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(name)));
    SendDlgItemMessageW(Window(), IDC_MOUSE_PARAM, EM_LIMITTEXT, 0, 0);
    CheckRadioButton(Window(), IDC_MOUSE_LEFT, IDC_MOUSE_RIGHT, IDC_MOUSE_LEFT);
    CheckRadioButton(Window(), IDC_MOUSE_CLICK, IDC_MOUSE_DOUBLE, IDC_MOUSE_CLICK);
    ShowEvent();
    return TRUE;
}

TMouseEvent MouseDlg::CurrentEvent() const {
    const int button = Checked(IDC_MOUSE_LEFT) ? 1 : Checked(IDC_MOUSE_MIDDLE) ? 2 : Checked(IDC_MOUSE_RIGHT) ? 3 : 0;
    return MouseEventFromControls(button, Checked(IDC_MOUSE_DOUBLE), Checked(IDC_MOUSE_CTRL), Checked(IDC_MOUSE_SHIFT),
                                  Checked(IDC_MOUSE_ALT));
}

void MouseDlg::ShowParamControls(const TMouseParamView& view) {
    ShowControl(Window(), IDC_MOUSE_PARAM_LABEL, view.labelShown);
    if (view.labelShown) SetControlText(Window(), IDC_MOUSE_PARAM_LABEL, Translate(view.labelKey, view.labelDefault));
    ShowControl(Window(), IDC_MOUSE_PARAM, view.editShown);
    ShowControl(Window(), IDC_MOUSE_ASSIST, view.assistShown);
}

void MouseDlg::ShowEvent() {
    TBusyScope busy(busy_);
    const TMouseEvent event = CurrentEvent();
    SetControlText(Window(), IDC_MOUSE_SELECTION, MouseEventLabel(event, MouseNames()));
    const TMouseAction& action = Lookup(map_, event);
    SendDlgItemMessageW(Window(), IDC_MOUSE_ACTION, CB_SETCURSEL, action.action, 0);
    ShowParamControls(MouseParamView(action.action, session_.macroAssist, true));
    if (MouseActionParam(action.action) != TMouseParam::None)
        SetControlText(Window(), IDC_MOUSE_PARAM, MouseParamText(action));
}

// Every change of the action or of its parameter goes to the map at once.
void MouseDlg::StoreAction() {
    const int row = static_cast<int>(SendDlgItemMessageW(Window(), IDC_MOUSE_ACTION, CB_GETCURSEL, 0, 0));
    const TMouseAction action = MouseActionFromControls(row, GetControlText(Window(), IDC_MOUSE_PARAM));
    ShowParamControls(MouseParamView(action.action, session_.macroAssist, false));
    SetMapping(map_, CurrentEvent(), action);
}

void MouseDlg::RunAssistant() {
    std::u16string text = GetControlText(Window(), IDC_MOUSE_PARAM);
    if (runMacroAssistant(Window(), text, NamesOf(KeyDataOf(std::as_const(session_)).emulationKeys), session_.link.window,
                          kMacroTextMode) != IDOK)
        return;
    {
        TBusyScope busy(busy_);
        SetControlText(Window(), IDC_MOUSE_PARAM, text);
    }
    StoreAction();
}

void MouseDlg::RestoreDefaults() {
    const std::u16string question = Translate(u"mousecfg_cpp_172",
                                              u"Do you wish to restore all mouse mappings to their default values?");
    const std::u16string caption = GetWindowText16(Window());
    if (MessageBoxW(Window(), W(question), W(caption), MB_OKCANCEL | MB_ICONQUESTION) != IDOK) return;
    RestoreDefaultMap(map_);
    ShowEvent();
}

INT_PTR MouseDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDC_MOUSE_LEFT:
    case IDC_MOUSE_MIDDLE:
    case IDC_MOUSE_RIGHT:
    case IDC_MOUSE_CLICK:
    case IDC_MOUSE_DOUBLE:
    case IDC_MOUSE_CTRL:
    case IDC_MOUSE_SHIFT:
    case IDC_MOUSE_ALT:
        if (code == BN_CLICKED) ShowEvent();
        return TRUE;
    case IDC_MOUSE_ACTION:
        if (code == CBN_SELCHANGE && !busy_) StoreAction();
        return TRUE;
    case IDC_MOUSE_PARAM:
        if (code == EN_CHANGE && !busy_) StoreAction();
        return TRUE;
    case IDC_MOUSE_ASSIST:
        if (code == BN_CLICKED) RunAssistant();
        return TRUE;
    case IDC_MOUSE_DEFAULTS:
        if (code == BN_CLICKED) RestoreDefaults();
        return TRUE;
    case IDC_MOUSE_HELP:
        if (code == BN_CLICKED) session_.ShowHelp(u"mouse.index");
        return TRUE;
    case IDOK:
    case IDCANCEL:
        if (code == BN_CLICKED) End(id);
        return TRUE;
    default: return FALSE;
    }
}

}  // namespace

int RunMouseDialog(TConfigSession& session, void* parent) {
    MouseNames();  // the names come from the language of the first mouse request
    MouseDlg dialog(session);
    return static_cast<int>(dialog.RunModal(static_cast<HWND>(parent), IDD_MOUSECFG));
}

}  // namespace qrl
