// The built-in form's upper half: layout, the tree with its blue value texts, the selection and
// its memory in the registry, and the check on leaving an integer field.
#include "kit/basedialog.h"
#include "kit/fieldrules.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/forms_rc.h"
#include "forms/formtree.h"
#include "forms/formvalues.h"
#include "forms/layout.h"
#include "kit/registrykey.h"
#include "request/session.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

namespace qrl {

namespace {

constexpr int kLaidOutIds[] = {
    IDC_FORM_OK,      IDC_FORM_CANCEL,   IDC_CONNECT,      IDC_MODULE_SELECT, IDC_FORM_HELP,
    IDC_VALUE_FRAME,  IDC_TREE,          IDC_VALUE_LABEL,  IDC_VALUE_EDIT,    IDC_FILE_BROWSE,
    IDC_MACRO_ASSIST, IDC_DIR_BROWSE,    IDC_VALUE_COMBO,  IDC_SSH_IMPORT,    IDC_VALUE_CHECK,
    IDC_COLOUR_SAMPLE, IDC_COLOUR_EDIT,  IDC_FONT_TEXT,    IDC_FONT_EDIT,     IDC_PRINTER_TEXT,
    IDC_PRINTER_EDIT, IDC_PRINTER_DEFAULT, IDC_SPECIAL_EDIT, IDC_LANG_ADD,    IDC_LANG_DELETE,
    IDC_SEARCH_EDIT,  IDC_SEARCH_COUNT,  IDC_CUSTOMISED_ONLY, IDC_RESET_VALUE};

TRect ToTRect(const RECT& r) { return TRect{r.left, r.top, r.right, r.bottom}; }

const TTreeNode* NodeAt(const TFormDef& form, LPARAM param) {
    if (param < 0 || static_cast<std::size_t>(param) >= form.treeIndex.size()) return nullptr;
    return &form.treeIndex[static_cast<std::size_t>(param)];
}

std::u16string SelectionValueName(const std::u16string& moduleType) { return moduleType + u".CurrentProperty"; }

}  // namespace

bool LayOutBuiltInForm(HWND dialog, TFormRun& run) {
    if (run.layoutSource.empty()) {
        for (int id : kLaidOutIds) {
            RECT r{};
            if (LateEditorRect(dialog, run, id, r)) {
                run.layoutSource[id] = ToTRect(r);
                continue;
            }
            HWND w = run.Control(id);
            if (!w) continue;
            r = ControlRect(w);
            if (id == IDC_VALUE_COMBO) {
                // A drop-down's window rectangle is its closed height; keep the height of the opened
                // list, or moving it would shrink the list to nothing.
                RECT dropped{};
                if (SendMessageW(w, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped)))
                    r.bottom = r.top + (dropped.bottom - dropped.top);
            }
            run.layoutSource[id] = ToTRect(r);
        }
        run.laidOut = run.layoutSource;
    }
    RECT clientRect{};
    GetClientRect(dialog, &clientRect);
    const TRect client = ToTRect(clientRect);
    if (client == run.laidOutClient) return false;
    run.laidOutClient = client;
    const ControlRects moved = LayoutBuiltInForm(client, GetSystemMetrics(SM_CXVSCROLL), run.layoutSource);
    // Each move is a trip through the window manager: a control already in place stays.
    for (const auto& [id, r] : moved) {
        TRect& now = run.laidOut[id];
        if (now == r) continue;
        now = r;
        if (HWND control = FormControl(run, id)) MoveWindow(control, r.left, r.top, r.Width(), r.Height(), TRUE);
    }
    return true;
}

namespace {

// The tree view of Wine finds an item among all of them, in the order they were made, to check a
// parent or an anchor handle and to forget an item it deletes. So the items others hang on are
// made first, in the plan's order; an item that comes before a later such sibling is hung after the
// nearest one before it, last one first, and the rest are added at their parent's end in the plan's
// order. The siblings keep the plan's order, each check is short however many elements the tree
// holds, and emptying the tree finds its items near the front.
class TreeFiller {
public:
    TreeFiller(HWND tree, TFormRun& run, const std::vector<char>& shown, const std::vector<char>& expanded, bool fresh)
        : tree_(tree), run_(run), shown_(shown), expanded_(expanded), fresh_(fresh) {}

    void Fill() {
        TFormDef& form = run_.form;
        for (TTreeNode& node : form.treeIndex) node.treeItem = nullptr;
        const std::vector<TreeInsertion>& plan = run_.treePlan;
        std::vector<char> holdsOthers(form.treeIndex.size(), 0);
        for (const TreeInsertion& step : plan)
            if (Kept(step) && step.parent >= 0) holdsOthers[static_cast<std::size_t>(step.parent)] = 1;
        for (const TreeInsertion& step : plan)
            if (Kept(step) && holdsOthers[step.node]) Insert(step, TVI_LAST);

        // Index 0 stands for the tree's own root level, parent -1.
        std::vector<HTREEITEM> lastHolder(form.treeIndex.size() + 1, TVI_FIRST);
        std::vector<HTREEITEM> anchor(form.treeIndex.size(), TVI_FIRST);
        for (const TreeInsertion& step : plan) {
            if (!Kept(step)) continue;
            HTREEITEM& holder = lastHolder[static_cast<std::size_t>(step.parent + 1)];
            if (holdsOthers[step.node])
                holder = static_cast<HTREEITEM>(form.treeIndex[step.node].treeItem);
            else
                anchor[step.node] = holder;
        }
        const auto trailing = [&](const TreeInsertion& step) {
            return anchor[step.node] == lastHolder[static_cast<std::size_t>(step.parent + 1)];
        };
        for (auto step = plan.rbegin(); step != plan.rend(); ++step)
            if (Kept(*step) && !holdsOthers[step->node] && !trailing(*step)) Insert(*step, anchor[step->node]);
        for (const TreeInsertion& step : plan)
            if (Kept(step) && !holdsOthers[step.node] && trailing(step)) Insert(step, TVI_LAST);
    }

private:
    bool Kept(const TreeInsertion& step) const { return shown_.empty() || shown_[step.node]; }

    void Insert(const TreeInsertion& step, HTREEITEM after) {
        TFormDef& form = run_.form;
        TVINSERTSTRUCTW insert{};
        insert.hParent = step.parent < 0
                             ? TVI_ROOT
                             : static_cast<HTREEITEM>(form.treeIndex[static_cast<std::size_t>(step.parent)].treeItem);
        insert.hInsertAfter = after;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        const TElementDef* element = form.treeIndex[step.node].element;
        const std::u16string text = element && !fresh_ ? ElementTreeText(*element) : std::u16string();
        insert.item.pszText = const_cast<wchar_t*>(W(element && !fresh_ ? text : step.text));
        insert.item.lParam = static_cast<LPARAM>(step.node);
        if (step.isGroup) {
            insert.item.mask |= TVIF_STATE;
            insert.item.stateMask = TVIS_EXPANDED;
            const bool open = expanded_.empty() ? step.expanded : expanded_[step.node] != 0;
            insert.item.state = open ? TVIS_EXPANDED : 0;
        }
        if (run_.marks && run_.marks->Bold(step.node)) {
            insert.item.mask |= TVIF_STATE;
            insert.item.stateMask |= TVIS_BOLD;
            insert.item.state |= TVIS_BOLD;
        }
        form.treeIndex[step.node].treeItem =
            reinterpret_cast<void*>(SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    }

    HWND tree_;
    TFormRun& run_;
    const std::vector<char>& shown_;
    const std::vector<char>& expanded_;
    bool fresh_;
};

// Inserts the plan's steps that `shown` keeps (all of them when it is empty), storing each item
// handle back into its node; groups open as `expanded` says, or as the plan says when it is empty.
// The plan's texts are the labels as it was made: `fresh` when no value has changed since.
void InsertPlan(HWND tree, TFormRun& run, const std::vector<char>& shown, const std::vector<char>& expanded, bool fresh) {
    TFormDef& form = run.form;
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    TreeFiller(tree, run, shown, expanded, fresh).Fill();
    if (!form.treeIndex.empty() && form.treeIndex.front().treeItem)
        SendMessageW(tree, TVM_EXPAND, TVE_EXPAND | TVE_EXPANDPARTIAL,
                     reinterpret_cast<LPARAM>(form.treeIndex.front().treeItem));
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(tree, nullptr, TRUE);
}

}  // namespace

void FillTree(HWND dialog, TFormRun& run) {
    HWND tree = GetDlgItem(dialog, IDC_TREE);
    if (!tree) return;
    run.treePlan = BuildTreeIndex(run.form, run.session);
    InsertPlan(tree, run, {}, {}, true);
    StartSearch(run);
}

void RebuildTree(HWND dialog, TFormRun& run, const std::vector<char>& shown, const std::vector<char>& expanded) {
    HWND tree = GetDlgItem(dialog, IDC_TREE);
    if (!tree) return;
    TBusyScope rebuilding(run.treeRebuilding);
    SendMessageW(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    InsertPlan(tree, run, shown, expanded, false);
    TFormDef& form = run.form;
    form.currentTreeItem = form.currentNode ? form.currentNode->treeItem : nullptr;
    if (form.currentTreeItem) {
        SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(form.currentTreeItem));
        SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(form.currentTreeItem));
    }
}

bool SelectTreeNode(HWND dialog, TFormRun& run, std::size_t node) {
    if (node >= run.form.treeIndex.size() || !run.form.treeIndex[node].treeItem) return false;
    const auto item = reinterpret_cast<LPARAM>(run.form.treeIndex[node].treeItem);
    SendDlgItemMessageW(dialog, IDC_TREE, TVM_SELECTITEM, TVGN_CARET, item);
    SendDlgItemMessageW(dialog, IDC_TREE, TVM_ENSUREVISIBLE, 0, item);
    return true;
}

bool ReadSelectionKey(const std::u16string& moduleType, std::u16string& key) {
    return ModuleRegistryKey().ReadString(SelectionValueName(moduleType), 200, key);
}

void WriteSelectionKey(const std::u16string& moduleType, const std::u16string& key) {
    ModuleRegistryKey().WriteString(SelectionValueName(moduleType), key);
}

void RecallSelection(HWND dialog, TFormRun& run) {
    std::u16string key;
    if (!ReadSelectionKey(run.session.moduleType, key)) return;
    const std::ptrdiff_t node = FindTreeNode(run.form, key);
    if (node < 0) return;
    if (void* item = run.form.treeIndex[static_cast<std::size_t>(node)].treeItem)
        SendDlgItemMessageW(dialog, IDC_TREE, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

void StoreSelection(TFormRun& run) {
    const TTreeNode* node = run.form.currentNode;
    WriteSelectionKey(run.session.moduleType, node ? std::u16string(node->key) : std::u16string());
}

namespace {

void SetItemText(HWND dialog, void* treeItem, const std::u16string& text) {
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_HANDLE;
    item.hItem = static_cast<HTREEITEM>(treeItem);
    item.pszText = const_cast<wchar_t*>(W(text));
    SendDlgItemMessageW(dialog, IDC_TREE, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

// Bold for an element changed since the dialog opened and the groups above it.
void MarkChanges(HWND dialog, TFormRun& run, std::ptrdiff_t changed) {
    if (!run.marks || changed < 0) return;
    const TElementDef* element = run.form.treeIndex[static_cast<std::size_t>(changed)].element;
    if (run.undo && !run.replaying && element)
        run.undo->Note(static_cast<std::size_t>(changed), element->value, run.typing);
    for (std::size_t node : run.marks->Update(static_cast<std::size_t>(changed))) {
        if (!run.form.treeIndex[node].treeItem) continue;
        TVITEMW item{};
        item.mask = TVIF_STATE | TVIF_HANDLE;
        item.hItem = static_cast<HTREEITEM>(run.form.treeIndex[node].treeItem);
        item.stateMask = TVIS_BOLD;
        item.state = run.marks->Bold(node) ? TVIS_BOLD : 0;
        SendDlgItemMessageW(dialog, IDC_TREE, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

}  // namespace

void RefreshTreeItem(HWND dialog, TFormRun& run) {
    TFormDef& form = run.form;
    if (!form.currentElement) return;
    MarkChanges(dialog, run, run.currentIndex);
    UpdateResetButton(run);
    if (form.currentTreeItem) SetItemText(dialog, form.currentTreeItem, ElementTreeText(*form.currentElement));
}

void RefreshTreeNode(HWND dialog, TFormRun& run, std::size_t node) {
    const TTreeNode& target = run.form.treeIndex[node];
    if (!target.element) return;
    MarkChanges(dialog, run, static_cast<std::ptrdiff_t>(node));
    if (target.treeItem) SetItemText(dialog, target.treeItem, ElementTreeText(*target.element));
}

namespace {

// The font the tree drew an item's label in: its own, or that in bold for a changed item.
HFONT TreeItemFont(TFormRun& run, HWND tree, HTREEITEM item) {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(tree, WM_GETFONT, 0, 0));
    if (!(SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_BOLD) & TVIS_BOLD)) return font;
    if (!run.boldTreeFont) {
        LOGFONTW logFont{};
        if (!GetObjectW(font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT), sizeof logFont, &logFont))
            return font;
        logFont.lfWeight = FW_BOLD;
        run.boldTreeFont.Reset(CreateFontIndirectW(&logFont));
    }
    return run.boldTreeFont ? run.boldTreeFont.get() : font;
}

}  // namespace

LRESULT OnTreeCustomDraw(TFormRun& run, LPARAM lParam) {
    auto* draw = reinterpret_cast<NMTVCUSTOMDRAW*>(lParam);
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT: break;
    default: return CDRF_DODEFAULT;
    }
    const TTreeNode* node = NodeAt(run.form, draw->nmcd.lItemlParam);
    if (!node || node->kind != TreeNodeKind::Element || !node->element) return CDRF_DODEFAULT;
    // The label stays in the tree's colour; the value behind it is drawn again in blue.
    // TVM_GETITEMRECT takes the item handle in the rectangle it fills.
    RECT textRect{};
    const HTREEITEM item = reinterpret_cast<HTREEITEM>(draw->nmcd.dwItemSpec);
    std::memcpy(&textRect, &item, sizeof item);
    if (!SendMessageW(draw->nmcd.hdr.hwndFrom, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&textRect)))
        return CDRF_DODEFAULT;
    HDC dc = draw->nmcd.hdc;
    // The post-paint DC no longer holds the tree's font; measure and draw with it, as the tree did.
    const auto font = TreeItemFont(run, draw->nmcd.hdr.hwndFrom, item);
    const HGDIOBJ oldFont = font ? SelectObject(dc, font) : nullptr;
    const std::u16string label = ElementLabel(*node->element);
    const std::u16string value = u" " + ElementValueToText(*node->element);
    SIZE labelSize{};
    GetTextExtentPoint32W(dc, W(label), static_cast<int>(label.size()), &labelSize);
    RECT valueRect = textRect;
    valueRect.left = std::min<LONG>(textRect.left + 2 + labelSize.cx, textRect.right);
    const COLORREF oldText = SetTextColor(dc, 0xFF0000);
    const COLORREF oldBack = SetBkColor(dc, draw->clrTextBk);
    const int y = textRect.top + ((textRect.bottom - textRect.top) - labelSize.cy) / 2;
    ExtTextOutW(dc, valueRect.left, y, ETO_CLIPPED | ETO_OPAQUE, &valueRect, W(value),
                static_cast<UINT>(value.size()), nullptr);
    SetTextColor(dc, oldText);
    SetBkColor(dc, oldBack);
    if (oldFont) SelectObject(dc, oldFont);
    return CDRF_DODEFAULT;
}

void OnTreeSelChanged(HWND dialog, TFormRun& run, LPARAM lParam) {
    const auto* change = reinterpret_cast<const NMTREEVIEWW*>(lParam);
    TFormDef& form = run.form;
    form.currentTreeItem = change->itemNew.hItem;
    if (run.undo) run.undo->Close();  // typing in the field left behind is one change
    const TTreeNode* node = change->itemNew.hItem ? NodeAt(form, change->itemNew.lParam) : nullptr;
    form.currentNode = const_cast<TTreeNode*>(node);
    run.currentIndex = node ? static_cast<std::ptrdiff_t>(change->itemNew.lParam) : -1;
    form.currentElement = nullptr;
    if (!node || node->kind != TreeNodeKind::Element || !node->element) {
        HideEditors(run);
        UpdateResetButton(run);
        return;
    }
    form.currentElement = node->element;
    UpdateResetButton(run);
    ShowEditor(dialog, run, change->action == TVC_BYKEYBOARD || run.keepFocus);
}

bool ValidateCurrent(TFormRun& run) {
    const TElementDef* element = run.form.currentElement;
    if (!element || element->type != ElementType::Int) return true;
    return CheckIntegerText(element->value, element->min, element->max, run.form.validationMessage);
}

}  // namespace qrl
