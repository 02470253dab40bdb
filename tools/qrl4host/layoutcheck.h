// What a longer translation or another screen resolution breaks in a dialog: a label, button, check
// box or radio button whose text is wider than the control (measured in the control's own font), and
// a control outside the dialog's client area.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qrl4host {

// One line per visible control of `dialog` that cuts its text or lies outside the dialog.
std::vector<std::wstring> LayoutProblems(HWND dialog);

}  // namespace qrl4host
