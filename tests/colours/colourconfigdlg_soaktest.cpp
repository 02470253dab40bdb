// Colour Configuration opened a few hundred times in one process, each time with an attribute
// edited on the palette and the palette editor opened: the samples' blink timers, the palette's
// font and the sliders.
#include "colours/colours_rc.h"
#include "forms/formsetup.h"
#include "forms/soak.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, ColourConfiguration) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        u"<Config ModuleType=\"ColourMap\"><DTD><Element Name=\"Schemes\" Type=\"colourschemelist\"/></DTD>"
        u"<Data><Item Element=\"Schemes\"><ColourScheme Element=\"Plain\"/></Item></Data></Config>";
    ExpectNoGrowth(200, [&](int run) {
        const RunResult r = RunRequest(request, L"Colour Configuration", [run](Driver& d, HWND dlg) {
            Driver::SelectRow(dlg, IDC_ATTRLIST, run % 2);
            Driver::Click(dlg, IDC_ATTREDIT);
            HWND edit = d.WaitForDialog(L"Edit Attribute", 15000, 0);
            Driver::Tick(edit, IDC_FEATURE_FIRST + 1);
            d.OpenAndClose(edit, IDC_PALETTE_CFG, L"Configure Palette", IDOK);
            d.Close(edit);
            d.Close(dlg);
        }, 0);
        return r.code == 0 &&
               r.reply.find(u"Element=\"(custom)\" operation=\"update\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
