// Configure Mouse opened, edited and accepted a few hundred times in one process.
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "mouse/mouse_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, MouseMap) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        u"<Config ModuleType=\"MouseMap\"><DTD><Element Name=\"MouseMap\" Type=\"mousemap\"/></DTD>"
        u"<Data><Item Element=\"MouseMap\"><Map Event=\"1:0:0:0:\" Action=\"9:\"/></Item></Data></Config>";
    ExpectNoGrowth(200, [&](int) {
        const RunResult r = RunRequest(request, L"Configure Mouse", [](Driver& d, HWND dlg) {
            Driver::Choose(dlg, IDC_MOUSE_ACTION, 11);
            Driver::Type(GetDlgItem(dlg, IDC_MOUSE_PARAM), L"x");
            d.Close(dlg);
        }, 0);
        return r.code == 0 && r.reply.find(u"Action=\"11:x\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
