// Every text the user sees passes through Translate(key, default). The process-wide language table
// is filled from the *.lang files of <LangDir>\<LangId>\ and is empty until a request names one; a
// key it lacks gives the built-in English default, so nothing here ever fails.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace qrl {

struct TLanguageTable {
    std::string languageId;   // the request's LangId, narrow
    std::string languageDir;  // the request's LangDir, narrow
    // key -> text: UTF-8 with its "\" escapes still in; keys compare as bytes.
    std::map<std::string, std::string> texts;
};

// The one table; it lives until the module is unloaded.
TLanguageTable& languageTable();

std::u16string Translate(std::u16string_view key, std::u16string_view defaultText);
// The same for a reader that keeps the text elsewhere at once: the default itself where Translate
// would give it back unchanged, else the translation, held in `buffer`.
std::u16string_view TranslateView(std::u16string_view key, std::u16string_view defaultText, std::u16string& buffer);

// A text by key with its English default, as the tables of a subsystem's texts hold it.
struct TTextKey {
    const char16_t* key;
    const char16_t* defaultText;
};
inline std::u16string Translate(const TTextKey& text) { return Translate(text.key, text.defaultText); }

void SetLanguageDir(std::u16string_view dir);
void SetLanguageId(std::u16string_view id);
void LoadLanguageFiles();
// Adds the lines of one file; a key already in the table keeps its first text.
void ParseLanguageText(std::string_view text);
// Called once LangId and LangDir of a request are known; re-translates the shared texts.
void InitLanguage(std::u16string_view langId, std::u16string_view langDir);

// The eight texts shared across subsystems, re-translated for every request. Read the current
// value: a translation of the default form's name changes it everywhere alike.
enum class SharedText {
    Default,              // "run_cpp_92"
    SelectAnother,        // "run_cpp_96"
    General,              // "run_cpp_139"  root of a module of no known kind
    NoCurrentEmulation,   // "run_cpp_140"
    NoCurrentComms,       // "run_cpp_141"
    NoCurrentFileXfer,    // "run_cpp_142"
    DefaultFormName,      // "run_cpp_143"  name of the built-in form
    UnimplementedType,    // "run_cpp_144"
};
const std::u16string& sharedText(SharedText which);

}  // namespace qrl
