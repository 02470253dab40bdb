// Language files are outside input: any bytes must give a table and lookups that neither crash
// nor read past their text.
#include "locale/language.h"

#include "text/textutil.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    qrl::languageTable() = qrl::TLanguageTable{};
    const std::string text(reinterpret_cast<const char*>(data), size);
    qrl::ParseLanguageText(text);
    // Look up every stored key, and the input itself as key and as default text.
    for (const auto& [key, value] : qrl::languageTable().texts) {
        (void)value;
        (void)qrl::Translate(qrl::latin1ToUtf16(key), u"default");
    }
    const std::u16string raw(reinterpret_cast<const char16_t*>(data), size / 2);
    (void)qrl::Translate(raw, raw);
    qrl::languageTable() = qrl::TLanguageTable{};
    return 0;
}
