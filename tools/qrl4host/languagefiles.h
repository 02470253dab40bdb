// The translators' options: the language template, the pseudo-language and the check of a
// language file, all from the module's catalogue of texts, without loading the module.
#pragma once

#include <string>

namespace qrl4host {

int writeLanguageTemplate(const std::wstring& file);
int writePseudoLanguage(const std::wstring& file);
// Checks a language file, or a language folder's *.lang files together, and prints each finding
// as file:line: text; 0 when there is none, 1 when there are, 2 when a file cannot be read.
int checkLanguageFile(const std::wstring& file);

}  // namespace qrl4host
