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
    EXPECT_LT(icompare(u"_", u"a"), 0);
    EXPECT_LT(icompare(u"_", u"A"), 0);
    EXPECT_TRUE(istartsWith(u"KeyMapX", u"keymap"));
    EXPECT_EQ(IHash{}(u"Data"), IHash{}(u"dATA"));
}

TEST(TextNumbers, DecimalIsLenient) {
    EXPECT_EQ(wtoi(u"  42xyz"), 42);
    EXPECT_EQ(wtoi(u"-17"), -17);
    EXPECT_EQ(wtoi(u"+8"), 8);
    EXPECT_EQ(wtoi(u"x1"), 0);
    EXPECT_EQ(wtoi(u""), 0);
    EXPECT_EQ(wtoi(u"- 1"), 0);
    EXPECT_EQ(wtoi(u"99999999999"), 2147483647);
    EXPECT_EQ(wtoi(u"-99999999999"), -2147483647 - 1);
    std::size_t used = 7;
    EXPECT_EQ(wcstolBase10(u"\t12 ", &used), 12);
    EXPECT_EQ(used, 3u);
    EXPECT_EQ(wcstolBase10(u"abc", &used), 0);
    EXPECT_EQ(used, 0u);
}

TEST(TextNumbers, HexadecimalIsLenient) {
    EXPECT_EQ(wcstoulBase16(u"ff"), 0xFFu);
    EXPECT_EQ(wcstoulBase16(u"0x1A"), 0x1Au);
    EXPECT_EQ(wcstoulBase16(u"0xg"), 0u);
    EXPECT_EQ(wcstoulBase16(u" 10zz"), 0x10u);
    EXPECT_EQ(wcstoulBase16(u"123456789"), 0xFFFFFFFFu);
    EXPECT_EQ(wcstoulBase16(u"-1"), 0xFFFFFFFFu);
    std::size_t used = 9;
    // "0x" is taken as the prefix whatever follows; with no digit after it there is no number.
    EXPECT_EQ(wcstoulBase16(u"0xg", &used), 0u);
    EXPECT_EQ(used, 0u);
    EXPECT_EQ(wcstoulBase16(u"0X", &used), 0u);
    EXPECT_EQ(used, 0u);
    EXPECT_EQ(wcstoulBase16(u"-0x10", &used), 0xFFFFFFF0u);
    EXPECT_EQ(used, 5u);
    EXPECT_EQ(wcstoulBase16(u"0", &used), 0u);
    EXPECT_EQ(used, 1u);
    EXPECT_EQ(hexUpper(0), u"0");
    EXPECT_EQ(hexUpper(0xABC), u"ABC");
    EXPECT_EQ(hexLower(0xABC0), u"abc0");
    EXPECT_EQ(wcstoulBase10(u" 4294967295x", &used), 0xFFFFFFFFu);
    EXPECT_EQ(used, 11u);
    EXPECT_EQ(wcstoulBase10(u"4294967296"), 0xFFFFFFFFu);
    EXPECT_EQ(wcstoulBase10(u"-5"), 0xFFFFFFFBu);
    EXPECT_EQ(wcstoulBase10(u"0x10", &used), 0u);
    EXPECT_EQ(used, 1u);
    EXPECT_EQ(hexLower(0xFFFFFFFFu), u"ffffffff");
}

TEST(TextNumbers, DigitsOfOtherScriptsCountAsTheRuntimeReadsThem) {
    std::size_t used = 0;
    EXPECT_EQ(wtoi(u"\uFF11\uFF12"), 12);             // fullwidth
    EXPECT_EQ(wcstolBase10(u"-\u0663\u0660x", &used), -30);  // Arabic-Indic
    EXPECT_EQ(used, 3u);
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
    EXPECT_EQ(wcstoulBase16(u"\u0660x1f\u0661", &used), 0x1F1u);
    EXPECT_EQ(used, 5u);
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
