#include "locale/inicache.h"

#include "platform/tempfolder.h"

#include <gtest/gtest.h>

using namespace qrl;
using namespace std::literals;
using qrl::test::TempFolder;

namespace {

uint32_t g_ticks = 0;
uint32_t fakeTicks() { return g_ticks; }

std::u16string getString(IniFileCache& cache, const char16_t* section, const char16_t* key, const std::u16string& file,
                         const char16_t* defaultText = u"<default>") {
    char16_t buffer[256];
    const uint32_t n = cache.GetIniString(section, key, defaultText, buffer, 256, file.c_str());
    EXPECT_EQ(n, std::u16string{buffer}.size());
    return buffer;
}

// A section's entries as "key=value" joined by "|"; a raw line as "!" and the line.
std::u16string entries(const IniSection& section) {
    std::u16string out;
    for (const IniEntry& e : section.entries)
        out += (out.empty() ? u"" : u"|") + (e.raw ? u"!" + e.key : e.key + u"=" + e.value);
    return out;
}

// A cache on the fake tick counter and a folder for its files.
class IniCache : public ::testing::Test {
protected:
    // Writes `name` with `text` and gives its full name.
    std::u16string put(const std::string& name, const std::string& text) {
        dir.write(name, text);
        return dir.file(name);
    }
    TempFolder dir;
    IniFileCache cache{fakeTicks};
};

}  // namespace

TEST(IniFormat, ReadsLinesAsTheCacheDoes) {
    const auto sections = parseIniText("dropped=before\r\n; dropped comment\r\n[a]\r\nk =  v  \r\n; note\r\n"
                                       "  \r\nx=1=2\r\nnoequals\r\n[b\r\n=empty\r\nc\rr=lf\r\n"
                                       "[a]\r\nk=second\r\n[]x\r\n");
    ASSERT_EQ(sections.size(), 3u);
    // The value keeps its leading blanks; "noequals" and "[b" (no "]") go; a CR goes wherever it stands.
    EXPECT_EQ(entries(sections[0]), u"k=  v|!; note\n|!  \n|x=1=2|=empty|cr=lf");
    // A second [a] is a section of its own.
    EXPECT_EQ(sections[0].name + u"," + sections[1].name + u"," + sections[2].name, u"a,a,");
}

TEST(IniFormat, LongLinesAreReadInPiecesOf2047) {
    auto sections = parseIniText("[a]\nk=" + std::string(3000, 'v') + "\n" + std::string(2047, 'x') + "=y\n");
    ASSERT_EQ(sections.size(), 1u);
    // The rest of the long value has no "=" and goes; so does the first piece of the long key.
    EXPECT_EQ(entries(sections[0]), u"k=" + std::u16string(2045, u'v') + u"|=y");

    // Bytes are characters: no code page, a zero ends the line's text.
    sections = parseIniText(std::string{"[\xE9]\nk=\xFF\x80\nz=a\0b\n", 16});
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_EQ(sections[0].name, u"\u00E9");
    EXPECT_EQ(entries(sections[0]), u"k=\u00FF\u0080|z=a");
}

TEST(IniFormat, WritesSectionsAndEntriesWithCrLf) {
    const auto sections = parseIniText("junk\n[a]\nk=v \n;c\n  \n[b]\n;no line end");
    EXPECT_EQ(formatIniText(sections), "[a]\r\nk=v\r\n;c\r\n  \r\n[b]\r\n;no line end");
    // A raw last line without a line end runs into the next section; characters keep their low byte.
    std::vector<IniSection> more = sections;
    more.push_back({u"\u0141\u00E9", {{u"k", u"\u20AC", false}}});
    EXPECT_EQ(formatIniText(more), "[a]\r\nk=v\r\n;c\r\n  \r\n[b]\r\n;no line end[A\xE9]\r\nk=\xAC\r\n");
}

TEST_F(IniCache, LooksUpSectionsAndKeysWithoutRegardToCase) {
    const std::u16string file =
        put("t.ini", "[a]\r\nk =  v  \r\nn=12abc\r\nq=\"quoted\"\r\n[B]\r\nx=1\r\n[a]\r\nk=second\r\nonly=2nd\r\n");
    EXPECT_EQ(getString(cache, u"A", u"K", file), u"  v");
    EXPECT_EQ(getString(cache, u"a", u"k", dir.file("sub") + u"\\..\\.\\T.INI"), u"  v");  // the same file
    EXPECT_EQ(getString(cache, u"a", u"q", file), u"\"quoted\"");  // the cache keeps quotes
    EXPECT_EQ(getString(cache, u"b", u"X", file), u"1");
    // Only the first [a] is searched; a present section without the key gives "", not the default.
    EXPECT_EQ(getString(cache, u"a", u"only", file), u"");
    EXPECT_EQ(getString(cache, u"a", u"missing", file), u"");
    EXPECT_EQ(getString(cache, u"zz", u"k", file), u"<default>");
    EXPECT_EQ(getString(cache, u"zz", u"k", file, nullptr), u"");
    EXPECT_EQ(cache.GetIniInt(u"a", u"n", 7, file.c_str()), 12);
    EXPECT_EQ(cache.GetIniInt(u"a", u"missing", 7, file.c_str()), 0);
    EXPECT_EQ(cache.GetIniInt(u"zz", u"n", 7, file.c_str()), 7);
    EXPECT_EQ(cache.files.size(), 1u);
}

TEST_F(IniCache, ListsFillTheBufferWithinItsSize) {
    const std::u16string file = put("t.ini", "[a]\r\nk=1\r\n;raw\r\nn=2\r\nneg=3\r\n[B]\r\n[a]\r\n");
    // Section names: whole names while the list stays within size - 2, then a zero; the count leaves
    // that last zero out. Keys of the first [a], raw lines skipped; the count includes the last zero.
    // A value is cut to the buffer, its zero included.
    const struct Case { const char16_t *section, *key; uint32_t size; std::u16string_view list; uint32_t count; }
        cases[] = {
        {nullptr, nullptr, 9, u"a\0B\0a\0\0"sv, 6},
        {nullptr, nullptr, 8, u"a\0B\0a\0\0"sv, 6},
        {nullptr, nullptr, 7, u"a\0B\0\0"sv, 4},
        {nullptr, nullptr, 2, u"\0"sv, 0},
        {nullptr, nullptr, 0, u""sv, 0},
        {u"A", nullptr, 12, u"k\0n\0neg\0\0"sv, 9},
        {u"A", nullptr, 9, u"k\0n\0\0"sv, 5},
        {u"none", nullptr, 12, u"\0"sv, 1},
        {u"B", nullptr, 12, u"\0"sv, 1},
        {u"a", u"neg", 1, u"\0"sv, 0},
        {u"zz", u"k", 3, u"<d\0"sv, 2},
        {u"a", u"k", 0, u""sv, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.key ? "value" : c.section ? "keys" : "sections") << " in " << c.size);
        std::u16string buffer(40, u'#');
        EXPECT_EQ(cache.GetIniString(c.section, c.key, u"<default>", buffer.data(), c.size, file.c_str()), c.count);
        EXPECT_EQ(buffer.substr(0, c.list.size()), c.list);
        EXPECT_EQ(buffer.substr(c.size), std::u16string(40 - c.size, u'#'));  // nothing written past the size
    }
}

TEST_F(IniCache, SeesAChangedFileOnlyAfterTheInterval) {
    const std::u16string file = put("t.ini", "[a]\r\nk=old\r\n");
    const auto path = dir.path() / "t.ini";
    // Each step may rewrite the file with a later stamp (stamps count seconds), then reads at a tick
    // count. The interval counts from the last look at the time stamp, across the counter's wrap.
    const struct Step { const char* value; int later; uint32_t ticks; const char16_t* seen; } steps[] = {
        {nullptr, 0, 1000, u"old"},
        {"new", 10, 1000 + 4999, u"old"},
        {nullptr, 0, 1000 + 5000, u"new"},
        {"newer", 20, 0xFFFFF000u, u"newer"},
        {"newest", 30, 0xFFFFF000u + 4999u, u"newer"},  // wrapped
        {nullptr, 0, 0xFFFFF000u + 5000u, u"newest"},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.ticks);
        if (step.value) {
            dir.write("t.ini", std::string{"[a]\r\nk="} + step.value + "\r\n");
            const auto later = std::filesystem::last_write_time(path) + std::chrono::seconds(step.later);
            std::filesystem::last_write_time(path, later);
        }
        g_ticks = step.ticks;
        EXPECT_EQ(getString(cache, u"a", u"k", file), step.seen);
    }

    // Rewritten within the same second, the stamp doesn't change and the cache keeps what it has.
    const auto stamp = std::filesystem::last_write_time(path);
    dir.write("t.ini", "[a]\r\nk=unseen\r\n");
    std::filesystem::last_write_time(path, stamp);
    g_ticks += 10000;
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"newest");
    EXPECT_EQ(cache.files.size(), 1u);
}

TEST_F(IniCache, AMissingFileStaysAsAnEmptyRecordUntilItAppears) {
    const std::u16string file = dir.file("late.ini");
    g_ticks = 50000;
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"<default>");
    EXPECT_EQ(cache.GetIniInt(u"a", u"k", 9, file.c_str()), 9);
    ASSERT_EQ(cache.files.size(), 1u);
    EXPECT_TRUE(cache.files[0].sections.empty());

    // No file named at all answers like a missing file.
    char16_t buffer[8];
    EXPECT_EQ(cache.GetIniString(u"a", u"k", u"dflt", buffer, 8, nullptr), 4u);
    EXPECT_EQ(std::u16string{buffer}, u"dflt");
    EXPECT_EQ(cache.GetIniInt(u"a", u"k", 9, nullptr), 9);
    // Nor does a name that cannot be a file, and the cache keeps no record of it (the platform's
    // own answers to such names are checked with the platform).
    for (const std::u16string& bad : {std::u16string(1000, u'n'), std::u16string(u"a|b.ini")}) {
        EXPECT_FALSE(cache.WriteIniString(u"a", u"k", u"v", bad.c_str()));
        EXPECT_EQ(getString(cache, u"a", u"k", bad), u"<default>");
        EXPECT_EQ(cache.GetIniInt(u"a", u"k", 9, bad.c_str()), 9);
    }
    EXPECT_EQ(cache.files.size(), 1u);

    dir.write("late.ini", "[a]\r\nk=here\r\n");
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"<default>");
    g_ticks += 5000;
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"here");
}

TEST_F(IniCache, WriteDropsTheFileSoTheNextReadSeesIt) {
    const std::u16string file = put("w.ini", "[a]\r\nk=old\r\n");
    g_ticks = 7;
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"old");
    EXPECT_TRUE(cache.WriteIniString(u"a", u"k", u"new", (dir.path() / "." / "w.ini").u16string().c_str()));
    EXPECT_TRUE(cache.files.empty());
    EXPECT_EQ(getString(cache, u"a", u"k", file), u"new");  // no interval to wait for
}

TEST_F(IniCache, FlushSavesDirtyRecordsInTheCacheFormat) {
    const std::u16string file = put("d.ini", "before\r\n[a]\r\nk = v\r\n;c\r\n");
    EXPECT_EQ(getString(cache, u"a", u"k", file), u" v");
    cache.OnTimer();  // nothing dirty: the file is not touched
    EXPECT_EQ(dir.read("d.ini"), "before\r\n[a]\r\nk = v\r\n;c\r\n");
    cache.files[0].dirty = true;
    cache.OnTimer();
    EXPECT_EQ(dir.read("d.ini"), "[a]\r\nk= v\r\n;c\r\n");
    EXPECT_FALSE(cache.files[0].dirty);
}

// A whole section read in one lookup and written in one call, as hotspot sets are: the same bytes
// in both builds, and the cache never answers from before the write.
using Entries = std::vector<std::pair<std::u16string, std::u16string>>;

TEST_F(IniCache, SectionReadInOneLookupWithTheCacheOnOrOff) {
    const std::u16string file = put("s.ini", "[a]\r\nk = v\r\n; note\r\nK=second\r\nempty=\r\n[b]\r\nx=1\r\n");
    // As GetIniString answers: the cache keeps a value's leading blank, the platform does not.
    EXPECT_EQ(cache.GetIniSection(u"A", file.c_str()), (Entries{{u"k", u" v"}, {u"K", u"second"}, {u"empty", u""}}));
    cache.enabled = 0;  // the platform lists each name once, as it looks values up by name
    EXPECT_EQ(cache.GetIniSection(u"a", file.c_str()), (Entries{{u"k", u"v"}, {u"K", u"v"}, {u"empty", u""}}));
    EXPECT_TRUE(cache.GetIniSection(u"missing", file.c_str()).empty());
    EXPECT_TRUE(cache.GetIniSection(nullptr, file.c_str()).empty());
}

TEST_F(IniCache, SectionReplacedWholeInOneWrite) {
    const std::u16string file = put("w.ini", "[a]\r\nold=1\r\n[b]\r\nx=1\r\n");
    EXPECT_EQ(GetIniSection(u"a", file.c_str()).size(), 1u);  // now in the shared cache
    EXPECT_TRUE(WriteIniSection(u"a", {u"HS1=one,", u"HS2=", u"On=1"}, file.c_str()));
    EXPECT_EQ(GetIniSection(u"a", file.c_str()), (Entries{{u"HS1", u"one,"}, {u"HS2", u""}, {u"On", u"1"}}));
    EXPECT_EQ(dir.read("w.ini"), "[a]\r\nHS1=one,\r\nHS2=\r\nOn=1\r\n[b]\r\nx=1\r\n");
    // Deleted first, the section comes back at the end.
    EXPECT_TRUE(WriteIniString(u"a", nullptr, nullptr, file.c_str()));
    EXPECT_TRUE(WriteIniSection(u"a", {u"On=0"}, file.c_str()));
    EXPECT_EQ(dir.read("w.ini"), "[b]\r\nx=1\r\n[a]\r\nOn=0\r\n");
    EXPECT_FALSE(WriteIniSection(u"a", {u"On=0"}, dir.file("no/folder/w.ini").c_str()));
}

// Without the cache a section is read key by key: a list of names longer than the first buffer
// (400 keys of 200 characters) still comes whole.
TEST_F(IniCache, UncachedSectionReadsEveryKeyOfALargeSection) {
    std::string text = "[big]\r\n";
    for (int i = 0; i < 400; ++i)
        text += std::string(196, 'k') + std::to_string(1000 + i) + "=" + std::to_string(i) + "\r\n";
    const std::u16string file = put("big.ini", text);
    cache.enabled = 0;
    const auto section = cache.GetIniSection(u"big", file.c_str());
    ASSERT_EQ(section.size(), 400u);
    EXPECT_EQ(section.back().first, std::u16string(196, u'k') + u"1399");
    EXPECT_EQ(section.back().second, u"399");
}
