// Printer setups as a user edits them: the default printer question of the built-in form. The value
// texts are checked natively; the "Printer" route with the platform's print dialog by its soak test.
#include "forms/forms_rc.h"
#include "forms/formsetup.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kCommsTitle = L"Configure  Telnet over TCP";
const std::u16string kSetup = u"HP LaserJet|LPT1:|winspool|0|HP LaserJet|A4|||";

RunResult RunCommsPrinter(const std::function<void(Driver&, HWND)>& script) {
    ForgetSelection(u"Comms");
    const std::u16string request = ReplaceFirst(SampleText("comms_request.xml"), u"<Item Element=\"Printer\" Value=\"\"/>",
                                                u"<Item Element=\"Printer\" Value=\"" + kSetup + u"\"/>");
    return RunOnElement(request, L"Printer", script, 50, kCommsTitle);
}

// Yes keeps the setup but the device, and follows the default printer; No changes nothing.
TEST(PrinterProperty, DefaultPrinterQuestion) {
    ASSERT_TRUE(Product::Get().Loaded());
    struct Case {
        int answer;
        std::wstring shown;
        std::u16string replyItem;  // empty: the value is unchanged and not in the reply
    };
    const Case cases[] = {
        {IDYES, L"Default printer", u"<Item Element=\"Printer\" Value=\"|LPT1:|winspool|1|HP LaserJet|A4|||\"/>"},
        {IDNO, L"HP LaserJet on LPT1:", u""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer);
        const RunResult r = RunCommsPrinter([&](Driver& d, HWND form) {
            Driver::Click(form, IDC_PRINTER_DEFAULT);
            EXPECT_EQ(d.Answer(form, c.answer), L"Quorl|Use default printer?");
            EXPECT_EQ(Driver::Text(GetDlgItem(form, IDC_PRINTER_TEXT)), c.shown);
        });
        EXPECT_EQ(r.code, 0);
        const bool inReply = r.reply.find(u"Element=\"Printer\"") != std::u16string::npos;
        if (c.replyItem.empty())
            EXPECT_FALSE(inReply) << utf16ToUtf8(r.reply);
        else
            EXPECT_NE(r.reply.find(c.replyItem), std::u16string::npos) << utf16ToUtf8(r.reply);
    }
}

}  // namespace
}  // namespace qrl::test
