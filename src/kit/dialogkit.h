// The one way a dialog is written: a class derived from TDialog, run modally from a resource or an
// in-memory template. The kit's procedure owns the lifetime rule (the object arrives at
// WM_INITDIALOG and is kept under GWLP_USERDATA until WM_NCDESTROY), the translation of the
// dialog's texts, and the guard that keeps exceptions out of the dialog manager. Win32 only.
#pragma once

#include <windows.h>

#include "kit/gdiholders.h"
#include "locale/language.h"

#include <span>
#include <string>

namespace qrl {

// The id under which a text table names the dialog's own title.
inline constexpr int kDialogTitleId = 0;

// One translated text of a dialog: its control (or kDialogTitleId), its key and English default.
struct TDialogText {
    int id;
    TTextKey text;
};

// The buttons most dialogs share are keyed alike everywhere, with one default each; a dialog whose
// buttons read otherwise writes its own rows.
inline constexpr TTextKey kOkText{u"IDOK", u"&Ok"};
inline constexpr TTextKey kCancelText{u"IDCANCEL", u"&Cancel"};
inline constexpr TTextKey kHelpText{u"IDHELP", u"&Help"};

class TDialog {
public:
    TDialog() = default;
    virtual ~TDialog() = default;
    TDialog(const TDialog&) = delete;
    TDialog& operator=(const TDialog&) = delete;

    // DialogBoxParamW on a template of `instance` (null: our module); a template that can't be
    // loaded gives the platform's result, which callers treat as cancelled.
    INT_PTR RunModal(HWND parent, int templateId, HINSTANCE instance = nullptr);
    // DialogBoxIndirectParamW on a template built in memory, `size` bytes long.
    INT_PTR RunModal(HWND parent, const DLGTEMPLATE* dialogTemplate, std::size_t size);

    // Null until WM_INITDIALOG and again after WM_NCDESTROY.
    HWND Window() const { return window_; }

protected:
    // The texts translated at start-up, before OnInit.
    virtual std::span<const TDialogText> Texts() const { return {}; }
    // Before the texts: for set-up that must precede everything else (subclassing controls).
    virtual void BeforeInit(WPARAM) {}
    // The dialog's own start-up; the result is WM_INITDIALOG's (TRUE: the system sets the focus).
    virtual INT_PTR OnInit() { return TRUE; }
    // Splits the messages; a dialog that wants every message whole overrides this.
    virtual INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    virtual INT_PTR OnCommand(int id, int code);
    virtual INT_PTR OnNotify(const NMHDR& header);
    virtual INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // Last call while the window still exists.
    virtual void OnDestroy() {}
    // After the kit has moved, sized and re-fonted the controls for a new resolution, before the
    // window takes its new size: for what a dialog keeps in pixels of its own.
    virtual void OnDpiChanged(UINT /*oldDpi*/, UINT /*newDpi*/) {}
    // The resolution the dialog is laid out at.
    UINT Dpi() const { return dpi_; }

    void End(INT_PTR result) const { EndDialog(window_, result); }
    // A notification's result goes through DWLP_MSGRESULT in a dialog procedure.
    INT_PTR NotifyResult(LRESULT result) const;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Start(HWND window, WPARAM wParam);
    // The one relayout of every dialog for a new resolution; `suggested` (from Windows) is the
    // window's new place, null for a dialog inside another, which its parent has placed.
    void ChangeDpi(UINT newDpi, const RECT* suggested);

    HWND window_ = nullptr;
    UINT dpi_ = 0;
    TFont scaledFont_;  // the dialog's font at the new resolution, once it has changed
};

// Sets a busy flag for a scope and puts back what it was, so that the notifications of a dialog's
// own changes to its controls do nothing.
class TBusyScope {
public:
    explicit TBusyScope(bool& flag) : flag_(flag), was_(flag) { flag_ = true; }
    ~TBusyScope() { flag_ = was_; }
    TBusyScope(const TBusyScope&) = delete;
    TBusyScope& operator=(const TBusyScope&) = delete;

private:
    bool& flag_;
    bool was_;
};

// Translates a dialog's title and control texts; a control the dialog lacks is skipped.
void TranslateDialogTexts(HWND dialog, std::span<const TDialogText> texts);

// A control tells its parent of a change by WM_COMMAND with its id and a named code.
void NotifyParent(HWND control, int code);

// What the platform's open-file dialog is asked.
struct TOpenFileRequest {
    std::u16string title;
    std::u16string filter;        // as BuildBrowseFilter makes it; empty: no filter
    std::u16string initialFile;   // cut to the path limit
    std::u16string initialFolder;
    std::u16string defaultExtension;
    DWORD flags = 0;
};
// The chosen file's path, or empty when the user cancelled.
std::u16string ChooseFileToOpen(HWND owner, const TOpenFileRequest& request);
// The same request of the platform's save-file dialog.
std::u16string ChooseFileToSave(HWND owner, const TOpenFileRequest& request);

// A warning's text colour: a red that reads on the dialog face, or the system's text colour while
// high contrast is on, as the user's own colours come first then.
COLORREF WarningTextColour();
// The answer to WM_CTLCOLORSTATIC that draws a static control's text in `colour` on the dialog face.
INT_PTR StaticTextColour(WPARAM dc, COLORREF colour);

}  // namespace qrl
