// The form dialog procedure: start-up, the buttons that end a form, nested forms, and the two
// messages a form posts to itself. The tree and the value editors live in their own files.
#include "forms/formdlg.h"

#include "forms/basedialog.h"
#include "forms/formdef.h"
#include "forms/forms_rc.h"
#include "forms/runform.h"
#include "forms/selectmodule.h"
#include "request/session.h"

#include <commctrl.h>

namespace qrl {

namespace {

TFormRun* RunOf(HWND window) { return reinterpret_cast<TFormRun*>(GetWindowLongPtrW(window, GWLP_USERDATA)); }

// Dialog procedures return notification results through DWLP_MSGRESULT.
INT_PTR NotifyResult(HWND window, LRESULT result) {
    SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR OnInitForm(HWND window, TFormRun* run) {
    ResetDialogScroll(window);
    if (run == nullptr) return TRUE;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(run));
    run->window = window;
    TFormDef& form = run->form;
    form.window = window;
    form.currentElement = nullptr;
    form.currentNode = nullptr;
    form.currentTreeItem = nullptr;

    // Frames go behind everything, so that the controls inside them take the clicks.
    for (const TFormItem& item : form.items) {
        if (item.kind != ItemKind::GroupBox) continue;
        if (HWND frame = GetDlgItem(window, item.controlId))
            SetWindowPos(frame, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    if (form.usesTree) {
        HideEditors(window);
        LayOutBuiltInForm(window);
        if (run->session.connected) {
            EnableControl(window, IDC_CONNECT, false);
            EnableControl(window, IDC_MODULE_SELECT, false);
        }
        FillTree(window, *run);
    }
    RecallSelection(window, *run);
    FillLists(window, *run);
    ShowValues(window, *run);
    return TRUE;
}

void OnOk(HWND window, TFormRun& run) {
    if (!ValidateCurrent(run)) {
        PostMessageW(window, WM_FORM_SHOWVALIDATION, 0, 0);
        return;
    }
    CollectValues(window, run);
    // Modified character maps are saved here once the character map editor exists.
    StoreSelection(run);
    EndForm(window, IDOK);
}

void OnCancel(HWND window, TFormRun& run) {
    StoreSelection(run);
    EndForm(window, IDCANCEL);
}

// Another module: the list sorted, the choice written to the first module list. Nothing is
// collected or validated; the reply carries no data.
void OnModuleSelect(HWND window, TFormRun& run) {
    const int position = SelectModule(window, run.session);
    if (position < 0) return;
    auto& lists = run.session.moduleLists;
    if (!lists.empty() && static_cast<std::size_t>(position) < lists.front().modules.size())
        lists.front().current = lists.front().modules[static_cast<std::size_t>(position)].name;
    EndForm(window, FORM_RESULT_MODULE);
}

void OnConnect(HWND window, TFormRun& run) {
    CollectValues(window, run);
    EndForm(window, FORM_RESULT_CONNECT);
}

// A button of action Form opens the form it names, nested. Its result is ignored: what its OK
// collected is in the elements already.
void OnNestedForm(HWND window, TFormRun& run, int id) {
    for (const TFormItem& item : run.form.items) {
        if (item.controlId != id || item.action != FormAction::Form) continue;
        if (TFormDef* nested = FindForm(run.session, item.actionParam)) {
            RunForm(run.session, nested, window);
            run.form.window = window;  // the nested run used the same field
        }
        return;
    }
}

INT_PTR OnCommand(HWND window, TFormRun& run, int id, int code) {
    switch (id) {
    case IDC_FORM_OK: OnOk(window, run); return TRUE;
    case IDC_FORM_CANCEL: OnCancel(window, run); return TRUE;
    case IDC_MODULE_SELECT: OnModuleSelect(window, run); return TRUE;
    case IDC_CONNECT: OnConnect(window, run); return TRUE;
    case IDC_FORM_HELP: run.session.ShowHelp(u""); return TRUE;
    default: break;
    }
    if (OnEditorCommand(window, run, id, code)) return TRUE;
    if (code == BN_CLICKED) OnNestedForm(window, run, id);
    return TRUE;
}

INT_PTR OnNotify(HWND window, TFormRun& run, const NMHDR* header) {
    if (header == nullptr || header->idFrom != IDC_TREE || !run.form.usesTree) return FALSE;
    switch (header->code) {
    case TVN_SELCHANGINGW:
    case TVN_SELCHANGINGA:
        // Leaving a field whose value is wrong is refused; the message box comes after the notification.
        if (!ValidateCurrent(run)) {
            PostMessageW(window, WM_FORM_SHOWVALIDATION, 0, 0);
            return NotifyResult(window, TRUE);
        }
        return NotifyResult(window, FALSE);
    case TVN_SELCHANGEDW:
    case TVN_SELCHANGEDA: OnTreeSelChanged(window, run, reinterpret_cast<LPARAM>(header)); return TRUE;
    case NM_CUSTOMDRAW: return NotifyResult(window, OnTreeCustomDraw(run, reinterpret_cast<LPARAM>(header)));
    default: return FALSE;
    }
}

INT_PTR OnShowValidation(HWND window, TFormRun& run) {
    MessageBoxW(window, W(run.form.validationMessage), L"Validation Error", MB_ICONWARNING);
    return TRUE;
}

INT_PTR OnFormDestroyed(HWND window, TFormRun& run) {
    if (run.form.window == window) run.form.window = nullptr;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    return FALSE;
}

}  // namespace

void EndForm(HWND dialog, int result) { EndDialog(TopLevelOf(dialog), result); }

INT_PTR CALLBACK FormDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_INITDIALOG) return OnInitForm(window, reinterpret_cast<TFormRun*>(lParam));
        TFormRun* run = RunOf(window);
        if (run == nullptr) return FALSE;  // messages before WM_INITDIALOG, and after the end
        switch (message) {
        case WM_COMMAND: return OnCommand(window, *run, LOWORD(wParam), HIWORD(wParam));
        case WM_NOTIFY: return OnNotify(window, *run, reinterpret_cast<const NMHDR*>(lParam));
        case WM_VSCROLL: HandleDialogScroll(window, wParam); return TRUE;
        case WM_FORM_SHOWVALIDATION: return OnShowValidation(window, *run);
        case WM_FORM_SETFOCUS: SetFocus(reinterpret_cast<HWND>(lParam)); return TRUE;
        case WM_NCDESTROY: return OnFormDestroyed(window, *run);
        default: return FALSE;
        }
    } catch (...) {
        // Nothing may unwind through the dialog manager; the form stays as it is.
        return FALSE;
    }
}

}  // namespace qrl
