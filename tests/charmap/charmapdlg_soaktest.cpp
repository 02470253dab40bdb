// The character set table and its entry dialog, opened from the form and edited a few hundred times
// in one process (owner-drawn rows, a fetched map each run). Under Wine the list's tab stops are
// never freed (12 bytes a dialog, gone when the stops are not set); that is within the limit.
#include "charmap/charmap_rc.h"
#include "forms/forms_rc.h"
#include "forms/formsetup.h"
#include "forms/soak.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, CharacterSet) {
    ASSERT_TRUE(Product::Get().Loaded());
    HostWindow host;
    const std::u16string request =
        u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"HostCodes\" Type=\"charset\" descr=\"Host codes\"/>"
        u"<Element Name=\"LanguageName\" Type=\"stringset\" strings=\"English\"/></DTD><Data>"
        u"<Item Element=\"HostCodes\" Value=\"cp037\"/><Item Element=\"LanguageName\" Value=\"English\"/></Data>" +
        host.LinkElement() + u"</Config>";
    ExpectNoGrowth(200, [&](int) {
        host.exchangeReplies = {u"<charmap flags=\"0\"><map start=\"0\" length=\"100\"/></charmap>"};
        host.calls.clear();
        const RunResult r = RunOnElement(request, L"Host codes", [](Driver& d, HWND form) {
            Driver::Click(form, IDC_SPECIAL_EDIT);
            HWND table = d.WaitForDialog(L"Edit Character Set", 15000, 0);
            SendDlgItemMessageW(table, IDC_CHARSET_LIST, LB_SETCURSEL, 65, 0);
            Driver::Click(table, IDC_CHARSET_EDIT);
            HWND entry = d.WaitForPopup(table);
            Driver::Type(GetDlgItem(entry, IDC_ENTRY_HEX), L"42");
            d.Close(entry);
            d.Close(table);
            d.Close(form, IDCANCEL);  // the edit is dropped with the run
        }, 0);
        return r.code == 1;
    });
}

TEST(Soak, AddLanguage) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"LanguageName\" Type=\"stringset\" strings=\"English,German\" "
        u"descr=\"Language\"/></DTD><Data><Item Element=\"LanguageName\" Value=\"German\"/></Data></Config>";
    ExpectNoGrowth(200, [&](int) {
        const RunResult r = RunOnElement(request, L"Language (", [](Driver& d, HWND form) {
            Driver::Click(form, IDC_LANG_ADD);
            HWND add = d.WaitForDialog(L"Add New language", 15000, 0);
            Driver::Type(GetDlgItem(add, IDC_LANGUAGE_NAME), L"Welsh");
            d.Close(add);  // no link: the kernel's answer counts as done
        }, 0);
        return r.code == 0 && r.reply.find(u"Value=\"Welsh\"") != std::u16string::npos;
    });
}

}  // namespace
}  // namespace qrl::test
