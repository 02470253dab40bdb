// The form dialog: start-up, the buttons that end a form, nested forms, and the two messages a form
// posts to itself. The tree and the value editors live in their own files.
#include "forms/formdlg.h"

#include "kit/basedialog.h"
#include "forms/formdef.h"
#include "forms/forms_rc.h"
#include "forms/runform.h"
#include "forms/selectmodule.h"
#include "request/session.h"

#include <commctrl.h>

namespace qrl {

namespace {

// A timer comes only once every window of the thread has painted.
constexpr UINT_PTR kAfterPaintTimer = 1;
// Folds the search texts of a few elements at a time while the dialog waits for the user, so
// that the first search on a large request answers at once.
constexpr UINT_PTR kFoldAheadTimer = 2;
constexpr std::size_t kFoldsPerTick = 1000;

}  // namespace

INT_PTR TFormRun::OnInit() {
    HWND window = Window();
    form.window = window;
    form.currentElement = nullptr;
    form.currentNode = nullptr;
    form.currentTreeItem = nullptr;

    // Frames go behind everything, so that the controls inside them take the clicks.
    for (const TFormItem& item : form.items) {
        if (item.kind != ItemKind::GroupBox) continue;
        if (HWND frame = Control(item.controlId))
            SetWindowPos(frame, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    if (form.usesTree) {
        HideEditors(*this);
        CreateSearchControls(window);
        CreateResetButton(window);
        // The size first, so that the form is laid out once, at the size it opens with: by the
        // WM_SIZE of a remembered size, or here when the client area keeps the template's size.
        MakeSizable(window, *this);
        LayOutBuiltInForm(window, *this);
        if (session.connected) {
            EnableControl(window, IDC_CONNECT, false);
            EnableControl(window, IDC_MODULE_SELECT, false);
        }
        FillTree(window, *this);
        if (!lateEditors.empty()) SetTimer(window, kAfterPaintTimer, 0, nullptr);
        SetTimer(window, kFoldAheadTimer, 0, nullptr);
        keys = std::make_unique<TDialogKeys>(window, [this](const MSG& message) {
            return OnFormKey(Window(), *this, message);
        });
    }
    RecallSelection(window, *this);
    FillLists(window, *this);
    ShowValues(window, *this);
    return TRUE;
}

void TFormRun::OnOk() {
    if (!ValidateCurrent(*this)) {
        PostMessageW(Window(), WM_FORM_SHOWVALIDATION, 0, 0);
        return;
    }
    CollectValues(Window(), *this);
    if (editors.saveCharMaps) editors.saveCharMaps(session);
    StoreSelection(*this);
    StoreWindowSize(Window(), *this);
    EndForm(Window(), IDOK);
}

void TFormRun::OnCancel() {
    StoreSelection(*this);
    StoreWindowSize(Window(), *this);
    EndForm(Window(), IDCANCEL);
}

// Another module: the list sorted, the choice written to the first module list. Nothing is
// collected or validated; the reply carries no data.
void TFormRun::OnModuleSelect() {
    const int position = SelectModule(Window(), session);
    if (position < 0) return;
    auto& lists = session.moduleLists;
    if (!lists.empty() && static_cast<std::size_t>(position) < lists.front().modules.size())
        lists.front().current = lists.front().modules[static_cast<std::size_t>(position)].name;
    EndForm(Window(), FORM_RESULT_MODULE);
}

void TFormRun::OnConnect() {
    CollectValues(Window(), *this);
    EndForm(Window(), FORM_RESULT_CONNECT);
}

// A button of action Form opens the form it names, nested. Its result is ignored: what its OK
// collected is in the elements already.
void TFormRun::OnNestedForm(int id) {
    for (const TFormItem& item : form.items) {
        if (item.controlId != id || item.action != FormAction::Form) continue;
        if (TFormDef* nested = FindForm(session, item.actionParam)) {
            RunForm(session, nested, Window(), editors);
            form.window = Window();  // the nested run used the same field
        }
        return;
    }
}

INT_PTR TFormRun::OnCommand(int id, int code) {
    // The ending buttons act on a click only: a request's own control may carry one of their ids,
    // and its other notifications (an edit's changes) must not end the form.
    if (code == BN_CLICKED) {
        switch (id) {
        case IDC_FORM_OK: OnOk(); return TRUE;
        case IDC_FORM_CANCEL: OnCancel(); return TRUE;
        case IDC_MODULE_SELECT: OnModuleSelect(); return TRUE;
        case IDC_CONNECT: OnConnect(); return TRUE;
        case IDC_FORM_HELP: session.ShowHelp(u""); return TRUE;
        default: break;
        }
    }
    if (form.usesTree && ((id == IDC_SEARCH_EDIT && code == EN_CHANGE) || (id == IDC_CUSTOMISED_ONLY && code == BN_CLICKED))) {
        ApplySearch(Window(), *this);
        return TRUE;
    }
    if (form.usesTree && id == IDC_RESET_VALUE && code == BN_CLICKED) {
        OnResetClicked(Window(), *this);
        return TRUE;
    }
    if (id == IDC_VALUE_EDIT && code == EN_KILLFOCUS && undo) undo->Close();
    if (OnEditorCommand(Window(), *this, id, code)) return TRUE;
    if (code == BN_CLICKED) OnNestedForm(id);
    return TRUE;
}

INT_PTR TFormRun::OnNotify(const NMHDR& header) {
    if (header.idFrom != IDC_TREE || !form.usesTree) return FALSE;
    if (treeRebuilding) {
        // Emptying and refilling the tree moves its selection; none of that is the user's.
        const bool changing = header.code == TVN_SELCHANGINGW || header.code == TVN_SELCHANGINGA;
        return changing ? NotifyResult(FALSE) : FALSE;
    }
    switch (header.code) {
    case TVN_SELCHANGINGW:
    case TVN_SELCHANGINGA:
        // Leaving a field whose value is wrong is refused; the message box comes after the notification.
        if (!ValidateCurrent(*this)) {
            PostMessageW(Window(), WM_FORM_SHOWVALIDATION, 0, 0);
            return NotifyResult(TRUE);
        }
        return NotifyResult(FALSE);
    case TVN_SELCHANGEDW:
    case TVN_SELCHANGEDA: OnTreeSelChanged(Window(), *this, reinterpret_cast<LPARAM>(&header)); return TRUE;
    case NM_CUSTOMDRAW: return NotifyResult(OnTreeCustomDraw(*this, reinterpret_cast<LPARAM>(&header)));
    default: return FALSE;
    }
}

INT_PTR TFormRun::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_VSCROLL: HandleDialogScroll(Window(), wParam); return TRUE;
    case WM_FORM_SHOWVALIDATION:
        MessageBoxW(Window(), W(form.validationMessage), L"Validation Error", MB_ICONWARNING);
        return TRUE;
    case WM_FORM_SETFOCUS: SetFocus(reinterpret_cast<HWND>(lParam)); return TRUE;
    case WM_TIMER:
        if (wParam == kFoldAheadTimer) {
            if (!filter || !filter->FoldAhead(kFoldsPerTick)) KillTimer(Window(), kFoldAheadTimer);
            return TRUE;
        }
        if (wParam != kAfterPaintTimer) return FALSE;
        KillTimer(Window(), kAfterPaintTimer);
        MakeRemainingEditors(Window(), *this);
        return TRUE;
    case WM_SIZE: OnFormSized(Window(), *this); return FALSE;
    case WM_GETMINMAXINFO:
        if (lParam) LimitFormSize(*this, *reinterpret_cast<MINMAXINFO*>(lParam));
        return FALSE;
    case WM_CONTEXTMENU:
        if (!form.usesTree || reinterpret_cast<HWND>(wParam) != GetDlgItem(Window(), IDC_TREE)) return FALSE;
        OnTreeContextMenu(Window(), *this, lParam);
        return TRUE;
    default: return FALSE;
    }
}

void TFormRun::OnDpiChanged(UINT oldDpi, UINT newDpi) { ScaleFormLayout(*this, oldDpi, newDpi); }

void TFormRun::OnDestroy() {
    keys.reset();
    if (form.window == Window()) form.window = nullptr;
}

void EndForm(HWND dialog, int result) { EndDialog(TopLevelOf(dialog), result); }

}  // namespace qrl
