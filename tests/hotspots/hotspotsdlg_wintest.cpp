// The "Hotspots" route through the DLL: Configure HotSpots and the dialogs it opens, driven as a
// user drives them; the file is read back and the reply compared as the host receives it. The
// list, save-question and colour rules themselves are checked natively.
#include "forms/formsetup.h"
#include "hotspots/hotspotfile.h"
#include "hotspots/hotspots_rc.h"
#include "platform/tempfolder.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

using Rows = std::vector<std::wstring>;

const std::wstring kTitle = L"Configure HotSpots";

std::string Record(const std::u16string& description) {
    return Utf8(FormatHotSpotRecord({.description = description, .recordType = kRecordText, .sendString = u"{Enter}"}));
}

Rows ListRows(HWND dlg) { return Driver::ListRows(dlg, IDC_HS_LIST); }
Rows SetRows(HWND dlg) { return Driver::ListRows(dlg, IDC_HS_SET); }
bool ListButtonsEnabled(HWND dlg) {
    return Driver::Enabled(dlg, IDC_HS_EDIT) && Driver::Enabled(dlg, IDC_HS_DELETE) && Driver::Enabled(dlg, IDC_HS_COPY);
}

void SelectRow(Driver& d, HWND dlg, int row) {
    Driver::SelectRow(dlg, IDC_HS_LIST, row);
    d.Settle();
}

// Each test has a folder of its own: the ini cache trusts a file it has read for a few seconds.
class HotSpotRoute : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        WriteFile("[version]\r\nVersion=2\r\n[IBM5250]\r\nBGndColour=192,192,192\r\nHS1=" + Record(u"Zeta") +
                  "\r\nHS2=" + Record(u"Alpha") + "\r\n[Other]\r\nHS1=" + Record(u"Beta") + "\r\n");
    }
    void WriteFile(const std::string& text) const { dir_.write("test.hsp", text); }
    std::string ReadFile() const { return dir_.read("test.hsp"); }
    std::u16string Path() const { return dir_.file("test.hsp"); }
    HotSpots ReadSet(const char16_t* name) const {
        HotSpots set;
        set.Read(Path().c_str(), name);
        return set;
    }
    RunResult Run(const std::function<void(Driver&, HWND)>& script) const {
        const std::u16string request =
            u"<Config ModuleType=\"Hotspots\"><DTD><Element Name=\"Hotspots\" Type=\"hotspots\"/>"
            u"<Element Name=\"filename\"/></DTD><Data><Item Element=\"Hotspots\">"
            u"<Item Element=\"filename\" Value=\"test.hsp\"/><Item Element=\"directory\" Value=\"" +
            dir_.path().u16string() + u"\"/><Item Element=\"emulation\" Value=\"IBM5250.default\"/></Item></Data></Config>";
        return RunRequest(request, kTitle, script);
    }
    TempFolder dir_;
};

TEST_F(HotSpotRoute, AnEditedHotSpotIsSortedInAndItsSectionRewrittenOnOk) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        EXPECT_EQ(ListRows(dlg), (Rows{L"Alpha", L"Zeta"}));
        EXPECT_EQ(SetRows(dlg), (Rows{L"IBM5250", L"Other"}));
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_HS_FILE)), L"test.hsp");
        SelectRow(d, dlg, 1);
        d.InDialog(dlg, IDC_HS_EDIT, L"Configure HotSpot", [&](HWND edit) {
            EXPECT_EQ(Driver::Text(GetDlgItem(edit, IDC_HS_DESCRIPTION)), L"Zeta");
            Driver::Type(GetDlgItem(edit, IDC_HS_DESCRIPTION), L"Aardvark");
            Driver::Choose(edit, IDC_HS_STYLE, 4);
            d.InDialog(edit, IDC_HS_MATCH, L"Configure HotSpot Match String", [&](HWND match) {
                Driver::Type(GetDlgItem(match, IDC_HS_STRING), L"Go");
                Driver::Tick(match, IDC_HS_CASE);
                Driver::Choose(match, IDC_HS_PREPOST, 2);
                Driver::Click(match, IDOK);
            });
            Driver::Tick(edit, IDC_HS_PERMANENT);
            EXPECT_FALSE(Driver::Enabled(edit, IDC_HS_MATCH));
            Driver::Type(GetDlgItem(edit, IDC_HS_LEFT), L"3");
            Driver::Type(GetDlgItem(edit, IDC_HS_RIGHT), L"9");
            Driver::Click(edit, IDOK);
        });
        EXPECT_EQ(ListRows(dlg), (Rows{L"Aardvark", L"Alpha"}));
        EXPECT_EQ(Driver::Selection(dlg, IDC_HS_LIST), 0);  // the edited one, wherever the sort put it
        d.Close(dlg);
    });
    EXPECT_EQ(r.code, 0);
    // The set's section goes and comes back whole, at the end of the file.
    EXPECT_EQ(ReadFile(), "[version]\r\nVersion=2\r\n[Other]\r\nHS1=" + Record(u"Beta") +
                              "\r\n[IBM5250]\r\nFGndColour=\r\nBGndColour=192,192,192\r\nOn=1\r\n"
                              "HS1=Aardvark,2,4,1,3,0,9,0,Go,1,0,,,0,0,0,0,{Enter},0,0,0,,,2,0,,,\r\nHS2=" +
                              Record(u"Alpha") + "\r\n");
}

TEST_F(HotSpotRoute, OkWithoutChangesWritesNothing) {
    const std::string before = ReadFile();
    const RunResult r = Run([](Driver& d, HWND dlg) { d.Close(dlg); });
    EXPECT_EQ(ReadFile(), before);
    EXPECT_EQ(Utf8(r.reply), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n"
                             "    <Item Element=\"Hotspots\">\n      <Item Element=\"filename\" Value=\"test.hsp\"/>\n"
                             "    </Item>\n    <Item Element=\"filename\" Value=\"" + Utf8(Path()) + "\"/>\n"
                             "  </Data>\n</Config>");
}

// Cancel on the save question keeps the old set's hotspots while the combo shows the new set.
TEST_F(HotSpotRoute, ChangingTheSetAsksToSaveTheChangedOne) {
    const RunResult r = Run([&](Driver& d, HWND dlg) {
        Driver::Tick(dlg, IDC_HS_ENABLE);
        Driver::Choose(dlg, IDC_HS_SET, 1, true);
        EXPECT_EQ(d.Answer(dlg, IDCANCEL), L"Configure HotSpots|Save changes to HotSpot set 'IBM5250'?");
        EXPECT_EQ(ListRows(dlg), (Rows{L"Alpha", L"Zeta"}));
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_HS_SET)), L"Other");
        Driver::Choose(dlg, IDC_HS_SET, 1, true);
        d.Answer(dlg, IDYES);
        EXPECT_EQ(ListRows(dlg), (Rows{L"Beta"}));
        Driver::Tick(dlg, IDC_HS_ENABLE);  // Other changed, then left with No: nothing written
        Driver::Choose(dlg, IDC_HS_SET, 0, true);
        d.Answer(dlg, IDNO);
        EXPECT_EQ(ListRows(dlg), (Rows{L"Alpha", L"Zeta"}));
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(ReadSet(u"IBM5250").enabled);  // written by Yes, whatever the end
    EXPECT_TRUE(ReadSet(u"Other").enabled);
}

TEST_F(HotSpotRoute, AFileWithoutSetsGetsOneBySaveAs) {
    WriteFile("");
    Run([&](Driver& d, HWND dlg) {
        EXPECT_EQ(SetRows(dlg), (Rows{L"No HotSpot sections were found"}));
        EXPECT_TRUE(Driver::Enabled(dlg, IDC_HS_SAVE));
        EXPECT_FALSE(ListButtonsEnabled(dlg));
        // Which row each list button leaves selected is the model's; here each reaches it.
        d.InDialog(dlg, IDC_HS_NEW, L"Configure HotSpot", [](HWND edit) { Driver::Click(edit, IDOK); });
        d.InDialog(dlg, IDC_HS_COPY, L"Configure HotSpot", [](HWND edit) {
            Driver::Type(GetDlgItem(edit, IDC_HS_DESCRIPTION), L"copy");
            Driver::Click(edit, IDOK);
        });
        EXPECT_EQ(ListRows(dlg), (Rows{L"", L"copy"}));
        Driver::Click(dlg, IDC_HS_DELETE);  // the copy, which Copy selected
        d.Settle();
        EXPECT_EQ(ListRows(dlg), (Rows{L""}));
        d.InDialog(dlg, IDC_HS_SAVEAS, L"Save HotSpot Set", [&](HWND save) {
            EXPECT_EQ(Driver::Text(GetDlgItem(save, IDC_HS_SETNAME)), L"IBM5250");
            Driver::Click(save, IDOK);
        });
        EXPECT_EQ(ListRows(dlg), (Rows{L"untitled"}));  // a blank description reads back so
        SelectRow(d, dlg, 0);
        Driver::Click(dlg, IDC_HS_DELETE);
        d.Settle();
        EXPECT_EQ(Driver::Selection(dlg, IDC_HS_LIST), -1);
        EXPECT_FALSE(ListButtonsEnabled(dlg));
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(ReadSet(u"IBM5250").spots.size(), 1u);  // Save As wrote; Cancel wrote nothing more
}

TEST_F(HotSpotRoute, TheSetsColoursFromTheBarsOrTheEmulation) {
    Run([&](Driver& d, HWND dlg) {
        d.InDialog(dlg, IDC_HS_COLOURS, L"Configure HotSpots Colours", [&](HWND colours) {
            EXPECT_FALSE(Driver::Enabled(colours, IDC_HS_FG_RED));  // no FGndColour: the emulation's
            EXPECT_EQ(GetScrollPos(GetDlgItem(colours, IDC_HS_BG_RED), SB_CTL), 192);
            Driver::Tick(colours, IDC_HS_FG_EMULATION);
            SendMessageW(colours, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 200),
                         reinterpret_cast<LPARAM>(GetDlgItem(colours, IDC_HS_FG_RED)));
            SendMessageW(colours, WM_HSCROLL, MAKEWPARAM(SB_LINERIGHT, 0),
                         reinterpret_cast<LPARAM>(GetDlgItem(colours, IDC_HS_FG_BLUE)));
            Driver::Tick(colours, IDC_HS_BG_EMULATION);
            Driver::Click(colours, IDOK);
        });
        d.Close(dlg);
    });
    const HotSpots saved = ReadSet(u"IBM5250");
    EXPECT_EQ(saved.foreground, 200u | 25u << 16);
    EXPECT_EQ(saved.background, kDefaultColour);
}

}  // namespace
}  // namespace qrl::test
