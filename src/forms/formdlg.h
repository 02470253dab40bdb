// The form dialog, split by concern over a few files. Internal to the
// form engine: the files share the run context and these handlers.
#pragma once

#include <windows.h>

#include "forms/editortable.h"
#include "kit/dialogkit.h"

#include <string>

namespace qrl {

class TConfigSession;
class TElementDef;
struct TFormDef;

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

protected:
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;
    INT_PTR OnNotify(const NMHDR& header) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDestroy() override;

private:
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
