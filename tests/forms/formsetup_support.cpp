#include "formsetup.h"

#include "driver.h"
#include "kit/basedialog.h"
#include "kit/pleasewait.h"
#include "forms/forms_rc.h"
#include "kit/samplectl.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace qrl::test {

void EnsureFormClasses() {
    static const bool registered = [] {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
        InitCommonControlsEx(&classes);
        RegisterSampleClass(FormsInstance());
        RegisterPleaseWaitClass(FormsInstance());
        return true;
    }();
    (void)registered;
}

std::unique_ptr<TConfigSession> LoadSession(const std::u16string& request) {
    auto session = std::make_unique<TConfigSession>();
    session->LoadRequestText(request);
    session->ApplyDataValues();
    return session;
}

std::u16string SampleText(const std::string& name) {
    std::string path = QRL_SOURCE_DIR "/samples/";
    path += name;
    return ReadUtf8File(path);
}

RunResult RunRequest(const std::u16string& request, const std::wstring& title,
                     const std::function<void(Driver&, HWND)>& script, int settleMs) {
    RunResult result;
    Drive([&] { result = Product::Get().RunConfig2W(request); },
          [&](Driver& d) { script(d, d.WaitForDialog(title, 15000, settleMs)); });
    return result;
}

void SelectElement(Driver& d, HWND form, const std::wstring& prefix, int settleMs) {
    HWND tree = GetDlgItem(form, IDC_TREE);
    Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, prefix));
    d.Settle(settleMs);
}

std::wstring ElementLabel(HWND form, const std::wstring& prefix) {
    HWND tree = GetDlgItem(form, IDC_TREE);
    return Driver::TreeItemText(tree, Driver::FindTreeItem(tree, prefix));
}

std::wstring SelectedLabel(HWND form) {
    HWND tree = GetDlgItem(form, IDC_TREE);
    return Driver::TreeItemText(tree, TreeView_GetSelection(tree));
}

RunResult RunOnElement(const std::u16string& request, const std::wstring& element,
                       const std::function<void(Driver&, HWND)>& script, int settleMs, const std::wstring& title) {
    return RunRequest(request, title, [&](Driver& d, HWND form) {
        SelectElement(d, form, element, settleMs);
        script(d, form);
        if (IsWindow(form)) d.Close(form);
    }, settleMs);
}

RunResult RunEditor(const std::u16string& request, const std::wstring& element, const std::wstring& title,
                    const std::function<void(Driver&, HWND)>& script, int settleMs) {
    return RunOnElement(request, element, [&](Driver& d, HWND form) {
        Driver::Click(form, IDC_SPECIAL_EDIT);
        HWND editor = d.WaitForDialog(title, 15000, settleMs);
        script(d, editor);
        d.WaitGone(editor);
    }, settleMs);
}

void ForgetSelection(const std::u16string& moduleType) { ForgetModuleValue(moduleType + u".CurrentProperty"); }

void ForgetModuleValue(const std::u16string& name) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Marlowick\\Quorl4\\qrl4cfg", 0, KEY_SET_VALUE, &key) ==
        ERROR_SUCCESS) {
        RegDeleteValueW(key, W(name));
        RegCloseKey(key);
    }
}

}  // namespace qrl::test
