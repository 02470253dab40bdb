#include "colours/ibm5250colourmap.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace qrl;

namespace {

std::size_t CountOf(const std::u16string& text, char16_t c) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

bool RowIsDefault(const T5250Row& r) {
    return r.mono == r.monoDefault && r.colour == r.colourDefault && r.foreground == r.foregroundDefault &&
           r.background == r.backgroundDefault;
}

}  // namespace

TEST(Ibm5250ColourMap, DefaultsFollowTheTerminal) {
    const T5250ColourMap map;
    const std::u16string text = map.ToText();
    EXPECT_EQ(text.rfind(u"0;0;2;0;16;16;2;0;", 0), 0u);
    EXPECT_EQ(CountOf(text, u';'), 128u);
    for (std::size_t i = 0; i < T5250ColourMap::kRows; ++i) {
        EXPECT_EQ(map.rows[i].code, 0x20 + i);
        EXPECT_TRUE(RowIsDefault(map.rows[i]));
    }
    for (std::size_t i : {0x07, 0x0F, 0x17, 0x1F}) {  // codes 27, 2F, 37, 3F
        const T5250Row& r = map.rows[i];
        EXPECT_EQ(std::u16string_view{r.monoText}, u"Nondisplay");
        EXPECT_EQ(std::u16string_view{r.colourText}, u"Nondisplay");
        EXPECT_EQ(r.mono, f5250::Invisible);
        EXPECT_EQ(r.colour, f5250::Invisible);
        EXPECT_EQ(r.foreground, 0);
        EXPECT_EQ(r.background, 0);
    }
}

TEST(Ibm5250ColourMap, CanonicalTextsRoundTrip) {
    T5250ColourMap map;
    for (std::size_t i = 0; i < T5250ColourMap::kRows; ++i) {
        map.rows[i].mono = static_cast<uint32_t>(i * 3);
        map.rows[i].colour = 8192u + static_cast<uint32_t>(i);
        map.rows[i].foreground = static_cast<uint8_t>(i % 8);
        map.rows[i].background = static_cast<uint8_t>(255 - i);
    }
    map.rows[5].mono = 0xFFFFFFFFu;  // every bit pattern survives the signed reader
    map.rows[6].colour = 0x80000000u;
    const std::u16string text = map.ToText();
    for (const std::u16string& canonical : {text, T5250ColourMap{}.ToText()}) {
        T5250ColourMap read;
        read.Parse(canonical);
        EXPECT_EQ(read.ToText(), canonical);
    }
    T5250ColourMap read;
    read.Parse(text);
    EXPECT_EQ(read.rows[5].mono, 0xFFFFFFFFu);
    EXPECT_EQ(read.rows[6].colour, 0x80000000u);
    EXPECT_EQ(read.rows[31].background, 224);
}

TEST(Ibm5250ColourMap, ShortOrBrokenTextsKeepTheDefaults) {
    T5250ColourMap map;
    map.Parse(u"1;2;3;4;5;6;");
    EXPECT_EQ(map.rows[0].mono, 1u);
    EXPECT_EQ(map.rows[0].colour, 2u);
    EXPECT_EQ(map.rows[0].foreground, 3);
    EXPECT_EQ(map.rows[0].background, 4);
    EXPECT_EQ(map.rows[1].mono, 5u);
    EXPECT_EQ(map.rows[1].colour, 6u);
    EXPECT_EQ(map.rows[1].foreground, 2);  // not reached: the default of code 21
    for (std::size_t i = 2; i < T5250ColourMap::kRows; ++i) EXPECT_TRUE(RowIsDefault(map.rows[i]));

    // Reading again starts from the defaults, not from what the map held.
    map.Parse(u"");
    for (const T5250Row& r : map.rows) EXPECT_TRUE(RowIsDefault(r));

    // A field without a number reads as 0 and reading goes on; one character is skipped after it,
    // so "x;" is two fields.
    map.Parse(u"9;;;8;");
    EXPECT_EQ(map.rows[0].mono, 9u);
    EXPECT_EQ(map.rows[0].foreground, 0);
    EXPECT_EQ(map.rows[0].background, 8);
    map.Parse(u"9;x;7;");
    EXPECT_EQ(map.rows[0].foreground, 0);
    EXPECT_EQ(map.rows[0].background, 7);

    // Any single character separates, and a number that ends the text needs none.
    map.Parse(u"5,6 7a8");
    EXPECT_EQ(map.rows[0].mono, 5u);
    EXPECT_EQ(map.rows[0].colour, 6u);
    EXPECT_EQ(map.rows[0].foreground, 7);
    EXPECT_EQ(map.rows[0].background, 8);

    // Colours are bytes: only the low byte of a larger number is kept.
    map.Parse(u"0;0;258;-1;");
    EXPECT_EQ(map.rows[0].foreground, 2);
    EXPECT_EQ(map.rows[0].background, 255);

    // More than 128 numbers: the rest is ignored.
    std::u16string longText = T5250ColourMap{}.ToText() + u"1;2;3;";
    map.Parse(longText);
    EXPECT_EQ(map.ToText(), T5250ColourMap{}.ToText());
}

TEST(Ibm5250ColourMap, TerminalTypeByModeValue) {
    EXPECT_EQ(std::u16string_view{Find5250TerminalType(u"99").model}, u"IBM 3179-2");
    EXPECT_FALSE(Find5250TerminalType(u"99").Monochrome());
    EXPECT_EQ(std::u16string_view{Find5250TerminalType(u"").model}, u"IBM 3179-2");
    EXPECT_EQ(std::u16string_view{Find5250TerminalType(u"52").model}, u"IBM 3180-2");
    EXPECT_TRUE(Find5250TerminalType(u"52").Monochrome());
    EXPECT_TRUE(Find5250TerminalType(u"65").Monochrome());
    EXPECT_FALSE(Find5250TerminalType(u"62").Monochrome());
    EXPECT_EQ(std::u16string_view{Find5250TerminalType(u"63").model}, u"IBM Printer");
    EXPECT_FALSE(Find5250TerminalType(u"63").Monochrome());  // a blank kind counts as colour
}

TEST(Ibm5250ColourMap, EditingTouchesOnlyTheTerminalKindInForce) {
    T5250ColourMap map;
    const std::size_t blink = 0x08;  // code 28

    T5250Edit mono = map.EditOf(blink, true);
    EXPECT_EQ(mono.code, 0x28);
    EXPECT_EQ(mono.features, f5250::Blink);
    EXPECT_EQ(mono.foreground, 7);
    EXPECT_EQ(mono.background, 0);
    mono.features = f5250::Underscore;
    mono.foreground = 1;
    mono.background = 6;
    map.Store(blink, mono, true);
    EXPECT_EQ(map.rows[blink].mono, f5250::Underscore);
    EXPECT_EQ(map.rows[blink].colour, 0u);
    EXPECT_EQ(map.rows[blink].foreground, 4);  // colours chosen on a monochrome terminal are not kept
    EXPECT_EQ(map.rows[blink].background, 0);

    T5250Edit colour = map.EditOf(blink, false);
    EXPECT_EQ(colour.features, 0u);
    EXPECT_EQ(colour.foreground, 4);
    colour.features = f5250::Reverse;
    colour.foreground = 5;
    colour.background = 1;
    map.Store(blink, colour, false);
    EXPECT_EQ(map.rows[blink].colour, f5250::Reverse);
    EXPECT_EQ(map.rows[blink].foreground, 5);
    EXPECT_EQ(map.rows[blink].background, 1);
    EXPECT_EQ(map.rows[blink].mono, f5250::Underscore);

    // On a colour terminal the default shows blink as red.
    const T5250Edit revert = map.DefaultEditOf(blink, false);
    EXPECT_EQ(revert.features, 0u);
    EXPECT_EQ(revert.foreground, 4);
    EXPECT_EQ(revert.background, 0);
    const T5250Edit revertMono = map.DefaultEditOf(blink, true);
    EXPECT_EQ(revertMono.features, f5250::Blink);
    EXPECT_EQ(revertMono.foreground, 7);

    // A row number out of range is the first row, never outside the map.
    EXPECT_EQ(map.EditOf(32, false).code, 0x20);
    EXPECT_EQ(map.EditOf(static_cast<std::size_t>(-1), true).code, 0x20);
}
