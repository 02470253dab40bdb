// The emulations' colour map editors as a user meets them: the "Edit..." button of a colour map
// element in the built-in form, the dialog driven, and the new stream in the reply. The maps' own
// rules (streams, defaults, reset) are checked natively.
#include "colours/colours_rc.h"
#include "colours/ibm5250colourmap.h"
#include "colours/tandemcolourmap.h"
#include "formsetup.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

std::u16string Request(const HostWindow& host, std::u16string_view mode, std::u16string_view tandemValue) {
    return u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"Map5250\" Type=\"5250colrs\" descr=\"Attribute colours\"/>"
           u"<Element Name=\"IBM 5250 Mode\" Type=\"int\" descr=\"Mode\"/>"
           u"<Element Name=\"MapTandem\" Type=\"tandemcolrs\" descr=\"Tandem colours\"/>"
           u"<Element Name=\"ColourMappingDisable\" Type=\"bool\" descr=\"No mapping\"/></DTD><Data>"
           u"<Item Element=\"Map5250\" Value=\"\"/><Item Element=\"IBM 5250 Mode\" Value=\"" + std::u16string(mode) +
           u"\"/><Item Element=\"MapTandem\" Value=\"" + std::u16string(tandemValue) +
           u"\"/><Item Element=\"ColourMappingDisable\" Value=\"0\"/></Data>" + host.LinkElement() + u"</Config>";
}

void ChooseRow(Driver& d, HWND dlg, int row) {
    Driver::SelectRow(dlg, IDC_TANDEM_ATTRIBUTES, row);
    d.Settle();
}

class ColourMapEditors : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        ForgetSelection(u"Emul");
    }
    // Opens the editor of `element` with the form's "Edit..." button and lets `script` work it.
    RunResult Run(std::u16string_view mode, std::u16string_view tandemValue, const std::wstring& element,
                  const std::wstring& title, const std::function<void(Driver&, HWND)>& script) {
        return RunEditor(Request(host, mode, tandemValue), element, title, script);
    }
    HostWindow host;
};

TEST_F(ColourMapEditors, Ibm5250ColourTerminalEditsTheColourPart) {
    host.attributeForeground = 0x00FFFFFF;
    host.attributeBackground = 0x00777777;
    const RunResult r = Run(u"4711", u"", L"Attribute colours", L"IBM5250 Attribute Configuration", [&](Driver& d, HWND dlg) {
        // An unknown mode is the first type.
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_5250_TERMINAL)), L"IBM 3179-2  Colour terminal    ");
        EXPECT_EQ(Driver::ListRows(dlg, IDC_5250_ATTRIBUTE).size(), 32u);
        Driver::Choose(dlg, IDC_5250_ATTRIBUTE, 8);  // code 28: red, blink on monochrome only
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_5250_DESCRIPTION)), L"Red");
        EXPECT_EQ(Driver::Selection(dlg, IDC_5250_FOREGROUND), 4);
        Driver::Tick(dlg, IDC_5250_UNDERSCORE);
        Driver::Choose(dlg, IDC_5250_FOREGROUND, 1);  // Blue
        d.Settle();  // painted: the host is asked for its colours
        Driver::Choose(dlg, IDC_5250_ATTRIBUTE, 16);  // code 30: turquoise, value 3
        EXPECT_EQ(Driver::Selection(dlg, IDC_5250_FOREGROUND), 3);  // the value taken as a position: "Pink"
        Driver::Choose(dlg, IDC_5250_ATTRIBUTE, 9);  // code 29: reverse
        Driver::Tick(dlg, IDC_5250_REVERSE);
        Driver::Click(dlg, IDC_5250_REVERT);
        d.Settle();
        EXPECT_TRUE(Driver::Checked(dlg, IDC_5250_REVERSE));
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_5250_CONTRAST)), L"Contrast 4.4:1 \u2013 hard to read");
        Driver::Click(dlg, IDOK);
    });
    bool askedForBlue = false;
    for (const HostWindow::Call& call : host.calls) askedForBlue |= call.code == 1 && call.text == u"0:0:1";
    EXPECT_TRUE(askedForBlue);
    T5250ColourMap expected;
    expected.rows[8].colour |= f5250::Underscore;
    expected.rows[8].foreground = 1;
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Map5250", expected.ToText()}}));
}

TEST_F(ColourMapEditors, Ibm5250MonochromeKeepsTheColours) {
    const RunResult r = Run(u"52", u"", L"Attribute colours", L"IBM5250 Attribute Configuration", [](Driver&, HWND dlg) {
        Driver::Tick(dlg, IDC_5250_BLINK);
        Driver::Choose(dlg, IDC_5250_FOREGROUND, 1);  // not kept on a monochrome terminal
        Driver::Click(dlg, IDOK);
    });
    T5250ColourMap expected;
    expected.rows[0].mono |= f5250::Blink;
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Map5250", expected.ToText()}}));
}

TEST_F(ColourMapEditors, TandemPairsResetAndTheFlagsThatAreNotRead) {
    const RunResult r = Run(u"", u"1;", L"Tandem colours", L"T653X Colour Mapping Defaults", [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::ListRows(dlg, IDC_TANDEM_ATTRIBUTES).size(), 24u);
        EXPECT_FALSE(Driver::Checked(dlg, IDC_TANDEM_DISABLE));
        ChooseRow(d, dlg, 8);
        Driver::Choose(dlg, IDC_TANDEM_BACKGROUND, 8);  // the first "White": stores 15
        Driver::Choose(dlg, IDC_TANDEM_FOREGROUND, 2);
        EXPECT_EQ(Driver::Selection(dlg, IDC_TANDEM_BACKGROUND), 8);
        ChooseRow(d, dlg, 21);  // index 25
        Driver::Click(dlg, IDC_TANDEM_RESET);
        ChooseRow(d, dlg, 0);
        Driver::Click(dlg, IDC_TANDEM_RESET);
        Driver::Tick(dlg, IDC_TANDEM_DISABLE);
        d.Settle();
        Driver::Click(dlg, IDOK);
    });
    TTandemColourMap expected;
    expected.bytes[8] = 0xF2;
    expected.ResetIndex(25);
    expected.ResetIndex(0);  // the text's 1 for index 0 is replaced
    // The flag's box was clicked, but the element keeps the value it came with.
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"MapTandem", expected.ToText()}}));
}

TEST_F(ColourMapEditors, ReloadAllAndCancelChangeNothing) {
    const RunResult reloaded = Run(u"", u"1;2;3;", L"Tandem colours", L"T653X Colour Mapping Defaults", [](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_TANDEM_RELOAD);  // the built-in defaults, not the text opened with
        d.Settle();
        Driver::Click(dlg, IDOK);
    });
    EXPECT_EQ(Utf8(reloaded.reply), ReplyText({{u"MapTandem", TTandemColourMap().ToText()}}));
    const RunResult cancelled = Run(u"", u"", L"Attribute colours", L"IBM5250 Attribute Configuration", [](Driver&, HWND dlg) {
        Driver::Tick(dlg, IDC_5250_BLINK);
        Driver::Click(dlg, IDCANCEL);
    });
    EXPECT_EQ(Utf8(cancelled.reply), ReplyText({}, u"  <Data/>\n"));  // the form's OK with nothing changed
}

}  // namespace
}  // namespace qrl::test
