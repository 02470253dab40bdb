#include "locale/language.h"
#include "locale/languageline.h"

#include "platform/platform.h"
#include "text/textutil.h"

#include <algorithm>
#include <array>

namespace qrl {

namespace {

struct SharedTextDef {
    const char16_t* key;
    const char16_t* english;
};

// In the order InitLanguage translates them.
constexpr std::array<SharedTextDef, 8> kSharedTexts{{
    {u"run_cpp_92", u"Default..."},
    {u"run_cpp_96", u"&Select Another..."},
    {u"run_cpp_139", u"General"},
    {u"run_cpp_140", u"no current emulation"},
    {u"run_cpp_141", u"no current comms"},
    {u"run_cpp_142", u"no current file transfer"},
    {u"run_cpp_143", u"__Default__"},
    {u"run_cpp_144", u"Unimplemented data type"},
}};

std::array<std::u16string, kSharedTexts.size()>& sharedTexts() {
    static std::array<std::u16string, kSharedTexts.size()> texts = [] {
        std::array<std::u16string, kSharedTexts.size()> english;
        for (std::size_t i = 0; i < english.size(); ++i) english[i] = kSharedTexts[i].english;
        return english;
    }();
    return texts;
}

// The escapes of a language text, undone in one pass. A backslash before any other character
// stays with it (so "\t" remains two characters); one at the very end is dropped.
std::u16string undoEscapes(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\') {
            out += text[i];
            continue;
        }
        if (++i == text.size()) break;
        switch (text[i]) {
        case u'"': out += u'"'; break;
        case u'\\': out += u'\\'; break;
        case u'n': out += u'\n'; break;
        case u'r': out += u'\r'; break;
        default:
            out += u'\\';
            out += text[i];
        }
    }
    return out;
}

}  // namespace

std::u16string UndoLanguageEscapes(std::u16string_view text) { return undoEscapes(text); }

// Tokenised as strtok does it: the key is the first run of characters other than "=", the value
// the following run of characters other than ",". So leading "=" are skipped, later "=" belong to
// the value, and a comma ends the value even inside quotes.
std::optional<TLanguageLine> ParseLanguageLine(std::string_view line) {
    line = line.substr(0, line.find('\0'));  // the line is a C string from here on
    const std::size_t keyStart = line.find_first_not_of('=');
    if (keyStart == std::string_view::npos) return std::nullopt;
    const std::size_t keyEnd = line.find('=', keyStart);
    if (keyEnd == std::string_view::npos) return std::nullopt;
    const std::size_t valueStart = line.find_first_not_of(',', keyEnd + 1);
    if (valueStart == std::string_view::npos) return std::nullopt;
    const std::size_t valueEnd = std::min(line.find(',', valueStart), line.size());
    TLanguageLine parsed{std::string{line.substr(keyStart, keyEnd - keyStart)},
                         std::string{line.substr(valueStart, valueEnd - valueStart)}, valueEnd < line.size()};
    // A leading quote goes, and with it the last character, whatever that is.
    if (parsed.value.front() == '"') {
        parsed.value.erase(0, 1);
        if (!parsed.value.empty()) parsed.value.pop_back();
    }
    return parsed;
}

TLanguageTable& languageTable() {
    static TLanguageTable table;
    return table;
}

const std::u16string& sharedText(SharedText which) { return sharedTexts()[static_cast<std::size_t>(which)]; }

namespace {

// A text that the road through UTF-8 and the unescaping give back as it is: no escape, no
// surrogate. A request's thousands of descriptions mostly are, and mostly have no translation.
bool passesUnchanged(std::u16string_view text) {
    for (char16_t c : text)
        if (c == u'\\' || (c >= 0xD800 && c <= 0xDFFF)) return false;
    return true;
}

// The text of `key`, or the default: `defaultText` itself where it comes back unchanged, else a
// text held in `buffer`. Defaults take the same road through UTF-8 as stored texts, so both are
// treated alike. A conversion that gives nothing ends the lookup with the default as it stands: an
// empty default stays empty whatever the table holds, and an empty stored text gives the default
// unescaped.
std::u16string_view lookUp(std::u16string_view key, std::u16string_view defaultText, std::u16string& buffer) {
    if (defaultText.empty()) return {};
    const TLanguageTable& table = languageTable();
    const auto found = table.texts.empty() ? table.texts.end() : table.texts.find(utf16ToLatin1(key));
    if (found == table.texts.end() && passesUnchanged(defaultText)) return defaultText;
    const std::string defaultUtf8 = utf16ToUtf8(defaultText);
    const std::u16string wide = utf8ToUtf16(found != table.texts.end() ? found->second : defaultUtf8);
    if (wide.empty()) return defaultText;
    buffer = undoEscapes(wide);
    return buffer;
}

}  // namespace

std::u16string Translate(std::u16string_view key, std::u16string_view defaultText) {
    std::u16string text;
    const std::u16string_view found = lookUp(key, defaultText, text);
    if (found.data() != text.data()) text.assign(found);
    return text;
}

std::u16string_view TranslateView(std::u16string_view key, std::u16string_view defaultText, std::u16string& buffer) {
    return lookUp(key, defaultText, buffer);
}

void SetLanguageDir(std::u16string_view dir) {
    languageTable().languageDir = utf16ToLatin1(dir);
    LoadLanguageFiles();
}

void SetLanguageId(std::u16string_view id) {
    languageTable().languageId = utf16ToLatin1(id);
    LoadLanguageFiles();
}

void LoadLanguageFiles() {
    TLanguageTable& table = languageTable();
    if (table.languageDir.empty() || table.languageId.empty()) return;
    table.texts.clear();
    const std::string folder = table.languageDir + "\\" + table.languageId + "\\";
    // Files in the order the search returns them: the first file to define a key wins.
    for (const std::string& name : platform::listFiles(folder + "*.lang")) {
        std::string bytes;
        if (platform::readFile(folder + name, bytes)) ParseLanguageText(bytes);
    }
}

void ParseLanguageText(std::string_view text) {
    std::map<std::string, std::string>& texts = languageTable().texts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        if (i > start)
            if (auto line = ParseLanguageLine(text.substr(start, i - start)))
                texts.emplace(std::move(line->key), std::move(line->value));
        start = i + 1;
    }
    // Whatever follows the last line end is not read.
}

void InitLanguage(std::u16string_view langId, std::u16string_view langDir) {
    SetLanguageDir(langDir);
    SetLanguageId(langId);
    // The current value is the default, so a text keeps its last translation when the new
    // language lacks the key.
    auto& texts = sharedTexts();
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = Translate(kSharedTexts[i].key, texts[i]);
}

}  // namespace qrl
