// The "MouseMap" route through the DLL: Configure Mouse driven as a user drives it, and the reply
// compared as the host receives it. The mapping rules themselves are checked natively.
#include "forms/formsetup.h"
#include "mouse/mouse_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kTitle = L"Configure Mouse";

std::u16string Request(std::u16string_view maps) {
    return u"<Config ModuleType=\"MouseMap\"><DTD><Element Name=\"MouseMap\" Type=\"mousemap\"/></DTD>"
           u"<Data><Item Element=\"MouseMap\">" +
           std::u16string(maps) + u"</Item></Data></Config>";
}

std::u16string Reply(std::u16string_view maps) {
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n    <Item Element=\"MouseMap\">\n" +
           std::u16string(maps) + u"    </Item>\n  </Data>\n</Config>";
}

std::u16string Map(std::u16string_view event, std::u16string_view action) {
    return u"      <Map Event=\"" + std::u16string(event) + u"\" Action=\"" + std::u16string(action) + u"\"/>\n";
}

class MouseRoute : public ProductTest {
protected:
    const std::u16string request_ = Request(u"<Map Event=\"1:0:0:0:\" Action=\"9:\"/><Map Event=\"7:0:0:0:\" Action=\"6:\"/>"
                                            u"<Map Event=\"3:0:0:0:\" Action=\"11:up\"/>");
};

// It opens on the first event with its action. A text action typed in, turned into a script that
// keeps the text, a new entry under Ctrl, and an entry removed by "(not assigned)"; the event the
// dialog can't choose travels through unchanged.
TEST_F(MouseRoute, EditsGoIntoTheMapAsTheyAreMade) {
    const RunResult r = RunRequest(request_, kTitle, [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::Text(dlg, IDC_MOUSE_SELECTION), L" Left button click");
        EXPECT_EQ(Driver::Selection(dlg, IDC_MOUSE_ACTION), 9);
        Driver::Choose(dlg, IDC_MOUSE_ACTION, 11);
        Driver::Type(GetDlgItem(dlg, IDC_MOUSE_PARAM), L"hi:there");
        Driver::Choose(dlg, IDC_MOUSE_ACTION, 12);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MOUSE_PARAM_LABEL)), L"Script file name:");
        Driver::Tick(dlg, IDC_MOUSE_CTRL);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MOUSE_SELECTION)), L"ctrl Left button click");
        Driver::Choose(dlg, IDC_MOUSE_ACTION, 5);
        Driver::Tick(dlg, IDC_MOUSE_CTRL);
        Driver::Tick(dlg, IDC_MOUSE_RIGHT);
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(dlg, IDC_MOUSE_PARAM)));  // a popup takes no parameter
        Driver::Choose(dlg, IDC_MOUSE_ACTION, 0);
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(Map(u"1:0:0:0:", u"12:hi:there") + Map(u"3:0:0:0:", u"11:up") + Map(u"1:1:0:0:", u"5:")));
}

TEST_F(MouseRoute, RestoreDefaultsAsksFirstAndCancelGivesTheDialogsResult) {
    const RunResult restored = RunRequest(Request(u""), kTitle, [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_MOUSE_DEFAULTS);
        HWND box = d.WaitForPopup(dlg);
        EXPECT_EQ(Driver::MessageText(box), L"Do you wish to restore all mouse mappings to their default values?");
        d.Close(box);
        d.Close(dlg);
    });
    EXPECT_EQ(restored.reply, Reply(Map(u"1:0:0:0:", u"9:") + Map(u"1:0:1:0:", u"10:") + Map(u"7:0:0:0:", u"6:") +
                                    Map(u"2:0:0:0:", u"4:") + Map(u"2:0:1:0:", u"5:")));

    const RunResult declined = RunRequest(request_, kTitle, [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_MOUSE_DEFAULTS);
        d.Close(d.WaitForPopup(dlg), IDCANCEL);
        Driver::Choose(dlg, IDC_MOUSE_ACTION, 3);
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(declined.code, 2);
}

}  // namespace
}  // namespace qrl::test
