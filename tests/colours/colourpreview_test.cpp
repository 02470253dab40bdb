#include "colours/colourpreview.h"

#include "colours/colourconfig.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

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
