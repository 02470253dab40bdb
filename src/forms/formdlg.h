// The form dialog, split by concern over a few files. Internal to the
// form engine: the files share the run context and these handlers.
#pragma once

#include <windows.h>

#include "forms/changemarks.h"
#include "kit/dlgtemplate.h"
#include "forms/editortable.h"
#include "forms/layout.h"
#include "forms/settingsfilter.h"
#include "forms/undostack.h"
#include "kit/controlindex.h"
#include "kit/dialogkeys.h"
#include "kit/dialogkit.h"
#include "kit/gdiholders.h"

#include <memory>
#include <string>
#include <vector>

namespace qrl {

class TConfigSession;
class TElementDef;
struct TFormDef;

// A value control of the built-in form, made from its template item when it first shows: most
// dialogs show few of them, and each window costs its making, hiding and moving.
struct TLateEditor {
    TemplateItem item;
    HWND window = nullptr;
};

// A running form dialog: the form, its session, the editors its buttons open, and a busy flag set
// while the dialog itself changes controls, so that their notifications do nothing.
class TFormRun : public TDialog {
public:
    TFormRun(TFormDef& form, TConfigSession& session, const TFormEditors& editors)
        : form(form), session(session), editors(editors) {}

    TFormDef& form;
    TConfigSession& session;
    const TFormEditors& editors;
    bool busy = false;

    // The built-in form's tree as it was planned, and the search over it.
    std::vector<TreeInsertion> treePlan;
    std::unique_ptr<TSettingsFilter> filter;
    std::unique_ptr<TChangeMarks> marks;
    std::ptrdiff_t currentIndex = -1;  // position of form.currentNode in the tree index
    std::unique_ptr<TUndoStack> undo;
    bool typing = false;     // the change comes from typing in the value edit
    bool replaying = false;  // an undo or redo writes the value: it is no new change
    TFilterView filterView;
    std::vector<char> expandedBeforeSearch;  // per tree node, while the tree is narrowed
    bool treeRebuilding = false;             // the tree's notifications of a rebuild do nothing
    bool keepFocus = false;                  // a selection made by the search leaves the focus where it is
    std::unique_ptr<TDialogKeys> keys;
    TFont boldTreeFont;  // the tree's font in bold, made on the first bold item drawn
    ControlRects layoutSource;  // the controls as the template made them: every layout starts there
    TWindowSize smallestSize;   // the built-in form's size as it opened; zero for other forms
    std::vector<TLateEditor> lateEditors;  // in template order; empty for a request's own form
    ControlRects laidOut;       // where the last layout put the controls
    TRect laidOutClient{};      // the client rectangle of the last layout

    // The control with this id, or null; looked up once per dialog.
    HWND Control(int id) const { return controls.Find(Window(), id); }

protected:
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnNotify(const NMHDR& header) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDestroy() override;
    void OnDpiChanged(UINT oldDpi, UINT newDpi) override;

private:
    mutable TControlIndex controls;

    void OnOk();
    void OnCancel();
    void OnModuleSelect();
    void OnConnect();
    void OnNestedForm(int id);
};

// formbind_win.cpp: the three value steps of a request's form.
void FillLists(HWND dialog, TFormRun& run);
void ShowValues(HWND dialog, TFormRun& run);
void CollectValues(HWND dialog, TFormRun& run);

// formtree_win.cpp: the built-in form's tree and layout.
// Moves the controls to fit the client area; false when it has the size of the last layout.
bool LayOutBuiltInForm(HWND dialog, TFormRun& run);
void FillTree(HWND dialog, TFormRun& run);
void RecallSelection(HWND dialog, TFormRun& run);
void StoreSelection(TFormRun& run);
void RefreshTreeItem(HWND dialog, TFormRun& run);
// The same for an element that is not the selected one.
void RefreshTreeNode(HWND dialog, TFormRun& run, std::size_t node);
LRESULT OnTreeCustomDraw(TFormRun& run, LPARAM lParam);
void OnTreeSelChanged(HWND dialog, TFormRun& run, LPARAM lParam);
bool ValidateCurrent(TFormRun& run);
// Puts the plan's nodes that `shown` keeps back into the tree; groups expanded as `expanded` says
// (per node), the current node selected again without a selection change.
void RebuildTree(HWND dialog, TFormRun& run, const std::vector<char>& shown, const std::vector<char>& expanded);
// Selects a node's item as the user would (validation first); false when it has no item.
bool SelectTreeNode(HWND dialog, TFormRun& run, std::size_t node);
// The registry value of the last selection, by module type; false when it can't be read.
bool ReadSelectionKey(const std::u16string& moduleType, std::u16string& key);
void WriteSelectionKey(const std::u16string& moduleType, const std::u16string& key);

// formsearch_win.cpp: the search row above the tree.
void CreateSearchControls(HWND dialog);
// Makes the search and the change marks over a freshly filled tree.
void StartSearch(TFormRun& run);
void ApplySearch(HWND dialog, TFormRun& run);
// The form's own keys: the search's, and the tree's context menu from the keyboard.
bool OnFormKey(HWND dialog, TFormRun& run, const MSG& message);

// formreset_win.cpp: the reset button and the tree's context menu.
void CreateResetButton(HWND dialog);
void UpdateResetButton(const TFormRun& run);
void OnResetClicked(HWND dialog, TFormRun& run);
// `where` is WM_CONTEXTMENU's position: screen coordinates, or -1 from the keyboard.
void OnTreeContextMenu(HWND dialog, TFormRun& run, LPARAM where);

// formsize_win.cpp: the built-in form at any size.
void MakeSizable(HWND dialog, TFormRun& run);
void OnFormSized(HWND dialog, TFormRun& run);
void LimitFormSize(const TFormRun& run, MINMAXINFO& limits);
// The form's own pixel measures (its layout's starting rectangles, its smallest size) at a new resolution.
void ScaleFormLayout(TFormRun& run, UINT oldDpi, UINT newDpi);
void StoreWindowSize(HWND dialog, const TFormRun& run);

// formundo_win.cpp: Ctrl+Z and Ctrl+Y over the values.
void ReplayChange(HWND dialog, TFormRun& run, bool undo);

// formeditors_win.cpp: the value editors of the built-in form.
// Takes the value controls out of the built-in form's template, into `aside`.
TemplateBytes SetEditorsAside(const TemplateBytes& bytes, std::vector<TLateEditor>& aside);
// The template's rectangle of a value control not made yet; false for any other control.
bool LateEditorRect(HWND dialog, const TFormRun& run, int id, RECT& rect);
// A control of the form; null for a value control not made yet, without asking the window manager.
HWND FormControl(const TFormRun& run, int id);
// The value controls not made yet, all of them: once the form has painted, so that every control
// of the form exists (hidden) from then on, as it always has.
void MakeRemainingEditors(HWND dialog, TFormRun& run);
void ShowEditor(HWND dialog, TFormRun& run, bool byKeyboard);
void HideEditors(const TFormRun& run);
bool OnEditorCommand(HWND dialog, TFormRun& run, int id, int code);

// The dialog result of a form ends the top dialog (a child page ends its parent).
void EndForm(HWND dialog, int result);

}  // namespace qrl
