#include "colours/colourvision.h"

#include "colours/colourconfig.h"
#include "colours/colourpreview.h"
#include "colours/colourtexts.h"
#include "colours/contrast.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

constexpr uint32_t kRed = 0x0000FF, kGreen = 0x00FF00, kBlue = 0xFF0000, kGrey = 0x808080;

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

TEST(ColourVision, SimulationKeepsGreysAndMovesPrimariesAsTheModelSays) {
    using P = TVisionPreview;
    const struct { P preview; uint32_t colour, seen; } cases[] = {
        {P::Normal, 0xAB123456, 0x123456},  // the top byte is no colour
        // Pure primaries through the full-severity matrices, channels clamped (0xRRGGBB read backwards).
        {P::Protanopia, kRed, 0x005F6D}, {P::Protanopia, kGreen, 0x00E5FF}, {P::Protanopia, kBlue, 0xFF5900},
        {P::Deuteranopia, kRed, 0x0090A3}, {P::Deuteranopia, kBlue, 0xFB3D00},
        {P::Tritanopia, kRed, 0x0F00FF}, {P::Tritanopia, kGreen, 0xD9F700},
        {P::Greyscale, kRed, 0x7F7F7F}, {P::Greyscale, kBlue, 0x4C4C4C},
    };
    for (const auto& c : cases) EXPECT_EQ(SimulateVision(c.colour, c.preview), c.seen) << int(c.preview) << " " << c.colour;
    for (std::size_t p = 0; p < kVisionPreviewCount; ++p)
        for (uint32_t grey : {0x000000u, kGrey, 0xFFFFFFu}) EXPECT_EQ(SimulateVision(grey, P(p)), grey) << p;
    // What the previews are for: red on green is readable, less so without red cones, and the
    // greyscale figure is the one of normal vision (contrast rests on luminance alone).
    EXPECT_LT(PreviewContrast(kRed, 0x000000, P::Protanopia), PreviewContrast(kRed, 0x000000, P::Normal));
    EXPECT_NEAR(PreviewContrast(kRed, kBlue, P::Greyscale), ContrastRatio(kRed, kBlue), 0.05);
}

TEST(ColourVision, OkLabMatchesItsPublishedValues) {
    const struct { uint32_t colour; TOkLab lab; } cases[] = {
        {0xFFFFFF, {1.0, 0.0, 0.0}},
        {kRed, {0.627955, 0.224863, 0.125846}},
        {kGreen, {0.866440, -0.233888, 0.179498}},
        {kBlue, {0.452014, -0.032457, -0.311528}},
    };
    for (const auto& c : cases) {
        const TOkLab lab = ToOkLab(c.colour);
        EXPECT_NEAR(lab.lightness, c.lab.lightness, 1e-4) << c.colour;
        EXPECT_NEAR(lab.a, c.lab.a, 1e-4) << c.colour;
        EXPECT_NEAR(lab.b, c.lab.b, 1e-4) << c.colour;
    }
    EXPECT_NEAR(OkLabDistance(0x000000, 0xFFFFFF), 1.0, 1e-4);
    EXPECT_EQ(OkLabDistance(kRed, kRed), 0.0);
}

TEST(ColourVision, FixContrastTakesTheNearestReadableEntryOrTheStrongest) {
    TPalette palette{};  // black but for the entries below
    palette[1] = 0x400000;  // dark blue: unreadable on black
    palette[2] = 0xFF8080;  // light blue: readable, and the nearest
    palette[3] = 0xFFFFFF;
    EXPECT_EQ(FixContrastIndex(palette, 1, 0, TVisionPreview::Normal), 2u);
    EXPECT_EQ(FixContrastIndex(palette, 3, 0, TVisionPreview::Normal), 3u);  // a readable pair stays
    // Nothing reaches the minimum on a mid grey: the strongest pair wins, the lower index of equals.
    TPalette dim{};
    dim.fill(0x707070);
    dim[3] = 0x606060;
    dim[9] = 0x202020;
    dim[12] = 0x202020;
    EXPECT_EQ(FixContrastIndex(dim, 3, 0, TVisionPreview::Normal), 9u);
    // The contrast is judged as the preview shows it: red on black reads, but not without red cones.
    palette[4] = kRed;
    EXPECT_EQ(FixContrastIndex(palette, 4, 0, TVisionPreview::Normal), 4u);
    EXPECT_NE(FixContrastIndex(palette, 4, 0, TVisionPreview::Protanopia), 4u);
}

TEST(ColourVision, SchemeCheckListsTheShownCombinationsBelowTheMinimumWorstFirst) {
    TAttrDialogData data;
    const auto same = [](std::u16string_view, std::u16string_view text) { return std::u16string(text); };
    LoadAttrDialogNames(data, TAttrNameTables{}, MakeColourTexts(same));
    data.featuresUsed = kAttrReverse | kAttrBlink;
    data.working.features[0] = {true, 0, 7, 0};                           // readable
    data.working.features[kAttrReverse] = {true, 0, 7, 8};                 // light grey on grey
    data.working.features[kAttrReverse | kAttrBlink] = {true, 0, 15, 7};  // white on light grey
    data.working.features[kAttrBlink] = {true, 0, 1, 0};                  // blue on black
    data.working.features[kAttrUnderline] = {true, 0, 0, 0};              // not used by the emulation
    const std::vector<TContrastFinding> found = CheckSchemeContrast(data, TListOptions{}, TVisionPreview::Normal);
    std::u16string texts;
    for (const TContrastFinding& f : found) texts += f.text + u"\n";
    EXPECT_EQ(texts, u"Blink: 1.3:1 (Blue on Black)\nReverse+Blink: 1.8:1 (White on Light grey)\n"
                     u"Reverse: 2.2:1 (Light grey on Grey)\n");
    EXPECT_TRUE(data.itemTexts.empty());  // the dialog's list is left alone
}

// Dark blue on black, through Reverse and the bold action (c or 8): the pick reads in every preview.
TEST(ColourPreview, FixContrastPickReadsAfterFeaturesAndPreviewAreApplied) {
    for (uint32_t combination : {1u, kAttrReverse, kAttrBold, kAttrBold | kAttrReverse})
        for (std::size_t p = 0; p < kVisionPreviewCount; ++p) {
            const auto preview = static_cast<TVisionPreview>(p);
            const bool reverse = (combination & kAttrReverse) != 0;
            TAttrDialogData data;
            data.working.palette = DefaultPalette();
            data.working.boldMode = 2;
            data.working.features[combination] = {true, combination, reverse ? 0u : 1u, reverse ? 1u : 0u};
            data.selectedItem = data.selectedValue = combination;
            data.shown = ResolveFeature(data, static_cast<int>(combination));
            const std::optional<TPalettePick> pick = FixContrastPick(data, preview);
            ASSERT_TRUE(pick) << combination << " " << p;
            PickAttrColours(data, pick->first, pick->second);
            EXPECT_FALSE(FixContrastPick(data, preview)) << combination << " " << p;  // readable now
        }
}

}  // namespace
}  // namespace qrl
