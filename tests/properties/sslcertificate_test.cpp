#include "properties/sslcertificate.h"

#include "properties/certchoice.h"

#include <gtest/gtest.h>

using namespace qrl;

using T = TCertStoreType;

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

}  // namespace

TEST(SslCertificate, WritesOnlyWhatIsSet) {
    struct Case { T type; std::u16string_view store, password, subject, text; };
    const Case cases[] = {
        {T::None, u"MY", u"", u"CN=x", u""},
        {T::Pem, u"", u"", u"", u"Type=PEM|"},
        {T::System, u"MY", u"a", u"CN=Alice, O=Org",
         u"Type=CertStore|Store=MY|StorePassword=H#q!?h|Subject=CN=Alice, O=Org|"},
        {T::Pkcs12, u"", u"a", u"", u"Type=P12|StorePassword=H#q!?h|"},  // the password does not depend on the store
    };
    for (const Case& c : cases) {
        TSslCertificateProperty p;
        p.storeType = c.type;
        p.store = c.store;
        p.storePassword = c.password;
        p.subject = c.subject;
        EXPECT_EQ(p.ToText(), c.text);
    }
}

// Each text is read into the same property; missing keys leave their fields empty.
TEST(SslCertificate, ReadsKeysInAnyOrder) {
    struct Case { std::u16string_view text; T type; std::u16string_view store, password, subject; };
    const Case cases[] = {
        // A password that is not scrambled is used as it stands.
        {u"Subject=CN=Bob|Store=C:\\b.pfx|Type=P12|StorePassword=plain|", T::Pkcs12, u"C:\\b.pfx", u"plain", u"CN=Bob"},
        {u"Type=pem|Bogus|Store|=x|", T::None, u"", u"", u""},  // an unknown type is none
        // The first field of a key counts, the last field may lack its separator, and nothing escapes "|".
        {u"Type=DER|Store=a|Store=b|Subject=CN=x|y", T::Der, u"a", u"", u"CN=x"},
        {u"Type=DER|Subject=CN=x=y", T::Der, u"", u"", u"CN=x=y"},
    };
    TSslCertificateProperty p;
    for (const Case& c : cases) {
        p.Parse(c.text);
        EXPECT_EQ(p.storeType, c.type);
        EXPECT_EQ(p.store + u"|" + p.storePassword + u"|" + p.subject,
                  std::u16string(c.store) + u"|" + std::u16string(c.password) + u"|" + std::u16string(c.subject));
    }
}

TEST(SslCertificate, CanonicalTextsRoundTrip) {
    TSslCertificateProperty p;
    p.storeType = TCertStoreType::Pem;
    p.store = u"/home/u/client.pem";
    p.storePassword = u"s3cr\u00e9t with blanks and = and | signs";
    p.subject = u"E=u@example.org, CN=Client, O=Example";
    const std::u16string text = p.ToText();
    TSslCertificateProperty read;
    read.Parse(text);
    EXPECT_EQ(read.storePassword, p.storePassword);
    EXPECT_EQ(read.ToText(), text);
    EXPECT_EQ(text.find(u"s3cr"), std::u16string::npos);
}

TEST(SslCertificate, PasswordScrambling) {
    EXPECT_EQ(ScramblePassword(u""), u"");
    EXPECT_EQ(ScramblePassword(u"a"), u"H#q!?h");  // pins the key table: stored passwords must stay readable
    const std::u16string s = ScramblePassword(u"password");
    EXPECT_EQ(s.size(), 2u * 8 + 4);
    EXPECT_EQ(UnscramblePassword(s), u"password");

    // A password longer than the key table wraps around it.
    const std::u16string longPassword(150, u'x');
    EXPECT_EQ(UnscramblePassword(ScramblePassword(longPassword)), longPassword);

    // Whatever is not well formed is a clear password: too short, or a check, marker or body
    // character changed (the check no longer matches the body).
    EXPECT_EQ(UnscramblePassword(u"abc"), u"abc");
    for (const std::size_t at : {0u, 3u, 5u}) {
        std::u16string bad = s;
        bad[at] = static_cast<char16_t>(bad[at] + 1);
        EXPECT_EQ(UnscramblePassword(bad), bad) << at;
    }
    EXPECT_EQ(UnscramblePassword(u"!!q!"), u"");  // well formed, empty body

    // Narrow conversion: a character beyond 255 becomes '?', a zero character ends the text.
    EXPECT_EQ(UnscramblePassword(ScramblePassword(u"a\u20acb")), u"a?b");
    EXPECT_EQ(UnscramblePassword(ScramblePassword(std::u16string{u"ab\0cd", 5})), u"ab");
    EXPECT_EQ(ScramblePassword(std::u16string{u"\0x", 2}), u"");
}

TEST(SslCertificate, ShortTextIsTheCommonName) {
    TSslCertificateProperty p;
    p.subject = u"O=Org, CN=Last";
    EXPECT_EQ(p.ShortText(), u"Last");
    p.subject = u"cn=lower";
    EXPECT_EQ(p.ShortText(), u"cn=lower");  // "CN=" is found as written
    p.subject.clear();
    EXPECT_EQ(p.ShortText(), u"");
    EXPECT_EQ(SslShortName("CN=,x"), "");
}

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
