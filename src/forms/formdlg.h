// The one dialog procedure behind every form, split by concern over a few files. Internal to the
// form engine: the files share the run context and these handlers.
#pragma once

#include <windows.h>

#include <string>

namespace qrl {

class TConfigSession;
class TElementDef;
struct TFormDef;

// What a running form dialog keeps: the form (the context of the procedure), its session, and a
// busy flag set while the dialog itself changes controls, so that their notifications do nothing.
struct TFormRun {
    TFormDef& form;
    TConfigSession& session;
    HWND window = nullptr;
    bool busy = false;
};

INT_PTR CALLBACK FormDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// formbind_win.cpp: the three value steps of a request's form.
void FillLists(HWND dialog, TFormRun& run);
void ShowValues(HWND dialog, TFormRun& run);
void CollectValues(HWND dialog, TFormRun& run);

// formtree_win.cpp: the built-in form's tree and layout.
void LayOutBuiltInForm(HWND dialog);
void FillTree(HWND dialog, TFormRun& run);
void RecallSelection(HWND dialog, TFormRun& run);
void StoreSelection(TFormRun& run);
void RefreshTreeItem(HWND dialog, TFormRun& run);
LRESULT OnTreeCustomDraw(TFormRun& run, LPARAM lParam);
void OnTreeSelChanged(HWND dialog, TFormRun& run, LPARAM lParam);
bool ValidateCurrent(TFormRun& run);
// The registry value of the last selection, by module type; false when it can't be read.
bool ReadSelectionKey(const std::u16string& moduleType, std::u16string& key);
void WriteSelectionKey(const std::u16string& moduleType, const std::u16string& key);

// formeditors_win.cpp: the value editors of the built-in form.
void ShowEditor(HWND dialog, TFormRun& run, bool byKeyboard);
void HideEditors(HWND dialog);
bool OnEditorCommand(HWND dialog, TFormRun& run, int id, int code);

// The dialog result of a form ends the top dialog (a child page ends its parent).
void EndForm(HWND dialog, int result);

}  // namespace qrl
