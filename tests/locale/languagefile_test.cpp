#include "locale/languagefile.h"

#include "locale/language.h"
#include "locale/languageline.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

using namespace qrl;

namespace {

TTextCatalogue SmallCatalogue() {
    TTextCatalogue catalogue;
    catalogue.Add("Dialog", u"IDOK", u"&Ok");
    catalogue.Add("Dialog", u"msg_count", u"%d keys in %s");
    catalogue.Add("Dialog", u"msg_comma", u"line , column");
    return catalogue;
}

// The files are a.lang, b.lang, ... of the language "de".
std::string Findings(const std::vector<std::string>& files) {
    std::vector<TLanguageSource> sources;
    for (const std::string& text : files) sources.push_back({std::string(1, static_cast<char>('a' + sources.size())) + ".lang", text});
    std::string out;
    for (const TLanguageFinding& finding : CheckLanguage(sources, "de", SmallCatalogue()))
        out += FormatLanguageFinding(finding) + "\n";
    return out;
}

TEST(LanguageFile, CheckReportsWhatATranslatorMustMend) {
    const std::string complete = "IDOK=&OK\nmsg_count=%s: %d\n";
    const struct {
        std::vector<std::string> files;
        std::string expected;
    } cases[] = {
        {{complete}, ""},
        {{"IDOK=&OK\n", "msg_count=%s: %d\nIDOK=&Ja\n"},
         "b.lang:2: \"IDOK\" is defined in a.lang too; the file the folder lists first is the one used\n"},
        {{"# only a comment\nIDOK=&OK\n"}, "de: lacks \"msg_count\" (English: \"%d keys in %s\")\n"},
        {{complete + "msg_gone=Weg\nhelp.G.N_1=request text\n"}, "a.lang:3: unknown key \"msg_gone\"\n"},
        {{"IDOK=OK\r\nmsg_count=%d keys\r\n"},
         "a.lang:1: \"IDOK\": the English text has an accelerator (&), this one has none\n"
         "a.lang:2: \"msg_count\": the English text has the placeholders %d %s, this one %d\n"},
        {{"IDOK=&OK, and more\nmsg_count=%s %d\nIDOK=&Ja\n"},
         "a.lang:1: \"IDOK\": the text ends at the comma; what follows it is lost\n"
         "a.lang:3: \"IDOK\" is defined again; the definition on line 1 is the one used\n"},
        {{"\xEF\xBB\xBFIDOK=&OK\nmsg_count=%s %d"},
         "a.lang:1: the file begins with a byte-order mark, which becomes part of the first key\n"
         "a.lang:1: unknown key \"\xEF\xBB\xBFIDOK\"\n"
         "a.lang:2: the last line has no line end, so it is not read\n"
         "de: lacks \"IDOK\" (English: \"&Ok\")\n"
         "de: lacks \"msg_count\" (English: \"%d keys in %s\")\n"},
        {{"IDOK=Ja && &Nein\nmsg_count=100%% %d %s\n"}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(Findings(c.files), c.expected) << c.files.front();
}

TEST(LanguageFile, ValuesReadBackAsTheirText) {
    const std::u16string texts[] = {u"Plain",        u"Configure ",      u" on ",      u"\"; version 1",
                                    u"Two\nlines\r", u"a \\} brace \\n", u"x = y",     u"\u2013 \U0001F600",
                                    u"ends \\"};
    for (const std::u16string& text : texts) {
        const auto value = LanguageFileValue(text);
        ASSERT_TRUE(value) << utf16ToUtf8(text);
        const auto line = ParseLanguageLine("k=" + *value);
        ASSERT_TRUE(line);
        EXPECT_EQ(UndoLanguageEscapes(utf8ToUtf16(line->value)), UndoLanguageEscapes(text)) << *value;
    }
    EXPECT_FALSE(LanguageFileValue(u"a, b"));
    EXPECT_FALSE(LanguageFileValue(u""));
}

TEST(LanguageFile, PseudoTextKeepsWhatMakesATextWork) {
    const struct {
        std::u16string text, pseudo;
    } cases[] = {
        {u"Settings", u"[Ŝéţţîñĝš·····]"},
        {u"&Ok", u"[&Oķ···]"},
        {u"%d keys, %-5s", u"[%d ķéýš‚ %-5s·······]"},
        {u"100%% \\n&&", u"[100%% \\n&&·····]"},
        {u"Files (*.hsp)|*.hsp|", u"[Ƒîļéš (*.ĥšþ)·······]|*.hsp|"},
        {u"", u""},
        {u"x\\", u"[ẋ\\··]"},
    };
    for (const auto& c : cases) EXPECT_EQ(PseudoText(c.text), c.pseudo);
}

}  // namespace
