// The built-in form, run for real under the dialog manager and driven like a user.
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "forms/runform.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";

TEST(BuiltInFormDialog, TypingChangesTheValueAndTheTreeLabel) {
    EnsureFormClasses();
    ForgetSelection(u"Comms");
    auto session = LoadSession(SampleText("comms_request.xml"));
    int result = -99;
    std::wstring labelAfter;
    const auto failures = RunDriven([&] { result = RunForm(*session, nullptr, nullptr); },
                                    [&](Driver& d) {
                                        HWND dlg = d.WaitForDialog(kCommsTitle);
                                        HWND tree = GetDlgItem(dlg, IDC_TREE);
                                        HTREEITEM host = Driver::FindTreeItem(tree, L"Host name");
                                        Driver::SelectTreeItem(tree, host);
                                        d.Settle();
                                        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");
                                        d.Settle();
                                        labelAfter = Driver::TreeItemText(tree, host);
                                        Driver::Click(dlg, IDOK);
                                        d.WaitGone(dlg);
                                    });
    EXPECT_TRUE(failures.empty()) << (failures.empty() ? "" : failures.front());
    EXPECT_EQ(result, 1);
    EXPECT_EQ(session->FindElement(u"Host")->value, u"beta");
    EXPECT_EQ(labelAfter, L"Host name (beta)");
}

}  // namespace
}  // namespace qrl::test
