#include "properties/font.h"

#include <gtest/gtest.h>

using namespace qrl;

TEST(FontStream, CanonicalTextRoundTrips) {
    const std::u16string text = u"-13 0 0 0 400 0 0 0 0 3 2 1 49 '0043006F00750072006900650072'";
    TFontDescription font;
    EXPECT_EQ(ParseFont(text, font), 14);
    EXPECT_EQ(font.height, -13);
    EXPECT_EQ(font.weight, 400);
    EXPECT_EQ(font.outPrecision, 3);
    EXPECT_EQ(font.pitchAndFamily, 49);
    EXPECT_EQ(font.faceName, u"Courier");
    EXPECT_EQ(FontShortText(font), u"Courier");
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
    EXPECT_EQ(read.faceName, wide.faceName);

    EXPECT_EQ(FontToText(TFontDescription{}), u"0 0 0 0 0 0 0 0 0 0 0 0 0 ''");
    EXPECT_EQ(ParseFont(u"0 0 0 0 0 0 0 0 0 0 0 0 0 ''", read), 14);
    EXPECT_EQ(read.faceName, u"");
}

TEST(FontStream, OtherFaceNameForms) {
    TFontDescription font;
    EXPECT_EQ(ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 \"Lucida Console\"", font), 14);
    EXPECT_EQ(font.faceName, u"Lucida Console");
    EXPECT_EQ(ParseFont(u"1\t2 3 4 5 6 7 8 9 10 11 12 13\tArial Black", font), 14);
    EXPECT_EQ(font.faceName, u"Arial");
    EXPECT_EQ(font.width, 2);
    EXPECT_EQ(ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 \"unclosed name", font), 14);
    EXPECT_EQ(font.faceName, u"unclosed name");
    EXPECT_EQ(ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 '0041006e'", font), 14);
    EXPECT_EQ(font.faceName, u"An");  // lower-case digits are read too
    // The hexadecimal name ends at a zero character, at a group that is not four digits, or
    // at an incomplete group.
    ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 '004100000042'", font);
    EXPECT_EQ(font.faceName, u"A");
    ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 '00410zz20043'", font);
    EXPECT_EQ(font.faceName, u"A");
    ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13 '0041004", font);
    EXPECT_EQ(font.faceName, u"A");
}

TEST(FontStream, FaceNameHoldsAtMost31Characters) {
    const std::u16string forty(40, u'W');
    std::u16string hex;
    for (int i = 0; i < 40; ++i) hex += u"0057";
    TFontDescription font;
    ParseFont(u"0 0 0 0 0 0 0 0 0 0 0 0 0 '" + hex + u"'", font);
    EXPECT_EQ(font.faceName, std::u16string(31, u'W'));
    ParseFont(u"0 0 0 0 0 0 0 0 0 0 0 0 0 \"" + forty + u"\"", font);
    EXPECT_EQ(font.faceName.size(), 31u);
    ParseFont(u"0 0 0 0 0 0 0 0 0 0 0 0 0 " + forty, font);
    EXPECT_EQ(font.faceName.size(), 31u);

    TFontDescription tooLong;
    tooLong.faceName = forty;
    TFontDescription read;
    ParseFont(FontToText(tooLong), read);
    EXPECT_EQ(read.faceName, std::u16string(31, u'W'));
    EXPECT_EQ(FontShortText(tooLong).size(), 31u);
}

TEST(FontStream, ShortOrBrokenTextsKeepInitialFields) {
    TFontDescription font;
    font.faceName = u"left over";
    font.weight = 700;
    EXPECT_EQ(ParseFont(u"12 7", font), 2);
    EXPECT_EQ(font.height, 12);
    EXPECT_EQ(font.width, 7);
    EXPECT_EQ(font.weight, 0);  // reading starts from a fresh description
    EXPECT_EQ(font.faceName, u"");

    EXPECT_EQ(ParseFont(u"", font), 0);
    EXPECT_EQ(ParseFont(u"Courier New", font), 0);
    EXPECT_EQ(font.faceName, u"");
    EXPECT_EQ(ParseFont(u"1 2 3 4 5 x 7", font), 5);
    EXPECT_EQ(font.weight, 5);
    EXPECT_EQ(font.italic, 0);
    EXPECT_EQ(ParseFont(u"1 2 3 4 5 6 7 8 9 10 11 12 13   ", font), 13);
    EXPECT_EQ(font.pitchAndFamily, 13);
    EXPECT_EQ(font.faceName, u"");
    // A line end is no blank between fields.
    EXPECT_EQ(ParseFont(u"1\n2", font), 1);

    // Byte fields keep the low byte of a larger number.
    ParseFont(u"0 0 0 0 0 300 -1 0 0 0 0 0 0 ''", font);
    EXPECT_EQ(font.italic, 44);
    EXPECT_EQ(font.underline, 255);
}
