#include "colours/contrast.h"
#include "colours/ibm5250example.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(Contrast, KnownPairsAndTheirText) {
    const struct {
        uint32_t foreground, background;
        double ratio;
        const char16_t* text;
    } cases[] = {
        {0x000000, 0xFFFFFF, 21.0, u"Contrast 21.0:1"},
        {0xFFFFFF, 0x000000, 21.0, u"Contrast 21.0:1"},  // either way round
        {0x123456, 0x123456, 1.0, u"Contrast 1.0:1 \u2013 hard to read"},
        {0x777777, 0xFFFFFF, 4.478, u"Contrast 4.4:1 \u2013 hard to read"},  // cut, not rounded up
        {0x767676, 0xFFFFFF, 4.542, u"Contrast 4.5:1"},
        {0x0000FF, 0xFFFFFF, 3.998, u"Contrast 3.9:1 \u2013 hard to read"},  // pure red: red is the low byte
        {0x02FFFFFF, 0x01000000, 21.0, u"Contrast 21.0:1"},  // top bytes are not colour
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.foreground);
        const double ratio = ContrastRatio(c.foreground, c.background);
        EXPECT_NEAR(ratio, c.ratio, 0.005);
        EXPECT_EQ(ContrastText(ratio), c.text);
    }
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

}  // namespace
}  // namespace qrl
