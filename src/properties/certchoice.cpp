#include "properties/certchoice.h"

#include "text/textutil.h"

namespace qrl {

TCertDialogModel::TCertDialogModel(TSslCertificateProperty& property_, TCertificateSource& source)
    : property(property_), source_(source) {
    (property.storeType == TCertStoreType::System ? storeName : fileName) = property.store;
}

const std::vector<std::u16string>& TCertDialogModel::StoreTypeRows() {
    static const std::vector<std::u16string> rows{u"(none)", u"Microsoft Certificate Store", u"PEM", u"DER", u"PKCS12"};
    return rows;
}

void TCertDialogModel::RefreshStores() {
    stores.clear();
    storeSelection = -1;
    if (property.storeType != TCertStoreType::System) return;
    stores = source_.SystemStores();
    // As a combo box selects by text: the first row that begins with it, case ignored.
    for (std::size_t i = 0; i < stores.size() && storeSelection < 0; ++i)
        if (istartsWith(stores[i], storeName)) storeSelection = static_cast<int>(i);
    if (storeSelection < 0 && !stores.empty()) storeSelection = 0;
    if (storeSelection >= 0) storeName = stores[static_cast<std::size_t>(storeSelection)];
}

void TCertDialogModel::RefreshCertificates() {
    choices.clear();
    certificateSelection = -1;
    if (property.storeType != TCertStoreType::None) {
        const std::u16string& where = property.storeType == TCertStoreType::System ? storeName : fileName;
        for (const std::u16string& subject : source_.Certificates(property.storeType, where, property.storePassword)) {
            const std::string narrow = utf16ToLatin1(subject);
            choices.push_back({narrow, SslShortName(narrow)});
        }
    }
    const std::string wanted = utf16ToLatin1(property.subject);
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (choices[i].subject == wanted) certificateSelection = static_cast<int>(i);  // the last of equals
    if (certificateSelection < 0 && !choices.empty()) {
        certificateSelection = 0;
        property.subject = latin1ToUtf16(choices[0].subject);
    }
}

void TCertDialogModel::ChooseStoreType(int row) {
    property.storeType = row >= 0 && row < static_cast<int>(StoreTypeRows().size()) ? static_cast<TCertStoreType>(row)
                                                                                    : TCertStoreType::None;
    RefreshStores();
    RefreshCertificates();
}

void TCertDialogModel::ChooseStore(const std::u16string& name) {
    storeName = name;
    RefreshCertificates();
}

void TCertDialogModel::ChooseCertificate(int row) {
    certificateSelection = row >= 0 && row < static_cast<int>(choices.size()) ? row : -1;
    property.subject = certificateSelection >= 0 ? latin1ToUtf16(choices[static_cast<std::size_t>(row)].subject) : u"";
}

bool TCertDialogModel::Accept(int storeTypeRow, const std::u16string& storeText, const std::u16string& fileText,
                              const std::u16string& password) {
    property.storeType = storeTypeRow >= 0 && storeTypeRow < static_cast<int>(StoreTypeRows().size())
                             ? static_cast<TCertStoreType>(storeTypeRow)
                             : TCertStoreType::None;
    property.store = property.storeType == TCertStoreType::System ? storeText : fileText;
    property.storePassword = password;
    return !property.subject.empty() || property.storeType == TCertStoreType::None;
}

}  // namespace qrl
