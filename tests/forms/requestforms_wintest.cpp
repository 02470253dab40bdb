// Forms that the request brings itself (the emulation sample): radio buttons, an inverted check
// box, drop-downs bound by position, a nested form, and the action buttons.
#include "formsetup.h"
#include "forms/formdef.h"
#include "app/module_win.h"
#include "forms/runform.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

// Control ids of the sample's start form, as the template gives them: 5000 on in item order,
// the action buttons their own.
enum MainIds {
    kBlock = 5001, kUnderline = 5002, kBar = 5003, kWrap = 5004, kBell = 5005,
    kTerminal = 5007, kColumns = 5009, kAnswerback = 5011, kMore = 5012,
};
enum MoreIds { kBellList = 5001, kTabs = 5003 };

std::u16string Emul(const HostWindow* host = nullptr) {
    std::u16string text = SampleText("emul_request.xml");
    if (host) text = ReplaceFirst(text, u"</Config>", host->LinkElement() + u"\n</Config>");
    return text;
}

// Runs form `name` of `session` through the form engine with `script` driving it.
int RunFormDriven(TConfigSession& session, const std::u16string& name, const std::wstring& title,
              const std::function<void(Driver&, HWND)>& script) {
    EnsureFormClasses();
    int result = 0;
    Drive([&] { result = RunForm(session, FindForm(session, name), nullptr, FormEditors()); },
          [&](Driver& d) { script(d, d.WaitForDialog(title)); });
    return result;
}

TEST(RequestForms, StartFormShowsCollectsAndNests) {
    ASSERT_TRUE(Product::Get().Loaded());
    const RunResult r = RunRequest(Emul(), L"VT Settings", [&](Driver& d, HWND dlg) {
        EXPECT_TRUE(Driver::Checked(dlg, kBlock));
        EXPECT_FALSE(Driver::Checked(dlg, kUnderline));
        EXPECT_TRUE(Driver::Checked(dlg, kWrap));
        EXPECT_TRUE(Driver::Checked(dlg, kBell));  // NoBell is 0, shown inverted
        EXPECT_EQ(SendDlgItemMessageW(dlg, kTerminal, CB_GETCURSEL, 0, 0), 1);
        EXPECT_EQ(SendDlgItemMessageW(dlg, kColumns, CB_GETCOUNT, 0, 0), 53);  // 80 to 132
        EXPECT_EQ(SendDlgItemMessageW(dlg, kColumns, CB_GETCURSEL, 0, 0), 0);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, kAnswerback)), L"VT");

        Driver::Tick(dlg, kUnderline);
        Driver::Tick(dlg, kBell);
        d.Settle();
        Driver::Choose(dlg, kTerminal, 2);
        Driver::Choose(dlg, kColumns, 2);
        Driver::Type(GetDlgItem(dlg, kAnswerback), L"XY");

        Driver::Click(dlg, kMore);
        HWND more = d.WaitForDialog(L"More VT Settings");
        EXPECT_EQ(SendDlgItemMessageW(more, kBellList, LB_GETCOUNT, 0, 0), 0);  // a list is never filled from strings
        Driver::Type(GetDlgItem(more, kTabs), L"4");
        d.Close(more);
        d.Close(dlg);
    });
    EXPECT_EQ(r.status, 0u);
    // Columns: position 2 less min 80. The list of the nested form had no selection, so Bell
    // took its default, which is what Data sent: not in the reply.
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Terminal", u"VT320"}, {u"Cursor", u"20"}, {u"Columns", u"-78"},
                                        {u"Answerback", u"XY"}, {u"NoBell", u"1"}, {u"Tabs", u"4"}}));
}

TEST(RequestForms, HelpAndModuleButtonsOfARequestForm) {
    ASSERT_TRUE(Product::Get().Loaded());
    HostWindow host;
    const RunResult r = RunRequest(Emul(&host), L"VT Settings", [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, 9);
        d.Settle();
        Driver::Click(dlg, 4900);
        HWND select = d.WaitForDialog(L"Module Selection");
        SendDlgItemMessageW(select, 104, LB_SETCURSEL, 1, 0);  // sorted: DEC VT, IBM 5250, Tandem 653x
        // A double click on the list ends it like OK.
        SendMessageW(select, WM_COMMAND, MAKEWPARAM(104, LBN_DBLCLK), reinterpret_cast<LPARAM>(GetDlgItem(select, 104)));
        d.WaitGone(dlg);
    });
    EXPECT_EQ(host.Texts(2094), (std::vector<std::u16string>{u"vt.index"}));
    EXPECT_EQ(r.status, 3u);
    EXPECT_EQ(Utf8(r.reply), ReplyText({}, u"  <Directives>\n    <ChangeEmul ModuleName=\"ibm5250\"/>\n  </Directives>\n"));
}

TEST(RequestForms, NestedOkSurvivesCancelOfTheOuterForm) {
    auto session = LoadSession(Emul());
    const int result = RunFormDriven(*session, session->startForm, L"VT Settings", [](Driver& d, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, kAnswerback), L"lost");
        Driver::Click(dlg, kMore);
        HWND more = d.WaitForDialog(L"More VT Settings");
        Driver::Type(GetDlgItem(more, kTabs), L"2");
        d.Close(more);
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(result, 2);
    EXPECT_EQ(session->FindElement(u"Tabs")->value, u"2");       // written by the nested OK
    EXPECT_EQ(session->FindElement(u"Answerback")->value, u"VT");  // the outer form collected nothing
}

TEST(RequestForms, AFormWithoutItemsEndsOnlyByClosingIt) {
    auto session = LoadSession(u"<Config><Interface StartForm='e'><Form Name='e' Title='Empty' Width='100' "
                               u"Height='40' Font='MS Shell Dlg' FontSize='8'/></Interface></Config>");
    const int result = RunFormDriven(*session, u"E", L"Empty", [](Driver& d, HWND dlg) {
        EXPECT_EQ(GetWindow(dlg, GW_CHILD), nullptr);
        PostMessageW(dlg, WM_CLOSE, 0, 0);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(result, 2);
}

TEST(RequestForms, LongTextsAreCutAtCollection) {
    auto session = LoadSession(u"<Config><DTD><Element Name='T' Type='text'/></DTD><Interface StartForm='f'>"
                               u"<Form Name='f' Title='Long' Width='200' Height='60' Font='MS Shell Dlg' FontSize='8'>"
                               u"<Edit Element='T' Width='100' Height='12'/><Button Action='OK' Top='20' Width='40' Height='14'/>"
                               u"</Form></Interface></Config>");
    const int result = RunFormDriven(*session, u"f", L"Long", [](Driver& d, HWND dlg) {
        SetWindowTextW(GetDlgItem(dlg, 5000), std::wstring(2000, L'a').c_str());
        d.Close(dlg);
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(session->FindElement(u"T")->value, std::u16string(1023, u'a'));
}

}  // namespace
}  // namespace qrl::test
