// The catalogue of the module's texts: every key it looks up with its English default, grouped by
// dialog. The texts written out in the sources are gathered from them at build time (by
// tools/scantexts), so the code stays the one place where a default is written; texts whose keys
// are built at run time are added by the code that builds them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// One key and default as the sources write them.
struct TScannedText {
    const char* group;  // the dialog's title and symbol, or the source file for its messages
    const char16_t* key;
    const char16_t* defaultText;
    const char* source;
    int line;
};

// A lookup whose key the sources do not write out beside it: a variable, a parameter, a built key.
struct TLookupSite {
    const char* source;
    int line;
    const char* keyExpression;
};

extern const TScannedText kScannedTexts[];
extern const std::size_t kScannedTextCount;
extern const TLookupSite kLookupSites[];
extern const std::size_t kLookupSiteCount;

struct TCatalogueText {
    std::string group;
    std::u16string key;
    // Every default the code gives the key, first seen first; one translation replaces them all.
    std::vector<std::u16string> defaults;
};

class TTextCatalogue {
public:
    // A key seen again keeps its place and group and gains the default if it is new.
    void Add(std::string_view group, std::u16string_view key, std::u16string_view defaultText);
    const TCatalogueText* Find(std::u16string_view key) const;
    const std::vector<TCatalogueText>& Texts() const { return texts_; }

private:
    std::vector<TCatalogueText> texts_;
};

// The texts the sources write out.
TTextCatalogue ScannedTextCatalogue();

}  // namespace qrl
