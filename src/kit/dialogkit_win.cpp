#include "kit/dialogkit.h"

#include "kit/basedialog.h"
#include "kit/commoncontrols.h"
#include "kit/dpi.h"

#include <commdlg.h>

#include <algorithm>

namespace qrl {

namespace {

TemplateBytes VersionedResourceTemplate(HINSTANCE instance, int templateId) {
    HRSRC found = FindResourceW(instance, MAKEINTRESOURCEW(templateId), MAKEINTRESOURCEW(5));  // RT_DIALOG
    HGLOBAL loaded = found ? LoadResource(instance, found) : nullptr;
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes) return {};
    return WithVersionedClasses(static_cast<const std::uint8_t*>(bytes), SizeofResource(instance, found));
}

}  // namespace

INT_PTR TDialog::RunModal(HWND parent, int templateId, HINSTANCE instance) {
    if (!instance) instance = FormsInstance();
    const TemplateBytes versioned = VersionedResourceTemplate(instance, templateId);
    if (!versioned.empty()) {
        return DialogBoxIndirectParamW(instance, reinterpret_cast<const DLGTEMPLATE*>(versioned.data()), parent,
                                       Procedure, reinterpret_cast<LPARAM>(this));
    }
    return DialogBoxParamW(instance, MAKEINTRESOURCEW(templateId), parent, Procedure, reinterpret_cast<LPARAM>(this));
}

INT_PTR TDialog::RunModal(HWND parent, const DLGTEMPLATE* dialogTemplate, std::size_t size) {
    const TemplateBytes versioned = WithVersionedClasses(reinterpret_cast<const std::uint8_t*>(dialogTemplate), size);
    if (!versioned.empty()) dialogTemplate = reinterpret_cast<const DLGTEMPLATE*>(versioned.data());
    return DialogBoxIndirectParamW(FormsInstance(), dialogTemplate, parent, Procedure,
                                   reinterpret_cast<LPARAM>(this));
}

INT_PTR TDialog::Start(HWND window, WPARAM wParam) {
    ResetDialogScroll(window);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    window_ = window;
    dpi_ = WindowDpi(window);
    TakeOverDialogScaling(window);
    BeforeInit(wParam);
    TranslateDialogTexts(window, Texts());
    return OnInit();
}

void TDialog::ChangeDpi(UINT newDpi, const RECT* suggested) {
    const UINT oldDpi = dpi_;
    if (newDpi != 0 && newDpi != oldDpi) {
        HFONT font = scaledFont_ ? scaledFont_.get() : reinterpret_cast<HFONT>(SendMessageW(window_, WM_GETFONT, 0, 0));
        // The old font goes only once no control uses it any more.
        if (HFONT scaled = RescaleDialog(window_, font, oldDpi, newDpi)) scaledFont_.Reset(scaled);
        dpi_ = newDpi;
        OnDpiChanged(oldDpi, newDpi);
    }
    if (suggested)
        SetWindowPos(window_, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                     suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR TDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: return OnCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY: return lParam ? OnNotify(*reinterpret_cast<const NMHDR*>(lParam)) : FALSE;
    default: return OnMessage(message, wParam, lParam);
    }
}

INT_PTR TDialog::OnCommand(int, int) { return FALSE; }
INT_PTR TDialog::OnNotify(const NMHDR&) { return FALSE; }
INT_PTR TDialog::OnMessage(UINT, WPARAM, LPARAM) { return FALSE; }

INT_PTR TDialog::NotifyResult(LRESULT result) const {
    SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR CALLBACK TDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_INITDIALOG) {
            auto* self = reinterpret_cast<TDialog*>(lParam);
            return self ? self->Start(window, wParam) : TRUE;
        }
        // Messages before WM_INITDIALOG (WM_SETFONT and the like) and after the end find no object.
        auto* self = reinterpret_cast<TDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self == nullptr) return FALSE;
        if (message == kDpiChangedMessage) {
            self->ChangeDpi(LOWORD(wParam), reinterpret_cast<const RECT*>(lParam));
            return TRUE;
        }
        if (message == kDpiChangedAfterParentMessage && (GetWindowLongW(window, GWL_STYLE) & WS_CHILD))
            self->ChangeDpi(WindowDpi(window), nullptr);
        if (message != WM_NCDESTROY) return self->Dispatch(message, wParam, lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->OnDestroy();
        self->window_ = nullptr;
        self->scaledFont_.Reset();
        return FALSE;
    } catch (...) {
        // Nothing may unwind through the dialog manager: the dialog stays as it is.
        return FALSE;
    }
}

namespace {

// Edits and combos tell their dialog of every text they are given, even the same one.
bool NotifiesTextChange(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return lstrcmpiW(name, L"Edit") == 0 || lstrcmpiW(name, L"ComboBox") == 0;
}

// A text the window already shows is not given again: under Wine each text set is a round trip to
// the server and a repaint of a themed control, and most translations are the template's own texts.
void SetTranslatedText(HWND window, const std::u16string& text) {
    if (!NotifiesTextChange(window) && GetWindowText16(window) == text) return;
    SetWindowTextW(window, W(text));
}

}  // namespace

void TranslateDialogTexts(HWND dialog, std::span<const TDialogText> texts) {
    for (const TDialogText& row : texts) {
        if (row.id == kDialogTitleId) {
            SetTranslatedText(dialog, Translate(row.text));
        } else if (HWND control = GetDlgItem(dialog, row.id)) {
            SetTranslatedText(control, Translate(row.text));
        }
    }
}

void NotifyParent(HWND control, int code) {
    const int id = GetDlgCtrlID(control);
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
}

namespace {

using TFileDialogCall = BOOL(WINAPI*)(OPENFILENAMEW*);

std::u16string ChooseFile(HWND owner, const TOpenFileRequest& request, TFileDialogCall call) {
    wchar_t file[MAX_PATH] = {};
    const std::u16string initial = request.initialFile.substr(0, MAX_PATH - 1);
    std::copy(initial.begin(), initial.end(), file);
    OPENFILENAMEW open{};
    open.lStructSize = sizeof open;
    open.hwndOwner = owner;
    open.lpstrFilter = request.filter.empty() ? nullptr : W(request.filter);
    open.nFilterIndex = request.filter.empty() ? 0 : 1;
    open.lpstrFile = file;
    open.nMaxFile = MAX_PATH;
    open.lpstrTitle = W(request.title);
    open.lpstrInitialDir = request.initialFolder.empty() ? nullptr : W(request.initialFolder);
    open.lpstrDefExt = request.defaultExtension.empty() ? nullptr : W(request.defaultExtension);
    open.Flags = request.flags;
    return call(&open) ? U16(file) : std::u16string();
}

}  // namespace

std::u16string ChooseFileToOpen(HWND owner, const TOpenFileRequest& request) {
    return ChooseFile(owner, request, &GetOpenFileNameW);
}

std::u16string ChooseFileToSave(HWND owner, const TOpenFileRequest& request) {
    return ChooseFile(owner, request, &GetSaveFileNameW);
}

COLORREF WarningTextColour() {
    HIGHCONTRASTW contrast{sizeof contrast, 0, nullptr};
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0)
        return GetSysColor(COLOR_WINDOWTEXT);
    return RGB(192, 0, 0);  // 5.7:1 on the usual light grey face
}

INT_PTR StaticTextColour(WPARAM dc, COLORREF colour) {
    HDC context = reinterpret_cast<HDC>(dc);
    SetTextColor(context, colour);
    SetBkColor(context, GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
}

}  // namespace qrl
