// The colour dialogs, each opened, edited and accepted a few hundred times in one process: Colour
// Configuration with an attribute edited on the palette and the palette editor opened (the samples'
// blink timers, the palette's font, the sliders); each emulation colour map editor opened from the
// form (the 5250 editor's blink timer and example drawing, the Tandem editor's sample).
#include "colours/colours_rc.h"
#include "forms/formsetup.h"
#include "forms/soak.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::u16string kRequest =
    u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"Map5250\" Type=\"5250colrs\" descr=\"Attribute colours\"/>"
    u"<Element Name=\"MapTandem\" Type=\"tandemcolrs\" descr=\"Tandem colours\"/></DTD>"
    u"<Data><Item Element=\"Map5250\" Value=\"\"/><Item Element=\"MapTandem\" Value=\"\"/></Data></Config>";

// Opens the editor of `element` from the form, lets `edit` change something, accepts both.
bool EditOnce(const std::wstring& element, const std::wstring& title, const std::function<void(HWND)>& edit) {
    const RunResult r = RunEditor(kRequest, element, title, [&](Driver& d, HWND editor) {
        edit(editor);
        d.Settle(0);
        d.Close(editor);
    }, 0);
    return r.code == 0;
}

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

TEST(Soak, Ibm5250ColourMap) {
    ASSERT_TRUE(Product::Get().Loaded());
    ExpectNoGrowth(200, [](int run) {
        return EditOnce(L"Attribute colours", L"IBM5250 Attribute Configuration", [run](HWND dlg) {
            Driver::Choose(dlg, IDC_5250_ATTRIBUTE, run % 32);
            Driver::Tick(dlg, IDC_5250_UNDERSCORE);
        });
    });
}

TEST(Soak, TandemColourMap) {
    ASSERT_TRUE(Product::Get().Loaded());
    ExpectNoGrowth(200, [](int run) {
        return EditOnce(L"Tandem colours", L"T653X Colour Mapping Defaults",
                        [run](HWND dlg) { Driver::Choose(dlg, IDC_TANDEM_FOREGROUND, run % 16); });
    });
}

}  // namespace
}  // namespace qrl::test
