#include "text/textutil.h"

#include <gtest/gtest.h>

using namespace qrl;

TEST(TextCompare, FoldsOnlyAsciiLettersLikeTheRuntime) {
    EXPECT_TRUE(iequals(u"Config", u"CONFIG"));
    EXPECT_FALSE(iequals(u"\u00e9", u"\u00c9"));  // the "C" locale folds nothing beyond ASCII
    EXPECT_FALSE(iequals(u"abc", u"abcd"));
    EXPECT_EQ(icompare(u"abc", u"ABD") < 0, true);
    EXPECT_EQ(icompare(u"ab", u"AB"), 0);
    EXPECT_LT(icompare(u"ab", u"abc"), 0);
    // '_' (0x5F) sorts after the folded letters' upper case but before lower case: folding to lower
    // puts it before letters, as _wcsicmp does.
    EXPECT_LT(icompare(u"_", u"A"), 0);
    EXPECT_TRUE(istartsWith(u"KeyMapX", u"keymap"));
    EXPECT_EQ(IHash{}(u"Data"), IHash{}(u"dATA"));
}

// A reader's result and the count of characters it used, for one comparison.
template <class Reader>
std::pair<long long, std::size_t> read(Reader reader, std::u16string_view text) {
    std::size_t used = 99;
    const long long value = reader(text, &used);
    return {value, used};
}
using Read = std::pair<long long, std::size_t>;

TEST(TextNumbers, DecimalIsLenient) {
    const std::pair<const char16_t*, int> cases[] = {
        {u"  42xyz", 42}, {u"-17", -17}, {u"+8", 8}, {u"x1", 0}, {u"", 0}, {u"- 1", 0},
        {u"99999999999", 2147483647}, {u"-99999999999", -2147483647 - 1},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(wtoi(text), value) << utf16ToUtf8(text);
    EXPECT_EQ(read(wcstolBase10, u"\t12 "), Read(12, 3));
    EXPECT_EQ(read(wcstolBase10, u"abc"), Read(0, 0));
}

TEST(TextNumbers, HexadecimalIsLenient) {
    // {text, value, characters used}
    const struct Case { const char16_t* text; long long value; std::size_t used; } cases[] = {
        {u"ff", 0xFF, 2}, {u"0x1A", 0x1A, 4}, {u" 10zz", 0x10, 3}, {u"123456789", 0xFFFFFFFF, 9},
        {u"-1", 0xFFFFFFFF, 2}, {u"-0x10", 0xFFFFFFF0, 5}, {u"0", 0, 1},
        // "0x" is taken as the prefix whatever follows; with no digit after it there is no number.
        {u"0xg", 0, 0}, {u"0X", 0, 0},
    };
    for (const Case& c : cases) EXPECT_EQ(read(wcstoulBase16, c.text), Read(c.value, c.used)) << utf16ToUtf8(c.text);
    EXPECT_EQ(read(wcstoulBase10, u" 4294967295x"), Read(0xFFFFFFFF, 11));
    EXPECT_EQ(read(wcstoulBase10, u"4294967296"), Read(0xFFFFFFFF, 10));
    EXPECT_EQ(read(wcstoulBase10, u"-5"), Read(0xFFFFFFFB, 2));
    EXPECT_EQ(read(wcstoulBase10, u"0x10"), Read(0, 1));
    EXPECT_EQ(hexUpper(0), u"0");
    EXPECT_EQ(hexUpper(0xABC), u"ABC");
    EXPECT_EQ(hexLower(0xABC0), u"abc0");
    EXPECT_EQ(hexLower(0xFFFFFFFFu), u"ffffffff");
}

TEST(TextNumbers, DigitsOfOtherScriptsCountAsTheRuntimeReadsThem) {
    EXPECT_EQ(wtoi(u"\uFF11\uFF12"), 12);             // fullwidth
    EXPECT_EQ(read(wcstolBase10, u"-\u0663\u0660x"), Read(-30, 3));  // Arabic-Indic
    EXPECT_EQ(wtoi(u"\u0967\u0E59\u1819"), 199);      // Devanagari, Thai, Mongolian
    EXPECT_EQ(wtoi(u"\uFF1A"), 0);                     // just past the fullwidth nine
    EXPECT_EQ(wtoi(u"\u0669\u066A"), 9);              // Arabic-Indic nine, then no digit
    // The runtime's white space in front includes the no-break space, but not C1 controls.
    EXPECT_EQ(wtoi(u"\u00A0\v\f 7"), 7);
    EXPECT_EQ(wtoi(u"\u00857"), 0);
    EXPECT_TRUE(isRuntimeSpace(u'\u00A0'));
    EXPECT_FALSE(isRuntimeSpace(u'\u0085'));
    // Letters above 9 are ASCII only; a zero of another script still starts the "0x" prefix.
    EXPECT_EQ(wcstoulBase16(u"\uFF21"), 0u);
    EXPECT_EQ(read(wcstoulBase16, u"\u0660x1f\u0661"), Read(0x1F1, 5));
}

TEST(TextConversion, Utf8RoundTripsAndReplacesBrokenInput) {
    const std::u16string text = u"a\u00e9\u20ac\U0001F600z";
    EXPECT_EQ(utf8ToUtf16(utf16ToUtf8(text)), text);
    EXPECT_EQ(utf16ToUtf8(u"\u00e9"), "\xC3\xA9");
    EXPECT_EQ(utf8ToUtf16("\xC3"), u"\uFFFD");            // cut short
    EXPECT_EQ(utf8ToUtf16("\xC0\x80"), u"\uFFFD\uFFFD");  // overlong
    EXPECT_EQ(utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // encoded surrogate
    EXPECT_EQ(utf16ToUtf8(std::u16string(1, u'\xD800')), "\xEF\xBF\xBD");  // lone surrogate
    EXPECT_EQ(utf16ToLatin1(latin1ToUtf16("\xFF\x01")), "\xFF\x01");
    EXPECT_EQ(utf16ToLatin1(u"\u20ac"), "?");
}

TEST(TextTrim, UsesTheXmlWhiteSpaceSetOnly) {
    EXPECT_EQ(trimXmlSpace(u" \t\r\nx y\n "), u"x y");
    EXPECT_EQ(trimXmlSpace(u"\vx\f"), u"\vx\f");
    EXPECT_EQ(trimXmlSpace(u"   "), u"");
}
