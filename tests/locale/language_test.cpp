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

TEST_F(Language, ValueEndsAtFirstCommaEvenInsideQuotes) {
    ParseLanguageText("plain=Hello, world\n"
                      "quoted=\"Hello, world\"\n"
                      "whole=\"Hello\"\n"
                      "commas=,,,after commas,x\n"
                      "lonequote=\"\n"
                      "emptyquotes=\"\"\n");
    EXPECT_EQ(stored("plain"), "Hello");
    // The quote goes and so does the last character of what is left: a real 'o' here.
    EXPECT_EQ(stored("quoted"), "Hell");
    EXPECT_EQ(stored("whole"), "Hello");
    EXPECT_EQ(stored("commas"), "after commas");
    EXPECT_EQ(stored("lonequote"), "");
    EXPECT_EQ(stored("emptyquotes"), "");
}

TEST_F(Language, EqualsSignsSplitLikeATokeniser) {
    ParseLanguageText("key=a=b\n"
                      "=x=y\n"
                      "==lead=z\n"
                      "novalue=\n"
                      "onlycommas=,,,\n"
                      "no equals at all\n"
                      "====\n"
                      "spaced key = spaced value \n");
    EXPECT_EQ(stored("key"), "a=b");
    EXPECT_EQ(stored("x"), "y");
    EXPECT_EQ(stored("lead"), "z");
    EXPECT_EQ(stored("novalue"), "<none>");
    EXPECT_EQ(stored("onlycommas"), "<none>");
    EXPECT_EQ(stored("no equals at all"), "<none>");
    EXPECT_EQ(stored("spaced key "), " spaced value ");  // nothing is trimmed
    EXPECT_EQ(languageTable().texts.size(), 4u);
}

TEST_F(Language, LinesEndAtCrOrLfAndAnUnendedLastLineIsLost) {
    ParseLanguageText("a=1\rb=2\r\n\r\nc=3\n\nd=4");
    EXPECT_EQ(stored("a"), "1");
    EXPECT_EQ(stored("b"), "2");
    EXPECT_EQ(stored("c"), "3");
    EXPECT_EQ(stored("d"), "<none>");
    ParseLanguageText("only=no line end");
    EXPECT_TRUE(languageTable().texts.find("only") == languageTable().texts.end());
    // A byte-order mark is not skipped; it becomes part of the first key.
    ParseLanguageText("\xEF\xBB\xBF" "bom=1\n");
    EXPECT_EQ(stored("bom"), "<none>");
    EXPECT_EQ(stored("\xEF\xBB\xBF" "bom"), "1");
    // A zero byte ends the line's text, as it would in a C string.
    ParseLanguageText(std::string{"zero=ab\0cd\nafter=ok\n", 20});
    EXPECT_EQ(stored("zero"), "ab");
    EXPECT_EQ(stored("after"), "ok");
}

TEST_F(Language, FirstDefinitionWins) {
    ParseLanguageText("k=first\nk=second\n");
    ParseLanguageText("k=third\n");
    EXPECT_EQ(stored("k"), "first");
}

TEST_F(Language, TranslateUndoesEscapesAtLookup) {
    ParseLanguageText("quote=\"a\\\"b\"\n"
                      "lines=one\\ntwo\\rthree\n"
                      "back=c:\\\\dir\\\\file\n"
                      "tab=a\\tb\n"
                      "trailing=end\\\n"
                      "utf8=Gr\xC3\xBC\xC3\x9F" "e \xE2\x82\xAC\n");
    EXPECT_EQ(stored("quote"), "a\\\"b");  // stored as written
    EXPECT_EQ(Translate(u"quote", u"x"), u"a\"b");
    EXPECT_EQ(Translate(u"lines", u"x"), u"one\ntwo\rthree");
    EXPECT_EQ(Translate(u"back", u"x"), u"c:\\dir\\file");
    EXPECT_EQ(Translate(u"tab", u"x"), u"a\\tb");
    EXPECT_EQ(Translate(u"trailing", u"x"), u"end");
    EXPECT_EQ(Translate(u"utf8", u"x"), u"Gr\u00FC\u00DFe \u20AC");
    // Lookups are exact: case counts.
    EXPECT_EQ(Translate(u"QUOTE", u"fallback"), u"fallback");
}

TEST_F(Language, DefaultsGoThroughTheSameEscapeRule) {
    EXPECT_EQ(Translate(u"missing", u"\\}  Right brace"), u"\\}  Right brace");
    EXPECT_EQ(Translate(u"missing", u"C:\\\\temp"), u"C:\\temp");
    EXPECT_EQ(Translate(u"missing", u"say \\\"hi\\\"\\"), u"say \"hi\"");
    EXPECT_EQ(Translate(u"missing", u""), u"");
    EXPECT_EQ(Translate(u"", u"empty key"), u"empty key");
    EXPECT_EQ(Translate(u"missing", u"\u00E9\u4E2D"), u"\u00E9\u4E2D");
}

TEST_F(Language, LoadsTheLangFilesOfTheLanguageDirectory) {
    InitLanguage(u"en", toU16(kLangDir));
    EXPECT_EQ(Translate(u"first_only", u"-"), u"one");
    EXPECT_EQ(Translate(u"second_only", u"-"), u"two");
    EXPECT_EQ(Translate(u"UPPER_CASE_NAME", u"-"), u"upper");  // the pattern ignores case
    EXPECT_EQ(Translate(u"ended", u"-"), u"yes");
    EXPECT_EQ(Translate(u"cut", u"-"), u"-");           // behind the last line end
    EXPECT_EQ(Translate(u"not_a_lang", u"-"), u"-");    // notes.txt and old.lang.bak are not read

    // The file that the directory search returned first decides a key that two files define.
    const auto names = platform::listFiles(kLangDir + "\\en\\*.lang");
    const auto first = std::find(names.begin(), names.end(), "first.lang");
    const auto second = std::find(names.begin(), names.end(), "second.lang");
    ASSERT_NE(first, names.end());
    ASSERT_NE(second, names.end());
    EXPECT_EQ(Translate(u"shared_key", u"-"), first < second ? u"from first" : u"from second");
}

TEST_F(Language, MissingDirectoryOrEmptyNamesLeaveTheTableAlone) {
    InitLanguage(u"en", toU16(kLangDir));
    ASSERT_EQ(Translate(u"first_only", u"-"), u"one");

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
    const std::u16string general = sharedText(SharedText::General);
    const std::u16string noEmulation = sharedText(SharedText::NoCurrentEmulation);
    const std::u16string formName = sharedText(SharedText::DefaultFormName);
    EXPECT_EQ(general, u"General");
    EXPECT_EQ(noEmulation, u"no current emulation");
    EXPECT_EQ(formName, u"__Default__");
    EXPECT_EQ(sharedText(SharedText::UnimplementedType), u"Unimplemented data type");

    InitLanguage(u"en", toU16(kLangDir));
    EXPECT_EQ(sharedText(SharedText::General), u"Allgemein");
    EXPECT_EQ(sharedText(SharedText::DefaultFormName), u"__Standard__");
    EXPECT_EQ(sharedText(SharedText::NoCurrentEmulation), u"no current emulation");

    // "de" lacks run_cpp_143: the form name keeps the translation of the language before.
    InitLanguage(u"de", toU16(kLangDir));
    EXPECT_EQ(sharedText(SharedText::General), u"Generell");
    EXPECT_EQ(sharedText(SharedText::NoCurrentEmulation), u"keine aktuelle Emulation");
    EXPECT_EQ(sharedText(SharedText::DefaultFormName), u"__Standard__");
    EXPECT_EQ(sharedText(SharedText::SelectAnother), u"&Select Another...");
}
