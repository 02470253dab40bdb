// The general route through the DLL's own entry point: the comms sample, its form driven like a
// user (tree, value editors, the common dialogs, module change, the host link), and the reply text
// compared as the host receives it.
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "properties/font.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qrl::test {
namespace {

namespace fs = std::filesystem;
using Rows = std::vector<std::wstring>;

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";

HWND Tree(HWND dialog) { return GetDlgItem(dialog, IDC_TREE); }
void Select(Driver& d, HWND dialog, const std::wstring& prefix) {
    Driver::SelectTreeItem(Tree(dialog), Driver::FindTreeItem(Tree(dialog), prefix));
    d.Settle();
}
std::wstring Label(HWND dialog, const std::wstring& prefix) {
    return Driver::TreeItemText(Tree(dialog), Driver::FindTreeItem(Tree(dialog), prefix));
}
std::wstring Selected(HWND dialog) { return Driver::TreeItemText(Tree(dialog), Driver::SelectedTreeItem(Tree(dialog))); }
bool Shown(HWND dialog, int id) { return IsWindowVisible(GetDlgItem(dialog, id)) != FALSE; }
std::wstring EditText(HWND dialog) { return Driver::Text(GetDlgItem(dialog, IDC_VALUE_EDIT)); }

Rows ComboRows(HWND dialog) { return Driver::ListRows(dialog, IDC_VALUE_COMBO); }

// Fills the file name of an open-file dialog and accepts it.
void OpenFile(Driver& d, const std::wstring& title, const std::wstring& path) {
    HWND open = d.WaitForDialog(title);
    HWND name = GetDlgItem(open, 0x480);  // edt1
    if (!name) {
        // cmb13: the name as a ComboBoxEx, whose edit sits inside its combo box.
        HWND comboEx = GetDlgItem(open, 0x47C);
        HWND combo = comboEx ? FindWindowExW(comboEx, nullptr, L"ComboBox", nullptr) : nullptr;
        name = combo ? FindWindowExW(combo, nullptr, L"Edit", nullptr) : nullptr;
        if (!name && comboEx) name = FindWindowExW(comboEx, nullptr, L"Edit", nullptr);
    }
    if (!name) throw DriverFailure{"open dialog without a name field"};
    SetWindowTextW(name, path.c_str());
    Driver::Click(open, IDOK);
    d.WaitGone(open);
}

class GeneralRoute : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded()) << "qrl4cfg.dll not found beside the tests";
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
        RunResult result;
        const auto failures = RunDriven([&] { result = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
            HWND dlg = d.WaitForDialog(title);
            script(d, dlg);
            if (IsWindow(dlg)) {
                Driver::Click(dlg, IDOK);
                d.WaitGone(dlg);
            }
        });
        for (const std::string& f : failures) ADD_FAILURE() << f;
        return result;
    }
    HostWindow host;
};

TEST_F(GeneralRoute, OkRepliesWithTheChangedValuesOnly) {
    std::wstring label;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");
        d.Settle();
        label = Label(dlg, L"Host name");
        Select(d, dlg, L"Port");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"2323");
        Select(d, dlg, L"Send keep-alives");
        Driver::Tick(dlg, IDC_VALUE_CHECK);
        d.Settle();
        Select(d, dlg, L"Proxy type");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
        Select(d, dlg, L"Host name");
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"beta");  // typed again: no second item
    });
    EXPECT_EQ(label, L"Host name (beta)");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 0u);
    EXPECT_EQ(Utf8(r.reply),
              ReplyText({{u"Host", u"beta"}, {u"Port", u"2323"}, {u"KeepAlive", u"0"}, {u"ProxyType", u"SOCKS"}}));
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
            Select(d, dlg, L"Host name");
            Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"gamma");
            Driver::Click(dlg, c.button);
            d.WaitGone(dlg);
        });
        EXPECT_EQ(r.code, c.code);
        EXPECT_EQ(r.status, c.status);
        EXPECT_EQ(Utf8(r.reply), c.reply);
    }
}

TEST_F(GeneralRoute, ModuleChangeThroughTheSelectionDialog) {
    Rows rows;
    int selectedAtStart = -2;
    bool formAfterCancel = false;
    std::wstring button;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        button = Driver::Text(GetDlgItem(dlg, IDC_MODULE_SELECT));
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForDialog(L"Module Selection");
        Driver::Click(select, IDCANCEL);  // the form stays and nothing changes
        d.WaitGone(select);
        formAfterCancel = IsWindowVisible(dlg);

        Driver::Click(dlg, IDC_MODULE_SELECT);
        select = d.WaitForDialog(L"Module Selection");
        HWND list = GetDlgItem(select, IDC_MODULELIST);
        rows = Driver::ListRows(select, IDC_MODULELIST);
        selectedAtStart = static_cast<int>(SendMessageW(list, LB_GETCURSEL, 0, 0));
        SendMessageW(list, LB_SETCURSEL, 0, 0);
        Driver::Click(select, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(button, L"Change Comms");
    EXPECT_TRUE(formAfterCancel);
    EXPECT_EQ(rows, (Rows{L"Secure shell", L"Serial line", L"Telnet over TCP"}));
    EXPECT_EQ(selectedAtStart, 2);  // the current module, after the sort
    EXPECT_EQ(r.status, 3u);
    EXPECT_EQ(Utf8(r.reply), ReplyText({}, u"  <Directives>\n    <ChangeComms ModuleName=\"ssh\"/>\n  </Directives>\n"));
}

TEST_F(GeneralRoute, ValidationStopsLeavingAndAcceptingABadNumber) {
    std::vector<std::wstring> messages;
    std::wstring stillSelected, typed;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Port");
        HWND edit = GetDlgItem(dlg, IDC_VALUE_EDIT);
        // Typing is filtered by the number style; a paste gets through.
        Driver::Type(edit, L"12x");
        d.Settle();
        typed = Driver::Text(edit);
        Driver::Paste(edit, L"12x");
        d.Settle();
        // Leaving the field is refused with the message, posted after the notification.
        Driver::SelectTreeItem(Tree(dlg), Driver::FindTreeItem(Tree(dlg), L"Host name"));
        messages.push_back(d.Answer(dlg, IDOK));
        stillSelected = Selected(dlg);
        Driver::Type(edit, L"99999");
        Driver::Click(dlg, IDOK);
        messages.push_back(d.Answer(dlg, IDOK));
        Driver::Type(edit, L"8080");
    });
    EXPECT_EQ(typed, L"12");
    EXPECT_EQ(messages, (Rows{L"Validation Error|\"12x\" is not a valid number",
                              L"Validation Error|Value must be between 1 and 65535"}));
    EXPECT_EQ(stillSelected, L"Port (12x)");
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Port", u"8080"}}));
}

TEST_F(GeneralRoute, TheSecondRunRecallsTheSelectionOfTheFirst) {
    std::wstring selectedAtStart, editAtStart;
    bool editorShown = true;
    Run(Request(), [&](Driver& d, HWND dlg) {
        // No value yet: no element is selected and no editor is shown. (The tree view itself
        // selects its first item, the root, when it takes the focus.)
        selectedAtStart = Selected(dlg);
        editorShown = Shown(dlg, IDC_VALUE_EDIT) || Shown(dlg, IDC_VALUE_LABEL);
        Select(d, dlg, L"Timeout");
    });
    EXPECT_EQ(selectedAtStart, L"Telnet over TCP");
    EXPECT_FALSE(editorShown);

    Run(Request(), [&](Driver& d, HWND dlg) {
        selectedAtStart = Selected(dlg);
        editAtStart = EditText(dlg);
        Driver::Click(dlg, IDCANCEL);  // Cancel stores the selection too
        d.WaitGone(dlg);
    });
    EXPECT_EQ(selectedAtStart, L"Timeout (seconds) (30)");
    EXPECT_EQ(editAtStart, L"30");

    // The module change stores nothing: the next run still starts on Timeout.
    Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Port");
        Driver::Click(dlg, IDC_MODULE_SELECT);
        Driver::Click(d.WaitForDialog(L"Module Selection"), IDOK);
        d.WaitGone(dlg);
    });
    Run(Request(), [&](Driver&, HWND dlg) { selectedAtStart = Selected(dlg); });
    EXPECT_EQ(selectedAtStart, L"Timeout (seconds) (30)");
}

// The window side of the editors; which editor each type gets is checked natively.
TEST_F(GeneralRoute, EditorsShowTheirValues) {
    wchar_t passwordChar = 0;
    bool readOnlyEnabled = true, checkOnly = false;
    std::wstring charsetLabel, fontText, printerText;
    LRESULT char8Count = 0, char8Selection = 0;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Password");
        passwordChar = static_cast<wchar_t>(SendDlgItemMessageW(dlg, IDC_VALUE_EDIT, EM_GETPASSWORDCHAR, 0, 0));
        Select(d, dlg, L"Read-only note");
        readOnlyEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_VALUE_EDIT));
        Select(d, dlg, L"Send keep-alives");
        checkOnly = Shown(dlg, IDC_VALUE_CHECK) && !Shown(dlg, IDC_VALUE_LABEL) && !Shown(dlg, IDC_VALUE_EDIT);
        Select(d, dlg, L"Screen font");
        fontText = Driver::Text(GetDlgItem(dlg, IDC_FONT_TEXT));
        Select(d, dlg, L"Printer");
        printerText = Driver::Text(GetDlgItem(dlg, IDC_PRINTER_TEXT));
        Select(d, dlg, L"Host code page");
        charsetLabel = Driver::Text(GetDlgItem(dlg, IDC_VALUE_LABEL));
        Select(d, dlg, L"Escape character");
        char8Count = SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCOUNT, 0, 0);
        char8Selection = SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0);
        Driver::Choose(dlg, IDC_VALUE_COMBO, 65);
        Select(d, dlg, L"Retries");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
    });
    EXPECT_EQ(passwordChar, L'*');
    EXPECT_FALSE(readOnlyEnabled);
    EXPECT_TRUE(checkOnly);
    EXPECT_EQ(fontText, L"Courier New");
    EXPECT_EQ(printerText, L"Default printer");
    EXPECT_EQ(charsetLabel, L"Host code page character set");
    EXPECT_EQ(char8Count, 128);
    EXPECT_EQ(char8Selection, 27);
    // A hidden group's element (Retries) is edited like any other.
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Retries", u"2"}, {u"EscapeChar", u"65"}}));
}

TEST_F(GeneralRoute, ColourChooserWritesSixHexDigits) {
    std::wstring label;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Cursor colour");
        Driver::Click(dlg, IDC_COLOUR_EDIT);
        HWND colour = d.WaitForPopup(dlg);
        SetWindowTextW(GetDlgItem(colour, 707), L"128");  // green
        d.Settle();
        Driver::Click(colour, IDOK);
        d.WaitGone(colour);
        d.Settle();
        label = Label(dlg, L"Cursor colour");
    });
    EXPECT_EQ(label, L"Cursor colour (RGB=0080ff)");
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"Colour", u"0080ff"}}));
}

TEST_F(GeneralRoute, FontChooserWritesTheFontStream) {
    std::wstring shown, label;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Screen font");
        Driver::Click(dlg, IDC_FONT_EDIT);
        HWND font = d.WaitForPopup(dlg);
        Driver::Click(font, IDOK);
        d.WaitGone(font);
        d.Settle();
        shown = Driver::Text(GetDlgItem(dlg, IDC_FONT_TEXT));
        label = Label(dlg, L"Screen font");
    });
    // What the dialog returns depends on the fonts present; the value must be a whole stream whose
    // face name is the one shown.
    const std::u16string marker = u"Element=\"BaseFont\" Value=\"";
    const std::size_t at = r.reply.find(marker);
    ASSERT_NE(at, std::u16string::npos) << Utf8(r.reply);
    const std::size_t start = at + marker.size();
    std::u16string value;
    for (std::size_t i = start; i < r.reply.size() && r.reply[i] != u'"';) {
        const bool apos = r.reply.compare(i, 6, u"&apos;") == 0;
        value += apos ? u'\'' : r.reply[i];
        i += apos ? 6 : 1;
    }
    TFontDescription parsed;
    EXPECT_EQ(ParseFont(value, parsed), TFontDescription::kFieldCount);
    EXPECT_EQ(shown, std::wstring(parsed.faceName.begin(), parsed.faceName.end()));
    EXPECT_EQ(label, L"Screen font (" + shown + L")");
}

class FileEditors : public GeneralRoute {
protected:
    void SetUp() override {
        GeneralRoute::SetUp();
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        temp_ = temp;
        root = temp_ / L"qrl_file_editors";
        fs::remove_all(root);
        fs::create_directories(root / L"auth");
    }
    void TearDown() override {
        SetCurrentDirectoryW(temp_.c_str());  // the open dialog made the chosen folder the current one
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }
    fs::path temp_, root;
};

TEST_F(FileEditors, BrowseTakesTheChosenPath) {
    const std::wstring path = (root / L"browse.log").wstring();
    std::ofstream(fs::path(path)) << "log";
    std::wstring edit;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Log file");
        Driver::Click(dlg, IDC_FILE_BROWSE);
        OpenFile(d, L"Browse", path);
        d.Settle();
        edit = EditText(dlg);
    });
    EXPECT_EQ(edit, path);
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"LogFile", std::u16string(path.begin(), path.end())}}));
}

TEST_F(FileEditors, ImportCopiesKeyFilesIntoTheAuthDirectory) {
    fs::create_directories(root / L"source");
    std::ofstream(root / L"auth" / L"existing_key") << "k";
    std::ofstream(root / L"source" / L"id_rsa") << "secret";
    host.authDirectory = (root / L"auth").u16string();
    Rows before, after;
    std::wstring chosen;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"SSH key file");
        before = ComboRows(dlg);
        for (int round = 0; round < 2; ++round) {
            Driver::Click(dlg, IDC_SSH_IMPORT);
            OpenFile(d, L"Select an SSH key file", (root / L"source" / L"id_rsa").wstring());
            d.Settle();
        }
        after = ComboRows(dlg);
        chosen = Driver::Text(GetDlgItem(dlg, IDC_VALUE_COMBO));
    });
    EXPECT_EQ(before, (Rows{L"existing_key"}));
    EXPECT_EQ(after, (Rows{L"existing_key", L"id_rsa", L"id_rsa (2)"}));
    EXPECT_EQ(chosen, L"id_rsa (2)");
    EXPECT_TRUE(fs::exists(root / L"auth" / L"id_rsa (2)"));
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"KeyFile", u"id_rsa (2)"}}));
}

TEST_F(GeneralRoute, LanguageDeleteAsksTheHostAndUpdatesTheList) {
    std::wstring question;
    Rows afterRefusal, after;
    LRESULT selection = -2;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Language (");
        Driver::Click(dlg, IDC_LANG_DELETE);
        question = d.Answer(dlg, IDCANCEL);  // nothing happens
        host.deleteResult = 5;                // the host refuses: nothing changes either
        Driver::Click(dlg, IDC_LANG_DELETE);
        d.Answer(dlg, IDOK);
        afterRefusal = ComboRows(dlg);
        host.deleteResult = 0;
        Driver::Click(dlg, IDC_LANG_DELETE);
        d.Answer(dlg, IDOK);
        after = ComboRows(dlg);
        selection = SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0);
    });
    EXPECT_EQ(question, L"Confirm Delete language|Delete language English?");
    std::vector<std::u16string> deletes;
    for (const HostWindow::Call& call : host.calls)
        if (call.code == 8439) deletes.push_back(call.text);
    EXPECT_EQ(deletes, (std::vector<std::u16string>{u"English", u"English"}));
    EXPECT_EQ(afterRefusal.size(), 3u);
    EXPECT_EQ(after, (Rows{L"German", L"French"}));
    EXPECT_EQ(selection, 0);
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"LanguageName", u"German"}}));
}

TEST_F(GeneralRoute, ConnectedSessionDisablesModuleAndConnect) {
    bool moduleEnabled = true, connectEnabled = true;
    Run(Request(u"Connected=\"0\"", u"Connected=\"1\""), [&](Driver&, HWND dlg) {
        moduleEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_MODULE_SELECT));
        connectEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_CONNECT));
    });
    EXPECT_FALSE(moduleEnabled);
    EXPECT_FALSE(connectEnabled);
}

TEST_F(GeneralRoute, TextsComeFromTheLanguageFolder) {
    const std::u16string langDir = toU16(QRL_SOURCE_DIR) + u"/samples/lang";
    Rows texts;
    Run(Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"deu\" LangDir=\"" + langDir + u"\""), [&](Driver& d, HWND dlg) {
        for (int id : {IDOK, IDCANCEL, IDC_CONNECT, IDC_MODULE_SELECT}) texts.push_back(Driver::Text(GetDlgItem(dlg, id)));
        for (const wchar_t* item : {L"Verbindung", L"Rechnername", L"Vermittlerart"}) texts.push_back(Label(dlg, item));
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForPopup(dlg);
        texts.push_back(Driver::Text(select));
        Driver::Click(select, IDCANCEL);
        d.WaitGone(select);
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    }, L"Konfiguriere  Telnet over TCP");
    EXPECT_EQ(texts, (Rows{L"&OK", L"&Abbrechen", L"&Verbinden", L"Kommunikation wechseln", L"Verbindung",
                           L"Rechnername (alpha.example)", L"Vermittlerart (None)", L"Modulauswahl"}));

    // A language without files empties the table again for the tests that follow.
    Run(Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"none\" LangDir=\"" + langDir + u"\""), [](Driver&, HWND) {});
}

}  // namespace
}  // namespace qrl::test
