#include <gtest/gtest.h>

#include "hotspots/hotspotrules.h"

namespace qrl {
namespace {

TEST(HotSpotRules, FileKeptInRequest) {
    struct Case { const char16_t* dir; const char16_t* path; const char16_t* kept; };
    const Case cases[] = {
        {u"C:\\hs", u"C:\\hs\\a.hsp", u"a.hsp"},
        {u"C:\\hs\\", u"c:\\HS\\sub\\a.hsp", u"sub\\a.hsp"},
        {u"C:\\hs", u"C:\\hsp\\a.hsp", u"C:\\hsp\\a.hsp"},  // a longer folder name is not inside
        {u"C:\\hs", u"D:\\hs\\a.hsp", u"D:\\hs\\a.hsp"},
        {u"", u"C:\\a.hsp", u"C:\\a.hsp"},
        {u"C:\\hs", u"C:\\hs", u"C:\\hs"},
    };
    for (const Case& c : cases) EXPECT_EQ(HotSpotFileForRequest(c.dir, c.path), c.kept);
}

HotSpots setOf(std::initializer_list<const char16_t*> names) {
    HotSpots set;
    for (const char16_t* name : names) {
        HotSpot spot;
        spot.description = name;
        set.Add(spot);
    }
    return set;
}
std::u16string order(const HotSpots& set) {
    std::u16string text;
    for (const HotSpot& spot : set.spots) text += spot.description + u",";
    return text;
}

TEST(HotSpotRules, ListAfterEachEdit) {
    HotSpots set = setOf({u"b", u"d", u"c"});
    HotSpot copy = set.spots.front();
    copy.description = u"a";
    EXPECT_EQ(ApplyCopiedHotSpot(set, copy), 3);  // copying does not sort
    EXPECT_EQ(order(set), u"b,d,c,a,");
    HotSpot edited = *set.Find(2);
    edited.description = u"E";
    EXPECT_EQ(ApplyEditedHotSpot(set, 2, edited), 3);  // an edit sorts, the edited one stays selected
    EXPECT_EQ(order(set), u"a,b,c,E,");
    EXPECT_EQ(set.Find(2)->description, u"E");
    HotSpot created;
    created.description = u"bb";
    EXPECT_EQ(ApplyNewHotSpot(set, created), 2);
    EXPECT_TRUE(set.dirty);

    struct Del { int index; int selected; const char16_t* left; };
    const Del deletes[] = {{1, 1, u"a,bb,c,E,"}, {9, -1, u"a,bb,c,E,"}, {3, 2, u"a,bb,c,"},
                           {0, 0, u"bb,c,"},    {1, 0, u"bb,"},        {0, -1, u""}};
    set = setOf({u"a", u"b", u"bb", u"c", u"E"});
    set.Sort();
    for (const Del& d : deletes) {
        EXPECT_EQ(ApplyDeleteHotSpot(set, d.index), d.selected) << d.index;
        EXPECT_EQ(order(set), d.left);
    }
}

TEST(HotSpotRules, SaveQuestion) {
    HotSpots set;
    EXPECT_EQ(SaveOnYesFor(set), SaveOnYes::SaveAs);
    set.setName = u"VT220";
    EXPECT_EQ(SaveOnYesFor(set), SaveOnYes::Write);
    EXPECT_EQ(SaveQuestionText(u"Save changes to HotSpot set '", set.setName), u"Save changes to HotSpot set 'VT220'?");
}

TEST(HotSpotRules, ColourBars) {
    struct Case { int position, code, thumb, target; };
    const Case cases[] = {{100, 0, 0, 75}, {10, 0, 0, 0},    {100, 1, 0, 125}, {250, 1, 0, 255}, {100, 2, 0, 40},
                          {100, 3, 0, 160}, {100, 4, 17, 17}, {100, 5, 300, 255}, {100, 6, 0, 0}, {100, 7, 0, 255},
                          {100, 8, 0, 100}};
    for (const Case& c : cases) EXPECT_EQ(ColourScrollTarget(c.position, c.code, c.thumb), c.target) << c.code;
    EXPECT_EQ(PaletteRelativeColour(1, 2, 3), 0x02030201u);
    EXPECT_TRUE(IsEmulationColour(0xFFFFFFFEu));
    EXPECT_FALSE(IsEmulationColour(0x00FFFFFFu));
}

TEST(HotSpotRules, StyleSample) {
    using D = Decoration;
    const TDecorationStep light{D::LightEdge, 0, 0}, dark{D::DarkEdge, 0, 0}, corners{D::Corners, 0, 0},
        border{D::Border, 0, kSampleBlack};
    auto in = [](TDecorationStep s, int inset) { s.inset = inset; return s; };
    struct Case { int32_t style; bool held; bool system; std::vector<TDecorationStep> steps; };
    const Case cases[] = {
        {0, false, false, {}},
        {1, false, false, {light, corners}},
        {2, false, false, {dark, corners}},
        {3, false, false, {light, dark, corners}},
        {4, false, false, {border}},
        {5, false, false, {border, in(light, 1), in(dark, 1), in(corners, 1)}},
        {6, false, false, {border, in(light, 2), in(dark, 2), in(corners, 2)}},
        {7, false, false, {light, dark, corners, in(light, 1), in(dark, 1), in(corners, 1)}},
        {8, false, true, {}},
        {-1, false, true, {}},
        {3, true, false, {border}},
        {8, true, true, {}},
        {263, true, true, {}},
        {259, true, false, {{D::Border, 0, kSampleLightGrey}}},
    };
    for (const Case& c : cases) {
        const TStyleSample s = StyleSampleFor(c.style, c.held, 0x123456, 0x654321);
        EXPECT_EQ(s.systemFill, c.system) << c.style << c.held;
        EXPECT_EQ(s.decorations, c.steps) << c.style << c.held;
    }
    const TStyleSample unset = StyleSampleFor(3, false, kDefaultColour, kDefaultColour);
    EXPECT_EQ(unset.fill, kSampleGrey);
    EXPECT_EQ(unset.text, 0u);
    const TStyleSample own = StyleSampleFor(3, false, 0x123456, 0x654321);
    EXPECT_EQ(own.fill, 0x123456u);
    EXPECT_EQ(own.text, 0x654321u);
}

}  // namespace
}  // namespace qrl
