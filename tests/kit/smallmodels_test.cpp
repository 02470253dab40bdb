#include "kit/samplemodel.h"
#include "kit/scrollrule.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(ScrollRule, StepsAndTheClampOneShortOfTheEnd) {
    EXPECT_EQ(ScrollTarget(50, 20, 100, kLineUp, 0), 40);
    EXPECT_EQ(ScrollTarget(50, 20, 100, kLineDown, 0), 60);
    EXPECT_EQ(ScrollTarget(50, 20, 100, kPageUp, 0), 30);
    EXPECT_EQ(ScrollTarget(50, 20, 100, kPageDown, 0), 70);
    EXPECT_EQ(ScrollTarget(50, 20, 100, kThumbTrack, 95), 79);  // 100 - 20 - 1
    EXPECT_EQ(ScrollTarget(50, 20, 100, kThumbPosition, 12), 12);
    EXPECT_EQ(ScrollTarget(5, 20, 100, kLineUp, 0), 0);
    EXPECT_EQ(ScrollTarget(50, 20, 100, 8 /* end scroll */, 0), 50);
    // Empty range: the upper limit is -1 and wins over everything not below 0.
    EXPECT_EQ(ScrollTarget(0, 0, 0, kLineDown, 0), -1);
    EXPECT_EQ(ScrollTarget(0, 0, 0, kLineUp, 0), 0);
}

TEST(SampleModel, BlinkColourAndDecorations) {
    TSampleState s;
    EXPECT_EQ(SampleTextColour(s), 8355711u);
    s.foreground = 1;
    s.background = 2;
    s.features = kAttrBlink;
    EXPECT_EQ(SampleTextColour(s), 1u);  // bright half
    s.visible = 0;
    EXPECT_EQ(SampleTextColour(s), 2u);  // dark half
    s.blinkDisabled = 1;
    EXPECT_EQ(SampleTextColour(s), 1u);

    EXPECT_TRUE(SampleDecorations(0, 10, 8, 3).empty());
    const auto lines = SampleDecorations(kAttrUnderline | kAttrStrikeOut | kFeatureBox, 10, 8, 3);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], (std::vector<TPoint>{{4, 11}, {14, 11}}));
    EXPECT_EQ(lines[1], (std::vector<TPoint>{{4, 7}, {14, 7}}));
    EXPECT_EQ(lines[2], (std::vector<TPoint>{{3, 3}, {15, 3}, {15, 11}, {3, 11}, {3, 3}}));
    EXPECT_EQ(SampleDecorations(kAttrOverline, 10, 8, 3)[0], (std::vector<TPoint>{{4, 3}, {14, 3}}));
}

}  // namespace
}  // namespace qrl
