// The language check reads translators' files, outside input: any bytes, split into two files of
// one language, must give findings without a crash or a read past the text; the pseudo-language
// must take any text, and give one that a language file can hold.
#include "app/moduletexts.h"
#include "locale/languagefile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const qrl::TTextCatalogue catalogue = qrl::ModuleTextCatalogue();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t half = size / 2;
    const qrl::TLanguageSource files[] = {{"a.lang", std::string_view(text).substr(0, half)},
                                          {"b.lang", std::string_view(text).substr(half)}};
    for (const qrl::TLanguageFinding& finding : qrl::CheckLanguage(files, "x", catalogue))
        qrl::FormatLanguageFinding(finding);
    const std::u16string raw(reinterpret_cast<const char16_t*>(data), size / 2);
    const std::u16string pseudo = qrl::PseudoText(raw);
    if (!raw.empty() && !qrl::LanguageFileValue(pseudo) && pseudo.find(u',') == std::u16string::npos)
        std::abort();
    return 0;
}
