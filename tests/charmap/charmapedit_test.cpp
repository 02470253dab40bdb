#include "charmap/charmapedit.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TCharMap Map(uint32_t flags, uint32_t start, uint32_t length, std::size_t table) {
    TCharMap map;
    map.mapName = u"cp";
    map.flags = flags;
    map.start = start;
    map.length = length;
    map.SetTableLength(table);
    return map;
}

TEST(CharMapRows, CountsAndFormatsOfTheThreeKinds) {
    EXPECT_EQ(CharMapRowCount(Map(0, 0xF0, 0x40, 0x130)), 16u);  // codes above 255 are not reachable
    EXPECT_EQ(CharMapRowCount(Map(0, 0x100, 4, 0x104)), 0u);
    EXPECT_EQ(CharMapRowCount(Map(0, 5, 0, 5)), 0u);
    EXPECT_EQ(CharMapRowCount(Map(kCharMapReverse, 0, 0, 10)), 256u);

    TCharMap direct = Map(0, 0x40, 3, 0x43);
    direct.map[0x41] = 0x00C4;
    const TCharInverse none = BuildInverse(direct);
    EXPECT_EQ(CharMapRowText(direct, none, 0), u"\t40\t->\t0040 @");
    EXPECT_EQ(CharMapRowText(direct, none, 1), u"*\t41\t->\t00C4 \u00C4");

    TCharMap bytes = Map(kCharMapHostBytes, 0, 2, 2);
    bytes.map[1] = 0xC1;
    EXPECT_EQ(CharMapRowText(bytes, BuildInverse(bytes), 1), u"*\t0001 <SOH>\t->\tC1");
    EXPECT_EQ(CharMapRowText(bytes, BuildInverse(bytes), 0), u"\t0000 <NUL>\t->\t00");

    // Two Unicode values for one byte: the higher wins.
    TCharMap reverse = Map(kCharMapReverse, 0, 0, 0x300);
    reverse.map[0x2C0] = 0x41;
    reverse.map[0x2D0] = 0x41;
    const TCharInverse inverse = BuildInverse(reverse);
    EXPECT_EQ(inverse[0x41], 0x2D0);
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x41), u"*\t02D0 \u02D0\t<-\t41");
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x7F), u"\t007F <DEL>\t<-\t7F");
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x85), u"\t0085 \t<-\t85");  // no name for a C1 control
}

TEST(CharMapEntry, HexFieldRules) {
    const struct {
        const char16_t* text;
        bool unicode;
        std::optional<uint32_t> value;
    } cases[] = {
        {u"1F ", true, 0x1F}, {u"1G", true, std::nullopt},  {u"", true, 0},           {u"100", false, std::nullopt},
        {u"100", true, 0x100}, {u"FF", false, 0xFF},         {u"FFFF", true, 0xFFFF}, {u"10000", true, std::nullopt},
        {u" 2a", true, 0x2A},  {u"-1", true, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.text, c.text + std::char_traits<char16_t>::length(c.text)));
        EXPECT_EQ(ParseCharEntryHex(c.text, c.unicode), c.value);
    }
    EXPECT_EQ(CharEntryHexText(0x41, true), u"0041");
    EXPECT_EQ(CharEntryHexText(0x41, false), u"41");
    EXPECT_EQ(CharEntryCharText(u' '), u" ");
    EXPECT_EQ(CharEntryCharText(0x9F), u"");
    EXPECT_EQ(CharEntryCharText(0xD800), u"");
}

TEST(CharMapEntry, DirectEditsAreAtOnceReverseOnesWaitForTheTable) {
    TCharMap direct = Map(kCharMapHostBytes, 0x10, 4, 0x14);
    TCharInverse inverse = BuildInverse(direct);
    const TCharEntry start = CharEntryOf(direct, inverse, 2);
    EXPECT_EQ(start.source, u"0012 <DC2>");
    EXPECT_FALSE(start.unicodeValue);
    StoreCharEntry(direct, inverse, 2, 0xF2);
    EXPECT_EQ(direct.map[0x12], 0xF2);
    EXPECT_TRUE(direct.modified);

    TCharMap reverse = Map(kCharMapReverse, 0, 0, 0x200);
    reverse.map[0x1E9] = 0x45;  // the kernel's own choice, undone by a rebuild from the default
    inverse = BuildInverse(reverse);
    const TCharEntry row = CharEntryOf(reverse, inverse, 0x45);
    EXPECT_EQ(row.source, u"45");
    EXPECT_EQ(row.value, 0x1E9u);
    StoreCharEntry(reverse, inverse, 0xC9, 0xC9 + 0x100);
    EXPECT_EQ(reverse.map[0x1C9], 0x1C9);  // not yet
    ApplyInverse(reverse, inverse);
    EXPECT_EQ(reverse.map[0x1C9], 0xC9);
    EXPECT_EQ(reverse.map[0x1E9], 0x45);  // still named by the inverse
}

TEST(NewLanguageName, BracketsAndExactNames) {
    const std::vector<std::u16string> languages{u"a", u"German"};
    EXPECT_EQ(CheckNewLanguageName(u"a[b", languages), LanguageNameProblem::InvalidCharacters);
    EXPECT_EQ(CheckNewLanguageName(u"b]", languages), LanguageNameProblem::InvalidCharacters);
    EXPECT_EQ(CheckNewLanguageName(u"German", languages), LanguageNameProblem::InUse);
    EXPECT_EQ(CheckNewLanguageName(u"A", languages), LanguageNameProblem::None);
}

}  // namespace
}  // namespace qrl
