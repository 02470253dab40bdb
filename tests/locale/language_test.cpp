#include "locale/language.h"

#include "platform/platform.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace qrl;

namespace {

const std::string kLangDir = std::string{QRL_SOURCE_DIR} + "/tests/data/locale/lang";

// Every test starts from the state of a freshly loaded module: an empty table and the shared
// texts in English (which only a language that has them in English can bring back).
void resetLanguage() {
    languageTable() = TLanguageTable{};
    ParseLanguageText("run_cpp_92=Default...\nrun_cpp_96=&Select Another...\nrun_cpp_139=General\n"
                      "run_cpp_140=no current emulation\nrun_cpp_141=no current comms\n"
                      "run_cpp_142=no current file transfer\nrun_cpp_143=__Default__\n"
                      "run_cpp_144=Unimplemented data type\n");
    InitLanguage(u"", u"");
    languageTable() = TLanguageTable{};
}

class Language : public ::testing::Test {
protected:
    void SetUp() override { resetLanguage(); }
    void TearDown() override { resetLanguage(); }

    static std::string stored(const std::string& key) {
        const auto& texts = languageTable().texts;
        const auto it = texts.find(key);
        return it == texts.end() ? std::string{"<none>"} : it->second;
    }
};

}  // namespace

// One line at a time: what the table holds under a key afterwards; "<none>" if the line added nothing.
TEST_F(Language, LinesSplitLikeATokeniser) {
    const struct Case { const char* line; const char* key; const char* stored; } cases[] = {
        {"plain=Hello, world\n", "plain", "Hello"},  // the value ends at the first comma, even inside quotes
        {"quoted=\"Hello, world\"\n", "quoted", "Hell"},  // the quote goes and so does the last character left
        {"whole=\"Hello\"\n", "whole", "Hello"},
        {"commas=,,,after commas,x\n", "commas", "after commas"},
        {"lonequote=\"\n", "lonequote", ""},
        {"key=a=b\n", "key", "a=b"},
        {"=x=y\n", "x", "y"},
        {"novalue=\n", "novalue", "<none>"},
        {"no equals at all\n", "no equals at all", "<none>"},
        {"====\n", "", "<none>"},
        {"spaced key = spaced value \n", "spaced key ", " spaced value "},  // nothing is trimmed
        {"only=no line end", "only", "<none>"},  // an unended last line is lost
        {"\xEF\xBB\xBF" "bom=1\n", "\xEF\xBB\xBF" "bom", "1"},  // a byte-order mark is part of the first key
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        const std::size_t before = languageTable().texts.size();
        ParseLanguageText(c.line);
        EXPECT_EQ(stored(c.key), c.stored);
        EXPECT_EQ(languageTable().texts.size(), before + (std::string{c.stored} != "<none>"));
    }
}

// The first definition of a key wins, also over a later text.
TEST_F(Language, LinesEndAtCrOrLfAndAZeroEndsTheText) {
    ParseLanguageText("a=1\rb=2\r\n\r\nc=3\n\nd=4");
    EXPECT_EQ(stored("a") + stored("b") + stored("c") + stored("d"), "123<none>");
    ParseLanguageText(std::string{"zero=ab\0cd\nafter=ok\nafter=twice\na=again\n", 40});
    EXPECT_EQ(stored("zero") + stored("after") + stored("a"), "abok1");
}

// Translate undoes the escapes at lookup, in stored texts and defaults alike; an empty stored text
// gives the default as it stands, and an empty default gives nothing even for a key the table has.
TEST_F(Language, TranslateUndoesEscapesAtLookup) {
    ParseLanguageText("quote=\"a\\\"b\"\nlines=one\\ntwo\\rthree\nback=c:\\\\dir\\\\file\ntab=a\\tb\n"
                      "trailing=end\\\nutf8=Gr\xC3\xBC\xC3\x9F" "e \xE2\x82\xAC\nemptied=\"\"\nfull=translated\n");
    EXPECT_EQ(stored("quote"), "a\\\"b");  // stored as written
    const struct Case { const char16_t *key, *fallback, *translated; } cases[] = {
        {u"quote", u"x", u"a\"b"},
        {u"lines", u"x", u"one\ntwo\rthree"},
        {u"back", u"x", u"c:\\dir\\file"},
        {u"tab", u"x", u"a\\tb"},
        {u"trailing", u"x", u"end"},
        {u"utf8", u"x", u"Gr\u00FC\u00DFe \u20AC"},
        {u"QUOTE", u"fallback", u"fallback"},  // lookups are exact: case counts
        {u"emptied", u"a\\nb", u"a\\nb"},
        {u"full", u"", u""},
        {u"full", u"x", u"translated"},
        {u"missing", u"\\}  Right brace", u"\\}  Right brace"},
        {u"missing", u"say \\\"hi\\\"\\", u"say \"hi\""},
        {u"", u"empty key", u"empty key"},
        {u"missing", u"\u00E9\u4E2D", u"\u00E9\u4E2D"},
    };
    for (const Case& c : cases) EXPECT_EQ(Translate(c.key, c.fallback), c.translated) << utf16ToUtf8(c.key);
}

// An empty LangId or LangDir leaves the table alone; a language without files or folder empties it.
TEST_F(Language, LoadsTheLangFilesOfTheLanguageDirectory) {
    InitLanguage(u"en", toU16(kLangDir));
    // UPPER_CASE_NAME: the pattern ignores case; cut: behind the last line end; not_a_lang: notes.txt
    // and old.lang.bak are not read.
    std::u16string found;
    for (const char16_t* key : {u"first_only", u"second_only", u"UPPER_CASE_NAME", u"ended", u"cut", u"not_a_lang"})
        found += Translate(key, u"-") + u"|";
    EXPECT_EQ(found, u"one|two|upper|yes|-|-|");

    // The file that the directory search returned first decides a key that two files define.
    const auto names = platform::listFiles(kLangDir + "\\en\\*.lang");
    const auto first = std::find(names.begin(), names.end(), "first.lang");
    const auto second = std::find(names.begin(), names.end(), "second.lang");
    ASSERT_NE(first, names.end());
    ASSERT_NE(second, names.end());
    EXPECT_EQ(Translate(u"shared_key", u"-"), first < second ? u"from first" : u"from second");

    // An empty LangId with the same LangDir: the table stays as it is.
    InitLanguage(u"", toU16(kLangDir));
    EXPECT_EQ(Translate(u"first_only", u"-"), u"one");
    EXPECT_EQ(languageTable().languageId, "");

    // An empty LangDir: nothing is loaded, nothing is cleared.
    InitLanguage(u"de", u"");
    EXPECT_EQ(Translate(u"first_only", u"-"), u"one");

    // A language without files empties the table; so does one whose folder is missing.
    InitLanguage(u"none", toU16(kLangDir));
    EXPECT_TRUE(languageTable().texts.empty());
    InitLanguage(u"en", toU16(kLangDir));
    InitLanguage(u"xx", toU16(kLangDir + "/no such folder"));
    EXPECT_TRUE(languageTable().texts.empty());
    EXPECT_EQ(Translate(u"first_only", u"-"), u"-");
}

TEST_F(Language, SharedTextsKeepTheirLastTranslation) {
    InitLanguage(u"en", toU16(kLangDir));
    const auto texts = [] {
        return sharedText(SharedText::General) + u"|" + sharedText(SharedText::DefaultFormName) + u"|" +
               sharedText(SharedText::NoCurrentEmulation) + u"|" + sharedText(SharedText::SelectAnother);
    };
    EXPECT_EQ(texts(), u"Allgemein|__Standard__|no current emulation|&Select Another...");

    // "de" lacks run_cpp_143: the form name keeps the translation of the language before.
    InitLanguage(u"de", toU16(kLangDir));
    EXPECT_EQ(texts(), u"Generell|__Standard__|keine aktuelle Emulation|&Select Another...");
}
