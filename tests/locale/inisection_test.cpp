// A whole section read in one lookup and written in one call, as hotspot sets are: the same bytes
// in both builds, and the cache never answers from before the write.
#include "locale/inicache.h"

#include "platform/tempfolder.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

using Entries = std::vector<std::pair<std::u16string, std::u16string>>;

TEST(IniSection, ReadInOneLookupWithTheCacheOnOrOff) {
    test::TempFolder dir;
    dir.write("s.ini", "[a]\r\nk = v\r\n; note\r\nK=second\r\nempty=\r\n[b]\r\nx=1\r\n");
    const std::u16string file = dir.file("s.ini");
    IniFileCache cache;
    // As GetIniString answers: the cache keeps a value's leading blank, the platform does not.
    EXPECT_EQ(cache.GetIniSection(u"A", file.c_str()), (Entries{{u"k", u" v"}, {u"K", u"second"}, {u"empty", u""}}));
    cache.enabled = 0;  // the platform lists each name once, as it looks values up by name
    EXPECT_EQ(cache.GetIniSection(u"a", file.c_str()), (Entries{{u"k", u"v"}, {u"K", u"v"}, {u"empty", u""}}));
    EXPECT_TRUE(cache.GetIniSection(u"missing", file.c_str()).empty());
    EXPECT_TRUE(cache.GetIniSection(nullptr, file.c_str()).empty());
}

TEST(IniSection, ReplacedWholeInOneWrite) {
    test::TempFolder dir;
    dir.write("w.ini", "[a]\r\nold=1\r\n[b]\r\nx=1\r\n");
    const std::u16string file = dir.file("w.ini");
    EXPECT_EQ(GetIniSection(u"a", file.c_str()).size(), 1u);  // now in the cache
    EXPECT_TRUE(WriteIniSection(u"a", {u"HS1=one,", u"HS2=", u"On=1"}, file.c_str()));
    EXPECT_EQ(GetIniSection(u"a", file.c_str()), (Entries{{u"HS1", u"one,"}, {u"HS2", u""}, {u"On", u"1"}}));
    EXPECT_EQ(dir.read("w.ini"), "[a]\r\nHS1=one,\r\nHS2=\r\nOn=1\r\n[b]\r\nx=1\r\n");
    // Deleted first, the section comes back at the end.
    EXPECT_TRUE(WriteIniString(u"a", nullptr, nullptr, file.c_str()));
    EXPECT_TRUE(WriteIniSection(u"a", {u"On=0"}, file.c_str()));
    EXPECT_EQ(dir.read("w.ini"), "[b]\r\nx=1\r\n[a]\r\nOn=0\r\n");
    EXPECT_FALSE(WriteIniSection(u"a", {u"On=0"}, dir.file("no/folder/w.ini").c_str()));
}

}  // namespace
}  // namespace qrl
