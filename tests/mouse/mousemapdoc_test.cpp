#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "mouse/mousemapdoc.h"
#include "xml/node.h"
#include "xml/parser.h"
#include "xml/xml_testing.h"

using namespace qrl;
using AdvXMLParser::Document;
using AdvXMLParser::Element;

namespace {

std::unique_ptr<Document> parse(std::u16string_view text) { return xmltest::Parse(text); }

// The reply's items, without the frame every reply has.
std::u16string reply(const TMouseMap& map) {
    const std::u16string head = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n";
    const std::u16string tail = u"  </Data>\n</Config>";
    std::u16string text = xmltest::DataReplyOf([&](Element& data) { WriteMouseMapItem(data, map); });
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_GE(text.size(), head.size() + tail.size());
    EXPECT_EQ(text.substr(text.size() - std::min(text.size(), tail.size())), tail);
    return text.substr(head.size(), text.size() - std::min(text.size(), head.size() + tail.size()));
}

}  // namespace

TEST(MouseMapDocument, ReadsMapChildrenOnlyAndReplacesTheMap) {
    const auto doc = parse(
        u"<Item Element=\"MouseMap\">"
        u"<Map Event=\"1:0:1:0:\" Action=\"11:a:b\"/>"
        u"<Other Event=\"2:0:0:0:\" Action=\"4:\"/>"
        u"text between"
        u"<map Event=\"1:0:1:0:\" Action=\"6:\"/>"
        u"<Map Event=\"0:0:0:0:\" Action=\"12:\"/>"
        u"<Map Event=\"7:1:0:0:\" Action=\"11: &lt;Enter&gt; \"/>"
        u"<Map/>"
        u"</Item>");
    TMouseMap map{{TMouseEvent{3}, TMouseAction{1, {}, {}}}};
    ReadMouseMap(map, *doc->Root());
    ASSERT_EQ(map.size(), 5u);
    EXPECT_EQ(map[0].event, (TMouseEvent{1, false, true, false}));
    EXPECT_EQ(map[0].action.text, u"a:b");
    // The same event twice: both kept, the first found.
    EXPECT_EQ(map[1].event, map[0].event);
    EXPECT_EQ(Lookup(map, map[0].event).action, 11u);
    // Event 0 stays in the list; an empty script is a script.
    EXPECT_EQ(map[2].event.event, 0u);
    EXPECT_EQ(map[2].action.action, 12u);
    // Attribute values arrive trimmed, references resolved.
    EXPECT_EQ(map[3].action.text, u" <Enter>");
    // No attributes at all: event 0, not assigned.
    EXPECT_EQ(map[4].event, TMouseEvent{});
    EXPECT_EQ(map[4].action.action, 0u);
}

TEST(MouseMapDocument, ReplyHoldsAssignedEntriesInOrder) {
    TMouseMap map;
    RestoreDefaultMap(map);
    SetMapping(map, TMouseEvent{kMouseMiddleClick, true, false, true}, TMouseAction{11, u"say \"hi\" & <go>", {}});
    SetMapping(map, TMouseEvent{kMouseRightClick}, TMouseAction{12, u"kept text", u"C:\\s.scr"});
    SetMapping(map, TMouseEvent{9}, TMouseAction{0, {}, {}});  // added with action 0: not written
    EXPECT_EQ(reply(map),
              u"    <Item Element=\"MouseMap\">\n"
              u"      <Map Event=\"1:0:0:0:\" Action=\"9:\"/>\n"
              u"      <Map Event=\"1:0:1:0:\" Action=\"10:\"/>\n"
              u"      <Map Event=\"7:0:0:0:\" Action=\"12:C:\\s.scr\"/>\n"
              u"      <Map Event=\"2:0:0:0:\" Action=\"4:\"/>\n"
              u"      <Map Event=\"2:0:1:0:\" Action=\"5:\"/>\n"
              u"      <Map Event=\"4:1:0:1:\" Action=\"11:say &quot;hi&quot; &amp; &lt;go&gt;\"/>\n"
              u"    </Item>\n");
    // With nothing assigned the item is still written.
    EXPECT_EQ(reply({{TMouseEvent{1}, TMouseAction{}}}), u"    <Item Element=\"MouseMap\"/>\n");
}
