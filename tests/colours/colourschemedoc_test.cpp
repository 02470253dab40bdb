#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "colours/colourschemedoc.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"
#include "xml/xml_testing.h"

using namespace qrl;
using AdvXMLParser::Element;

namespace {

std::u16string reply(const TColourSchemeList& schemes) {
    return xmltest::DataReplyOf([&](Element& data) { WriteColourSchemeListItem(data, schemes); });
}

// Override flag(s), features, foreground, background of one entry.
using V = std::vector<uint32_t>;
V parts(const TSchemeFeature& f) { return {f.override, f.features, f.foreground, f.background}; }
V parts(const TSchemeField& f) { return {f.override, f.secondFlag, f.features, f.foreground, f.background}; }

}  // namespace

TEST(AttrNames, IndexesBelow16AndKnownTagsOnly) {
    const auto doc = xmltest::Parse(
        u"<Item Element=\"AttrNames\">"
        u"<feature index=\"1\" long=\"Flashing\" short=\"Fl\"/>"
        u"<feature index=\"16\" long=\"Beyond\" short=\"B\"/>"
        u"<feature index=\"-1\" long=\"Before\" short=\"B\"/>"
        u"<colour index=\"3\" descr=\"Turquoise\"/>"
        u"<colour index=\"x\" descr=\"Zero by accident\"/>"
        u"<field index=\"15\" descr=\" Input \"/>"
        u"<other index=\"2\" descr=\"nothing\" long=\"nothing\"/>"
        u"</Item>");
    TAttrNameTables t;
    ReadAttrNames(t, *doc->Root());
    EXPECT_EQ(t.longFeatureNames[1] + u"|" + t.shortFeatureNames[1], u"Flashing|Fl");
    EXPECT_EQ(t.colourDescriptions[3], u"Turquoise");
    EXPECT_EQ(t.colourDescriptions[0], u"Zero by accident");  // a non-number index reads 0
    EXPECT_EQ(t.fieldDescriptions[15], u"Input");
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(t.longFeatureNames[i].empty(), i != 1) << i;
        EXPECT_EQ(t.colourDescriptions[i].empty(), i != 0 && i != 3) << i;
        EXPECT_EQ(t.fieldDescriptions[i].empty(), i != 15) << i;
    }
}

TEST(ColourSchemeDocument, ReadsEveryPartOfAScheme) {
    const auto doc = xmltest::Parse(
        u"<Item Element=\"ColourSchemeList\">"
        u"<ColourScheme Element=\"Classic\">"
        u"<palette index=\"3\" value=\"ff 0x00ff00  abcdef\"/>"
        u"<colours value=\"5 6 7\"/>"
        u"<features index=\"1\" value=\"0f010004 1 ffff8001 0\"/>"
        u"<fields index=\"2\" value=\"0b0a0002 1 1\"/>"
        u"<fields index=\"16\" value=\"1 1 1\"/>"
        u"<fields index=\"-1\" value=\"1 1 1\"/>"
        u"<Item Element=\"BoldMode\" Value=\"2\"/>"
        u"<Item Element=\"dimmode\" Value=\"4\"/>"
        u"<Item Element=\"UseBgGraphic\" Value=\"5\"/>"
        u"<Item Element=\"GraphicFile\" Value=\"sky.bmp\"/>"
        u"<Item Element=\"GraphicMode\" Value=\"1\"/>"
        u"<unknown value=\"1\"/>"
        u"</ColourScheme>"
        u"<AnyTag Element=\"Second\"/>"
        u"</Item>");
    TColourSchemeList list(1);
    list[0].name = u"already there";
    ReadColourSchemes(list, *doc->Root());
    ASSERT_EQ(list.size(), 3u);  // appended, whatever the child's tag
    const TColourScheme& s = list[1];
    EXPECT_EQ(s.name, u"Classic");
    EXPECT_EQ(s.operation, kSchemeUntouched);
    // Too few numbers leave the rest as a new scheme has it; the index of palette is not read.
    EXPECT_EQ(V(s.palette.begin(), s.palette.begin() + 4), V({0xFF, 0x00FF00, 0xABCDEF, DefaultPalette()[3]}));
    EXPECT_EQ(V(s.colours.begin(), s.colours.begin() + 4), V({5, 6, 7, 3}));
    // features index 1 covers combinations 16 to 31; the word packs features, foreground, background.
    EXPECT_EQ(parts(s.features[16]), V({1, 4, 1, 0x0F}));
    EXPECT_EQ(parts(s.features[17]), V({0, 0x8001, 0xFF, 0xFF}));
    EXPECT_EQ(parts(s.features[18]), V({0, 0, 0, 0}));
    EXPECT_EQ(parts(s.fields[2]), V({1, 1, 2, 0x0A, 0x0B}));
    for (std::size_t i = 0; i < kFieldCount; ++i) EXPECT_EQ(s.fields[i].override, i == 2) << i;  // 16, -1 ignored
    EXPECT_EQ(V({s.boldMode, s.dimMode, s.useBgGraphic, s.graphicMode}), V({2, 4, 1, 1}));
    EXPECT_EQ(s.graphicFile, u"sky.bmp");
    EXPECT_EQ(list[2].name, u"Second");
    EXPECT_EQ(list[2].colours[77], 77u);
}

TEST(ColourSchemeDocument, BrokenNumbersStopTheValueAndOutOfRangeFeaturesAreIgnored) {
    const auto doc = xmltest::Parse(
        u"<Item><ColourScheme Element=\"S\">"
        u"<palette value=\"1 2 zz 4\"/>"
        u"<features index=\"0\" value=\"10005 1 20006\"/>"
        u"<features index=\"16\" value=\"ff 1\"/>"
        u"<features index=\"-1\" value=\"ff 1\"/>"
        u"<fields index=\"1\" value=\"30000\"/>"
        u"<Item Element=\"BoldMode\" Value=\"x\"/>"
        u"</ColourScheme></Item>");
    TColourSchemeList list;
    ReadColourSchemes(list, *doc->Root());
    ASSERT_EQ(list.size(), 1u);
    const TColourScheme& s = list[0];
    EXPECT_EQ(V(s.palette.begin(), s.palette.begin() + 4), V({1, 2, DefaultPalette()[2], DefaultPalette()[3]}));
    EXPECT_EQ(parts(s.features[0]), V({1, 5, 1, 0}));
    EXPECT_EQ(parts(s.features[1]), V({0, 6, 2, 0}));  // word read, flag missing
    for (std::size_t i = 2; i < kCombinationCount; ++i) EXPECT_EQ(s.features[i].features, 0u) << i;
    EXPECT_EQ(parts(s.fields[1]), V({0, 0, 0, 3, 0}));
    EXPECT_EQ(s.boldMode, 0u);
}

// An untouched scheme is left out of the reply with every list kind at once; so is one of an
// operation no one knows, here the third.
TEST(ColourSchemeReply, UpdateWritesTheWholeRecordExactly) {
    TColourSchemeList list(3);
    TColourScheme& s = list[0];  // something in every part of the record
    s.name = u"Night & Day";
    s.operation = kSchemeUpdate;
    s.palette[0] = 0x102030;
    s.palette[15] = 0xABCDEF;
    s.colours[1] = 9;
    s.colours[255] = 70000;
    s.features[0] = TSchemeFeature{false, 0, 15, 1};
    s.features[1] = TSchemeFeature{true, kAttrBlink | kFeatureBox, 14, 2};
    s.features[255] = TSchemeFeature{true, 0xFFFF, 0xFF, 0xFF};
    s.fields[0] = TSchemeField{true, false, 0, 3, 4};
    s.fields[15] = TSchemeField{false, true, kAttrUnderline, 0xA, 0xB};
    s.boldMode = kActionNextGroup;
    s.dimMode = 7;
    s.useBgGraphic = true;
    s.graphicFile = u"C:\\pics\\<sky>.bmp";
    s.graphicMode = kGraphicStretch;
    list[1].name = u"Old";
    list[1].operation = kSchemeDelete;
    list[2].name = u"Odd";
    list[2].operation = 7;
    std::ifstream in(std::string(QRL_SOURCE_DIR) + "/tests/data/colours/scheme_reply.xml", std::ios::binary);
    std::ostringstream expected;
    expected << in.rdbuf();
    ASSERT_FALSE(expected.str().empty());
    EXPECT_EQ(reply(list), utf8ToUtf16(expected.str()));
}
