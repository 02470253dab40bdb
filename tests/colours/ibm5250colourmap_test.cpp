#include "colours/ibm5250colourmap.h"

#include "colours/ibm5250example.h"

#include <gtest/gtest.h>

using namespace qrl;

namespace {

using V = std::vector<uint32_t>;

V RowOf(const T5250Row& r) { return {r.mono, r.colour, r.foreground, r.background}; }
V EditOf(const T5250Edit& e) { return {e.features, e.foreground, e.background}; }

}  // namespace

TEST(Ibm5250ColourMap, CanonicalTextsRoundTrip) {
    T5250ColourMap map;
    for (std::size_t i = 0; i < T5250ColourMap::kRows; ++i) {
        map.rows[i].mono = static_cast<uint32_t>(i * 3);
        map.rows[i].colour = 8192u + static_cast<uint32_t>(i);
        map.rows[i].foreground = static_cast<uint8_t>(i % 8);
        map.rows[i].background = static_cast<uint8_t>(255 - i);
    }
    map.rows[5].mono = 0xFFFFFFFFu;  // every bit pattern survives the signed reader
    const std::u16string text = map.ToText();
    for (const std::u16string& canonical : {text, T5250ColourMap{}.ToText()}) {
        T5250ColourMap read;
        read.Parse(canonical);
        EXPECT_EQ(read.ToText(), canonical);
    }
}

TEST(Ibm5250ColourMap, ShortOrBrokenTextsKeepTheDefaults) {
    T5250ColourMap map;
    map.Parse(u"1;2;3;4;5;6;");
    EXPECT_EQ(RowOf(map.rows[0]), V({1, 2, 3, 4}));
    EXPECT_EQ(RowOf(map.rows[1]), V({5, 6, 2, 0}));  // colours not reached: the defaults of code 21
    const T5250ColourMap fresh;
    for (std::size_t i = 2; i < T5250ColourMap::kRows; ++i) EXPECT_EQ(RowOf(map.rows[i]), RowOf(fresh.rows[i])) << i;

    // Reading again starts from the defaults, not from what the map held.
    map.Parse(u"");
    EXPECT_EQ(map.ToText(), fresh.ToText());

    struct Case { std::u16string_view text; V row0; };
    const Case cases[] = {
        // A field without a number reads as 0 and reading goes on; one character is skipped
        // after it, so "x;" is two fields.
        {u"9;;;8;", {9, 0, 0, 8}},
        {u"9;x;7;", {9, 0, 0, 7}},
        {u"5,6 7a8", {5, 6, 7, 8}},  // any single character separates; the last number needs none
        {u"0;0;258;-1;", {0, 0, 2, 255}},  // colours are bytes: only the low byte is kept
    };
    for (const Case& c : cases) {
        map.Parse(c.text);
        EXPECT_EQ(RowOf(map.rows[0]), c.row0) << std::string(c.text.begin(), c.text.end());
    }

    // More than 128 numbers: the rest is ignored.
    map.Parse(fresh.ToText() + u"1;2;3;");
    EXPECT_EQ(map.ToText(), fresh.ToText());
}

TEST(Ibm5250ColourMap, TerminalTypeByModeValue) {
    std::u16string found;
    for (const char16_t* mode : {u"", u"52", u"63"}) {
        const T5250TerminalType& t = Find5250TerminalType(mode);
        found += t.model + std::u16string(t.Monochrome() ? u" mono|" : u" colour|");
    }
    EXPECT_EQ(found, u"IBM 3179-2 colour|IBM 3180-2 mono|IBM Printer colour|");  // a blank kind counts as colour
}

TEST(Ibm5250ColourMap, EditingTouchesOnlyTheTerminalKindInForce) {
    T5250ColourMap map;
    const std::size_t blink = 0x08;  // code 28
    EXPECT_EQ(map.EditOf(blink, true).code, 0x28);
    EXPECT_EQ(EditOf(map.EditOf(blink, true)), V({f5250::Blink, 7, 0}));
    map.Store(blink, T5250Edit{0x28, f5250::Underscore, 1, 6}, true);
    // Colours chosen on a monochrome terminal are not kept.
    EXPECT_EQ(RowOf(map.rows[blink]), V({f5250::Underscore, 0, 4, 0}));

    EXPECT_EQ(EditOf(map.EditOf(blink, false)), V({0, 4, 0}));
    map.Store(blink, T5250Edit{0x28, f5250::Reverse, 5, 1}, false);
    EXPECT_EQ(RowOf(map.rows[blink]), V({f5250::Underscore, f5250::Reverse, 5, 1}));

    // On a colour terminal the default shows blink as red.
    EXPECT_EQ(EditOf(map.DefaultEditOf(blink, false)), V({0, 4, 0}));
    EXPECT_EQ(EditOf(map.DefaultEditOf(blink, true)), V({f5250::Blink, 7, 0}));

    // A row number out of range is the first row, never outside the map.
    EXPECT_EQ(V({map.EditOf(32, false).code, map.EditOf(static_cast<std::size_t>(-1), true).code}), V({0x20, 0x20}));
}

TEST(Ibm5250Example, FeaturesReverseAndHiding) {
    T5250Example shown;
    shown.blinkPhase = false;
    const T5250Example e = ExampleOf({0x29, f5250::Reverse | f5250::Blink | f5250::HighIntensity, 4, 1}, shown);
    EXPECT_EQ(std::make_pair(e.foreground, e.background), std::make_pair(uint8_t{1}, uint8_t{4}));  // swapped
    EXPECT_FALSE(e.blinkPhase);  // the phase is the timer's, not the row's
    EXPECT_TRUE(ExampleHidden(e));
    EXPECT_EQ(ExampleHostAttribute(e), 4u);
    EXPECT_EQ(std::u16string(ExampleText(e)), u"  Aa  Bb  Cc  ");

    shown.blinkPhase = true;
    const T5250Example plain = ExampleOf({0x30, f5250::ColumnSeparator | f5250::Underscore, 3, 0}, shown);
    EXPECT_EQ(std::make_pair(plain.foreground, plain.background), std::make_pair(uint8_t{3}, uint8_t{0}));
    EXPECT_FALSE(ExampleHidden(plain));
    EXPECT_TRUE(plain.underline);
    EXPECT_EQ(ExampleHostAttribute(plain), 0u);
    EXPECT_EQ(std::u16string(ExampleText(plain)), u"..Aa..Bb..Cc..");
    EXPECT_TRUE(ExampleHidden(ExampleOf({0x27, f5250::Invisible, 0, 0}, shown)));  // whatever the phase
}
