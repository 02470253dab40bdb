// The translators' tools over the text catalogue: a template language file with every key and its
// English text, a pseudo-language that shows at a glance where a text is cut or never translated,
// and a check of a language file against the catalogue. Files are UTF-8, as the module reads them.
#pragma once

#include "locale/textcatalogue.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// A text as a value of a language file line, so that the module reads it back and shows it as the
// text itself; nothing when the format cannot hold it (a comma ends every value).
std::optional<std::string> LanguageFileValue(std::u16string_view text);

// Every key of the catalogue with its first default, a comment line before each group.
std::string LanguageTemplate(const TTextCatalogue& catalogue);

// The text made longer with accented letters between brackets, its placeholders, accelerators,
// escapes and file-filter patterns kept as they are.
std::u16string PseudoText(std::u16string_view text);
// The template with every text in PseudoText form.
std::string PseudoLanguage(const TTextCatalogue& catalogue);

struct TLanguageFinding {
    std::string file;
    int line = 0;  // 0: the file or language as a whole
    std::string text;
};

// One file of a language: its name for the findings and its bytes.
struct TLanguageSource {
    std::string name;
    std::string_view text;
};

// What a translator should mend in the files of one language (named `language` where a finding
// concerns them all): unknown keys, keys none of them holds, texts whose placeholders or
// accelerator differ from the English text's, values cut by a comma, keys defined twice, lines
// that are not read. Keys with a "." are a request's own element and group texts, which the
// module cannot know.
std::vector<TLanguageFinding> CheckLanguage(std::span<const TLanguageSource> files, const std::string& language,
                                            const TTextCatalogue& catalogue);
// "file:line: text", or "file: text" for the file or language as a whole.
std::string FormatLanguageFinding(const TLanguageFinding& finding);

}  // namespace qrl
