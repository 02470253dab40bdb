// The built-in form's search row: the search edit with its count and "Customised only" above the
// tree. What a search keeps is decided by TSettingsFilter; this file rebuilds the tree from it and
// takes the search's keys.
#include "kit/addedcontrol.h"
#include "kit/basedialog.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/forms_rc.h"
#include "locale/language.h"

#include <commctrl.h>

namespace qrl {

namespace {

// The search edit and the count start the tab order after the tree, so that the tree keeps the
// focus a form has always opened with.
void AddSearchRow(HWND dialog) {
    HWND tree = GetDlgItem(dialog, IDC_TREE);
    HWND edit = AddDialogControl(dialog,
                                 {IDC_SEARCH_EDIT, L"EDIT", u"", WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, 0, 120, 12},
                                 tree);
    HWND count = AddDialogControl(dialog, {IDC_SEARCH_COUNT, L"STATIC", u"", WS_VISIBLE | SS_RIGHT, 0, 40, 8},
                                  edit ? edit : tree);
    AddDialogControl(dialog,
                     {IDC_CUSTOMISED_ONLY, L"BUTTON", Translate(formtexts::kCustomisedOnly),
                      WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, 0, 72, 10},
                     count ? count : tree);
    SetCueBanner(dialog, IDC_SEARCH_EDIT, Translate(formtexts::kSearchCue));
}

// Only groups carry an open state; asking each element too would cost a walk of the tree view's
// items per element under Wine.
std::vector<char> ExpandedNow(HWND dialog, const TFormRun& run) {
    std::vector<char> expanded(run.form.treeIndex.size(), 0);
    for (std::size_t i = 0; i < run.form.treeIndex.size(); ++i) {
        if (run.form.treeIndex[i].kind != TreeNodeKind::Group) continue;
        const auto item = reinterpret_cast<WPARAM>(run.form.treeIndex[i].treeItem);
        if (item && (SendDlgItemMessageW(dialog, IDC_TREE, TVM_GETITEMSTATE, item, TVIS_EXPANDED) & TVIS_EXPANDED))
            expanded[i] = 1;
    }
    return expanded;
}

// Selects a match as the user would, leaving the focus where it is (in the search).
void GoToMatch(HWND dialog, TFormRun& run, std::ptrdiff_t node) {
    if (node < 0) return;
    TBusyScope keep(run.keepFocus);
    SelectTreeNode(dialog, run, static_cast<std::size_t>(node));
}

void StepToMatch(HWND dialog, TFormRun& run, bool forward) {
    if (!run.filterView.active) return;
    GoToMatch(dialog, run, StepMatch(run.filterView.matches, run.currentIndex, forward));
}

void FocusSearch(HWND dialog) {
    HWND edit = GetDlgItem(dialog, IDC_SEARCH_EDIT);
    if (!edit) return;
    SetFocus(edit);
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

}  // namespace

void CreateSearchControls(HWND dialog) { AddSearchRow(dialog); }

void StartSearch(TFormRun& run) {
    run.filter = std::make_unique<TSettingsFilter>(run.form, run.treePlan);
    run.marks = std::make_unique<TChangeMarks>(run.form, run.filter->Parents());
    run.undo = std::make_unique<TUndoStack>(run.form);
    run.filterView = TFilterView{};
    run.expandedBeforeSearch.clear();
}

void ApplySearch(HWND dialog, TFormRun& run) {
    if (!run.filter) return;
    const std::u16string search = GetControlText(dialog, IDC_SEARCH_EDIT);
    const bool wasActive = run.filterView.active;
    // Groups open as they were before the search once it ends; what the search opened is forgotten.
    if (!wasActive) run.expandedBeforeSearch = ExpandedNow(dialog, run);
    run.filterView = run.filter->Apply(search, IsChecked(dialog, IDC_CUSTOMISED_ONLY));
    SetControlText(dialog, IDC_SEARCH_COUNT, MatchCountText(run.filterView, search));
    if (!run.filterView.active) {
        RebuildTree(dialog, run, {}, run.expandedBeforeSearch);
        return;
    }
    RebuildTree(dialog, run, run.filterView.shown, std::vector<char>(run.form.treeIndex.size(), 1));
    if (!run.filterView.matches.empty()) GoToMatch(dialog, run, static_cast<std::ptrdiff_t>(run.filterView.matches.front()));
}

bool OnFormKey(HWND dialog, TFormRun& run, const MSG& message) {
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return false;
    const bool ctrl = IsKeyHeld(VK_CONTROL), shift = IsKeyHeld(VK_SHIFT), alt = IsKeyHeld(VK_MENU);
    const bool inSearch = message.hwnd == GetDlgItem(dialog, IDC_SEARCH_EDIT);
    const bool inTree = message.hwnd == GetDlgItem(dialog, IDC_TREE);
    if (inTree && (message.wParam == VK_APPS || (message.wParam == VK_F10 && shift && !ctrl && !alt))) {
        OnTreeContextMenu(dialog, run, -1);
        return true;
    }
    if (message.message != WM_KEYDOWN) return false;
    switch (message.wParam) {
    case 'Z':
        // An edit that can still take back its own typing keeps Ctrl+Z.
        if (!ctrl || alt || shift || SendMessageW(message.hwnd, EM_CANUNDO, 0, 0)) return false;
        ReplayChange(dialog, run, true);
        return true;
    case 'Y':
        if (!ctrl || alt || shift) return false;
        ReplayChange(dialog, run, false);
        return true;
    case 'F':
        if (!ctrl || alt || shift) return false;
        FocusSearch(dialog);
        return true;
    case VK_F3:
        if (ctrl || alt || !run.filterView.active) return false;
        StepToMatch(dialog, run, !shift);
        return true;
    case VK_RETURN:
        if (!inSearch || ctrl || alt) return false;
        StepToMatch(dialog, run, !shift);
        return true;  // never the default button from the search
    case VK_ESCAPE:
        // An empty search lets Esc cancel the form as it always has.
        if (!inSearch || GetControlText(dialog, IDC_SEARCH_EDIT).empty()) return false;
        SetControlText(dialog, IDC_SEARCH_EDIT, u"");
        return true;
    default: return false;
    }
}

}  // namespace qrl
