// Configure HotSpots and each dialog it opens (a hotspot with its match string, the colours, Save As),
// a few hundred times in one process.
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "hotspots/hotspots_rc.h"
#include "platform/tempfolder.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, HotSpots) {
    ASSERT_TRUE(Product::Get().Loaded());
    const TempFolder folder;
    folder.write("soak.hsp", "[IBM5250]\r\nHS1=Spot,2,3,0,0,0,5,0,,0,0,,,0,0,0,0,{Enter},0,0,0,,,0,0,,,\r\n");
    const std::u16string request =
        u"<Config ModuleType=\"Hotspots\"><DTD><Element Name=\"Hotspots\" Type=\"hotspots\"/></DTD><Data>"
        u"<Item Element=\"Hotspots\"><Item Element=\"filename\" Value=\"" + folder.file("soak.hsp") +
        u"\"/><Item Element=\"emulation\" Value=\"IBM5250\"/></Item></Data></Config>";
    ExpectNoGrowth(200, [&](int) {
        return RunRequest(request, L"Configure HotSpots", [](Driver& d, HWND dlg) {
            Driver::Click(dlg, IDC_HS_EDIT);
            HWND edit = d.WaitForDialog(L"Configure HotSpot", 15000, 0);
            d.OpenAndClose(edit, IDC_HS_MATCH, L"Configure HotSpot Match String", IDOK);
            d.Close(edit);
            d.OpenAndClose(dlg, IDC_HS_COLOURS, L"Configure HotSpots Colours", IDCANCEL);
            d.OpenAndClose(dlg, IDC_HS_SAVEAS, L"Save HotSpot Set", IDCANCEL);
            d.Close(dlg, IDCANCEL);  // nothing written
        }, 0).code == 2;
    });
}

}  // namespace
}  // namespace qrl::test
