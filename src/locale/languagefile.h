// The translators' tools over the text catalogue: a template language file with every key and its
// English text, a pseudo-language that shows at a glance where a text is cut or never translated,
// and a check of a language file against the catalogue. Files are UTF-8, as the module reads them.
#pragma once

#include "locale/textcatalogue.h"

#include <optional>
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
    int line = 0;  // 0: the file as a whole
    std::string text;
};

// What a translator should mend: unknown keys, keys the file lacks, texts whose placeholders or
// accelerator differ from the English text's, values cut by a comma, lines that are not read.
// Keys with a "." are a request's own element and group texts, which the module cannot know.
std::vector<TLanguageFinding> CheckLanguageText(std::string_view fileText, const TTextCatalogue& catalogue);
// "file:line: text", or "file: text" for the file as a whole.
std::string FormatLanguageFinding(std::string_view file, const TLanguageFinding& finding);

}  // namespace qrl
