// The general route through the DLL's own entry point: a sample request, the dialog driven like a
// user, and the reply text compared as the host receives it.
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";
const std::u16string kHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n";

std::string Utf8(const std::u16string& text) { return utf16ToUtf8(text); }

class GeneralRoute : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded()) << "qrl4cfg.dll not found beside the tests";
        ForgetSelection(u"Comms");
        ForgetSelection(u"Emul");
    }
    // The comms sample with the link of `host` in place of its dummy link.
    static std::u16string Comms(const HostWindow& host) {
        return ReplaceFirst(SampleText("comms_request.xml"), u"<Link type=\"HWND\" value=\"0\" msgid=\"0\"/>",
                            host.LinkElement());
    }
    RunResult Run(const std::u16string& request, const std::function<void(Driver&)>& script) {
        RunResult result;
        const auto failures = RunDriven([&] { result = Product::Get().RunConfig2W(request); }, script);
        for (const std::string& f : failures) ADD_FAILURE() << f;
        return result;
    }
};

HWND Tree(HWND dialog) { return GetDlgItem(dialog, IDC_TREE); }
void Select(Driver& d, HWND dialog, const std::wstring& prefix) {
    Driver::SelectTreeItem(Tree(dialog), Driver::FindTreeItem(Tree(dialog), prefix));
    d.Settle();
}

TEST_F(GeneralRoute, OkRepliesWithTheChangedValuesOnly) {
    HostWindow host;
    const RunResult r = Run(Comms(host), [](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");
        Select(d, dlg, L"Port");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"2323");
        Select(d, dlg, L"Send keep-alives");
        Driver::Click(dlg, IDC_VALUE_CHECK);
        d.Settle();
        Select(d, dlg, L"Proxy type");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");  // typed again: no second item
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 0u);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + u"  <Data>\n"
                                          u"    <Item Element=\"Host\" Value=\"beta\"/>\n"
                                          u"    <Item Element=\"Port\" Value=\"2323\"/>\n"
                                          u"    <Item Element=\"KeepAlive\" Value=\"0\"/>\n"
                                          u"    <Item Element=\"ProxyType\" Value=\"SOCKS\"/>\n"
                                          u"  </Data>\n"
                                          u"</Config>"));
}

TEST_F(GeneralRoute, CancelGivesCodeOneAndStatusOne) {
    HostWindow host;
    const RunResult r = Run(Comms(host), [](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"changed");
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.status, 1u);
    EXPECT_TRUE(r.reply.empty());
}

TEST_F(GeneralRoute, ConnectCollectsAndRepliesWithTheDirective) {
    HostWindow host;
    const RunResult r = Run(Comms(host), [](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"gamma");
        Driver::Click(dlg, IDC_CONNECT);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 2u);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + u"  <Data>\n"
                                          u"    <Item Element=\"Host\" Value=\"gamma\"/>\n"
                                          u"  </Data>\n"
                                          u"  <Directives>\n"
                                          u"    <CommConnect/>\n"
                                          u"  </Directives>\n"
                                          u"</Config>"));
}

TEST_F(GeneralRoute, ModuleChangeThroughTheSelectionDialog) {
    HostWindow host;
    std::vector<std::wstring> rows;
    int selectedAtStart = -2;
    const RunResult r = Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MODULE_SELECT)), L"Change Comms");
        // Cancel first: the form stays and nothing changes.
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForDialog(L"Module Selection");
        Driver::Click(select, IDCANCEL);
        d.WaitGone(select);
        EXPECT_TRUE(IsWindowVisible(dlg));

        Driver::Click(dlg, IDC_MODULE_SELECT);
        select = d.WaitForDialog(L"Module Selection");
        HWND list = GetDlgItem(select, IDC_MODULELIST);
        const int count = static_cast<int>(SendMessageW(list, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            wchar_t text[256] = {};
            SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            rows.push_back(text);
        }
        selectedAtStart = static_cast<int>(SendMessageW(list, LB_GETCURSEL, 0, 0));
        SendMessageW(list, LB_SETCURSEL, 0, 0);
        Driver::Click(select, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(rows, (std::vector<std::wstring>{L"Secure shell", L"Serial line", L"Telnet over TCP"}));
    EXPECT_EQ(selectedAtStart, 2);  // the current module, after the sort
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 3u);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + u"  <Directives>\n"
                                          u"    <ChangeComms ModuleName=\"ssh\"/>\n"
                                          u"  </Directives>\n"
                                          u"</Config>"));
}

TEST_F(GeneralRoute, ValidationStopsLeavingAndAcceptingABadNumber) {
    HostWindow host;
    std::vector<std::wstring> messages;
    std::wstring stillSelected;
    std::wstring typedIntoNumberField;
    const RunResult r = Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        HWND tree = Tree(dlg);
        Select(d, dlg, L"Port");
        HWND edit = GetDlgItem(dlg, IDC_VALUE_EDIT);
        // Typing is filtered by the number style; a paste gets through.
        Driver::Type(edit, L"12x");
        d.Settle();
        typedIntoNumberField = Driver::Text(edit);
        Driver::Paste(edit, L"12x");
        d.Settle();
        // Leaving the field is refused with the message, posted after the notification.
        Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, L"Host name"));
        HWND box = d.WaitForPopup(dlg);
        EXPECT_EQ(Driver::Text(box), L"Validation Error");
        messages.push_back(Driver::MessageText(box));
        Driver::Click(box, IDOK);
        d.WaitGone(box);
        stillSelected = Driver::TreeItemText(tree, Driver::SelectedTreeItem(tree));

        Driver::Type(edit, L"99999");
        Driver::Click(dlg, IDOK);
        box = d.WaitForPopup(dlg);
        messages.push_back(Driver::MessageText(box));
        Driver::Click(box, IDOK);
        d.WaitGone(box);

        Driver::Type(edit, L"8080");
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(typedIntoNumberField, L"12");
    EXPECT_EQ(messages, (std::vector<std::wstring>{L"\"12x\" is not a valid number", L"Value must be between 1 and 65535"}));
    EXPECT_EQ(stillSelected, L"Port (12x)");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + u"  <Data>\n"
                                          u"    <Item Element=\"Port\" Value=\"8080\"/>\n"
                                          u"  </Data>\n"
                                          u"</Config>"));
}

TEST_F(GeneralRoute, TheSecondRunRecallsTheSelectionOfTheFirst) {
    HostWindow host;
    std::wstring selectedAtStart;
    std::wstring editAtStart;
    bool editorShown = true;
    Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        // No value yet: no element is selected and no editor is shown. (The tree view itself
        // selects its first item, the root, when it takes the focus.)
        selectedAtStart = Driver::TreeItemText(Tree(dlg), Driver::SelectedTreeItem(Tree(dlg)));
        editorShown = IsWindowVisible(GetDlgItem(dlg, IDC_VALUE_EDIT)) || IsWindowVisible(GetDlgItem(dlg, IDC_VALUE_LABEL));
        Select(d, dlg, L"Timeout");
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(selectedAtStart, L"Telnet over TCP");
    EXPECT_FALSE(editorShown);

    Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        selectedAtStart = Driver::TreeItemText(Tree(dlg), Driver::SelectedTreeItem(Tree(dlg)));
        editAtStart = Driver::Text(GetDlgItem(dlg, IDC_VALUE_EDIT));
        Driver::Click(dlg, IDCANCEL);  // Cancel stores the selection too
        d.WaitGone(dlg);
    });
    EXPECT_EQ(selectedAtStart, L"Timeout (seconds) (30)");
    EXPECT_EQ(editAtStart, L"30");

    // The module change stores nothing: the next run still starts on Timeout.
    Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        Select(d, dlg, L"Port");
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForDialog(L"Module Selection");
        Driver::Click(select, IDOK);
        d.WaitGone(dlg);
    });
    Run(Comms(host), [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kCommsTitle);
        selectedAtStart = Driver::TreeItemText(Tree(dlg), Driver::SelectedTreeItem(Tree(dlg)));
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(selectedAtStart, L"Timeout (seconds) (30)");
}

}  // namespace
}  // namespace qrl::test
