#include "kit/fieldrules.h"

#include <gtest/gtest.h>

#include <set>

namespace qrl {
namespace {

TEST(IntegerCheck, NumbersAndRubbish) {
    std::u16string m;
    EXPECT_TRUE(CheckIntegerText(u"15", 10, 20, m));
    EXPECT_TRUE(CheckIntegerText(u" 15  ", 10, 20, m));  // white space on both sides passes
    EXPECT_TRUE(CheckIntegerText(u"", 0, 5, m));          // empty reads 0
    EXPECT_FALSE(CheckIntegerText(u"12x", 0, 100, m));
    EXPECT_EQ(m, u"\"12x\" is not a valid number");
    // The range ends themselves are refused, like an overflow.
    EXPECT_FALSE(CheckIntegerText(u"2147483647", 0, 0, m));
    EXPECT_FALSE(CheckIntegerText(u"-2147483648", 0, 0, m));
    EXPECT_FALSE(CheckIntegerText(u"99999999999", 0, 0, m));
    EXPECT_TRUE(CheckIntegerText(u"2147483646", 0, 0, m));
}

TEST(IntegerCheck, Bounds) {
    std::u16string m;
    EXPECT_FALSE(CheckIntegerText(u"21", 10, 20, m));
    EXPECT_EQ(m, u"Value must be between 10 and 20");
    EXPECT_FALSE(CheckIntegerText(u"-3", -2, 20, m));
    EXPECT_EQ(m, u"Value must be between -2 and 20");
    EXPECT_TRUE(CheckIntegerText(u"20", 10, 20, m));
    EXPECT_TRUE(CheckIntegerText(u"999", 0, 0, m));  // 0 and 0: unbounded
    EXPECT_TRUE(CheckIntegerText(u"999", 5, 1, m));  // min above max: unbounded
}

TEST(BrowseFilter, BarsBecomeZerosAndLengthIsBounded) {
    const std::u16string all = u"|All files (*.*)|*.*|";
    EXPECT_EQ(BuildBrowseFilter(u"", all), std::u16string(u"\0All files (*.*)\0*.*\0\0\0", 23));
    EXPECT_EQ(BuildBrowseFilter(u"Keys|*.key", all), std::u16string(u"Keys\0*.key\0All files (*.*)\0*.*\0\0\0", 33));
    EXPECT_EQ(BuildBrowseFilter(std::u16string(1000, u'a'), all).size(), 399u + 2);
    EXPECT_EQ(BrowseInitialFile(u"c:/a/b.txt"), u"c:\\a\\b.txt");
    EXPECT_EQ(BrowseInitialFile(std::u16string(300, u'x')).size(), 259u);
}

TEST(KeyImport, TargetNamesAndNumbering) {
    std::set<std::u16string> existing;
    auto exists = [&](const std::u16string& p) { return existing.count(p) > 0; };
    ImportPlan p = PlanKeyImport(u"C:\\auth", u"D:/keys/id_rsa", exists);
    EXPECT_EQ(p.directory, u"C:\\auth\\");
    EXPECT_EQ(p.target, u"C:\\auth\\id_rsa");
    EXPECT_TRUE(p.copy);

    existing = {u"C:\\auth/id_rsa", u"C:\\auth/id_rsa (2)"};
    p = PlanKeyImport(u"C:\\auth/", u"D:\\keys\\id_rsa", exists);
    EXPECT_EQ(p.name, u"id_rsa (3)");  // behind the extension, if any
    EXPECT_EQ(p.target, u"C:\\auth/id_rsa (3)");

    // The file chosen from the auth directory itself: nothing to copy, no renaming.
    existing = {u"C:\\auth\\k"};
    p = PlanKeyImport(u"C:\\auth", u"C:\\auth\\k", exists);
    EXPECT_FALSE(p.copy);
    EXPECT_EQ(p.name, u"k");

    // Everything taken: the last name tried is used.
    p = PlanKeyImport(u"C:\\auth", u"E:\\k", [](const std::u16string&) { return true; });
    EXPECT_EQ(p.name, u"k (1000)");
}

TEST(LanguageDelete, ListsAndSelection) {
    std::vector<std::u16string> strings{u"English", u"German", u"german"};
    std::vector<std::u16string> values{u"en", u"de", u"de2", u"extra"};
    EXPECT_FALSE(RemoveLanguageEntry(strings, values, u"GERMAN"));  // case counts
    EXPECT_TRUE(RemoveLanguageEntry(strings, values, u"german"));
    EXPECT_EQ(strings, (std::vector<std::u16string>{u"English", u"German"}));
    EXPECT_EQ(values, (std::vector<std::u16string>{u"en", u"de", u"extra"}));
    EXPECT_EQ(SelectionAfterDelete(2, 2), 1);
    EXPECT_EQ(SelectionAfterDelete(0, 2), 0);
    EXPECT_EQ(SelectionAfterDelete(0, 0), -1);
    EXPECT_EQ(SelectionAfterDelete(-1, 3), -1);
}

}  // namespace
}  // namespace qrl
