#include "forms/selectmodule.h"

#include "forms/basedialog.h"
#include "forms/forms_rc.h"
#include "forms/moduleorder.h"
#include "locale/language.h"
#include "request/session.h"

namespace qrl {

namespace {

struct SelectModuleContext {
    TConfigSession& session;
};

void TranslateDialog(HWND dialog) {
    SetWindowTextW(dialog, W(Translate(u"IDD_SELECTMODULE", u"Module Selection")));
    SetControlText(dialog, IDOK, Translate(u"IDOK", u"&Ok"));
    SetControlText(dialog, IDCANCEL, Translate(u"IDCANCEL", u"&Cancel"));
}

INT_PTR OnInit(HWND dialog, SelectModuleContext* context) {
    ResetDialogScroll(dialog);
    SetWindowLongPtrW(dialog, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(context));
    TranslateDialog(dialog);
    HWND list = GetDlgItem(dialog, IDC_MODULELIST);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    if (!context || context->session.moduleLists.empty()) return TRUE;
    TModuleList& modules = context->session.moduleLists.front();
    SortModules(modules.modules);
    const int current = CurrentModulePosition(modules);
    for (const TModuleEntry& entry : modules.modules)
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(entry.description)));
    if (current >= 0) SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(current), 0);
    return TRUE;
}

void EndWithSelection(HWND dialog) {
    const LRESULT row = SendDlgItemMessageW(dialog, IDC_MODULELIST, LB_GETCURSEL, 0, 0);
    EndDialog(dialog, row);
}

INT_PTR OnCommand(HWND dialog, int id, int code) {
    switch (id) {
    case IDOK: EndWithSelection(dialog); return TRUE;
    case IDCANCEL: EndDialog(dialog, -1); return TRUE;
    case IDC_MODULELIST:
        if (code == LBN_DBLCLK) EndWithSelection(dialog);
        return TRUE;
    default: return FALSE;
    }
}

INT_PTR CALLBACK SelectModuleProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_INITDIALOG) return OnInit(dialog, reinterpret_cast<SelectModuleContext*>(lParam));
        if (GetWindowLongPtrW(dialog, GWLP_USERDATA) == 0) return FALSE;
        switch (message) {
        case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
        case WM_NCDESTROY: SetWindowLongPtrW(dialog, GWLP_USERDATA, 0); return FALSE;
        default: return FALSE;
        }
    } catch (...) {
        return FALSE;
    }
}

}  // namespace

int SelectModule(HWND parent, TConfigSession& session) {
    SelectModuleContext context{session};
    const INT_PTR result = DialogBoxParamW(FormsInstance(), MAKEINTRESOURCEW(IDD_SELECTMODULE), parent,
                                           SelectModuleProc, reinterpret_cast<LPARAM>(&context));
    return static_cast<int>(result);
}

}  // namespace qrl
