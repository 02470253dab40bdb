// The same writes must leave the same bytes in both builds. The expected files are what Windows'
// profile functions wrote under Wine; the native build checks its own writer against them.
#include "platform/platform.h"

#include "platform/tempfolder.h"

#include <gtest/gtest.h>

#include <optional>

using namespace qrl;
using qrl::test::TempFolder;

namespace {

struct Write {
    const char16_t* section;
    const char16_t* key;
    const char16_t* value;
};

struct Case {
    const char* name;
    std::optional<std::string> before;  // none: the file doesn't exist
    std::vector<Write> writes;
    std::optional<std::string> after;   // none: no file is made
};

const Case cases[] = {
    {"new file, section, key, replaced value, deleted key and section", std::nullopt,
     {{u"App", u"key", u"string"}, {u"Second", u"k2", u"v2"}, {u"App", u"key2", u"  val2  "},
     {u"app", u"KEY", u"replaced"}, {u"App", u"key", nullptr}, {u"Second", nullptr, nullptr}},
     "[App]\r\nkey2=val2\r\n"},
    {"a hand-written file is normalised when written",
     "pre line\r\n; comment before\r\n\r\n[ Sec ] trailing\r\n  key  =  value  \r\nnoequals\r\n=onlyvalue\r\n"
     "=second\r\n==\r\n\r\n; comment\r\n[unterminated\r\n[Sec]\r\nk=dup\r\n[]\r\nempty=sec\r\nlast=x",
     {{u"sec", u"new", u"1"}},
     "pre line\r\n; comment before\r\n[Sec]\r\nkey=value\r\nnoequals\r\n=onlyvalue\r\n; comment\r\n"
     "[unterminated\r\nnew=1\r\n[Sec]\r\nk=dup\r\nempty=sec\r\nlast=x\r\n"},
    {"writing the value a key has leaves the file alone", "[S]\r\n  k = v  \r\n\r\n",
     {{u"S", u"k", u"v"}, {u"S", u"k", u"   v"}}, "[S]\r\n  k = v  \r\n\r\n"},
    {"names are trimmed, values only at their start", std::nullopt,
     {{u" S p ", u" k ", u"  v  "}, {u"S p", u"k", u"w"}, {u" s p ", u"K ", u"  w"}}, "[S p]\r\nk=w\r\n"},
    {"deleting a section takes the first of that name", "[A]\r\na=1\r\n[B]\r\nb=1\r\n[A]\r\nc=2\r\n",
     {{u"A", nullptr, nullptr}}, "[B]\r\nb=1\r\n[A]\r\nc=2\r\n"},
    {"deleting a key looks in every section of that name", "[A]\r\na=1\r\n[B]\r\nb=1\r\n[A]\r\nc=2\r\n",
     {{u"a", u"C", nullptr}}, "[A]\r\na=1\r\n[B]\r\nb=1\r\n[A]\r\n"},
    {"a new key goes to the first section of that name", "[A]\r\na=1\r\n[B]\r\nb=1\r\n[A]\r\nc=2\r\n",
     {{u"a", u"C", u"3"}}, "[A]\r\na=1\r\nC=3\r\n[B]\r\nb=1\r\n[A]\r\nc=2\r\n"},
    {"lone CR and lone LF end lines", std::string{"[A]\ra=1\rb=2\r[B]\nc=3"}, {{u"B", u"d", u"4"}},
     "[A]\r\na=1\r\nb=2\r\n[B]\r\nc=3\r\nd=4\r\n"},
    {"a section header runs to its last bracket", "[ a ]b]\r\nk=1\r\n[x]]\r\nk=2\r\n[[y]\r\nk=3\r\n\r\r\n[z\r\n",
     {{u"a ]b", u"n", u"1"}, {u"x]", u"n", u"2"}, {u"[y", u"n", u"3"}},
     "[a ]b]\r\nk=1\r\nn=1\r\n[x]]\r\nk=2\r\nn=2\r\n[[y]\r\nk=3\r\n[z\r\nn=3\r\n"},
    {"white space is blank, tab to CR and ^Z, not a no-break space",
     "[A]\r\n\vk\f=\vv\f\r\n\tj\t=\tw\xA0\r\n\x1A", {{u"A", u"n", u"\u00A0x"}},
     "[A]\r\nk=v\r\nj=w\xA0\r\nn=\xA0x\r\n"},
    {"a UTF-8 file stays UTF-8 with its mark", "\xEF\xBB\xBF[A]\r\na=1\r\n", {{u"A", u"b", u"\u00E9"}},
     "\xEF\xBB\xBF[A]\r\na=1\r\nb=\xC3\xA9\r\n"},
    {"a zero in a line ends its text", std::string{"[A]\r\na=1\0zz\r\n\0x=1\r\n", 19}, {{u"A", u"c", u"3"}},
     "[A]\r\na=1\r\n=1\r\nc=3\r\n"},
    {"quotes are written as given", "[A]\r\na=\"q\"\r\n", {{u"A", u"b", u"'x'"}, {u"A", u"e", u""}},
     "[A]\r\na=\"q\"\r\nb='x'\r\ne=\r\n"},
    {"deleting from a missing file makes no file", std::nullopt,
     {{u"A", u"b", nullptr}, {u"A", nullptr, nullptr}}, std::nullopt},
};

}  // namespace

TEST(Profile, WritesTheSameBytesAsWindows) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TempFolder dir;
        if (c.before) dir.write("p.ini", *c.before);
        const std::u16string file = dir.file("p.ini");
        for (const Write& w : c.writes) EXPECT_TRUE(platform::writeProfileString(w.section, w.key, w.value, file.c_str()));
        ASSERT_EQ(dir.exists("p.ini"), c.after.has_value());
        if (c.after) {
            EXPECT_EQ(dir.read("p.ini"), *c.after);
        }
    }
}

TEST(Profile, RefusesWritesWithoutSectionOrFile) {
    TempFolder dir;
    const std::u16string file = dir.file("p.ini");
    EXPECT_FALSE(platform::writeProfileString(nullptr, u"k", u"v", file.c_str()));
    EXPECT_FALSE(platform::writeProfileString(nullptr, nullptr, nullptr, file.c_str()));  // the flush request
    EXPECT_FALSE(dir.exists("p.ini"));
    EXPECT_FALSE(platform::writeProfileString(u"S", u"k", u"v", dir.file("no/folder/p.ini").c_str()));
}

TEST(Profile, ReadsStraightFromTheFile) {
    TempFolder dir;
    dir.write("p.ini", "[A]\r\nq=\"quoted\"\r\nn= 42x\r\nbare\r\n;c=1\r\n[B]\r\n");
    const std::u16string file = dir.file("p.ini");
    char16_t buffer[64];
    EXPECT_EQ(platform::getProfileString(u"a", u"Q", u"d", buffer, 64, file.c_str()), 6u);
    EXPECT_EQ(std::u16string{buffer}, u"quoted");
    // Unlike the cache, a key missing from a present section gives the default.
    EXPECT_EQ(platform::getProfileString(u"A", u"none", u"dflt  ", buffer, 64, file.c_str()), 4u);
    EXPECT_EQ(std::u16string{buffer}, u"dflt");
    EXPECT_EQ(platform::getProfileString(u"A", u"q", u"", buffer, 4, file.c_str()), 3u);
    EXPECT_EQ(std::u16string{buffer}, u"quo");
    EXPECT_EQ(platform::getProfileString(nullptr, nullptr, u"", buffer, 64, file.c_str()), 4u);
    EXPECT_EQ(std::u16string(buffer, 5), std::u16string(u"A\0B\0\0", 5));
    EXPECT_EQ(platform::getProfileString(u"A", nullptr, u"", buffer, 64, file.c_str()), 4u);
    EXPECT_EQ(std::u16string(buffer, 5), std::u16string(u"q\0n\0\0", 5));
    EXPECT_EQ(platform::getProfileInt(u"A", u"n", 7, file.c_str()), 42u);
    EXPECT_EQ(platform::getProfileInt(u"A", u"none", 7, file.c_str()), 7u);
    EXPECT_EQ(platform::getProfileInt(u"Z", u"n", -1, file.c_str()), 0xFFFFFFFFu);
}
