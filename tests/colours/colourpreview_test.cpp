#include "colours/colourpreview.h"

#include "colours/colourconfig.h"
#include "colours/contrast.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

// Edit Attribute open on combination `combination`, with its own colours `foreground` on `background`.
TAttrDialogData EditingEntry(uint32_t combination, uint32_t foreground, uint32_t background) {
    TAttrDialogData data;
    data.working.palette = DefaultPalette();
    data.working.boldMode = 2;  // Next Group: the bold text shows colour c or 8
    data.working.features[combination] = {true, combination, foreground, background};
    data.selectedItem = data.selectedValue = combination;
    data.shown = ResolveFeature(data, static_cast<int>(combination));
    return data;
}

// Whatever the features do to the pair, the pick resolves to a readable one in every preview.
TEST(ColourPreview, FixContrastPickReadsAfterFeaturesAndPreviewAreApplied) {
    for (uint32_t combination : {1u, kAttrReverse, kAttrBold, kAttrBold | kAttrReverse})
        for (std::size_t p = 0; p < kVisionPreviewCount; ++p) {
            const auto preview = static_cast<TVisionPreview>(p);
            TAttrDialogData data = EditingEntry(combination, 1, 0);  // dark blue on black
            if (combination & kAttrReverse) data = EditingEntry(combination, 0, 1);
            const std::optional<TPalettePick> pick = FixContrastPick(data, preview);
            ASSERT_TRUE(pick) << combination << " " << p;
            PickAttrColours(data, pick->first, pick->second);
            EXPECT_FALSE(PreviewSample(data.working.palette, data.shown, preview).hardToRead) << combination << " " << p;
            EXPECT_FALSE(FixContrastPick(data, preview)) << combination << " " << p;
        }
    TAttrDialogData invisible = EditingEntry(kAttrInvisible, 1, 0);
    invisible.enableInvisCfg = true;
    EXPECT_FALSE(FixContrastPick(invisible, TVisionPreview::Normal));  // meant to be unreadable
    TAttrDialogData colour = EditingEntry(1, 1, 0);
    colour.selectedKind = 1;
    EXPECT_FALSE(FixContrastPick(colour, TVisionPreview::Normal));  // one colour, no pair
    colour.selectedKind = 0;
    colour.working.features[1].override = false;  // the palette is disabled
    EXPECT_FALSE(FixContrastPick(colour, TVisionPreview::Normal));
}

}  // namespace
}  // namespace qrl
