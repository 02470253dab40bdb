// The general route through the DLL's own entry point: the comms sample, its form driven like a
// user (tree, value editors, the common dialogs, module change, the host link), and the reply text
// compared as the host receives it.
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "platform/tempfolder.h"
#include "properties/font.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace qrl::test {
namespace {

namespace fs = std::filesystem;
using Rows = std::vector<std::wstring>;

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";

class GeneralRoute : public ProductTest {
protected:
    void SetUp() override {
        ProductTest::SetUp();
        ForgetSelection(u"Comms");
        ForgetSelection(u"Emul");
    }
    // The comms sample with this test's host link, and one text of it replaced if asked.
    std::u16string Request(std::u16string_view from = {}, std::u16string_view to = {}) const {
        std::u16string text = ReplaceFirst(SampleText("comms_request.xml"),
                                           u"<Link type=\"HWND\" value=\"0\" msgid=\"0\"/>", host.LinkElement());
        return from.empty() ? text : ReplaceFirst(text, from, to);
    }
    // Runs `request` with `script` driving its form; a form the script leaves open is closed by OK.
    RunResult Run(const std::u16string& request, const std::function<void(Driver&, HWND)>& script,
                  const std::wstring& title = kCommsTitle) {
        return RunRequest(request, title, [&](Driver& d, HWND dlg) {
            script(d, dlg);
            if (IsWindow(dlg)) d.Close(dlg);
        });
    }
    HostWindow host;
};

TEST_F(GeneralRoute, EachEditorWorksAndOkRepliesWithTheChangedValuesOnly) {
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");
        SelectElement(d, dlg, L"Port");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"2323");
        SelectElement(d, dlg, L"Send keep-alives");
        EXPECT_TRUE(Driver::Shown(dlg, IDC_VALUE_CHECK) && !Driver::Shown(dlg, IDC_VALUE_LABEL) && !Driver::Shown(dlg, IDC_VALUE_EDIT));
        Driver::Tick(dlg, IDC_VALUE_CHECK);
        d.Settle();
        SelectElement(d, dlg, L"Proxy type");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        // The window side of the editors; which editor each type gets is checked natively.
        SelectElement(d, dlg, L"Password");
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_VALUE_EDIT, EM_GETPASSWORDCHAR, 0, 0), L'*');
        SelectElement(d, dlg, L"Read-only note");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dlg, IDC_VALUE_EDIT)));
        SelectElement(d, dlg, L"Screen font");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_FONT_TEXT)), L"Courier New");
        SelectElement(d, dlg, L"Printer");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_PRINTER_TEXT)), L"Default printer");
        SelectElement(d, dlg, L"Escape character");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 65);
        SelectElement(d, dlg, L"Retries");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        SelectElement(d, dlg, L"Cursor colour");
        Driver::Click(dlg, IDC_COLOUR_EDIT);
        HWND colour = d.WaitForPopup(dlg);
        SetWindowTextW(GetDlgItem(colour, 707), L"128");  // green
        d.Settle();
        d.Close(colour);
        d.Settle();
        EXPECT_EQ(ElementLabel(dlg, L"Cursor colour"), L"Cursor colour (RGB=0080ff)");
        // Deleting a language asks the host and updates the list.
        SelectElement(d, dlg, L"Language (");
        Driver::Click(dlg, IDC_LANG_DELETE);
        EXPECT_EQ(d.Answer(dlg, IDCANCEL), L"Confirm Delete language|Delete language English?");  // nothing happens
        host.deleteResult = 5;  // the host refuses: nothing changes either
        Driver::Click(dlg, IDC_LANG_DELETE);
        d.Answer(dlg, IDOK);
        EXPECT_EQ(Driver::ListRows(dlg, IDC_VALUE_COMBO).size(), 3u);
        host.deleteResult = 0;
        Driver::Click(dlg, IDC_LANG_DELETE);
        d.Answer(dlg, IDOK);
        EXPECT_EQ(Driver::ListRows(dlg, IDC_VALUE_COMBO), (Rows{L"German", L"French"}));
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0), 0);
        SelectElement(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");  // typed again: no second item
    });
    EXPECT_EQ(r.status, 0u);
    // A hidden group's element (Retries) is edited like any other.
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Host", u"beta"}, {u"Port", u"2323"}, {u"KeepAlive", u"0"}, {u"ProxyType", u"SOCKS"},
                                        {u"Retries", u"2"}, {u"Colour", u"0080ff"}, {u"EscapeChar", u"65"},
                                        {u"LanguageName", u"German"}}));
    EXPECT_EQ(host.Texts(8439), (std::vector<std::u16string>{u"English", u"English"}));
}

TEST_F(GeneralRoute, CancelAndConnectEndTheForm) {
    const struct {
        int button, code;
        unsigned status;
        std::string reply;
    } cases[] = {
        {IDCANCEL, 1, 1, ""},
        {IDC_CONNECT, 0, 2, ReplyText({{u"Host", u"gamma"}}, u"  <Directives>\n    <CommConnect/>\n  </Directives>\n")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.button);
        const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
            SelectElement(d, dlg, L"Host name");
            Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"gamma");
            d.Close(dlg, c.button);
        });
        EXPECT_EQ(r.code, c.code);
        EXPECT_EQ(r.status, c.status);
        EXPECT_EQ(Utf8(r.reply), c.reply);
    }
}

TEST_F(GeneralRoute, ModuleChangeThroughTheSelectionDialog) {
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_MODULE_SELECT)), L"Change Comms");
        d.OpenAndClose(dlg, IDC_MODULE_SELECT, L"Module Selection", IDCANCEL);  // the form stays, nothing changes
        EXPECT_TRUE(IsWindowVisible(dlg));
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForDialog(L"Module Selection");
        EXPECT_EQ(Driver::ListRows(select, IDC_MODULELIST), (Rows{L"Secure shell", L"Serial line", L"Telnet over TCP"}));
        EXPECT_EQ(SendDlgItemMessageW(select, IDC_MODULELIST, LB_GETCURSEL, 0, 0), 2);  // the current one, sorted
        SendDlgItemMessageW(select, IDC_MODULELIST, LB_SETCURSEL, 0, 0);
        Driver::Click(select, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(r.status, 3u);
    EXPECT_EQ(Utf8(r.reply), ReplyText({}, u"  <Directives>\n    <ChangeComms ModuleName=\"ssh\"/>\n  </Directives>\n"));
}

TEST_F(GeneralRoute, ValidationStopsLeavingAndAcceptingABadNumber) {
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Port");
        HWND edit = GetDlgItem(dlg, IDC_VALUE_EDIT);
        // Typing is filtered by the number style; a paste gets through.
        Driver::Type(edit, L"12x");
        d.Settle();
        EXPECT_EQ(Driver::Text(edit), L"12");
        Driver::Paste(edit, L"12x");
        d.Settle();
        // Leaving the field is refused with the message, posted after the notification.
        SelectElement(d, dlg, L"Host name");
        EXPECT_EQ(d.Answer(dlg, IDOK), L"Validation Error|\"12x\" is not a valid number");
        EXPECT_EQ(SelectedLabel(dlg), L"Port (12x)");
        Driver::Type(edit, L"99999");
        Driver::Click(dlg, IDOK);
        EXPECT_EQ(d.Answer(dlg, IDOK), L"Validation Error|Value must be between 1 and 65535");
        Driver::Type(edit, L"8080");
    });
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Port", u"8080"}}));
}

// The value controls are made after the dialog opens; they still stand in the tab order as the
// template lists them, between the search row and Reset, and the frame stays behind everything.
TEST_F(GeneralRoute, ValueControlsKeepTheirPlaceInTheTabOrder) {
    Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Language (");
        SelectElement(d, dlg, L"Host name");
        std::vector<int> order;
        for (HWND w = GetWindow(GetDlgItem(dlg, IDC_TREE), GW_HWNDFIRST); w; w = GetWindow(w, GW_HWNDNEXT)) order.push_back(GetDlgCtrlID(w));
        const std::vector<int> expected{
            IDC_TREE,        IDC_SEARCH_EDIT,  IDC_SEARCH_COUNT, IDC_CUSTOMISED_ONLY, IDC_VALUE_EDIT,   IDC_VALUE_LABEL,
            IDC_FILE_BROWSE, IDC_MACRO_ASSIST, IDC_SSH_IMPORT,   IDC_DIR_BROWSE,      IDC_VALUE_CHECK,  IDC_VALUE_COMBO,
            IDC_COLOUR_SAMPLE, IDC_COLOUR_EDIT, IDC_FONT_TEXT,   IDC_FONT_EDIT,       IDC_SPECIAL_EDIT, IDC_PRINTER_TEXT,
            IDC_PRINTER_EDIT, IDC_PRINTER_DEFAULT, IDC_LANG_ADD, IDC_LANG_DELETE,     IDC_RESET_VALUE,  IDC_FORM_OK};
        ASSERT_GE(order.size(), expected.size());
        EXPECT_EQ(std::vector<int>(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
        EXPECT_EQ(order.back(), IDC_VALUE_FRAME);
    });
}

TEST_F(GeneralRoute, TheSecondRunRecallsTheSelectionOfTheFirst) {
    Run(Request(), [&](Driver& d, HWND dlg) {
        // No value yet: no element is selected and no editor is shown. (The tree view itself
        // selects its first item, the root, when it takes the focus.)
        EXPECT_EQ(SelectedLabel(dlg), L"Telnet over TCP");
        EXPECT_FALSE(Driver::Shown(dlg, IDC_VALUE_EDIT) || Driver::Shown(dlg, IDC_VALUE_LABEL));
        SelectElement(d, dlg, L"Timeout");
    });
    Run(Request(), [&](Driver& d, HWND dlg) {
        EXPECT_EQ(SelectedLabel(dlg), L"Timeout (seconds) (30)");
        EXPECT_EQ(Driver::Text(dlg, IDC_VALUE_EDIT), L"30");
        d.Close(dlg, IDCANCEL);  // Cancel stores the selection too
    });
    // The module change stores nothing: the next run still starts on Timeout.
    Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Port");
        Driver::Click(dlg, IDC_MODULE_SELECT);
        Driver::Click(d.WaitForDialog(L"Module Selection"), IDOK);
        d.WaitGone(dlg);
    });
    Run(Request(), [&](Driver&, HWND dlg) { EXPECT_EQ(SelectedLabel(dlg), L"Timeout (seconds) (30)"); });
}

TEST_F(GeneralRoute, FontChooserWritesTheFontStream) {
    std::wstring shown;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Screen font");
        Driver::Click(dlg, IDC_FONT_EDIT);
        d.Close(d.WaitForPopup(dlg));
        d.Settle();
        shown = Driver::Text(GetDlgItem(dlg, IDC_FONT_TEXT));
        EXPECT_EQ(ElementLabel(dlg, L"Screen font"), L"Screen font (" + shown + L")");
    });
    // What the dialog returns depends on the fonts present; the value must be a whole stream whose
    // face name (between two apostrophes) is the one shown, and the only item of the reply.
    const std::u16string marker = u"Element=\"BaseFont\" Value=\"";
    const std::size_t at = r.reply.find(marker);
    ASSERT_NE(at, std::u16string::npos) << Utf8(r.reply);
    const std::size_t start = at + marker.size();
    const std::u16string value = ReplaceFirst(ReplaceFirst(r.reply.substr(start, r.reply.find(u'"', start) - start),
                                                           u"&apos;", u"'"), u"&apos;", u"'");
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"BaseFont", value}}));
    TFontDescription parsed;
    EXPECT_EQ(ParseFont(value, parsed), TFontDescription::kFieldCount);
    EXPECT_EQ(shown, std::wstring(parsed.faceName.begin(), parsed.faceName.end()));
}

class FileEditors : public GeneralRoute {
protected:
    void SetUp() override {
        GeneralRoute::SetUp();
        fs::create_directories(root / L"auth");
    }
    // The open dialog made the chosen folder the current one, which could not be removed.
    void TearDown() override { SetCurrentDirectoryW(TempDir().c_str()); }
    TempFolder folder;
    const fs::path root = folder.path();
};

// Browse takes the chosen path; Import copies key files into the auth directory.
TEST_F(FileEditors, BrowseAndImportTakeTheChosenFiles) {
    const std::wstring path = (root / L"browse.log").wstring();
    folder.write("browse.log", "log");
    fs::create_directories(root / L"source");
    folder.write("auth/existing_key", "k");
    folder.write("source/id_rsa", "secret");
    host.authDirectory = (root / L"auth").u16string();
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        SelectElement(d, dlg, L"Log file");
        Driver::Click(dlg, IDC_FILE_BROWSE);
        d.AnswerFileDialog(L"Browse", path);
        d.Settle();
        EXPECT_EQ(Driver::Text(dlg, IDC_VALUE_EDIT), path);
        SelectElement(d, dlg, L"SSH key file");
        EXPECT_EQ(Driver::ListRows(dlg, IDC_VALUE_COMBO), (Rows{L"existing_key"}));
        for (int round = 0; round < 2; ++round) {
            Driver::Click(dlg, IDC_SSH_IMPORT);
            d.AnswerFileDialog(L"Select an SSH key file", (root / L"source" / L"id_rsa").wstring());
            d.Settle();
        }
        EXPECT_EQ(Driver::ListRows(dlg, IDC_VALUE_COMBO), (Rows{L"existing_key", L"id_rsa", L"id_rsa (2)"}));
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_VALUE_COMBO)), L"id_rsa (2)");
    });
    EXPECT_TRUE(fs::exists(root / L"auth" / L"id_rsa (2)"));
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"KeyFile", u"id_rsa (2)"}, {u"LogFile", std::u16string(path.begin(), path.end())}}));
}

TEST_F(GeneralRoute, TextsComeFromTheLanguageFolderAndConnectedSessionsKeepTheirModule) {
    const std::u16string langDir = toU16(QRL_SOURCE_DIR) + u"/samples/lang";
    Rows texts;
    Run(Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"deu\" LangDir=\"" + langDir + u"\""), [&](Driver& d, HWND dlg) {
        for (int id : {IDOK, IDCANCEL, IDC_CONNECT, IDC_MODULE_SELECT}) texts.push_back(Driver::Text(GetDlgItem(dlg, id)));
        for (const wchar_t* item : {L"Verbindung", L"Rechnername", L"Vermittlerart"}) texts.push_back(ElementLabel(dlg, item));
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForPopup(dlg);
        texts.push_back(Driver::Text(select));
        d.Close(select, IDCANCEL);
        d.Close(dlg, IDCANCEL);
    }, L"Konfiguriere  Telnet over TCP");
    EXPECT_EQ(texts, (Rows{L"&OK", L"&Abbrechen", L"&Verbinden", L"Kommunikation wechseln", L"Verbindung",
                           L"Rechnername (alpha.example)", L"Vermittlerart (None)", L"Modulauswahl"}));

    // A language without files empties the table again for the tests that follow. A connected
    // session can change neither module nor connection.
    Run(ReplaceFirst(Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"none\" LangDir=\"" + langDir + u"\""),
                     u"Connected=\"0\"", u"Connected=\"1\""), [](Driver&, HWND dlg) {
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dlg, IDC_MODULE_SELECT)));
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dlg, IDC_CONNECT)));
    });
}

}  // namespace
}  // namespace qrl::test
