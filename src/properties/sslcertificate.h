// The choice of a client certificate, kept as the value of an `sslcertificate` element: where the
// certificate is stored, the store's password and the certificate's subject.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "properties/property.h"

namespace qrl {

enum class TCertStoreType : int32_t { None = 0, System = 1, Pem = 2, Der = 3, Pkcs12 = 4 };

class TSslCertificateProperty final : public TPropertyBase {
public:
    // Value text: Type=..|Store=..|StorePassword=..|Subject=..| with the password scrambled. Keys
    // may come in any order; a key that is missing leaves its field empty (the type None).
    void Parse(std::u16string_view text) override;
    std::u16string ToText() const override;
    // The subject's common name, or the whole subject if it names none.
    std::u16string ShortText() const override;

    TCertStoreType storeType = TCertStoreType::System;
    std::u16string store;          // store name or file path
    std::u16string storePassword;  // clear text in memory only
    std::u16string subject;
};

// The password as the value text holds it: a check text, the marker "q!" and two characters per
// narrow byte. Not encryption; it keeps the password from being read at a glance.
std::u16string ScramblePassword(std::u16string_view clear);
// Anything that is not a well-formed scrambled text is taken as a clear password and returned as
// it stands (a password typed into a request by hand).
std::u16string UnscramblePassword(std::u16string_view text);

// "CN=" value of a subject in narrow text: up to the next "," or the end; the whole subject if
// there is no "CN=".
std::string SslShortName(std::string_view subject);

// The certificate library's number for a kind of store.
int LibraryStoreType(TCertStoreType type);

}  // namespace qrl
