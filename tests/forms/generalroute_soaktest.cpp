// The general route run a few hundred times in one process: each run opens the built-in form,
// changes a value and accepts; windows, GDI objects and heap must not grow.
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "soak.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kTitle = L"Configure  Telnet over TCP";

TEST(Soak, GeneralRoute) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    const std::u16string request = SampleText("comms_request.xml");
    ExpectNoGrowth(300, [&](int n) {
        RunResult r;
        const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
            HWND dlg = d.WaitForDialog(kTitle, 15000, 0);
            HWND tree = GetDlgItem(dlg, IDC_TREE);
            Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, L"Host name"));
            Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"host" + std::to_wstring(n));
            Driver::Click(dlg, IDOK);
            d.WaitGone(dlg);
        });
        return failures.empty() && r.code == 0 &&
               r.reply.find(u"Value=\"host" + decimal(n) + u"\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
