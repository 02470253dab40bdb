#include "properties/font.h"

#include <gtest/gtest.h>

#include "text/textutil.h"

using namespace qrl;

TEST(FontStream, CanonicalTextRoundTrips) {
    const std::u16string text = u"-13 0 0 0 400 0 0 0 0 3 2 1 49 '0043006F00750072006900650072'";
    TFontDescription font;
    EXPECT_EQ(ParseFont(text, font), 14);
    EXPECT_EQ(font.height, -13);
    EXPECT_EQ(font.pitchAndFamily, 49);
    EXPECT_EQ(font.faceName, u"Courier");
    EXPECT_EQ(FontToText(font), text);

    TFontDescription wide;
    wide.height = 2147483647;
    wide.width = -2147483647 - 1;
    wide.italic = 255;
    wide.charSet = 128;
    wide.faceName = u"\uFF2D\uFF33 \u660E\u671D";  // beyond ASCII, with a blank
    const std::u16string wideText = FontToText(wide);
    EXPECT_NE(wideText.find(u"'FF2DFF330020660E671D'"), std::u16string::npos);
    TFontDescription read;
    EXPECT_EQ(ParseFont(wideText, read), 14);
    EXPECT_EQ(FontToText(read), wideText);

    EXPECT_EQ(FontToText(TFontDescription{}), u"0 0 0 0 0 0 0 0 0 0 0 0 0 ''");
    EXPECT_EQ(ParseFont(u"0 0 0 0 0 0 0 0 0 0 0 0 0 ''", read), 14);
    EXPECT_EQ(read.faceName, u"");
}

// A face name in each form holds at most 31 characters.
TEST(FontStream, OtherFaceNameForms) {
    const std::u16string forty(40, u'W'), thirtyOne(31, u'W');
    std::u16string hex;
    for (int i = 0; i < 40; ++i) hex += u"0057";
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u" \"Lucida Console\"", u"Lucida Console"},
        {u"\tArial Black", u"Arial"},
        {u" \"unclosed name", u"unclosed name"},
        {u" '0041006e'", u"An"},  // lower-case digits are read too
        // The hexadecimal name ends at a zero character, at a group that is not four digits, or at an
        // incomplete group.
        {u" '004100000042'", u"A"},
        {u" '00410zz20043'", u"A"},
        {u" '0041004", u"A"},
        {u" '" + hex + u"'", thirtyOne},
        {u" \"" + forty + u"\"", thirtyOne},
        {u" " + forty, thirtyOne},
    };
    for (const auto& [name, face] : cases) {
        TFontDescription font;
        EXPECT_EQ(ParseFont(u"1\t2 3 4 5 6 7 8 9 10 11 12 13" + name, font), 14) << utf16ToUtf8(name);
        EXPECT_EQ(font.faceName, face);
        EXPECT_EQ(font.width, 2);
    }
    TFontDescription tooLong;
    tooLong.faceName = forty;
    EXPECT_EQ(FontShortText(tooLong).size(), 31u);
}

// Each text is read into the same description: reading starts from a fresh one.
TEST(FontStream, ShortOrBrokenTextsKeepInitialFields) {
    struct Case { std::u16string_view text; int fields; std::u16string_view read; };
    const Case cases[] = {
        {u"12 7", 2, u"12 7 0 0 0 0 0 0 0 0 0 0 0 ''"},
        {u"Courier New", 0, u"0 0 0 0 0 0 0 0 0 0 0 0 0 ''"},
        {u"1 2 3 4 5 x 7", 5, u"1 2 3 4 5 0 0 0 0 0 0 0 0 ''"},
        {u"1 2 3 4 5 6 7 8 9 10 11 12 13   ", 13, u"1 2 3 4 5 6 7 8 9 10 11 12 13 ''"},
        {u"1\n2", 1, u"1 0 0 0 0 0 0 0 0 0 0 0 0 ''"},  // a line end is no blank between fields
        {u"0 0 0 0 0 300 -1 0 0 0 0 0 0 ''", 14, u"0 0 0 0 0 44 255 0 0 0 0 0 0 ''"},  // byte fields keep the low byte
    };
    TFontDescription font;
    font.faceName = u"left over";
    font.weight = 700;
    for (const Case& c : cases) {
        EXPECT_EQ(ParseFont(c.text, font), c.fields);
        EXPECT_EQ(FontToText(font), c.read);
    }
}
