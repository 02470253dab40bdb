// Reset in the settings dialog: the button in the frame for the selected element, and the tree's
// context menu for an element or a whole group. A reset writes the default through the same
// steps as an edit: the editor shows it, the tree label and marks follow, validation comes on
// leaving the field.
#include "kit/addedcontrol.h"
#include "kit/basedialog.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/forms_rc.h"
#include "forms/valuereset.h"
#include "locale/language.h"
#include "request/session.h"

#include <commctrl.h>

namespace qrl {

namespace {

enum MenuCommand : UINT { kResetElement = 1, kResetGroup = 2 };

const std::vector<std::ptrdiff_t>& Parents(const TFormRun& run) {
    static const std::vector<std::ptrdiff_t> none;
    return run.filter ? run.filter->Parents() : none;
}

// A group's text as the tree shows it (translated).
std::u16string ShownText(const TFormRun& run, std::size_t node) {
    for (const TreeInsertion& step : run.treePlan)
        if (step.node == node) return step.text;
    return std::u16string(run.form.treeIndex[node].key);
}

void ResetNode(HWND dialog, TFormRun& run, std::size_t node) {
    TElementDef* element = run.form.treeIndex[node].element;
    if (!element) return;
    element->value = element->defaultValue;
    if (static_cast<std::ptrdiff_t>(node) == run.currentIndex) {
        ShowEditor(dialog, run, true);  // the editor shows the default; the focus stays
        RefreshTreeItem(dialog, run);
    } else {
        RefreshTreeNode(dialog, run, node);
    }
}

void ResetGroup(HWND dialog, TFormRun& run, std::size_t group, const std::u16string& label) {
    const std::vector<std::size_t> nodes = ResettableBelow(run.form, Parents(run), group);
    const std::u16string question = ResetGroupQuestion(nodes.size(), label);
    if (MessageBoxW(dialog, W(question), kProgramTitle, MB_YESNO | MB_ICONQUESTION) != IDYES) return;
    for (std::size_t node : nodes) ResetNode(dialog, run, node);
}

// The node of the item that a right click hit, or of the selected item for the keyboard.
std::ptrdiff_t MenuNode(HWND tree, LPARAM where, POINT& at) {
    HTREEITEM item = nullptr;
    if (where == -1) {
        item = TreeView_GetSelection(tree);
        RECT r{};
        if (item && TreeView_GetItemRect(tree, item, &r, TRUE)) {
            at = POINT{r.left, r.bottom};
            ClientToScreen(tree, &at);
        }
    } else {
        at = POINT{static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))};
        TVHITTESTINFO hit{};
        hit.pt = at;
        ScreenToClient(tree, &hit.pt);
        item = TreeView_HitTest(tree, &hit);
        if (!(hit.flags & TVHT_ONITEM)) item = nullptr;
    }
    if (!item) return -1;
    TVITEMW data{};
    data.mask = TVIF_PARAM | TVIF_HANDLE;
    data.hItem = item;
    if (!TreeView_GetItem(tree, &data)) return -1;
    return data.lParam;
}

}  // namespace

void CreateResetButton(HWND dialog) {
    // Reset follows the value controls in the tab order; they are made later, before it, so it
    // comes after the search row for now.
    HWND previous = GetDlgItem(dialog, IDC_LANG_DELETE);
    for (int id : {IDC_CUSTOMISED_ONLY, IDC_SEARCH_COUNT, IDC_SEARCH_EDIT, IDC_TREE})
        if (!previous) previous = GetDlgItem(dialog, id);
    AddDialogControl(dialog,
                     {IDC_RESET_VALUE, L"BUTTON", Translate(formtexts::kReset), WS_VISIBLE | WS_TABSTOP | WS_DISABLED, 0, 40, 14},
                     previous);
}

void UpdateResetButton(const TFormRun& run) {
    const TElementDef* element = run.form.currentElement;
    if (HWND reset = run.Control(IDC_RESET_VALUE)) EnableWindow(reset, element && CanReset(*element));
}

void OnResetClicked(HWND dialog, TFormRun& run) {
    if (run.form.currentElement && run.currentIndex >= 0 && CanReset(*run.form.currentElement))
        ResetNode(dialog, run, static_cast<std::size_t>(run.currentIndex));
}

void OnTreeContextMenu(HWND dialog, TFormRun& run, LPARAM where) {
    HWND tree = GetDlgItem(dialog, IDC_TREE);
    POINT at{};
    const std::ptrdiff_t node = MenuNode(tree, where, at);
    if (node < 0 || static_cast<std::size_t>(node) >= run.form.treeIndex.size()) return;
    const TTreeNode& target = run.form.treeIndex[static_cast<std::size_t>(node)];
    const bool isGroup = target.kind == TreeNodeKind::Group;
    if (!isGroup && !target.element) return;
    const bool enabled = isGroup ? !ResettableBelow(run.form, Parents(run), static_cast<std::size_t>(node)).empty()
                                 : CanReset(*target.element);
    HMENU menu = CreatePopupMenu();
    if (!menu) return;
    const std::u16string text = Translate(isGroup ? formtexts::kResetGroup : formtexts::kResetElement);
    AppendMenuW(menu, MF_STRING | (enabled ? 0 : MF_GRAYED), isGroup ? kResetGroup : kResetElement, W(text));
    const UINT chosen = static_cast<UINT>(
        TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_NONOTIFY, at.x, at.y, 0, dialog, nullptr));
    DestroyMenu(menu);
    if (chosen == kResetElement) {
        ResetNode(dialog, run, static_cast<std::size_t>(node));
    } else if (chosen == kResetGroup) {
        ResetGroup(dialog, run, static_cast<std::size_t>(node), ShownText(run, static_cast<std::size_t>(node)));
    }
}

}  // namespace qrl
