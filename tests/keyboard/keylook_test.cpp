#include "keyboard/keylook.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

// Labels "s0".."s7" and "a0".."a7" in the two tables.
void Label(GKbKey& key) {
    for (int n = 0; n < kShiftStates; ++n) {
        key.Shifts[static_cast<std::size_t>(n)].Label = "s" + std::to_string(n);
        key.AltShifts[static_cast<std::size_t>(n)].Label = "a" + std::to_string(n);
    }
}

TEST(KeyLook, FaceColoursAndLabelByState) {
    KeyStyle style;
    style.FaceColour = 1;
    style.TextColour = 2;
    style.InactiveTextColour = 3;
    GKbKey key(0x41);
    Label(key);
    key.Shifts[1].Inactive = true;
    key.Mapped[2] = true;
    key.AltCode = 0x1041;
    key.AltMapped[3] = true;
    const struct {
        std::int32_t state;
        bool selected;
        KeyFace face;
        std::uint32_t background, text;
        bool bevel;
        const char* label;
    } cases[] = {
        {0, false, KeyFace::Plain, 1, 2, true, "s0"},
        {1, false, KeyFace::Plain, 1, 3, false, "s2"},           // inactive: no bevel; the label of entry 2 * n
        {2, false, KeyFace::Mapped, 0x800080, 0xFFFFFF, true, "s4"},
        {2, true, KeyFace::Selected, 0x808000, 0xFFFFFF, true, "s4"},
        {4, false, KeyFace::Plain, 1, 2, true, "a0"},            // past Shifts the count runs into AltShifts
        {16 | 3, false, KeyFace::Mapped, 0x800080, 0xFFFFFF, true, "a6"},  // the toggle table
        {16 | 7, false, KeyFace::Plain, 1, 2, true, ""},         // past AltShifts: no label
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.state);
        const TKeyLook look = KeyLookFor(key, c.state, c.selected, style);
        EXPECT_EQ(look.face, c.face);
        EXPECT_EQ(look.background, c.background);
        EXPECT_EQ(look.text, c.text);
        EXPECT_EQ(look.bevel, c.bevel);
        EXPECT_EQ(look.label, c.label);
    }
    key.AltCode = 0;  // without an AltCode the toggle bit keeps the first table
    EXPECT_EQ(KeyLookFor(key, 16 | 2, false, style).face, KeyFace::Mapped);
}

TEST(KeyLook, LabelsGlyphsAndFonts) {
    const struct {
        const char* label;
        bool glyph, known, single;
    } cases[] = {
        {"A", false, false, true}, {"Tab", false, false, false}, {"<up>", true, true, false},
        {"<foo>", true, false, false}, {"<>", false, false, false}, {"<", false, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        GKbKey key(0x41);
        key.Shifts[0].Label = c.label;
        const TKeyLook look = KeyLookFor(key, 0, false, KeyStyle{});
        EXPECT_EQ(look.glyph, c.glyph);
        EXPECT_EQ(GlyphFor(c.label).has_value(), c.known);
        EXPECT_EQ(look.singleChar, c.single);
    }
}

TEST(KeyLook, GlyphsOnTheirSquare) {
    // A wide label rectangle gives a centred square 2 pixels in.
    const KbRect square = GlyphSquare({0, 0, 44, 24});
    EXPECT_EQ(square.left, 12);
    EXPECT_EQ(square.right, 32);
    EXPECT_EQ(square.top, 2);
    EXPECT_EQ(square.bottom, 22);
    // "<up>" on a square of 20: the grid's points, y upward; "<down>" is it mirrored.
    const std::vector<KbPoint> up = GlyphPoints(*GlyphFor("<up>"), {0, 0, 20, 20});
    EXPECT_EQ(up.front(), (KbPoint{10, 4}));
    EXPECT_EQ(up[3], (KbPoint{10, 18}));
    EXPECT_EQ(GlyphPoints(*GlyphFor("<down>"), {0, 0, 20, 20}).front(), (KbPoint{10, 16}));
    EXPECT_EQ(GlyphPoints(*GlyphFor("<left>"), {0, 0, 20, 20}).front(), (KbPoint{4, 10}));
    EXPECT_TRUE(GlyphFor("<sh>")->hollow);
    // MulDiv rounds: 3 * 7 / 20 = 1.05 gives 1, 10 * 7 / 20 = 3.5 gives 4.
    EXPECT_EQ(GlyphPoints(*GlyphFor("<up>"), {0, 0, 7, 7}).front(), (KbPoint{4, 1}));
}

}  // namespace
}  // namespace qrl
