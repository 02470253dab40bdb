#include "keyboard/keymapcheckdlg.h"

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/listrows.h"
#include "keyboard/keyboard_rc.h"
#include "text/textutil.h"

namespace qrl {

namespace {

constexpr TDialogText kCheckTexts[] = {
    {kDialogTitleId, {u"IDD_KEYMAP_CHECK", u"Key Map Check"}},
    {IDC_CHECK_GOTO, {u"IDC_CHECK_GOTO", u"&Go to"}},
    {IDC_CHECK_DEDUPLICATE, {u"IDC_CHECK_DEDUPLICATE", u"Remove &duplicates"}},
    {IDCANCEL, {u"IDC_CHECK_CLOSE", u"&Close"}},
};

constexpr TTextKey kNothingFound{u"keymapcheckdlg_cpp_1", u"Nothing to report: every mapping can be shown and runs"};
// %d is the number of entries.
constexpr TTextKey kRemoveQuestion{u"keymapcheckdlg_cpp_2",
                                   u"Entries that the editor can never show or edit: %d\nRemove them?"};

class KeyMapCheckDlg : public TDialog {
public:
    KeyMapCheckDlg(TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes)
        : keys_(keys), pcKeyboardCodes_(pcKeyboardCodes) {}

    const KeyMapFinding& Chosen() const { return chosen_; }

protected:
    std::span<const TDialogText> Texts() const override { return kCheckTexts; }
    INT_PTR OnInit() override {
        List();
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        switch (id) {
        case IDC_CHECK_LIST:
            if (code == LBN_DBLCLK) GoTo();
            if (code == LBN_SELCHANGE) EnableGoTo();
            return TRUE;
        case IDC_CHECK_GOTO: GoTo(); return TRUE;
        case IDC_CHECK_DEDUPLICATE: RemoveDuplicatesAfterAsking(); return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        default: return FALSE;
        }
    }

private:
    int SelectedRow() const {
        return static_cast<int>(SendDlgItemMessageW(Window(), IDC_CHECK_LIST, LB_GETCURSEL, 0, 0));
    }
    bool RowIsFinding(int row) const { return row >= 0 && static_cast<std::size_t>(row) < findings_.size(); }
    void EnableGoTo() const { EnableControl(Window(), IDC_CHECK_GOTO, RowIsFinding(SelectedRow())); }

    void List() {
        findings_ = CheckKeyMap(keys_, pcKeyboardCodes_);
        std::vector<std::u16string> rows;
        for (const KeyMapFinding& finding : findings_) rows.push_back(finding.text);
        if (findings_.empty()) rows.push_back(Translate(kNothingFound));
        FillListRows(GetDlgItem(Window(), IDC_CHECK_LIST), rows);
        EnableGoTo();
        EnableControl(Window(), IDC_CHECK_DEDUPLICATE, CountDuplicates(keys_) > 0);
    }

    void GoTo() {
        const int row = SelectedRow();
        if (!RowIsFinding(row)) return;
        chosen_ = findings_[static_cast<std::size_t>(row)];
        End(IDOK);
    }

    void RemoveDuplicatesAfterAsking() {
        const std::size_t count = CountDuplicates(keys_);
        if (count == 0) return;
        std::u16string question = Translate(kRemoveQuestion);
        if (const std::size_t at = question.find(u"%d"); at != std::u16string::npos)
            question.replace(at, 2, decimal(static_cast<long long>(count)));
        if (MessageBoxW(Window(), W(question), kProgramTitle, MB_YESNO | MB_ICONQUESTION) != IDYES) return;
        RemoveDuplicates(keys_);
        List();
    }

    TKeyData& keys_;
    const std::vector<uint32_t>& pcKeyboardCodes_;
    std::vector<KeyMapFinding> findings_;
    KeyMapFinding chosen_;
};

}  // namespace

bool RunKeyMapCheck(HWND parent, TKeyData& keys, const std::vector<uint32_t>& pcKeyboardCodes, KeyMapFinding& chosen) {
    KeyMapCheckDlg dialog(keys, pcKeyboardCodes);
    if (dialog.RunModal(parent, IDD_KEYMAP_CHECK) != IDOK) return false;
    chosen = dialog.Chosen();
    return true;
}

}  // namespace qrl
