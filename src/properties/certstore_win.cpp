#include "properties/certstore_win.h"

#include <windows.h>
#include <wincrypt.h>

#include "platform/platform.h"

namespace qrl {

namespace {

// No certificate file is this big; a bigger one is not read.
constexpr std::size_t kMaxCertificateFile = 16u << 20;

const wchar_t* W(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

// A store handle closed at the end of the scope.
class TStore {
public:
    explicit TStore(HCERTSTORE store) : store_(store) {}
    ~TStore() {
        if (store_) CertCloseStore(store_, 0);
    }
    TStore(const TStore&) = delete;
    TStore& operator=(const TStore&) = delete;
    HCERTSTORE get() const { return store_; }

private:
    HCERTSTORE store_;
};

std::u16string SubjectOf(PCCERT_CONTEXT certificate) {
    CERT_NAME_BLOB& name = certificate->pCertInfo->Subject;
    const DWORD length = CertNameToStrW(X509_ASN_ENCODING, &name, CERT_X500_NAME_STR, nullptr, 0);
    if (length <= 1) return {};
    std::wstring text(length, L'\0');
    CertNameToStrW(X509_ASN_ENCODING, &name, CERT_X500_NAME_STR, text.data(), length);
    text.resize(length - 1);
    return std::u16string(text.begin(), text.end());
}

void AddSubjects(HCERTSTORE store, std::vector<std::u16string>& subjects) {
    if (!store) return;
    for (PCCERT_CONTEXT c = CertEnumCertificatesInStore(store, nullptr); c; c = CertEnumCertificatesInStore(store, c))
        subjects.push_back(SubjectOf(c));
}

void AddEncoded(const BYTE* bytes, DWORD size, std::vector<std::u16string>& subjects) {
    if (PCCERT_CONTEXT c = CertCreateCertificateContext(X509_ASN_ENCODING, bytes, size)) {
        subjects.push_back(SubjectOf(c));
        CertFreeCertificateContext(c);
    }
}

// Each "-----BEGIN CERTIFICATE-----" block of a PEM text.
void AddPem(const std::string& text, std::vector<std::u16string>& subjects) {
    static const std::string kBegin = "-----BEGIN CERTIFICATE-----";
    static const std::string kEnd = "-----END CERTIFICATE-----";
    for (std::size_t at = text.find(kBegin); at != std::string::npos; at = text.find(kBegin, at + 1)) {
        const std::size_t end = text.find(kEnd, at);
        if (end == std::string::npos) return;
        const std::string block = text.substr(at, end + kEnd.size() - at);
        DWORD size = 0;
        if (!CryptStringToBinaryA(block.c_str(), static_cast<DWORD>(block.size()), CRYPT_STRING_BASE64HEADER, nullptr,
                                  &size, nullptr, nullptr))
            continue;
        std::string der(size, '\0');
        if (CryptStringToBinaryA(block.c_str(), static_cast<DWORD>(block.size()), CRYPT_STRING_BASE64HEADER,
                                 reinterpret_cast<BYTE*>(der.data()), &size, nullptr, nullptr))
            AddEncoded(reinterpret_cast<const BYTE*>(der.data()), size, subjects);
    }
}

}  // namespace

std::vector<std::u16string> TPlatformCertificates::SystemStores() {
    std::vector<std::u16string> stores;
    CertEnumSystemStore(
        CERT_SYSTEM_STORE_CURRENT_USER, nullptr, &stores,
        [](const void* name, DWORD, PCERT_SYSTEM_STORE_INFO, void*, void* list) -> BOOL {
            const auto* text = static_cast<const char16_t*>(name);
            static_cast<std::vector<std::u16string>*>(list)->push_back(text ? std::u16string(text) : u"");
            return TRUE;
        });
    return stores;
}

std::vector<std::u16string> TPlatformCertificates::Certificates(TCertStoreType type, const std::u16string& store,
                                                                const std::u16string& password) {
    std::vector<std::u16string> subjects;
    if (type == TCertStoreType::None || store.empty()) return subjects;
    if (type == TCertStoreType::System) {
        const TStore system(CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0,
                                          CERT_SYSTEM_STORE_CURRENT_USER | CERT_STORE_READONLY_FLAG |
                                              CERT_STORE_OPEN_EXISTING_FLAG,
                                          W(store)));
        AddSubjects(system.get(), subjects);
        return subjects;
    }
    // A file: the name comes from the request or the user, so it is checked before any file call.
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!platform::isUsablePath(store) || !GetFileAttributesExW(W(store), GetFileExInfoStandard, &file) ||
        file.nFileSizeHigh != 0 || file.nFileSizeLow > kMaxCertificateFile)
        return subjects;
    std::string bytes;
    if (!platform::readFile(store, bytes)) return subjects;
    if (type == TCertStoreType::Pem) {
        AddPem(bytes, subjects);
    } else if (type == TCertStoreType::Der) {
        AddEncoded(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()), subjects);
    } else if (type == TCertStoreType::Pkcs12) {
        CRYPT_DATA_BLOB blob{static_cast<DWORD>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data())};
        const TStore imported(PFXImportCertStore(&blob, W(password), 0));
        AddSubjects(imported.get(), subjects);
    }
    return subjects;
}

}  // namespace qrl
