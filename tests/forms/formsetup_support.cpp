#include "formsetup.h"

#include "driver.h"
#include "forms/basedialog.h"
#include "forms/pleasewait.h"
#include "forms/samplectl.h"

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
    return ReadUtf8File(std::string(QRL_SOURCE_DIR) + "/samples/" + name);
}

void ForgetSelection(const std::u16string& moduleType) {
    const std::u16string name = moduleType + u".CurrentProperty";
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Marlowick\\Quorl4\\qrl4cfg", 0, KEY_SET_VALUE, &key) ==
        ERROR_SUCCESS) {
        RegDeleteValueW(key, W(name));
        RegCloseKey(key);
    }
}

}  // namespace qrl::test
