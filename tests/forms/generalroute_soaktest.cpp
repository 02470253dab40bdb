// The general route run a few hundred times in one process: each run opens the built-in form,
// changes a value and accepts; windows, GDI objects and heap must not grow.
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "soak.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, GeneralRoute) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    const std::u16string request = SampleText("comms_request.xml");
    ExpectNoGrowth(300, [&](int n) {
        const RunResult r = RunOnElement(request, L"Host name", [n](Driver&, HWND dlg) {
            Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"host" + std::to_wstring(n));
        }, 0, L"Configure  Telnet over TCP");
        return r.code == 0 && r.reply.find(u"Value=\"host" + decimal(n) + u"\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
