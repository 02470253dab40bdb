// Shared set-up of the dialog tests that link the form engine directly: what the DLL does at load
// (window classes), and loading a sample request into a session as the general route does.
#pragma once

#include "dllhost.h"
#include "driver.h"
#include "request/session.h"

#include <functional>

#include <memory>
#include <string>

namespace qrl::test {

// Registers the window classes once per process, as process attach does for the DLL.
void EnsureFormClasses();

// The session of a request text, loaded and with its data values applied.
std::unique_ptr<TConfigSession> LoadSession(const std::u16string& request);
// A sample request of samples/ as text.
std::u16string SampleText(const std::string& name);

// Clears the registry value of the last selection of a module type.
void ForgetSelection(const std::u16string& moduleType);
// Clears a value the module keeps in the registry.
void ForgetModuleValue(const std::u16string& name);

// Runs `request` through the DLL while `script` works its dialog titled `title`. Failures of the
// script are the test's.
RunResult RunRequest(const std::u16string& request, const std::wstring& title,
                     const std::function<void(Driver&, HWND)>& script, int settleMs = 50);

// The settings form's tree: selects the element whose label begins with `prefix` and lets the form
// take it; the label of such an element, and that of the selected one.
void SelectElement(Driver& d, HWND form, const std::wstring& prefix, int settleMs = 50);
std::wstring ElementLabel(HWND form, const std::wstring& prefix);
std::wstring SelectedLabel(HWND form);

// Runs `request` through the DLL; once its form titled `title` shows, selects the tree item whose
// text begins with `element` and lets `script` work the form, which is accepted afterwards if still
// open. Failures of the script are the test's.
RunResult RunOnElement(const std::u16string& request, const std::wstring& element,
                       const std::function<void(Driver&, HWND)>& script, int settleMs = 50,
                       const std::wstring& title = L"Configure  ");
// RunOnElement on the element's own dialog: its "Edit..." button pressed, the dialog titled `title`
// worked by `script`, which ends it.
RunResult RunEditor(const std::u16string& request, const std::wstring& element, const std::wstring& title,
                    const std::function<void(Driver&, HWND)>& script, int settleMs = 50);

}  // namespace qrl::test
