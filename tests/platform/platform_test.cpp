#include "platform/platform.h"

#include "platform/tempfolder.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace qrl;
using qrl::test::TempFolder;

namespace {

template <typename T>
std::vector<T> sorted(std::vector<T> v) {
    std::sort(v.begin(), v.end());
    return v;
}

}  // namespace

TEST(PlatformFiles, ListsTheEntriesMatchingAPattern) {
    TempFolder dir;
    for (const char* name : {"a.lang", "B.LANG", "c.lang.bak", "d.txt", "e.langx", "f.lan", "hh.lang"})
        dir.write(name, "x");
    std::filesystem::create_directory(dir.path() / "g.lang");
    const std::string folder = dir.path().string();

    // Windows-style separator, case ignored, folders listed too (opening them fails later).
    EXPECT_EQ(sorted(platform::listFiles(folder + "\\*.lang")),
              (std::vector<std::string>{"B.LANG", "a.lang", "g.lang", "hh.lang"}));
    EXPECT_EQ(sorted(platform::listFiles(folder + "/?.lang")),
              (std::vector<std::string>{"B.LANG", "a.lang", "g.lang"}));
    EXPECT_TRUE(platform::listFiles(folder + "\\missing\\*.lang").empty());
    EXPECT_TRUE(platform::listFiles(folder + "\\*.none").empty());
}

TEST(PlatformFiles, ReadsAndWritesWholeFiles) {
    TempFolder dir;
    const std::string bytes{"line\r\n\0\xFF" "end", 11};
    ASSERT_TRUE(platform::writeFile(dir.file("f.bin"), bytes));
    std::string got{"stale"};
    EXPECT_TRUE(platform::readFile(dir.file("f.bin"), got));
    EXPECT_EQ(got, bytes);

    // A shorter write replaces the whole file.
    ASSERT_TRUE(platform::writeFile(dir.file("f.bin"), "ab"));
    EXPECT_EQ(dir.read("f.bin"), "ab");

    got = "stale";
    EXPECT_FALSE(platform::readFile(dir.file("missing.bin"), got));
    EXPECT_EQ(got, "");
    std::filesystem::create_directory(dir.path() / "sub");
    EXPECT_FALSE(platform::readFile(dir.file("sub"), got));
    EXPECT_FALSE(platform::writeFile(dir.file("sub"), "x"));
    EXPECT_FALSE(platform::writeFile(dir.file("no/such/folder.bin"), "x"));
}

TEST(PlatformFiles, TimeStampIsTheModificationTimeInSeconds) {
    TempFolder dir;
    EXPECT_EQ(platform::fileTimeStamp(dir.file("missing")), 0u);
    dir.write("f.ini", "x");
    const uint32_t before = platform::fileTimeStamp(dir.file("f.ini"));
    EXPECT_NE(before, 0u);
    const auto p = dir.path() / "f.ini";
    std::filesystem::last_write_time(p, std::filesystem::last_write_time(p) + std::chrono::seconds(10));
    EXPECT_EQ(platform::fileTimeStamp(dir.file("f.ini")) - before, 10u);
}

TEST(PlatformPaths, FullPathFoldsDotsAndSeparators) {
    TempFolder dir;
    const std::u16string plain = platform::fullPath(dir.file("x.ini"));
    ASSERT_FALSE(plain.empty());
    EXPECT_TRUE(iequals(platform::fullPath(dir.file("sub") + u"\\..\\.\\x.ini"), plain));
    EXPECT_TRUE(iequals(platform::fullPath(dir.file("sub") + u"/../x.ini"), plain));
    EXPECT_EQ(platform::fullPath(dir.file("sub") + u"//x.ini"), platform::fullPath(dir.file("sub") + u"/x.ini"));

    // A relative name is taken from the current folder.
    const std::u16string cwd = std::filesystem::current_path().u16string();
    EXPECT_TRUE(iequals(platform::fullPath(u"rel.ini"), platform::fullPath(cwd + u"/rel.ini")));

    // _wfullpath works in 260 characters; a longer result is refused.
    EXPECT_TRUE(platform::fullPath(dir.file(std::string(300, 'n'))).empty());
}

TEST(PlatformPaths, NamesThatCannotBeFilesNeverReachTheSystem) {
    const struct Case { std::u16string path; bool file, pattern; } cases[] = {
        {u"C:\\dir\\x.ini", true, true},
        {u"rel\\x.ini", true, true},
        {u"dir/*.la?g", false, true},
        {u"di*r\\x.ini", false, false},
        {u"", false, false},
        {std::u16string(259, u'n'), true, true},
        {std::u16string(260, u'n'), false, false},
        {u"ab:c", false, false},
        {u"1:\\x", false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(platform::isUsablePath(c.path), c.file) << c.path.size();
        EXPECT_EQ(platform::isUsablePath(c.path, true), c.pattern) << c.path.size();
    }
    for (char16_t bad : u"\t<>\"|") {  // the literal's own zero too
        const std::u16string path = u"a" + std::u16string(1, bad) + u"b";
        EXPECT_FALSE(platform::isUsablePath(path) || platform::isUsablePath(path, true)) << int(bad);
    }

    // Each seam answers an unusable name, and a relative one too long once made full, as a file
    // that isn't there; files beside it stay untouched.
    TempFolder dir;
    dir.write("a.lang", "x");
    const std::u16string cwd = std::filesystem::current_path().u16string();
    for (const std::u16string& bad : {dir.file("a|b"), std::u16string(1000, u'n'), std::u16string(259 - cwd.size(), u'n')}) {
        std::string bytes{"stale"};
        EXPECT_FALSE(platform::readFile(bad, bytes));
        EXPECT_EQ(bytes, "");
        EXPECT_FALSE(platform::writeFile(bad, "x"));
        EXPECT_EQ(platform::fileTimeStamp(bad), 0u);
        EXPECT_TRUE(platform::listFiles(bad + u"\\*").empty());
        EXPECT_FALSE(platform::writeProfileString(u"s", u"k", u"v", bad.c_str()));
        char16_t buffer[8];
        EXPECT_EQ(platform::getProfileString(u"s", u"k", u"dflt", buffer, 8, bad.c_str()), 4u);
        EXPECT_EQ(platform::getProfileInt(u"s", u"k", 7, bad.c_str()), 7u);
    }
    EXPECT_TRUE(platform::listFiles(dir.file("a|*")).empty());
    EXPECT_EQ(platform::listFiles(dir.file("a.*")), (std::vector<std::u16string>{u"a.lang"}));
}
