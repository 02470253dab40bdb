// The helpers that every dialog uses. Win32 only.
#pragma once

#include <windows.h>

#include "kit/dialogkit.h"

#include <span>
#include <string>

namespace qrl {

// The caption of the program's own message boxes.
inline constexpr wchar_t kProgramTitle[] = L"Quorl";

// Helpers; each takes the dialog's window first and skips a control id that has no window.
void EnableControl(HWND dialog, int id, bool enable);
void EnableCheck(HWND dialog, int id, bool enable);  // a disabled check box is never left checked
bool IsChecked(HWND dialog, int id);
void SetChecked(HWND dialog, int id, bool on);
void ShowControl(HWND dialog, int id, bool show);
void SetControlNumber(HWND dialog, int id, int value);
std::u16string GetControlText(HWND dialog, int id);
std::u16string GetWindowText16(HWND window);
void SetControlText(HWND dialog, int id, const std::u16string& text);
// A one-line edit's text, as WM_SETTEXT sets it, repainted only when what it shows changes: a
// long text is laid out whole at every paint, while an edit far to the right changes nothing
// in view.
void SetEditText(HWND edit, const std::u16string& text);
// A combo box's rows replaced by `rows`, with `selection` selected (-1: none).
void FillComboRows(HWND dialog, int id, std::span<const std::u16string> rows, int selection = -1);
int ComboSelection(HWND dialog, int id);  // CB_ERR when nothing is selected
// Selects the row that equals `text` exactly; without such a row nothing is selected, and a combo
// with an edit shows the text there.
void SelectComboText(HWND dialog, int id, const std::u16string& text);
void SetStyleBits(HWND control, LONG mask, LONG bits);
RECT ControlRect(HWND control);
int MoveAtBottom(HWND control, const RECT& rect, int left, int bottom);
void MoveClipped(HWND control, const RECT& rect, int left, int top, int rightLimit);
HWND TopLevelOf(HWND window);
// First call of every dialog at WM_INITDIALOG: ends the please-wait window, clears the scroll range.
void ResetDialogScroll(HWND dialog);
// The WM_VSCROLL rule of forms.
void HandleDialogScroll(HWND dialog, WPARAM wParam);

// 16-bit text at the Win32 boundary: wchar_t is 16-bit here, the one place where pointers convert.
inline const wchar_t* W(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }
inline const wchar_t* W(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
inline std::u16string U16(const wchar_t* text) {
    return text ? std::u16string(reinterpret_cast<const char16_t*>(text)) : std::u16string();
}

// The DLL's instance, set at load and cleared at unload; null in a program that links us directly.
HINSTANCE ModuleInstance();
void SetModuleInstance(HINSTANCE instance);
// The module that holds our resources and window classes (the DLL, or a test program linked with us).
HINSTANCE FormsInstance();

}  // namespace qrl
