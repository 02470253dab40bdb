// Certificates from the platform's certificate functions: the current user's system stores, and
// PEM, DER and PKCS12 files. Win32 only.
#pragma once

#include "properties/certchoice.h"

namespace qrl {

class TPlatformCertificates final : public TCertificateSource {
public:
    std::vector<std::u16string> SystemStores() override;
    std::vector<std::u16string> Certificates(TCertStoreType type, const std::u16string& store,
                                             const std::u16string& password) override;
};

}  // namespace qrl
