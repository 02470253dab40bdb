// The Macro Assistant as a host meets it: through fnMacroAssist and through a form's Assist button,
// driven the way a user drives it. What each edit makes of a token is checked natively.
#include "forms/forms_rc.h"
#include "forms/formsetup.h"
#include "macro/macro_rc.h"
#include "macro/macroassist.h"

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
    Drive([&] { result.code = Product::Get().MacroAssist(nullptr, text, capacity, u"Enter\0PF1\0"s, host, mode); },
          [&](Driver& d) { script(d, d.WaitForDialog(kTitle)); });
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

bool NumbersOnly(HWND dlg, int id) { return (GetWindowLongW(GetDlgItem(dlg, id), GWL_STYLE) & ES_NUMBER) != 0; }
int Rows(HWND dlg, int id, UINT countMessage) { return static_cast<int>(SendDlgItemMessageW(dlg, id, countMessage, 0, 0)); }

using MacroAssistant = ProductTest;

// Help asks the host window for the macro topic.
TEST_F(MacroAssistant, TypedKeyNameWarnsHelpAsksTheHostAndOkWritesTheText) {
    HostWindow host(1081);
    const Assisted r = RunAssistant(u"ab\\n{Enter}", 3, [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Rows(dlg, IDC_TOKEN_TYPE, CB_GETCOUNT), 3);
        EXPECT_EQ(Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT), 3);
        // The macro text has the focus with the caret at its start and nothing selected.
        EXPECT_EQ(d.Focus(), GetDlgItem(dlg, IDC_MACRO_TEXT));
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_MACRO_TEXT, EM_GETSEL, 0, 0), 0);
        SelectToken(d, dlg, 2);
        EXPECT_TRUE(Driver::Shown(dlg, IDC_EMKEY_LIST));
        EXPECT_FALSE(Driver::Shown(dlg, IDC_TEXT_EDIT));
        Driver::Type(FindWindowExW(GetDlgItem(dlg, IDC_EMKEY_LIST), nullptr, L"Edit", nullptr), L"PF9");
        d.Settle();
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_EMKEY_WARNING)), L"warning: key 'PF9' is not defined in this emulation");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT)), L"ab\\n{PF9}");
        SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDC_MACRO_HELP, BN_CLICKED), 0);
        d.Close(dlg);
    }, 256, host.Handle());
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.text, u"ab\\n{PF9}");
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].code, 2094u);
    EXPECT_EQ(host.calls[0].text, u"macro.index");
}

// A macro built from nothing with the list buttons and the panels, as a user who knows no syntax would.
TEST_F(MacroAssistant, BuildsAMacroTokenByToken) {
    const Assisted r = RunAssistant(u"", 7, [&](Driver& d, HWND dlg) {
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 1);  // Character
        Driver::Choose(dlg, IDC_CHAR_LIST, 1);   // CR
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 3);  // Function
        Driver::Choose(dlg, IDC_FUNC_LIST, 50);  // Pause
        EXPECT_TRUE(Driver::Shown(dlg, IDC_PARAM1) && NumbersOnly(dlg, IDC_PARAM1) && !Driver::Shown(dlg, IDC_PARAM2));
        Driver::Type(GetDlgItem(dlg, IDC_PARAM1), L"12");
        Press(dlg, IDC_INSERT_BEFORE);
        Driver::Type(GetDlgItem(dlg, IDC_TEXT_EDIT), L"go");
        Press(dlg, IDC_MOVE_UP);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT)), L"go\\r{.Pause(12)}");
        SelectToken(d, dlg, 2);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_PARAM1)), L"12");  // loaded from the token
        SelectToken(d, dlg, 1);
        Press(dlg, IDC_DELETE_TOKEN);
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 2);  // Emulation key
        Driver::Type(FindWindowExW(GetDlgItem(dlg, IDC_EMKEY_LIST), nullptr, L"Edit", nullptr), L"Enter");
        d.Settle();
        Press(dlg, IDC_INSERT_AFTER);
        Driver::Choose(dlg, IDC_TOKEN_TYPE, 3);
        Driver::Choose(dlg, IDC_FUNC_LIST, 63);  // SetProp
        d.Settle();
        EXPECT_TRUE(Driver::Shown(dlg, IDC_PARAM2) && !Driver::Shown(dlg, IDC_PARAM3) && !NumbersOnly(dlg, IDC_PARAM1));
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_PARAM_PROMPT2)), L"Value");
        Driver::Type(GetDlgItem(dlg, IDC_PARAM2), L"on");
        d.Settle();
        d.Close(dlg);
    });
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.text, u"go{.Pause(12)}{Enter}{.SetProp(\"\",\"on\")}");
}

// A text that does not parse shows what parsed; OK still returns the text as typed, if it fits.
TEST_F(MacroAssistant, ResultCodesAndTextsThatDoNotParse) {
    const auto typeAndAccept = [&](Driver& d, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"ab{%break}cd");
        d.Settle();
        EXPECT_EQ(Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT), 1);
        d.Close(dlg);
    };
    const Assisted accepted = RunAssistant(u"", 7, typeAndAccept);
    EXPECT_EQ(accepted.code, 0);
    EXPECT_EQ(accepted.text, u"ab{%break}cd");

    // The caller's text is read to its terminator whatever the capacity; it needs 13, so nothing is written.
    const Assisted tooSmall = RunAssistant(u"ab{%break}cd", 7, [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT)), L"ab{%break}cd");
        d.Close(dlg);
    }, 8);
    EXPECT_EQ(tooSmall.code, 160);
    EXPECT_EQ(tooSmall.text, u"ab{%break}cd");

    // A long text with a fault comes back exactly as it came when nothing was edited.
    std::u16string longText;
    int pieces = 0;
    for (; longText.size() < 40000; ++pieces) longText += u"ab\\r{.Pause(5)}";  // three tokens each
    longText += u"{.NoSuchFunction()}tail";
    const Assisted untouched = RunAssistant(longText, 7, [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Rows(dlg, IDC_TOKEN_LIST, LB_GETCOUNT), 3 * pieces);
        d.Close(dlg);
    }, 50000);
    EXPECT_EQ(untouched.code, 0);
    EXPECT_EQ(untouched.text, longText);

    const Assisted cancelled = RunAssistant(u"x", 1, [](Driver& d, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"changed");
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(cancelled.code, 1);
    EXPECT_EQ(cancelled.text, u"x");
}

// Each edit changes only the rows it touched; after each, the list and the text show the model.
TEST_F(MacroAssistant, ListFollowsEveryEdit) {
    struct Step { int control; int row; };  // a list button, a token to select, a type to choose, or text
    const Step steps[] = {{IDC_TOKEN_LIST, 2}, {IDC_INSERT_AFTER, 0}, {IDC_TEXT_EDIT, 0}, {IDC_MOVE_UP, 0},
                          {IDC_MOVE_DOWN, 0},  {IDC_TOKEN_TYPE, 2},  {IDC_TOKEN_LIST, 5}, {IDC_DELETE_TOKEN, 0},
                          {IDC_MOVE_UP, 0},    {IDC_INSERT_BEFORE, 0}, {IDC_TOKEN_LIST, 0}, {IDC_DELETE_TOKEN, 0}};
    const std::u16string text = u"a\\n{Enter}b{.Pause(5)}x";
    TMacroAssist model(7, {u"Enter", u"PF1"});
    model.Parse(text);
    model.Select(0);
    RunAssistant(text, 7, [&](Driver& d, HWND dlg) {
        for (const Step& step : steps) {
            if (step.control == IDC_TOKEN_LIST) {
                SelectToken(d, dlg, step.row);
                model.Select(step.row);
            } else if (step.control == IDC_TOKEN_TYPE) {
                Driver::Choose(dlg, IDC_TOKEN_TYPE, step.row);
                model.ChooseType(step.row);
            } else if (step.control == IDC_TEXT_EDIT) {
                Driver::Type(GetDlgItem(dlg, IDC_TEXT_EDIT), L"go");
                model.SetText(u"go");
            } else {
                Press(dlg, step.control);
                const std::map<int, TRowChange (TMacroAssist::*)()> buttons = {
                    {IDC_INSERT_BEFORE, &TMacroAssist::InsertBefore}, {IDC_INSERT_AFTER, &TMacroAssist::InsertAfter},
                    {IDC_DELETE_TOKEN, &TMacroAssist::Delete}, {IDC_MOVE_UP, &TMacroAssist::MoveUp},
                    {IDC_MOVE_DOWN, &TMacroAssist::MoveDown}};
                (model.*buttons.at(step.control))();
            }
            d.Settle();
            std::vector<std::wstring> rows;
            for (const std::u16string& row : model.Rows()) rows.emplace_back(row.begin(), row.end());
            EXPECT_EQ(Driver::ListRows(dlg, IDC_TOKEN_LIST), rows) << "after control " << step.control;
            EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_TOKEN_LIST, LB_GETCURSEL, 0, 0), model.Selected());
            const std::u16string joined = model.Joined();
            EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MACRO_TEXT)), std::wstring(joined.begin(), joined.end()));
        }
        d.Close(dlg, IDCANCEL);
    });
}

// The Assist button of the built-in form edits the value at the element's level and keeps the result.
TEST_F(MacroAssistant, FormAssistButtonTakesTheResultIntoTheValue) {
    ForgetSelection(u"Comms");
    const std::wstring ini = TempDir() + L"qrl_macroassist.ini";
    WritePrivateProfileStringW(L"qrl4cfg", L"MacroAssist", L"1", ini.c_str());
    const std::u16string request = ReplaceFirst(SampleText("comms_request.xml"), u"IniFile=\"\"",
                                                u"IniFile=\"" + std::u16string(ini.begin(), ini.end()) + u"\"");
    const RunResult r = RunOnElement(request, L"Login script", [&](Driver& d, HWND form) {
        Driver::Click(form, IDC_MACRO_ASSIST);
        HWND dlg = d.WaitForDialog(kTitle);
        EXPECT_EQ(Rows(dlg, IDC_TOKEN_TYPE, CB_GETCOUNT), 13);  // a plain text element: the full language
        Driver::Type(GetDlgItem(dlg, IDC_MACRO_TEXT), L"a\\r");
        d.Close(dlg);
    }, 50, L"Configure  Telnet over TCP");
    DeleteFileW(ini.c_str());
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.reply.find(u"Element=\"LoginScript\" Value=\"a\\r\""), std::u16string::npos);
}

}  // namespace
}  // namespace qrl::test
