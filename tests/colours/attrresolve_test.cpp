#include <gtest/gtest.h>

#include <string>

#include "colours/attrdialogdata.h"
#include "colours/colourscheme.h"
#include "colours/colourtexts.h"
#include "text/textutil.h"

using namespace qrl;

namespace {

TAttrDialogData dataWithDefaults() {
    TAttrDialogData d;
    LoadAttrDialogNames(d, TAttrNameTables{}, MakeColourTexts([](std::u16string_view, std::u16string_view t) {
                            return std::u16string(t);
                        }));
    return d;
}

// Foreground and background, then the features and the entry's own pair.
using V = std::vector<uint32_t>;
V pair(const TResolvedAttr& r) { return {r.foreground, r.background}; }
V all(const TResolvedAttr& r) { return {r.foreground, r.background, r.features, r.rawForeground, r.rawBackground}; }

}  // namespace

TEST(ColourAction, EachActionOnItsEdges) {
    EXPECT_EQ(ApplyColourAction(kActionNextColour, 15), 0u);
    EXPECT_EQ(ApplyColourAction(kActionPreviousColour, 0), 15u);
    EXPECT_EQ(ApplyColourAction(kActionNextGroup, 2), 10u);
    EXPECT_EQ(ApplyColourAction(kActionNextGroup, 10), 10u);
    EXPECT_EQ(ApplyColourAction(kActionPreviousGroup, 10), 2u);
    EXPECT_EQ(ApplyColourAction(kActionToggleGroup, 10), 2u);
    // Unknown actions only keep the index in range.
    EXPECT_EQ(ApplyColourAction(99, 0x123), 3u);
}

TEST(ResolveFeature, NormalPairAndOverride) {
    TAttrDialogData d = dataWithDefaults();
    d.working.features[0] = {true, 0, 14, 1};   // combination 0's override counts for nothing
    d.working.features[2] = {false, 2, 4, 5};   // no override: the normal pair
    d.working.features[16] = {true, 16, 3, 6};  // override, and Reverse
    EXPECT_EQ(pair(ResolveFeature(d, 0)), V({14, 1}));
    EXPECT_EQ(all(ResolveFeature(d, 2)), V({14, 1, 2, 4, 5}));
    EXPECT_EQ(pair(ResolveFeature(d, 16)), V({6, 3}));
    // Outside 0 to 255 the starting value comes back.
    for (int outside : {-1, 256, 100000}) EXPECT_EQ(all(ResolveFeature(d, outside)), V({7, 0, 0, 0, 0})) << outside;
}

TEST(ResolveFeature, BoldAndDimActionsBeforeReverseAndInvisibleAfter) {
    TAttrDialogData d = dataWithDefaults();
    d.working.boldMode = kActionNextGroup;
    d.working.dimMode = kActionPreviousGroup;
    d.working.features[kAttrBold] = {true, kAttrBold, 2, 0};
    EXPECT_EQ(ResolveFeature(d, kAttrBold).foreground, 10u);

    // Bold and Dim: only Bold's action.
    d.working.boldMode = kActionNextColour;
    d.working.dimMode = kActionToggleGroup;
    d.working.features[12] = {true, kAttrBold | kAttrDim, 3, 0};
    EXPECT_EQ(ResolveFeature(d, 12).foreground, 4u);
    d.working.features[kAttrDim] = {true, kAttrDim, 3, 0};
    EXPECT_EQ(ResolveFeature(d, kAttrDim).foreground, 11u);

    // Reverse and Bold, white on black: the action changes the white, then the pair swaps.
    const int rb = kAttrReverse | kAttrBold;
    d.working.features[rb] = {true, kAttrReverse | kAttrBold, 15, 0};
    EXPECT_EQ(pair(ResolveFeature(d, rb)), V({0, 0}));  // 15 + 1 wraps to 0, then moves to the background
    d.working.boldMode = kActionPreviousGroup;
    EXPECT_EQ(pair(ResolveFeature(d, rb)), V({0, 7}));

    // Invisible after the swap, and only when the config samples show invisible.
    const int ri = kAttrReverse | kAttrInvisible;
    d.working.features[ri] = {true, kAttrReverse | kAttrInvisible, 2, 9};
    d.enableInvisCfg = false;
    EXPECT_EQ(pair(ResolveFeature(d, ri)), V({9, 2}));
    d.enableInvisCfg = true;
    EXPECT_EQ(pair(ResolveFeature(d, ri)), V({2, 2}));
}

TEST(ResolveField, OverrideAloneDecidesAndRangeIsGuarded) {
    TAttrDialogData d = dataWithDefaults();
    d.working.features[0] = {false, 0, 7, 1};
    d.working.fields[0] = TSchemeField{true, false, 0, 12, 3};
    d.working.fields[5] = TSchemeField{false, true, kAttrReverse, 12, 3};
    EXPECT_EQ(pair(ResolveField(d, 0)), V({12, 3}));  // field 0 keeps its own colours
    EXPECT_EQ(all(ResolveField(d, 5)), V({1, 7, kAttrReverse, 12, 3}));  // normal pair, reversed
    EXPECT_EQ(all(ResolveField(d, 16)), V({7, 0, 0, 0, 0}));
}

TEST(FeatureListText, InvisibleFirstBlinkLast) {
    TAttrDialogData d = dataWithDefaults();
    EXPECT_EQ(FeatureListText(d, 0, true) + u"|" + FeatureListText(d, 0, false), u"Normal|Nml");
    EXPECT_EQ(FeatureListText(d, kAttrInvisible | kAttrBold | kAttrBlink, true), u"Invisible+Bold+Blink");
    EXPECT_EQ(FeatureListText(d, 255, false), u"Inv+Stk+Ovr+Rev+Dim+Bld+Und+Bln");
    const auto measure = [](std::u16string_view text) { return static_cast<int>(text.size()); };
    EXPECT_EQ(FeatureListText(d, 6, 14, measure), u"Bold+Underline");
    EXPECT_EQ(FeatureListText(d, 6, 13, measure), u"Bld+Und");
}

TEST(DialogNames, HostNamesWinAndDefinedFlagsFollowDescriptions) {
    const TColourTexts texts = MakeColourTexts([](std::u16string_view, std::u16string_view t) {
        return u"T:" + std::u16string(t);
    });
    TAttrDialogData d;
    LoadAttrDialogNames(d, TAttrNameTables{}, texts);
    EXPECT_EQ(d.longNames[3] + u"|" + d.shortNames[3], u"T:Bold|Bld");  // short defaults are never translated
    for (bool defined : d.colourDefined) EXPECT_TRUE(defined);  // none described: all count
    for (bool defined : d.fieldDefined) EXPECT_FALSE(defined);

    TAttrNameTables sent;
    sent.colourDescriptions[3] = u"Turquoise";
    sent.longFeatureNames[1] = u"Flash";
    sent.fieldDescriptions[2] = u"Input";
    LoadAttrDialogNames(d, sent, texts);
    EXPECT_EQ(d.colourNames[3] + u"|" + d.colourNames[4] + u"|" + d.longNames[1] + u"|" + d.fieldNames[2],
              u"Turquoise|T:Red|Flash|Input");
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(d.colourDefined[i], i == 3) << i;
        EXPECT_EQ(d.fieldDefined[i], i == 2) << i;
    }
}
