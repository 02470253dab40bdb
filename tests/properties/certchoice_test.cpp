#include "properties/certchoice.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

// Stores and certificates as a test names them; remembers what was asked.
class FakeSource : public TCertificateSource {
public:
    std::vector<std::u16string> SystemStores() override { return stores; }
    std::vector<std::u16string> Certificates(TCertStoreType type, const std::u16string& store,
                                             const std::u16string& password) override {
        asked.push_back(std::to_string(static_cast<int>(type)) + ":" + std::string(store.begin(), store.end()) + ":" +
                        std::string(password.begin(), password.end()));
        return certificates;
    }
    std::vector<std::u16string> stores{u"CA", u"MY", u"My Other", u"Root"};
    std::vector<std::u16string> certificates;
    std::vector<std::string> asked;
};

TEST(CertChoice, StoresAreChosenAsAComboBoxSelectsByText) {
    FakeSource source;
    TSslCertificateProperty property;  // the system's store by default
    property.store = u"my";
    TCertDialogModel model(property, source);
    model.RefreshStores();
    EXPECT_EQ(model.storeSelection, 1);  // the first that begins so, case ignored
    EXPECT_EQ(model.storeName, u"MY");
    model.storeName = u"Trust";
    model.RefreshStores();
    EXPECT_EQ(model.storeSelection, 0);  // none: the first row, which storeName takes
    EXPECT_EQ(model.storeName, u"CA");
    model.ChooseStoreType(2);
    EXPECT_TRUE(model.stores.empty());  // a file type lists no stores
    EXPECT_EQ(source.asked.back(), "2::");
}

TEST(CertChoice, TheSubjectPicksTheLastEqualRowOrTheFirstRowReplacesIt) {
    FakeSource source;
    source.certificates = {u"CN=Alice, O=Works", u"O=No Common Name", u"CN=Alice, O=Works"};
    TSslCertificateProperty property;
    property.storeType = TCertStoreType::Pkcs12;
    property.store = u"c:\\keys.p12";
    property.storePassword = u"pw";
    property.subject = u"CN=Alice, O=Works";
    TCertDialogModel model(property, source);
    EXPECT_EQ(model.fileName, u"c:\\keys.p12");
    model.RefreshCertificates();
    EXPECT_EQ(source.asked.back(), "4:c:\\keys.p12:pw");
    EXPECT_EQ(model.certificateSelection, 2);
    EXPECT_EQ(model.choices[0].shortName, "Alice");
    EXPECT_EQ(model.choices[1].shortName, "O=No Common Name");  // no "CN=": the whole subject

    property.subject = u"CN=Gone";
    model.RefreshCertificates();
    EXPECT_EQ(model.certificateSelection, 0);
    EXPECT_EQ(property.subject, u"CN=Alice, O=Works");
    model.ChooseCertificate(-1);
    EXPECT_TRUE(property.subject.empty());

    source.certificates.clear();
    model.RefreshCertificates();
    EXPECT_EQ(model.certificateSelection, -1);
}

TEST(CertChoice, OkTakesTheControlsAndWantsASubjectUnlessTheTypeIsNone) {
    FakeSource source;
    TSslCertificateProperty property;
    TCertDialogModel model(property, source);
    EXPECT_FALSE(model.Accept(1, u"MY", u"ignored.pem", u"pw"));  // no subject: the user is asked
    EXPECT_EQ(property.store, u"MY");
    EXPECT_EQ(property.storePassword, u"pw");
    EXPECT_TRUE(model.Accept(0, u"MY", u"", u""));
    EXPECT_EQ(property.ToText(), u"");
    property.subject = u"CN=x";
    EXPECT_TRUE(model.Accept(3, u"MY", u"c.der", u""));
    EXPECT_EQ(property.ToText(), u"Type=DER|Store=c.der|Subject=CN=x|");
}

}  // namespace
}  // namespace qrl
