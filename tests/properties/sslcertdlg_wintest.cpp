// SSL Certificate as a user meets it from the form: a test certificate put into the current user's
// "My" store and into a PEM file, chosen, and the value in the reply compared exactly. The
// property's text, the password's scrambling and the choice rules are checked natively.
#include "forms/formsetup.h"
#include "properties/properties_rc.h"
#include "text/textutil.h"
#include "properties/sslcertificate.h"

#include <windows.h>
#include <wincrypt.h>

#include <gtest/gtest.h>


namespace qrl::test {
namespace {

// The sample certificate, self-signed for the tests (valid for a hundred years).
const std::u16string kPemPath = toU16(QRL_SOURCE_DIR "/samples/client_certificate.pem");
const std::u16string kSubject = u"CN=Quorl Test Client, O=Example Works";

std::string Der() {
    const std::string pem = Utf8(SampleText("client_certificate.pem"));
    DWORD size = 0;
    CryptStringToBinaryA(pem.c_str(), 0, CRYPT_STRING_BASE64HEADER, nullptr, &size, nullptr, nullptr);
    std::string der(size, '\0');
    CryptStringToBinaryA(pem.c_str(), 0, CRYPT_STRING_BASE64HEADER, reinterpret_cast<BYTE*>(der.data()), &size, nullptr,
                         nullptr);
    return der;
}

class SslCertificate : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Product::Get().Loaded());
        ForgetSelection(u"Emul");
        my_ = CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_CURRENT_USER, L"MY");
        ASSERT_NE(my_, nullptr);
        const std::string der = Der();
        ASSERT_TRUE(CertAddEncodedCertificateToStore(my_, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(der.data()),
                                                     static_cast<DWORD>(der.size()), CERT_STORE_ADD_REPLACE_EXISTING,
                                                     &added_));
        ASSERT_TRUE(CertControlStore(my_, 0, CERT_STORE_CTRL_COMMIT, nullptr));  // seen by other handles
    }
    void TearDown() override {
        if (added_) CertDeleteCertificateFromStore(added_);  // frees the context too
        if (my_) CertCloseStore(my_, 0);
    }
    // Opens the dialog from the form on a certificate element holding `value`, lets `script`
    // work it and accepts the form.
    RunResult Run(const std::u16string& value, const std::function<void(Driver&, HWND)>& script) {
        const std::u16string request =
            u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"ClientCert\" Type=\"sslcertificate\" "
            u"descr=\"Client certificate\"/></DTD><Data><Item Element=\"ClientCert\" Value=\"" + value +
            u"\"/></Data></Config>";
        return RunEditor(request, L"Client certificate", L"SSL Certificate", script);
    }
    std::string Reply(const std::u16string& value) const { return ReplyText({{u"ClientCert", value}}); }

    HCERTSTORE my_ = nullptr;
    PCCERT_CONTEXT added_ = nullptr;
};

TEST_F(SslCertificate, TheSystemStoresCertificateIsChosenByItsShortName) {
    std::wstring store;
    const RunResult r = Run(u"Type=CertStore|Store=my|", [&](Driver&, HWND dlg) {
        store = Driver::Text(GetDlgItem(dlg, IDC_SSL_STORE));  // the first beginning "my": checked natively
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_SSL_CERTIFICATE)), L"Quorl Test Client");
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(dlg, IDC_SSL_FILE)));
        Driver::Click(dlg, IDOK);
    });
    EXPECT_EQ(Utf8(r.reply), Reply(u"Type=CertStore|Store=" + std::u16string(store.begin(), store.end()) + u"|Subject=" +
                                   kSubject + u"|"));
}

TEST_F(SslCertificate, APemFileWithAPassword) {
    const RunResult pem = Run(u"Type=PEM|Store=" + kPemPath + u"|", [](Driver&, HWND dlg) {
        Driver::Type(GetDlgItem(dlg, IDC_SSL_PASSWORD), L"s3cret");
        Driver::Click(dlg, IDOK);
    });
    EXPECT_EQ(Utf8(pem.reply), Reply(u"Type=PEM|Store=" + kPemPath + u"|StorePassword=" + ScramblePassword(u"s3cret") +
                                     u"|Subject=" + kSubject + u"|"));
}

TEST_F(SslCertificate, NoCertificateAsksBeforeItIsAccepted) {
    const RunResult r = Run(u"Type=DER|Store=" + kPemPath + u".missing|", [&](Driver& d, HWND dlg) {
        EXPECT_EQ(SendDlgItemMessageW(dlg, IDC_SSL_CERTIFICATE, CB_GETCOUNT, 0, 0), 0);
        Driver::Click(dlg, IDOK);
        EXPECT_EQ(d.Answer(dlg, IDCANCEL), L"Quorl4|No certificate has been selected. Are you sure?");  // it stays
        Driver::Click(dlg, IDOK);
        Driver::Click(d.WaitForPopup(dlg), IDOK);
    });
    EXPECT_EQ(Utf8(r.reply), ReplyText({}, u"  <Data/>\n"));  // accepted as it came: nothing changed
}

}  // namespace
}  // namespace qrl::test
