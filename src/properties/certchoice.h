// What the SSL certificate dialog shows and keeps, without a window: the system's stores, the
// certificates of the chosen store with their short names, and which of them the property names.
#pragma once

#include <string>
#include <vector>

#include "properties/sslcertificate.h"

namespace qrl {

// Where stores and certificates come from (the platform's certificate functions, or a test's).
class TCertificateSource {
public:
    virtual ~TCertificateSource() = default;
    // The names of the system's certificate stores.
    virtual std::vector<std::u16string> SystemStores() = 0;
    // The full subjects of the certificates of a system store or a file; none when it can't be read.
    virtual std::vector<std::u16string> Certificates(TCertStoreType type, const std::u16string& store,
                                                     const std::u16string& password) = 0;
};

struct TCertChoice {
    std::string subject;    // narrow, as the property is matched against it
    std::string shortName;
};

class TCertDialogModel {
public:
    TCertDialogModel(TSslCertificateProperty& property, TCertificateSource& source);

    // The store type's rows ("(none)" to "PKCS12"); a row is the store type's number.
    static const std::vector<std::u16string>& StoreTypeRows();

    // The system's stores, when the type is the system's; the row of storeName (the first whose
    // name begins with it, case ignored), or the first row, whose name storeName then takes.
    void RefreshStores();
    // The certificates of the store or file in use; the selection is the last row whose subject is
    // the property's, else row 0, whose subject the property then takes; -1 when there are none.
    void RefreshCertificates();

    void ChooseStoreType(int row);
    void ChooseStore(const std::u16string& name);
    void ChooseCertificate(int row);  // -1 empties the subject

    // OK: the controls' store, file and password read back. False when no certificate was chosen
    // for a store type other than none: the user is asked then.
    bool Accept(int storeTypeRow, const std::u16string& storeText, const std::u16string& fileText,
                const std::u16string& password);

    TSslCertificateProperty& property;
    std::u16string fileName;
    std::u16string storeName;
    std::vector<std::u16string> stores;
    int storeSelection = -1;
    std::vector<TCertChoice> choices;
    int certificateSelection = -1;

private:
    TCertificateSource& source_;
};

}  // namespace qrl
