#include "colours/tandemcolourmap.h"

#include <array>

#include <gtest/gtest.h>

using namespace qrl;

namespace {

using Bytes = std::array<uint8_t, TTandemColourMap::kIndexes>;

// The patterns as worked out by hand from the two rules, for background 0 and foreground 15.
constexpr Bytes kNewMap{7,  15, 135, 15, 7, 15, 7,   143, 0,  15, 7,  15, 135, 15, 7, 6,
                        6,  134, 6, 15, 7, 15, 135, 6,  6,  6,  6,  143, 7, 15, 7, 15};
constexpr Bytes kResetEach{15, 7, 143, 135, 15, 7, 143, 135, 0,  7, 143, 135, 15, 7, 143, 135,
                           6,  6, 134, 134, 15, 7, 143, 135, 6, 6, 134, 134, 15, 7, 143, 135};

}  // namespace

TEST(TandemColourMap, NewMapAndResetFollowTheirOwnRules) {
    TTandemColourMap map;
    EXPECT_EQ(map.bytes, kNewMap);
    for (std::size_t i = 0; i < TTandemColourMap::kIndexes; ++i) {
        map.ResetIndex(i);
        EXPECT_EQ(map.bytes[i], kResetEach[i]) << "index " << i;
    }
    map.ResetIndex(32);  // out of range: ignored
    EXPECT_EQ(map.bytes, kResetEach);

    // Index 8 always has foreground equal to background, also with other default colours.
    TTandemColourMap other;
    other.defaultBackground = 1;
    other.defaultForeground = 6;
    other.SetDefaults();
    // 1 * 16 + (6 | 8), with bit 8 cleared at an even index.
    EXPECT_EQ(std::vector<int>({other.bytes[0], other.bytes[1], other.bytes[8]}), std::vector<int>({0x16, 0x1E, 0x11}));
}

TEST(TandemColourMap, StreamRoundTripsAndKeepsDefaultsWhereShort) {
    TTandemColourMap map;
    for (std::size_t i = 0; i < TTandemColourMap::kIndexes; ++i) map.bytes[i] = static_cast<uint8_t>(i * 8 + 1);
    const std::u16string text = map.ToText();
    EXPECT_EQ(text.rfind(u"1;9;17;", 0), 0u);
    for (const std::u16string& canonical : {text, TTandemColourMap{}.ToText()}) {
        TTandemColourMap read;
        read.Parse(canonical);
        EXPECT_EQ(read.ToText(), canonical);
    }

    // Each text read over a new map: the given bytes first, the new map's after them.
    struct Case { std::u16string_view text; std::vector<uint8_t> head; };
    const Case cases[] = {
        {u"31;47", {31, 47}},
        {u"1;;3;", {1, 0, 3}},  // an empty field reads as 0 and reading goes on
        {u"300;", {44}},        // the low byte
    };
    for (const Case& c : cases) {
        TTandemColourMap read;
        read.bytes.fill(0xEE);  // reading starts from the new map, not from what was held
        read.Parse(c.text);
        Bytes expected = kNewMap;
        std::copy(c.head.begin(), c.head.end(), expected.begin());
        EXPECT_EQ(read.bytes, expected) << std::string(c.text.begin(), c.text.end());
    }
}

TEST(TandemColourMap, CombosStoreNibbles) {
    TTandemColourMap map;
    map.bytes[3] = 0x00;
    map.SetForegroundPosition(3, 12);
    map.SetBackgroundPosition(3, 4);
    EXPECT_EQ(map.bytes[3], 0x4C);
    // Both "White" entries of the background combo store 15, and both show as position 8.
    for (int position : {8, 15}) {
        map.SetBackgroundPosition(3, position);
        EXPECT_EQ(TTandemColourMap::Background(map.bytes[3]), 15) << position;
        EXPECT_EQ(TandemBackgroundPosition(position), 8) << position;
    }
    // A position outside the combo counts as 0; the other nibble stays. No such index: nothing happens.
    map.SetForegroundPosition(3, 16);
    map.SetForegroundPosition(40, 5);
    Bytes expected = kNewMap;
    expected[3] = 0xF0;
    EXPECT_EQ(map.bytes, expected);
}

TEST(TandemColourMap, AttributeListSkipsUnofferedIndexes) {
    std::vector<int> indexes;
    for (int position : {0, 19, 20, 23, 24, -1}) indexes.push_back(TandemIndexOfListPosition(position));
    EXPECT_EQ(indexes, std::vector<int>({0, 19, 24, 27, -1, -1}));
    EXPECT_EQ(std::u16string_view{TandemAttributeText(24)}, u"");
}
