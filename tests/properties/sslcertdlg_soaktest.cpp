// SSL Certificate opened from the form a few hundred times in one process (the system's stores
// listed, the type changed, the dialog cancelled), and the Printer route.
#include "forms/forms_rc.h"
#include "forms/formsetup.h"
#include "forms/soak.h"
#include "properties/properties_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

TEST(Soak, SslCertificate) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request =
        u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"ClientCert\" Type=\"sslcertificate\" descr=\"Client\"/>"
        u"</DTD><Data><Item Element=\"ClientCert\" Value=\"Type=CertStore|Store=Root|\"/></Data></Config>";
    ExpectNoGrowth(200, [&](int) {
        const RunResult r = RunOnElement(request, L"Client", [](Driver& d, HWND form) {
            Driver::Click(form, IDC_SPECIAL_EDIT);
            HWND dlg = d.WaitForDialog(L"SSL Certificate", 15000, 0);
            Driver::Choose(dlg, IDC_SSL_STORE_TYPE, 2);
            d.Close(dlg, IDCANCEL);
            d.Close(form, IDCANCEL);
        }, 0);
        return r.code == 1;
    });
}

// The Printer route on a stored setup: the platform's print setup (here its notice that no printer
// is installed), and so the result of a cancelled dialog.
TEST(Soak, PrinterRoute) {
    ASSERT_TRUE(Product::Get().Loaded());
    const std::u16string request = u"<Config ModuleType=\"Printer\"><DTD><Element Name=\"Printer\" Type=\"printer\"/>"
                                   u"</DTD><Data><Item Element=\"Printer\" Value=\"HP LaserJet|LPT1:|winspool|0|"
                                   u"HP LaserJet|A4|||\"/></Data></Config>";
    ExpectNoGrowth(200, [&](int) {
        return RunRequest(request, L"Print", [](Driver& d, HWND box) { d.Close(box); }, 0).code == 2;
    });
}

}  // namespace
}  // namespace qrl::test
