// The "ColourMap" route through the DLL: Colour Configuration and its sub-dialogs driven as a user
// drives them, and the schemes of the reply read back. The listing, forking and editing rules are
// checked natively.
#include "colours/colourhooks.h"
#include "colours/colours_rc.h"
#include "colours/palettemodel.h"
#include "formsetup.h"
#include "request/session.h"
#include "xml/xml_testing.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qrl::test {
namespace {

// "Night" is in force: white on blue, Reverse (combination 16: the first entry of features line 1)
// with yellow on red of its own. The emulation uses Blink and Reverse.
const std::u16string kLineEnd = u"0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \"/>";
const std::u16string kRequest =
    u"<Config ModuleType=\"ColourMap\"><DTD><Element Name=\"Schemes\" Type=\"colourschemelist\"/>"
    u"<Element Name=\"CurrScheme\" Type=\"string\"/><Element Name=\"EnableBlinkCfg\" Type=\"bool\"/>"
    u"<Element Name=\"MergeBoxes\" Type=\"bool\"/></DTD><Data><Item Element=\"Schemes\">"
    u"<ColourScheme Element=\"Classic\"/><ColourScheme Element=\"Night\"><features index=\"0\" value=\"10f0000 0 " +
    kLineEnd + u"<features index=\"1\" value=\"40e0000 1 " + kLineEnd +
    u"</ColourScheme></Item><Item Element=\"CurrScheme\" Value=\"Night\"/>"
    u"<Item Element=\"FeaturesUsed\" Value=\"17\"/><Item Element=\"EnableBlinkCfg\" Value=\"0\"/></Data></Config>";

// The reply's one scheme as the request reader reads it; the reply's list element stands in for the
// request's item.
TColourScheme SentScheme(const std::u16string& reply) {
    const std::size_t from = reply.find(u"<Data>"), to = reply.find(u"</Data>");
    TConfigSession session;
    if (from != std::u16string::npos && to != std::u16string::npos)
        session.LoadRequestText(u"<Config><DTD><Element Name=\"ColourSchemeList\" Type=\"colourschemelist\"/></DTD>" +
                                reply.substr(from, to + 7 - from) + u"</Config>");
    const TColourSchemeList& sent = SessionColourSchemes(session);
    EXPECT_EQ(sent.size(), 1u);
    return sent.empty() ? TColourScheme{} : sent[0];
}

RunResult RunColours(const std::function<void(Driver&, HWND)>& script, const std::u16string& request = kRequest) {
    return RunRequest(request, L"Colour Configuration", script);
}

// A press on a palette cell, left (foreground) or right (background) button.
void PressCell(HWND dlg, int cell, bool right) {
    HWND palette = GetDlgItem(dlg, IDC_ATTR_PALETTE);
    RECT client{};
    GetClientRect(palette, &client);
    const TCellRect c = PaletteGeometry(client.right, client.bottom).cells[static_cast<std::size_t>(cell)];
    SendMessageW(palette, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, 0, MAKELPARAM(c.left + 1, c.top + 1));
}


using ColourRoute = ProductTest;

TEST_F(ColourRoute, OpensOnTheSchemeInForceAndOkSendsNoUnchangedSchemeNorThePreview) {
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::ListRows(dlg, IDC_SCHEME), (std::vector<std::wstring>{L"Classic", L"Night"}));
        EXPECT_EQ(Driver::Text(dlg, IDC_SCHEME), L"Night");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_ATTRCONTRAST)), L"Contrast 16.0:1");  // white on dark blue
        // As the chosen vision sees it (the other visions' figures: natively); the reply keeps no trace of it.
        Driver::Choose(dlg, IDC_PREVIEW, 1);
        d.Settle();
        EXPECT_EQ(Driver::Text(dlg, IDC_ATTRCONTRAST), L"Contrast 12.9:1");
        EXPECT_TRUE(Driver::Enabled(dlg, IDC_SCHEME_REMOVE));
        EXPECT_EQ(Driver::ListRows(dlg, IDC_ATTRLIST),
                  (std::vector<std::wstring>{L"Normal", L"Blink", L"Reverse", L"Reverse+Blink"}));
        Driver::Tick(dlg, ID_ALL);
        EXPECT_EQ(Driver::ListRows(dlg, IDC_ATTRLIST).size(), 96u + 16u);
        d.Close(dlg);
    });
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.reply, xmltest::DataReply(u"    <Item Element=\"ColourSchemeList\"/>\n    <Item Element=\"CurrScheme\" "
                                          u"Value=\"Night\"/>\n    <Item Element=\"EnableBlinkCfg\" Value=\"0\"/>\n"
                                          u"    <Item Element=\"MergeBoxes\" Value=\"0\"/>\n"));
}

// An edit forks "Night" into "(custom)", which the combo shows though no row holds it; Save as names
// it, and only the new scheme reaches the reply.
TEST_F(ColourRoute, EditForksTheSchemeAndSaveAsNamesIt) {
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        Driver::SelectRow(dlg, IDC_ATTRLIST, 2);  // Reverse
        d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
            EXPECT_EQ(Driver::Text(GetDlgItem(edit, IDC_ATTR_LABEL)), L"Attribute = Reverse");
            PressCell(edit, 2, false);
            PressCell(edit, 4, true);
            Driver::Tick(edit, IDC_FEATURE_FIRST + 1);  // Underline
            Driver::Click(edit, IDOK);
        });
        EXPECT_EQ(Driver::Text(dlg, IDC_SCHEME), L"(custom)");
        EXPECT_FALSE(Driver::Enabled(dlg, IDC_SCHEME_REMOVE));
        d.InDialog(dlg, IDC_SCHEME_SAVEAS, L"Save Colour Scheme", [&](HWND save) {
            EXPECT_EQ(Driver::Text(GetDlgItem(save, IDC_SCHEME_NAME)), L"Night");
            Driver::Type(GetDlgItem(save, IDC_SCHEME_NAME), L"Mine");
            Driver::Click(save, IDOK);
        });
        d.Close(dlg);
    });
    ASSERT_EQ(r.code, 0);
    EXPECT_NE(r.reply.find(u"<ColourScheme Element=\"Mine\" operation=\"update\">"), std::u16string::npos);
    EXPECT_EQ(r.reply.find(u"Night\" operation"), std::u16string::npos);
    EXPECT_NE(r.reply.find(u"<Item Element=\"CurrScheme\" Value=\"Mine\"/>"), std::u16string::npos);
    const TColourScheme sent = SentScheme(r.reply);
    const TSchemeFeature& reverse = sent.features[16];
    EXPECT_EQ(std::vector<uint32_t>({reverse.override, reverse.features, reverse.foreground, reverse.background}),
              std::vector<uint32_t>({1, kAttrUnderline, 2, 4}));
    EXPECT_EQ(sent.features[0].foreground, 15u);
}

// Removing asks with the scheme's name; the scheme goes as "delete", the fork as "(custom)".
TEST_F(ColourRoute, RemoveAsksAndSendsTheSchemeAsDeleted) {
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_SCHEME_REMOVE);
        EXPECT_EQ(d.Answer(dlg, IDYES), L"Quorl|Remove scheme \"Night\"?");
        EXPECT_EQ(Driver::ListRows(dlg, IDC_SCHEME), std::vector<std::wstring>{L"Classic"});
        d.Close(dlg);
    });
    ASSERT_EQ(r.code, 0);
    EXPECT_NE(r.reply.find(u"<ColourScheme Element=\"Night\" operation=\"delete\"/>\n      <ColourScheme "
                           u"Element=\"(custom)\" operation=\"update\">"),
              std::u16string::npos);
    EXPECT_NE(r.reply.find(u"<Item Element=\"CurrScheme\" Value=\"(custom)\"/>"), std::u16string::npos);
}

// Leaving changed custom colours asks first; No keeps them, Yes goes to the chosen scheme. The
// sub-dialogs' Cancel still counts as a change, and OK of Advanced forks even with nothing changed.
TEST_F(ColourRoute, LosingCustomChangesAsksAndCancelSendsNothing) {
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
            Driver::Tick(edit, IDC_FEATURE_FIRST);
            Driver::Click(edit, IDCANCEL);
        });
        Driver::Choose(dlg, IDC_SCHEME, 0, true);  // the pick asks
        EXPECT_EQ(d.Answer(dlg, IDNO), L"Quorl|Lose changes to custom scheme?");
        EXPECT_EQ(Driver::Text(dlg, IDC_SCHEME), L"(custom)");
        Driver::Choose(dlg, IDC_SCHEME, 0, true);  // the pick asks
        d.Answer(dlg, IDYES);
        EXPECT_EQ(Driver::Text(dlg, IDC_SCHEME), L"Classic");
        d.InDialog(dlg, IDC_ATTR_ADVANCED, L"Advanced Attribute Configuration",
                   [&](HWND advanced) { Driver::Click(advanced, IDOK); });
        EXPECT_EQ(Driver::Text(dlg, IDC_SCHEME), L"(custom)");
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(r.code, 2);
}

// On a screen too small for Edit Attribute its small layout opens, where "F" and "B" choose which
// colour a press on the palette picks: the reply is the one that the two mouse buttons give in the
// normal layout.
TEST_F(ColourRoute, SmallLayoutPicksWithFAndBWhatTheMouseButtonsPick) {
    const auto edit = [&](bool small) {
        return RunColours([&](Driver& d, HWND dlg) {
            Driver::SelectRow(dlg, IDC_ATTRLIST, 2);  // Reverse: yellow on red of its own
            d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
                EXPECT_EQ(GetDlgItem(edit, IDC_ATTR_BACKGROUND) != nullptr, small);
                if (small) {
                    Driver::Click(edit, IDC_ATTR_BACKGROUND);
                    d.Settle();
                    EXPECT_EQ(SendDlgItemMessageW(edit, IDC_ATTR_PALETTE, kPaletteGetFirst, 0, 0), 4);
                }
                PressCell(edit, 2, !small);
                if (small) Driver::Click(edit, IDC_ATTR_FOREGROUND);
                d.Settle();
                PressCell(edit, 5, false);
                Driver::Click(edit, IDOK);
            });
            d.Close(dlg);
        });
    };
    const RunResult normal = edit(false);
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    RECT pocket{0, 0, 240, 320};
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &pocket, 0);
    const RunResult small = edit(true);
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &area, 0);
    EXPECT_EQ(small.reply, normal.reply);
    const TColourScheme sent = SentScheme(small.reply);
    EXPECT_EQ(std::vector<uint32_t>({sent.features[16].foreground, sent.features[16].background}),
              std::vector<uint32_t>({5, 2}));
}

// The palette editor's number edits move the sliders within their range, while the colour takes
// the low byte of what was typed: 300 gives a red of 44. Cancel in a sub-dialog keeps none of its
// edits: Configure Palette's green, Advanced's box, Save as's name. A request without schemes opens too.
TEST_F(ColourRoute, PaletteEditorTakesTheLowByteAndCancelKeepsNothing) {
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
            d.InDialog(edit, IDC_PALETTE_CFG, L"Configure Palette", [&](HWND palette) {
                        Driver::Type(GetDlgItem(palette, IDC_PAL_GREEN), L"9");
                        Driver::Click(palette, IDCANCEL);
                    });
                    d.InDialog(edit, IDC_PALETTE_CFG, L"Configure Palette", [&](HWND palette) {
                        EXPECT_EQ(SendDlgItemMessageW(palette, IDC_PAL_INDEX, CB_GETCURSEL, 0, 0), 15);
                        Driver::Type(GetDlgItem(palette, IDC_PAL_RED), L"300");
                        EXPECT_EQ(SendDlgItemMessageW(palette, IDC_PAL_RED_SLIDER, TBM_GETPOS, 0, 0), 255);
                        Driver::Click(palette, IDOK);
            });
            Driver::Click(edit, IDOK);
        });
        // Ticked twice: a Cancel that kept its tick would leave the box as it came.
        for (int button : {IDCANCEL, IDOK})
            d.InDialog(dlg, IDC_ATTR_ADVANCED, L"Advanced Attribute Configuration", [&](HWND advanced) {
                Driver::Tick(advanced, IDC_MERGE_BOXES);
                Driver::Click(advanced, button);
            });
        d.InDialog(dlg, IDC_SCHEME_SAVEAS, L"Save Colour Scheme", [&](HWND save) {
            Driver::Type(GetDlgItem(save, IDC_SCHEME_NAME), L"Lost");
            Driver::Click(save, IDCANCEL);
        });
        EXPECT_EQ(Driver::ListRows(dlg, IDC_SCHEME), (std::vector<std::wstring>{L"Classic", L"Night"}));
        d.InDialog(dlg, IDC_SCHEME_SAVEAS, L"Save Colour Scheme", [&](HWND save) { Driver::Click(save, IDOK); });
        d.Close(dlg);
    });
    ASSERT_EQ(r.code, 0);
    EXPECT_NE(r.reply.find(u"<Item Element=\"MergeBoxes\" Value=\"1\"/>"), std::u16string::npos);
    const TColourScheme sent = SentScheme(r.reply);
    EXPECT_EQ(sent.name, u"Night");  // saved back under the name it came from
    auto palette = DefaultPalette();
    palette[15] = MakeColour(44, 255, 255);
    EXPECT_EQ(sent.palette, palette);

    const RunResult empty = RunColours(
        [&](Driver& d, HWND dlg) {
            EXPECT_TRUE(Driver::ListRows(dlg, IDC_SCHEME).empty());
            d.Close(dlg);
        },
        u"<Config ModuleType=\"ColourMap\"><DTD><Element Name=\"Schemes\" Type=\"colourschemelist\"/>"
        u"<Element Name=\"CurrScheme\" Type=\"string\"/></DTD><Data><Item Element=\"Schemes\"/></Data></Config>");
    EXPECT_EQ(empty.reply, xmltest::DataReply(u"    <Item Element=\"ColourSchemeList\"/>\n"
                                              u"    <Item Element=\"CurrScheme\" Value=\"\"/>\n"));
}

// Night with its "yellow" a red unreadable on red, its "light magenta" a light red readable there.
const std::u16string kReadableRedRequest = ReplaceFirst(
    kRequest, u"<ColourScheme Element=\"Night\">",
    u"<ColourScheme Element=\"Night\"><palette index=\"0\" value=\"0 7f0000 7f00 7f7f00 7f 7f007f 7f7f c0c0c0 "
    u"7f7f7f ff0000 ff00 ffff00 ff 8080ff c0 ffffff\"/>");

bool Warns(HWND dialog, int id) {  // the figure in the warning colour, as WM_CTLCOLORSTATIC answers
    HDC dc = CreateCompatibleDC(nullptr);
    SendMessageW(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
    const bool red = GetTextColor(dc) == RGB(192, 0, 0);
    return DeleteDC(dc) && red;
}
void UseFile(Driver& d, HWND palette, int button, const std::wstring& path) {
    Driver::Click(palette, button);
    d.AnswerFileDialog(button == IDC_PAL_IMPORT ? L"Import Palette" : L"Export Palette", path);
    d.Settle();
}
// A file of the test folder holding `bytes`.
std::wstring TestFile(const std::wstring& name, const std::string& bytes) {
    const std::wstring path = TempDir() + name;
    std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
    return path;
}
std::wstring EntryShown(HWND p) { return Driver::Text(p, IDC_PAL_RED) + L"," + Driver::Text(p, IDC_PAL_GREEN) + L"," + Driver::Text(p, IDC_PAL_BLUE); }

// Without red cones Check finds the red on red and goes to it; Fix contrast in Edit Attribute takes the light red.
TEST_F(ColourRoute, CheckGoesToTheHardCombinationAndFixContrastPicksTheNearestReadableEntry) {
    const RunResult r = RunColours(
        [&](Driver& d, HWND dlg) {
            Driver::Choose(dlg, IDC_PREVIEW, 1);
            d.InDialog(dlg, IDC_CONTRAST_CHECK, L"Contrast Check", [&](HWND check) {
                EXPECT_EQ(Driver::ListRows(check, IDC_CHOICE_LIST),
                          std::vector<std::wstring>{L"Reverse: 1.4:1 (Yellow on Red)"});
                Driver::Click(check, IDOK);
            });
            EXPECT_EQ(Driver::Text(dlg, IDC_ATTRCONTRAST), L"Contrast 1.4:1 \u2013 hard to read");  // Reverse's
            EXPECT_TRUE(Warns(dlg, IDC_ATTRCONTRAST));
            d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
                Driver::Click(edit, IDC_FIX_CONTRAST);
                d.Settle();
                EXPECT_EQ(Driver::Text(edit, IDC_ATTR_CHANGE_CONTRAST), L"Contrast 4.7:1");
                EXPECT_FALSE(Warns(edit, IDC_ATTR_CHANGE_CONTRAST));
                Driver::Click(edit, IDOK);
            });
            d.Close(dlg);
        },
        kReadableRedRequest);
    const TColourScheme sent = SentScheme(r.reply);
    EXPECT_EQ(sent.features[16].foreground, 13u);
}

// A file's red goes to entry 4 (every format reads the same, checked natively); a broken file changes
// nothing; a settings file offers its schemes; an export reads back. The reply: harbour's bright blue in 9, its white on black as Normal's 7 on 0.
TEST_F(ColourRoute, ImportReadsAFileChoosesASchemeRefusesABrokenFileAndReadsItsExport) {
    const std::string harbour = Utf8(SampleText("palettes/harbour.json"));
    std::string two = harbour;
    two.replace(two.find("Harbour"), 7, "Two");
    two.replace(two.find("#D04040"), 7, "#123456");
    const std::wstring settings = TestFile(L"settings.json", "{\"schemes\": [" + harbour + ", " + two + "]}");
    const std::wstring exported = TempDir() + L"night.json";
    DeleteFileW(exported.c_str());
    const RunResult r = RunColours([&](Driver& d, HWND dlg) {
        d.InDialog(dlg, IDC_ATTREDIT, L"Edit Attribute", [&](HWND edit) {
            d.InDialog(edit, IDC_PALETTE_CFG, L"Configure Palette", [&](HWND palette) {
                Driver::Choose(palette, IDC_PAL_INDEX, 4);
                UseFile(d, palette, IDC_PAL_IMPORT, TestFile(L"harbour.json", harbour));
                EXPECT_EQ(EntryShown(palette), L"208,64,64");
                UseFile(d, palette, IDC_PAL_IMPORT, TestFile(L"broken.json", "{\n  \"name\": \"Broken\",\n  \"red\": \n}\n"));
                EXPECT_EQ(d.Answer(palette, IDOK), L"Quorl|line 4, column 1: the file is not valid JSON");
                EXPECT_EQ(EntryShown(palette), L"208,64,64");
                UseFile(d, palette, IDC_PAL_IMPORT, settings);
                HWND choose = d.WaitForDialog(L"Choose a Scheme");
                EXPECT_EQ(Driver::ListRows(choose, IDC_CHOICE_LIST), (std::vector<std::wstring>{L"Harbour", L"Two"}));
                Driver::SelectRow(choose, IDC_CHOICE_LIST, 1);
                d.Close(choose);
                d.Settle();
                EXPECT_EQ(EntryShown(palette), L"18,52,86");
                Driver::Type(GetDlgItem(palette, IDC_PAL_RED), L"44");
                UseFile(d, palette, IDC_PAL_EXPORT, exported);
                Driver::Type(GetDlgItem(palette, IDC_PAL_GREEN), L"9");
                UseFile(d, palette, IDC_PAL_IMPORT, exported);
                EXPECT_EQ(EntryShown(palette), L"44,52,86");
                Driver::Click(palette, IDOK);
            });
            Driver::Click(edit, IDOK);
        });
        d.Close(dlg);
    });
    EXPECT_NE(ReadUtf8File(std::filesystem::path(exported).string()).find(u"\"name\": \"Night\""), std::u16string::npos);
    const TColourScheme sent = SentScheme(r.reply);
    EXPECT_EQ(std::vector<uint32_t>({sent.palette[4], sent.palette[9], sent.features[0].foreground,
                                     sent.features[0].background}),
              std::vector<uint32_t>({MakeColour(44, 52, 86), 0xF0A070, 7, 0}));
}

}  // namespace
}  // namespace qrl::test
