#include "properties/sslcertificate.h"

#include <array>

#include "text/textutil.h"

namespace qrl {

namespace {

constexpr std::u16string_view kTypeKey = u"Type";
constexpr std::u16string_view kStoreKey = u"Store";
constexpr std::u16string_view kPasswordKey = u"StorePassword";
constexpr std::u16string_view kSubjectKey = u"Subject";

struct StoreTypeName {
    TCertStoreType type;
    std::u16string_view text;
};
constexpr std::array<StoreTypeName, 4> kStoreTypeNames{{
    {TCertStoreType::System, u"CertStore"},
    {TCertStoreType::Pem, u"PEM"},
    {TCertStoreType::Der, u"DER"},
    {TCertStoreType::Pkcs12, u"P12"},
}};

// Added to each password byte; changing it makes every stored password unreadable.
constexpr std::array<uint8_t, 60> kScrambleKey{{
    246, 68,  59,  173, 207, 129, 221, 91,  105, 169, 168, 85,  145, 98,  217,
    157, 246, 42,  38,  131, 62,  181, 26,  107, 255, 18,  128, 120, 166, 170,
    183, 192, 171, 35,  139, 82,  212, 103, 22,  92,  212, 149, 150, 156, 161,
    113, 124, 143, 10,  41,  104, 17,  59,  158, 220, 46,  37,  6,   7,   10,
}};

constexpr char16_t kLowBase = 0x38;
constexpr char16_t kHighBase = 0x63;
constexpr std::u16string_view kMarker = u"q!";
constexpr std::size_t kHeader = 4;  // check text and marker

// Two characters over the 16-bit sum of the body, modulo 65536.
std::u16string CheckText(std::u16string_view body) {
    uint16_t sum = 0;
    for (char16_t c : body) sum = static_cast<uint16_t>(sum + c);
    return {static_cast<char16_t>((sum & 63u) + 33u), static_cast<char16_t>(((sum >> 6) & 63u) + 33u)};
}

// The value of the first field whose name is `key`, compared exactly; empty if there is none.
std::u16string_view FindKey(const std::vector<std::u16string_view>& fields, std::u16string_view key) {
    for (std::u16string_view field : fields) {
        const std::size_t eq = field.find(u'=');
        if (eq != std::u16string_view::npos && field.substr(0, eq) == key) return field.substr(eq + 1);
    }
    return {};
}

std::u16string_view StoreTypeText(TCertStoreType type) {
    for (const StoreTypeName& n : kStoreTypeNames)
        if (n.type == type) return n.text;
    return {};
}

void AppendField(std::u16string& out, std::u16string_view key, std::u16string_view value, char16_t sep) {
    out += key;
    out += u'=';
    out += value;
    out += sep;
}

}  // namespace

std::u16string ScramblePassword(std::u16string_view clear) {
    // The narrow conversion works on a C string and so ends at the first zero character.
    const std::string bytes = utf16ToLatin1(clear.substr(0, clear.find(u'\0')));
    if (bytes.empty()) return {};
    std::u16string body;
    body.reserve(bytes.size() * 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto c = static_cast<uint8_t>(static_cast<uint8_t>(bytes[i]) + kScrambleKey[i % kScrambleKey.size()]);
        body += static_cast<char16_t>((c & 15u) + kLowBase);
        body += static_cast<char16_t>((c >> 4) + kHighBase);
    }
    std::u16string out = CheckText(body);
    out += kMarker;
    out += body;
    return out;
}

std::u16string UnscramblePassword(std::u16string_view text) {
    if (text.size() < kHeader) return std::u16string{text};
    const std::u16string_view body = text.substr(kHeader);
    if (text.substr(0, 2) != CheckText(body) || text.substr(2, 2) != kMarker) return std::u16string{text};
    std::string bytes;
    bytes.reserve(body.size() / 2);
    // A lone last character cannot make a byte and is dropped.
    for (std::size_t i = 0; i + 1 < body.size(); i += 2) {
        // The high part needs only "- 3": 0x60 times 16 vanishes in eight bits.
        const auto c = static_cast<uint8_t>((static_cast<unsigned>(body[i]) - kLowBase) |
                                            ((static_cast<unsigned>(body[i + 1]) - 3u) * 16u));
        const auto b = static_cast<uint8_t>(c - kScrambleKey[(i / 2) % kScrambleKey.size()]);
        if (b == 0) break;  // the narrow text ended here, as a C string does
        bytes += static_cast<char>(b);
    }
    return latin1ToUtf16(bytes);
}

std::string SslShortName(std::string_view subject) {
    const std::size_t cn = subject.find("CN=");
    if (cn == std::string_view::npos) return std::string{subject};
    const std::string_view rest = subject.substr(cn + 3);
    return std::string{rest.substr(0, rest.find(','))};
}

int LibraryStoreType(TCertStoreType type) {
    switch (type) {
        case TCertStoreType::Pem: return 6;
        case TCertStoreType::Der: return 8;
        case TCertStoreType::Pkcs12: return 2;
        default: return 0;
    }
}

void TSslCertificateProperty::Parse(std::u16string_view text) {
    const std::vector<std::u16string_view> fields = SplitFields(text, separator);
    const std::u16string_view typeText = FindKey(fields, kTypeKey);
    storeType = TCertStoreType::None;
    for (const StoreTypeName& n : kStoreTypeNames)
        if (n.text == typeText) storeType = n.type;
    store = FindKey(fields, kStoreKey);
    storePassword = UnscramblePassword(FindKey(fields, kPasswordKey));
    subject = FindKey(fields, kSubjectKey);
}

std::u16string TSslCertificateProperty::ToText() const {
    std::u16string out;
    const std::u16string_view typeText = StoreTypeText(storeType);
    if (typeText.empty()) return out;  // no store: the empty text
    AppendField(out, kTypeKey, typeText, separator);
    if (!store.empty()) AppendField(out, kStoreKey, store, separator);
    // Tested on the scrambled form: a password that narrows to nothing is no password.
    const std::u16string scrambled = ScramblePassword(storePassword);
    if (!scrambled.empty()) AppendField(out, kPasswordKey, scrambled, separator);
    if (!subject.empty()) AppendField(out, kSubjectKey, subject, separator);
    return out;
}

std::u16string TSslCertificateProperty::ShortText() const {
    return latin1ToUtf16(SslShortName(utf16ToLatin1(subject)));
}

}  // namespace qrl
