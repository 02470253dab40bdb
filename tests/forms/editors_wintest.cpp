// The value editors of the built-in form, each driven through the DLL like a user: the common
// dialogs (colour, font, open file), the key import into the auth directory, the language delete
// over the host link, and the editors' states.
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "forms/samplemodel.h"
#include "properties/font.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qrl::test {
namespace {

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";
const std::u16string kHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n";
const std::u16string kTail = u"  </Data>\n</Config>";

std::string Utf8(const std::u16string& text) { return utf16ToUtf8(text); }
std::u16string Item(const std::u16string& name, const std::u16string& value) {
    return u"    <Item Element=\"" + name + u"\" Value=\"" + value + u"\"/>\n";
}

class Editors : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        ForgetSelection(u"Comms");
    }
    std::u16string Request(std::u16string_view from = {}, std::u16string_view to = {}) {
        std::u16string text = ReplaceFirst(SampleText("comms_request.xml"),
                                           u"<Link type=\"HWND\" value=\"0\" msgid=\"0\"/>", host.LinkElement());
        if (!from.empty()) text = ReplaceFirst(text, from, to);
        return text;
    }
    RunResult Run(const std::u16string& request, const std::function<void(Driver&, HWND)>& script) {
        RunResult result;
        const auto failures = RunDriven([&] { result = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
            HWND dlg = d.WaitForDialog(kCommsTitle);
            script(d, dlg);
            if (IsWindow(dlg)) {
                Driver::Click(dlg, IDOK);
                d.WaitGone(dlg);
            }
        });
        for (const std::string& f : failures) ADD_FAILURE() << f;
        return result;
    }
    static void Select(Driver& d, HWND dlg, const std::wstring& prefix) {
        HWND tree = GetDlgItem(dlg, IDC_TREE);
        Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, prefix));
        d.Settle();
    }
    static std::wstring Label(HWND dlg, const std::wstring& prefix) {
        HWND tree = GetDlgItem(dlg, IDC_TREE);
        return Driver::TreeItemText(tree, Driver::FindTreeItem(tree, prefix));
    }
    static bool Shown(HWND dlg, int id) { return IsWindowVisible(GetDlgItem(dlg, id)) != FALSE; }
    static HWND ChildOfClass(HWND parent, const wchar_t* className) {
        return FindWindowExW(parent, nullptr, className, nullptr);
    }
    // Fills the file name of an open-file dialog and accepts it.
    static void OpenFile(Driver& d, HWND owner, const std::wstring& title, const std::wstring& path) {
        HWND open = d.WaitForDialog(title);
        HWND name = GetDlgItem(open, 0x480);  // edt1: the file name
        if (!name) {
            // cmb13: the name as a ComboBoxEx, whose edit sits inside its combo box.
            HWND comboEx = GetDlgItem(open, 0x47C);
            HWND combo = comboEx ? ChildOfClass(comboEx, L"ComboBox") : nullptr;
            name = combo ? ChildOfClass(combo, L"Edit") : nullptr;
            if (!name && comboEx) name = ChildOfClass(comboEx, L"Edit");
        }
        if (!name) {
            std::string children;
            for (HWND c = GetWindow(open, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                wchar_t cls[64] = {};
                GetClassNameW(c, cls, 64);
                children += " " + std::to_string(GetDlgCtrlID(c)) + ":" + utf16ToUtf8(std::u16string(cls, cls + wcslen(cls)));
            }
            throw DriverFailure{"open dialog without a name field:" + children};
        }
        SetWindowTextW(name, path.c_str());
        Driver::Click(open, IDOK);
        d.WaitGone(open);
        (void)owner;
    }

    HostWindow host;
};

TEST_F(Editors, EditorStatesByType) {
    struct Seen {
        bool passwordShown = false, editEnabledReadOnly = true, dirBrowse = true, assist = true;
        bool checkOnly = false, sampleShown = false, specialShown = false, fontShown = false;
        wchar_t passwordChar = 0;
        std::wstring charsetLabel, fontText, printerText, unimplemented;
        LRESULT char8Count = 0, char8Selection = 0;
    } seen;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Password");
        seen.passwordShown = Shown(dlg, IDC_VALUE_EDIT);
        seen.passwordChar = static_cast<wchar_t>(SendDlgItemMessageW(dlg, IDC_VALUE_EDIT, EM_GETPASSWORDCHAR, 0, 0));
        Select(d, dlg, L"Read-only note");
        seen.editEnabledReadOnly = IsWindowEnabled(GetDlgItem(dlg, IDC_VALUE_EDIT));
        Select(d, dlg, L"Download folder");
        seen.dirBrowse = Shown(dlg, IDC_DIR_BROWSE);
        Select(d, dlg, L"Login script");
        seen.assist = Shown(dlg, IDC_MACRO_ASSIST);  // macro assist is off without an ini file
        Select(d, dlg, L"Send keep-alives");
        seen.checkOnly = Shown(dlg, IDC_VALUE_CHECK) && !Shown(dlg, IDC_VALUE_LABEL) && !Shown(dlg, IDC_VALUE_EDIT);
        Select(d, dlg, L"Cursor colour");
        seen.sampleShown = Shown(dlg, IDC_COLOUR_SAMPLE) && Shown(dlg, IDC_COLOUR_EDIT) && !Shown(dlg, IDC_VALUE_CHECK);
        Select(d, dlg, L"Screen font");
        seen.fontShown = Shown(dlg, IDC_FONT_TEXT) && Shown(dlg, IDC_FONT_EDIT);
        seen.fontText = Driver::Text(GetDlgItem(dlg, IDC_FONT_TEXT));
        Select(d, dlg, L"Printer");
        seen.printerText = Driver::Text(GetDlgItem(dlg, IDC_PRINTER_TEXT));
        Select(d, dlg, L"Host code page");  // the charset element's description
        seen.charsetLabel = Driver::Text(GetDlgItem(dlg, IDC_VALUE_LABEL));
        seen.specialShown = Shown(dlg, IDC_SPECIAL_EDIT) && !Shown(dlg, IDC_PRINTER_TEXT);
        Select(d, dlg, L"Escape character");
        seen.char8Count = SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCOUNT, 0, 0);
        seen.char8Selection = SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0);
        Driver::Choose(dlg, IDC_VALUE_COMBO, 65);
        Select(d, dlg, L"Retries");
        Driver::Choose(dlg, IDC_VALUE_COMBO, 2);
    });
    EXPECT_TRUE(seen.passwordShown);
    EXPECT_EQ(seen.passwordChar, L'*');
    EXPECT_FALSE(seen.editEnabledReadOnly);
    EXPECT_FALSE(seen.dirBrowse);
    EXPECT_FALSE(seen.assist);
    EXPECT_TRUE(seen.checkOnly);
    EXPECT_TRUE(seen.sampleShown);
    EXPECT_TRUE(seen.fontShown);
    EXPECT_EQ(seen.fontText, L"Courier New");
    EXPECT_EQ(seen.printerText, L"Default printer");
    EXPECT_EQ(seen.charsetLabel, L"Host code page character set");
    EXPECT_TRUE(seen.specialShown);
    EXPECT_EQ(seen.char8Count, 128);
    EXPECT_EQ(seen.char8Selection, 27);
    // A hidden group's element (Retries) is edited like any other.
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + Item(u"Retries", u"2") + Item(u"EscapeChar", u"65") + kTail));
}

TEST_F(Editors, ColourChooserWritesSixHexDigits) {
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
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + Item(u"Colour", u"0080ff") + kTail));
}

TEST_F(Editors, FontChooserWritesTheFontStream) {
    std::wstring shown;
    std::wstring label;
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
    EXPECT_EQ(r.code, 0);
    // What the dialog returns depends on the fonts present; the value must be a whole stream whose
    // face name is the one shown.
    const std::u16string marker = u"Element=\"BaseFont\" Value=\"";
    const std::size_t at = r.reply.find(marker);
    ASSERT_NE(at, std::u16string::npos) << Utf8(r.reply);
    const std::size_t start = at + marker.size();
    std::u16string value = r.reply.substr(start, r.reply.find(u'"', start) - start);
    for (std::size_t q; (q = value.find(u"&apos;")) != std::u16string::npos;) value.replace(q, 6, u"'");
    TFontDescription parsed;
    EXPECT_EQ(ParseFont(value, parsed), TFontDescription::kFieldCount);
    EXPECT_EQ(shown, std::wstring(parsed.faceName.begin(), parsed.faceName.end()));
    EXPECT_EQ(label, L"Screen font (" + shown + L")");
}

TEST_F(Editors, BrowseTakesTheChosenPath) {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    const std::wstring path = std::wstring(temp) + L"qrl_browse_test.log";
    { std::ofstream(std::filesystem::path(path)) << "log"; }
    std::wstring edit;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Log file");
        EXPECT_TRUE(Shown(dlg, IDC_FILE_BROWSE));
        Driver::Click(dlg, IDC_FILE_BROWSE);
        OpenFile(d, dlg, L"Browse", path);
        d.Settle();
        edit = Driver::Text(GetDlgItem(dlg, IDC_VALUE_EDIT));
    });
    SetCurrentDirectoryW(temp);
    std::error_code ignored;
    std::filesystem::remove(std::filesystem::path(path), ignored);
    EXPECT_EQ(edit, path);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + Item(u"LogFile", std::u16string(path.begin(), path.end())) + kTail));
}

TEST_F(Editors, ImportCopiesKeyFilesIntoTheAuthDirectory) {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    const std::filesystem::path root = std::filesystem::path(temp) / L"qrl_import_test";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / L"source");
    std::filesystem::create_directories(root / L"auth");
    { std::ofstream(root / L"auth" / L"existing_key") << "k"; }
    { std::ofstream(root / L"source" / L"id_rsa") << "secret"; }
    host.authDirectory = (root / L"auth").u16string();
    const std::wstring source = (root / L"source" / L"id_rsa").wstring();

    std::vector<std::wstring> rows;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"SSH key file");
        EXPECT_TRUE(Shown(dlg, IDC_SSH_IMPORT));
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCOUNT, 0, 0), 1);
        for (int round = 0; round < 2; ++round) {
            Driver::Click(dlg, IDC_SSH_IMPORT);
            OpenFile(d, dlg, L"Select an SSH key file", source);
            d.Settle();
        }
        HWND combo = GetDlgItem(dlg, IDC_VALUE_COMBO);
        const int count = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            wchar_t text[256] = {};
            SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            rows.push_back(text);
        }
        EXPECT_EQ(Driver::Text(combo), L"id_rsa (2)");
    });
    EXPECT_EQ(rows, (std::vector<std::wstring>{L"existing_key", L"id_rsa", L"id_rsa (2)"}));
    EXPECT_TRUE(std::filesystem::exists(root / L"auth" / L"id_rsa (2)"));
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + Item(u"KeyFile", u"id_rsa (2)") + kTail));
    // The open dialog (no OFN_NOCHANGEDIR) made the source folder the current one.
    SetCurrentDirectoryW(temp);
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

TEST_F(Editors, LanguageDeleteAsksTheHostAndUpdatesTheList) {
    std::wstring question, title;
    std::vector<std::wstring> rowsAfter;
    LRESULT selectionAfter = -2;
    const RunResult r = Run(Request(), [&](Driver& d, HWND dlg) {
        Select(d, dlg, L"Language (");
        EXPECT_TRUE(Shown(dlg, IDC_LANG_ADD));
        EXPECT_TRUE(Shown(dlg, IDC_LANG_DELETE));
        // Cancel in the confirmation: nothing happens.
        Driver::Click(dlg, IDC_LANG_DELETE);
        HWND box = d.WaitForPopup(dlg);
        title = Driver::Text(box);
        question = Driver::MessageText(box);
        Driver::Click(box, IDCANCEL);
        d.WaitGone(box);
        // The host refuses: nothing changes either.
        host.deleteResult = 5;
        Driver::Click(dlg, IDC_LANG_DELETE);
        box = d.WaitForPopup(dlg);
        Driver::Click(box, IDOK);
        d.WaitGone(box);
        d.Settle();
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_VALUE_COMBO, CB_GETCOUNT, 0, 0), 3);
        host.deleteResult = 0;
        Driver::Click(dlg, IDC_LANG_DELETE);
        box = d.WaitForPopup(dlg);
        Driver::Click(box, IDOK);
        d.WaitGone(box);
        d.Settle();
        HWND combo = GetDlgItem(dlg, IDC_VALUE_COMBO);
        for (int i = 0; i < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++i) {
            wchar_t text[256] = {};
            SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            rowsAfter.push_back(text);
        }
        selectionAfter = SendMessageW(combo, CB_GETCURSEL, 0, 0);
    });
    EXPECT_EQ(title, L"Confirm Delete language");
    EXPECT_EQ(question, L"Delete language English?");
    int deletes = 0;
    for (const HostWindow::Call& call : host.calls) {
        if (call.code != 8439) continue;
        ++deletes;
        EXPECT_EQ(call.text, u"English");
    }
    EXPECT_EQ(deletes, 2);
    EXPECT_EQ(rowsAfter, (std::vector<std::wstring>{L"German", L"French"}));
    EXPECT_EQ(selectionAfter, 0);
    EXPECT_EQ(Utf8(r.reply), Utf8(kHead + Item(u"LanguageName", u"German") + kTail));
}

TEST_F(Editors, ConnectedSessionDisablesModuleAndConnect) {
    bool moduleEnabled = true, connectEnabled = true;
    Run(Request(u"Connected=\"0\"", u"Connected=\"1\""), [&](Driver&, HWND dlg) {
        moduleEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_MODULE_SELECT));
        connectEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_CONNECT));
    });
    EXPECT_FALSE(moduleEnabled);
    EXPECT_FALSE(connectEnabled);
}

TEST_F(Editors, TextsComeFromTheLanguageFolder) {
    const std::u16string langDir = toU16(QRL_SOURCE_DIR) + u"/samples/lang";
    std::u16string request = Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"deu\" LangDir=\"" + langDir + u"\"");
    std::wstring ok, cancel, connect, change, group, host, proxy, selectTitle;
    RunResult r;
    const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
        HWND dlg = d.WaitForDialog(L"Konfiguriere  Telnet over TCP");
        ok = Driver::Text(GetDlgItem(dlg, IDOK));
        cancel = Driver::Text(GetDlgItem(dlg, IDCANCEL));
        connect = Driver::Text(GetDlgItem(dlg, IDC_CONNECT));
        change = Driver::Text(GetDlgItem(dlg, IDC_MODULE_SELECT));
        HWND tree = GetDlgItem(dlg, IDC_TREE);
        group = Driver::TreeItemText(tree, Driver::FindTreeItem(tree, L"Verbindung"));
        host = Driver::TreeItemText(tree, Driver::FindTreeItem(tree, L"Rechnername"));
        proxy = Driver::TreeItemText(tree, Driver::FindTreeItem(tree, L"Vermittlerart"));
        Driver::Click(dlg, IDC_MODULE_SELECT);
        HWND select = d.WaitForPopup(dlg);
        selectTitle = Driver::Text(select);
        Driver::Click(select, IDCANCEL);
        d.WaitGone(select);
        Driver::Click(dlg, IDCANCEL);
        d.WaitGone(dlg);
    });
    for (const std::string& f : failures) ADD_FAILURE() << f;
    EXPECT_EQ(ok, L"&OK");
    EXPECT_EQ(cancel, L"&Abbrechen");
    EXPECT_EQ(connect, L"&Verbinden");
    EXPECT_EQ(change, L"Kommunikation wechseln");
    EXPECT_EQ(group, L"Verbindung");
    EXPECT_EQ(host, L"Rechnername (alpha.example)");
    EXPECT_EQ(proxy, L"Vermittlerart (None)");
    EXPECT_EQ(selectTitle, L"Modulauswahl");

    // A language without files empties the table again for the tests that follow.
    request = Request(u"LangId=\"\" LangDir=\"\"", u"LangId=\"none\" LangDir=\"" + langDir + u"\"");
    Run(request, [](Driver&, HWND) {});
}

}  // namespace
}  // namespace qrl::test
