#include "forms/selectmodule.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "forms/forms_rc.h"
#include "forms/moduleorder.h"
#include "request/session.h"

namespace qrl {

namespace {

constexpr TDialogText kSelectModuleTexts[] = {
    {kDialogTitleId, {u"IDD_SELECTMODULE", u"Module Selection"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
};

// Ends with the chosen row of the sorted list, or -1.
class SelectModuleDlg : public TDialog {
public:
    explicit SelectModuleDlg(TConfigSession& session) : session_(session) {}

protected:
    std::span<const TDialogText> Texts() const override { return kSelectModuleTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    void EndWithSelection() const {
        End(SendDlgItemMessageW(Window(), IDC_MODULELIST, LB_GETCURSEL, 0, 0));
    }

    TConfigSession& session_;
};

INT_PTR SelectModuleDlg::OnInit() {
    HWND list = GetDlgItem(Window(), IDC_MODULELIST);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    if (session_.moduleLists.empty()) return TRUE;
    TModuleList& modules = session_.moduleLists.front();
    SortModules(modules.modules);
    const int current = CurrentModulePosition(modules);
    for (const TModuleEntry& entry : modules.modules)
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(entry.description)));
    if (current >= 0) SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(current), 0);
    return TRUE;
}

INT_PTR SelectModuleDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDOK: EndWithSelection(); return TRUE;
    case IDCANCEL: End(-1); return TRUE;
    case IDC_MODULELIST:
        if (code == LBN_DBLCLK) EndWithSelection();
        return TRUE;
    default: return FALSE;
    }
}

}  // namespace

int SelectModule(HWND parent, TConfigSession& session) {
    SelectModuleDlg dialog(session);
    return static_cast<int>(dialog.RunModal(parent, IDD_SELECTMODULE));
}

}  // namespace qrl
