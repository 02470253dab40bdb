// The character set editor and the language buttons as a user meets them in the built-in form: the
// kernel's map fetched over the link, entries edited, the changes sent back on OK, and a new
// language. The rows, the entry parsing and the name checks are checked natively.
#include "charmap/charmap_rc.h"
#include "forms/formsetup.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

using Rows = std::vector<std::wstring>;

std::u16string Request(const HostWindow& host, std::u16string_view language) {
    return u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"HostCodes\" Type=\"charset\" descr=\"Host codes\"/>"
           u"<Element Name=\"LanguageName\" Type=\"stringset\" strings=\"English,German\" descr=\"Language\"/></DTD>"
           u"<Data><Item Element=\"HostCodes\" Value=\"cp037\"/><Item Element=\"LanguageName\" Value=\"" +
           std::u16string(language) + u"\"/></Data>" + host.LinkElement() + u"</Config>";
}

// Three codes from 0x20, all at their defaults, in a reply longer than the module's first buffer.
const std::u16string kGetReply = u"<charmap flags=\"0\" note=\"" + std::u16string(3000, u'x') +
                                 u"\"><map start=\"20\" length=\"3\"/></charmap>";

Rows TableRows(HWND table) { return Driver::ListRows(table, IDC_CHARSET_LIST); }

class CharacterSets : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        ForgetSelection(u"Emul");
    }
    RunResult Run(std::u16string_view language, const std::wstring& element,
                  const std::function<void(Driver&, HWND)>& script) {
        return RunOnElement(Request(host, language), element, script);
    }
    HostWindow host;
};

TEST_F(CharacterSets, NoLanguageNoFetch) {
    Run(u"", L"Host codes", [&](Driver& d, HWND form) {
        Driver::Click(form, IDC_SPECIAL_EDIT);
        EXPECT_EQ(d.Answer(form, IDOK), L"Error|Could not edit character set\nNo language selected");
    });
    EXPECT_TRUE(host.Texts(8437).empty());
}

TEST_F(CharacterSets, AnEntryEditedIsKeptAcrossOpeningsAndSentOnOk) {
    host.exchangeReplies = {kGetReply, u"<charmap/>"};
    const Rows edited{L"\t20\t->\t0020 <SP>", L"*\t21\t->\t0041 A", L"\t22\t->\t0022 \""};
    const RunResult r = Run(u"English", L"Host codes", [&](Driver& d, HWND form) {
        Driver::Click(form, IDC_SPECIAL_EDIT);
        HWND table = d.WaitForDialog(L"Edit Character Set");
        EXPECT_EQ(Driver::Text(GetDlgItem(table, IDC_CHARSET_CAPTION)), L"cp037, English");
        EXPECT_EQ(TableRows(table), (Rows{L"\t20\t->\t0020 <SP>", L"\t21\t->\t0021 !", L"\t22\t->\t0022 \""}));
        SendDlgItemMessageW(table, IDC_CHARSET_LIST, LB_SETCURSEL, 1, 0);
        Driver::Click(table, IDC_CHARSET_EDIT);
        HWND entry = d.WaitForPopup(table);
        EXPECT_EQ(Driver::Text(GetDlgItem(entry, IDC_ENTRY_SOURCE)), L"21");
        Driver::Type(GetDlgItem(entry, IDC_ENTRY_HEX), L"1G");
        d.Settle();
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(entry, IDC_ENTRY_ERROR)));
        Driver::Type(GetDlgItem(entry, IDC_ENTRY_HEX), L"41 ");
        d.Settle();
        EXPECT_EQ(Driver::Text(GetDlgItem(entry, IDC_ENTRY_CHAR)), L"A");
        d.Close(entry);
        d.Settle();
        EXPECT_EQ(TableRows(table), edited);
        d.Close(table, IDCANCEL);  // a direct edit stays
        Driver::Click(form, IDC_SPECIAL_EDIT);
        table = d.WaitForDialog(L"Edit Character Set");
        EXPECT_EQ(TableRows(table), edited);
        d.Close(table);
    });
    // One get, asked again with the size the host needs, however often the map is opened; one put.
    const std::u16string get = u"<charmap op=\"get\" emname=\"\" mapname = \"cp037\" language=\"English\"/>";
    const std::u16string put = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<charmap op=\"put\" emname=\"\" "
                               u"mapname=\"cp037\" language=\"English\" flags=\"0\">\n  <map start=\"20\" length=\"3\">\n"
                               u"    <block idx=\"21\" map=\"41 \"/>\n  </map>\n</charmap>";
    EXPECT_EQ(host.Texts(8437), (std::vector<std::u16string>{get, get, put}));
    EXPECT_EQ(host.Texts(8438).size(), 1u);
    EXPECT_EQ(r.code, 0);
}

// A map by Unicode code edits host bytes: the character field can't be typed in, yet shows the byte's
// character, also as the byte changes.
TEST_F(CharacterSets, AHostByteShowsItsCharacter) {
    host.exchangeReplies = {u"<charmap flags=\"8\"><map start=\"41\" length=\"1\"/></charmap>"};
    RunEditor(Request(host, u"English"), L"Host codes", L"Edit Character Set", [&](Driver& d, HWND table) {
        Driver::Click(table, IDC_CHARSET_EDIT);
        HWND entry = d.WaitForPopup(table);
        EXPECT_EQ(Driver::Text(GetDlgItem(entry, IDC_ENTRY_HEX_LABEL)), L"EBDCID value");
        EXPECT_EQ(Driver::Text(GetDlgItem(entry, IDC_ENTRY_CHAR)), L"A");
        Driver::Type(GetDlgItem(entry, IDC_ENTRY_HEX), L"42");
        d.Settle();
        EXPECT_EQ(Driver::Text(GetDlgItem(entry, IDC_ENTRY_CHAR)), L"B");
        d.Close(entry, IDCANCEL);
        d.Close(table, IDCANCEL);
    });
}

TEST_F(CharacterSets, ANewLanguageIsCheckedAddedAndChosen) {
    const RunResult r = Run(u"German", L"Language", [&](Driver& d, HWND form) {
        Driver::Click(form, IDC_LANG_ADD);
        HWND add = d.WaitForDialog(L"Add New language");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(add, IDOK)));
        for (const auto& [name, message] : {std::pair{L"a[b", L"Error|There are invalid characters in the new language name!"},
                                            std::pair{L"German", L"Error|This language name is already in use!"}}) {
            Driver::Type(GetDlgItem(add, IDC_LANGUAGE_NAME), name);
            Driver::Click(add, IDOK);
            EXPECT_EQ(d.Answer(add, IDOK), message);
        }
        Driver::Type(GetDlgItem(add, IDC_LANGUAGE_NAME), L"german");  // case counts
        Driver::Choose(add, IDC_LANGUAGE_BASE, 1);
        d.Close(add);
        d.Settle();
        EXPECT_EQ(Driver::ListRows(form, IDC_VALUE_COMBO), (Rows{L"English", L"German", L"german"}));
    });
    EXPECT_EQ(host.Texts(8440), (std::vector<std::u16string>{u"german<English"}));
    EXPECT_EQ(Utf8(r.reply), ReplyText({{u"LanguageName", u"german"}}));
}

}  // namespace
}  // namespace qrl::test
