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
    EXPECT_EQ(sorted(platform::listFiles(dir.file("*.t?t"))), (std::vector<std::u16string>{u"d.txt"}));
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
    EXPECT_TRUE(platform::readFile((dir.path() / "f.bin").string(), got));
    EXPECT_EQ(got, bytes);

    // A shorter write replaces the whole file.
    ASSERT_TRUE(platform::writeFile(dir.file("f.bin"), "ab"));
    EXPECT_EQ(dir.read("f.bin"), "ab");

    got = "stale";
    EXPECT_FALSE(platform::readFile(dir.file("missing.bin"), got));
    EXPECT_EQ(got, "");
    std::filesystem::create_directory(dir.path() / "sub");
    EXPECT_FALSE(platform::readFile(dir.file("sub"), got));
    EXPECT_FALSE(platform::readFile((dir.path() / "sub").string(), got));
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
    EXPECT_TRUE(iequals(platform::fullPath(u"a\\..\\rel.ini"), platform::fullPath(u"rel.ini")));

    // _wfullpath works in 260 characters; a longer result is refused.
    EXPECT_TRUE(platform::fullPath(dir.file(std::string(300, 'n'))).empty());
}
