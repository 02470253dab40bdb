#include "locale/textcatalogue.h"

#include <algorithm>

namespace qrl {

void TTextCatalogue::Add(std::string_view group, std::u16string_view key, std::u16string_view defaultText) {
    const auto found = std::find_if(texts_.begin(), texts_.end(), [&](const TCatalogueText& t) { return t.key == key; });
    if (found == texts_.end()) {
        texts_.push_back({std::string{group}, std::u16string{key}, {std::u16string{defaultText}}});
        return;
    }
    if (std::find(found->defaults.begin(), found->defaults.end(), defaultText) == found->defaults.end())
        found->defaults.emplace_back(defaultText);
}

const TCatalogueText* TTextCatalogue::Find(std::u16string_view key) const {
    const auto found = std::find_if(texts_.begin(), texts_.end(), [&](const TCatalogueText& t) { return t.key == key; });
    return found == texts_.end() ? nullptr : &*found;
}

TTextCatalogue ScannedTextCatalogue() {
    TTextCatalogue catalogue;
    for (std::size_t i = 0; i < kScannedTextCount; ++i)
        catalogue.Add(kScannedTexts[i].group, kScannedTexts[i].key, kScannedTexts[i].defaultText);
    return catalogue;
}

}  // namespace qrl
