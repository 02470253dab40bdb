// The Macro Assistant as a host meets it: through fnMacroAssist and through a form's Assist button,
// driven the way a user drives it. What each edit makes of a token is checked natively.
#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/forms_rc.h"
#include "forms/formsetup.h"
#include "macro/macro_rc.h"

#include <gtest/gtest.h>

#include <fstream>

namespace qrl::test {
namespace {

using namespace std::string_literals;

const std::wstring kTitle = L"Macro Assistant";

struct Assisted {
    int code = -1;
    std::u16string text;
};

// Runs the export on `text` while `script` works the dialog.
Assisted RunAssistant(std::u16string text, int mode, const std::function<void(Driver&, HWND)>& script,
                      uint32_t capacity = 256, HWND host = nullptr) {
    Assisted result;
    const auto failures = RunDriven(
        [&] { result.code = Product::Get().MacroAssist(nullptr, text, capacity, u"Enter\0PF1\0"s, host, mode); },
        [&](Driver& d) { script(d, d.WaitForDialog(kTitle)); });
    for (const std::string& f : failures) ADD_FAILURE() << f;
    result.text = text;
    return result;
}

void SelectToken(Driver& d, HWND dlg, int row) {
    Driver::SelectRow(dlg, IDC_TOKEN_LIST, row);
    d.Settle();
}

// A button press handled before this returns, so the next step sees its result.
void Press(HWND dlg, int id) {
    SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dlg, id)));
}

bool Shown(HWND dlg, int id) { return IsWindowVisible(GetDlgItem(dlg, id)) != FALSE; }
bool NumbersOnly(HWND dlg, int id) { return (GetWindowLongW(GetDlgItem(dlg, id), GWL_STYLE) & ES_NUMBER) != 0; }
int Rows(HWND dlg, int id, UINT countMessage) { return static_cast<int>(SendDlgItemMessageW(dlg, id, countMessage, 0, 0)); }

TEST(MacroAssistant, TypedKeyNameWarnsAndOkWritesTheText) {
    ASSERT_TRUE(Product::Get().Loaded());
    int typeRows = 0, tokenRows = 0;
    bool keyPanel = false, textPanelHidden = false;
    std::wstring warning, joined;
    const Assisted r = RunAssistant(u"ab\\n{Enter}", 3, [&](Driver& d, HWND dlg) {
        typeRows = Rows(dlg, IDC_TOKEN_TYPE, CB_GETCOUNT);
        tokenRows = Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT);
        SelectToken(d, dlg, 2);
        keyPanel = Shown(dlg, IDC_EMKEY_LIST);
        textPanelHidden = !Shown(dlg, IDC_TEXT_EDIT);
        HWND keyEdit = FindWindowExW(GetDlgItem(dlg, IDC_EMKEY_LIST), nullptr, L"Edit", nullptr);
        Driver::Type(keyEdit, L"PF9");
        d.Settle();
        warning = Driver::Text(GetDlgItem(dlg, IDC_EMKEY_WARNING));
        joined = Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT));
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(typeRows, 3);
    EXPECT_EQ(tokenRows, 3);
    EXPECT_TRUE(keyPanel);
    EXPECT_TRUE(textPanelHidden);
    EXPECT_EQ(warning, L"warning: key 'PF9' is not defined in this emulation");
    EXPECT_EQ(joined, L"ab\\n{PF9}");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.text, u"ab\\n{PF9}");
}

// A macro built from nothing with the list buttons and the panels, as a user who knows no syntax would.
TEST(MacroAssistant, BuildsAMacroTokenByToken) {
    ASSERT_TRUE(Product::Get().Loaded());
    std::wstring afterMove;
    const Assisted r = RunAssistant(u"", 7, [&](Driver& d, HWND dlg) {
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 1);  // Character
        Driver::Choose(dlg, IDC_CHAR_LIST, 1);   // CR
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 3);  // Function
        Driver::Choose(dlg, IDC_FUNC_LIST, 50);  // Pause
        Driver::Type(GetDlgItem(dlg, IDC_PARAM1), L"12");
        Press(dlg, IDC_INSERT_BEFORE);
        Driver::Type(GetDlgItem(dlg, IDC_TEXT_EDIT), L"go");
        Press(dlg, IDC_MOVE_UP);
        afterMove = Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT));
        SelectToken(d, dlg, 1);
        Press(dlg, IDC_DELETE_TOKEN);
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 2);  // Emulation key
        Driver::Type(FindWindowExW(GetDlgItem(dlg, IDC_EMKEY_LIST), nullptr, L"Edit", nullptr), L"Enter");
        d.Settle();
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(afterMove, L"go\\r{.Pause(12)}");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.text, u"go{.Pause(12)}{Enter}");
}

TEST(MacroAssistant, FunctionFieldsFollowTheChosenRow) {
    ASSERT_TRUE(Product::Get().Loaded());
    bool pauseNumber = false, pauseOneField = false, setPropTwoTextFields = false;
    const Assisted r = RunAssistant(u"{.Pause(5)}", 7, [&](Driver& d, HWND dlg) {
        pauseNumber = Shown(dlg, IDC_PARAM1) && NumbersOnly(dlg, IDC_PARAM1);
        pauseOneField = !Shown(dlg, IDC_PARAM2) && Driver::Text(GetDlgItem(dlg, IDC_PARAM1)) == L"5";
        Driver::Choose(dlg, IDC_FUNC_LIST, 63);  // SetProp
        d.Settle();
        setPropTwoTextFields = Shown(dlg, IDC_PARAM2) && !Shown(dlg, IDC_PARAM3) && !NumbersOnly(dlg, IDC_PARAM1) &&
                               Driver::Text(GetDlgItem(dlg, IDC_PARAM_PROMPT2)) == L"Value";
        Driver::Type(GetDlgItem(dlg, IDC_PARAM2), L"on");
        d.Settle();
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_TRUE(pauseNumber);
    EXPECT_TRUE(pauseOneField);
    EXPECT_TRUE(setPropTwoTextFields);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.text, u"{.SetProp(\"\",\"on\")}");
}

// A text that does not parse shows what parsed; OK still returns the text as typed, if it fits.
TEST(MacroAssistant, ResultCodesAndTextsThatDoNotParse) {
    ASSERT_TRUE(Product::Get().Loaded());
    int rows = -1;
    const auto typeAndAccept = [&](Driver& d, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"ab{%break}cd");
        d.Settle();
        rows = Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT);
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    };
    const Assisted accepted = RunAssistant(u"", 7, typeAndAccept);
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(accepted.code, 0);
    EXPECT_EQ(accepted.text, u"ab{%break}cd");

    const Assisted tooSmall = RunAssistant(u"", 7, typeAndAccept, 12);  // needs 13 with its terminator
    EXPECT_EQ(tooSmall.code, 160);
    EXPECT_EQ(tooSmall.text, u"");

    // A long text with a fault comes back exactly as it came when nothing was edited.
    std::u16string longText;
    int pieces = 0;
    for (; longText.size() < 40000; ++pieces) longText += u"ab\\r{.Pause(5)}";  // three tokens each
    longText += u"{.NoSuchFunction()}tail";
    int longRows = 0;
    const Assisted untouched = RunAssistant(longText, 7, [&](Driver& d, HWND dlg) {
        longRows = Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT);
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    }, 50000);
    EXPECT_EQ(untouched.code, 0);
    EXPECT_EQ(untouched.text, longText);
    EXPECT_EQ(longRows, 3 * pieces);

    const Assisted cancelled = RunAssistant(u"x", 1, [](Driver& d, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"changed");
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(cancelled.code, 1);
    EXPECT_EQ(cancelled.text, u"x");
}

TEST(MacroAssistant, HelpAsksTheHostWindowForTheMacroTopic) {
    ASSERT_TRUE(Product::Get().Loaded());
    HostWindow host(1081);
    RunAssistant(u"", 7, [](Driver& d, HWND dlg) {
        SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_MACRO_HELP, BN_CLICKED), 0);
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    }, 256, host.Handle());
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].code, 2094u);
    EXPECT_EQ(host.calls[0].text, u"macro.index");
}

// The Assist button of the built-in form edits the value at the element's level and keeps the result.
TEST(MacroAssistant, FormAssistButtonTakesTheResultIntoTheValue) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring ini = std::wstring(folder) + L"qrl_macroassist.ini";
    WritePrivateProfileStringW(L"qrl4cfg", L"MacroAssist", L"1", ini.c_str());
    const std::u16string request = ReplaceFirst(SampleText("comms_request.xml"), u"IniFile=\"\"",
                                                u"IniFile=\"" + std::u16string(ini.begin(), ini.end()) + u"\"");
    RunResult r;
    int typeRows = 0;
    const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
        HWND form = d.WaitForDialog(L"Configure  Telnet over TCP");
        HWND tree = GetDlgItem(form, IDC_TREE);
        Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, L"Login script"));
        d.Settle();
        Driver::Click(form, IDC_MACRO_ASSIST);
        HWND dlg = d.WaitForDialog(kTitle);
        typeRows = Rows(dlg, IDC_TOKEN_TYPE, CB_GETCOUNT);
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"a\\r");
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
        Driver::Click(form, IDOK);
        d.WaitGone(form);
    });
    for (const std::string& f : failures) ADD_FAILURE() << f;
    DeleteFileW(ini.c_str());
    EXPECT_EQ(typeRows, 13);  // a plain text element: the full language
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.reply.find(u"Element=\"LoginScript\" Value=\"a\\r\""), std::u16string::npos);
}

}  // namespace
}  // namespace qrl::test
