#include <gtest/gtest.h>

#include <string>

#include "mouse/mousemap.h"
#include "mouse/mousemapdoc.h"
#include "mouse/mousenames.h"
#include "xml/node.h"
#include "xml/parser.h"
#include "xml/xml_testing.h"

namespace qrl {
namespace {

using AdvXMLParser::Element;

TMouseEvent ev(uint32_t event, bool ctrl = false, bool shift = false, bool alt = false) {
    return TMouseEvent{event, ctrl, shift, alt};
}
TMouseAction act(uint32_t action, std::u16string text = {}, std::u16string script = {}) {
    return TMouseAction{action, std::move(text), std::move(script)};
}

// The map as "event=action" entries in order.
std::u16string entries(const TMouseMap& map) {
    std::u16string out;
    for (const auto& entry : map)
        out += (out.empty() ? u"" : u" ") + MouseEventText(entry.event) + u"=" + MouseActionText(entry.action);
    return out;
}

TEST(MouseText, EventFieldsEndWithColons) {
    // Flags are anything not 0. A number without its ":" reads 0, and so does everything after it. Event
    // codes outside 0 to 11 become 0; the flags are still read.
    const std::pair<std::u16string_view, TMouseEvent> cases[] = {
        {u"1:0:1:0:", ev(1, false, true)}, {u"11:5:-1:1:", ev(11, true, true, true)}, {u"2:1:1:1", ev(2, true, true)},
        {u"7", ev(0)}, {u"12:1:0:0:", ev(0, true)}, {u"-1:0:0:1:", ev(0, false, false, true)},
        {u"x:y:1:z:", ev(0, false, true)},
    };
    for (const auto& [text, event] : cases)
        EXPECT_EQ(ParseMouseEvent(text), event) << std::string(text.begin(), text.end());
}

TEST(MouseText, ActionCodeAndParameter) {
    struct Case { std::u16string_view text; TMouseAction read; };
    const Case cases[] = {
        {u"13:a:b::c", act(13, u"a:b::c")},  // only the first ":" separates
        {u"12:run.scr", act(12, {}, u"run.scr")},
        {u"6:junk", act(6)},  // parameters of actions that take none are dropped
        {u"9", act(0)},       // no ":" at all, or a code out of range: not assigned
        {u"15:x", act(0)},
        {u"-2:x", act(0)},
        {u"14:x", act(14, u"x")},
    };
    for (const Case& c : cases) {
        const TMouseAction a = ParseMouseAction(c.text);
        EXPECT_EQ(std::tuple(a.action, a.text, a.script), std::tuple(c.read.action, c.read.text, c.read.script));
    }
    EXPECT_EQ(MouseActionText(act(11, u"hi:there", u"ignored")), u"11:hi:there");
    EXPECT_EQ(MouseActionText(act(12, u"ignored", u"s.scr")), u"12:s.scr");
    EXPECT_EQ(MouseActionText(act(4, u"ignored", u"ignored")), u"4:");
}

TEST(MouseMap, DefaultsThenSetMapping) {
    TMouseMap map{{ev(3), act(1)}};
    RestoreDefaultMap(map);
    EXPECT_EQ(entries(map), u"1:0:0:0:=9: 1:0:1:0:=10: 7:0:0:0:=6: 2:0:0:0:=4: 2:0:1:0:=5:");
    // Unassigning an event with an entry removes it; assigning again appends it at the end.
    SetMapping(map, ev(kMouseRightClick), act(0));
    EXPECT_EQ(entries(map), u"1:0:0:0:=9: 1:0:1:0:=10: 2:0:0:0:=4: 2:0:1:0:=5:");
    EXPECT_EQ(Lookup(map, ev(kMouseRightClick)).action, 0u);
    SetMapping(map, ev(kMouseRightClick), act(11, u"x"));
    // Changing keeps the position and takes code, text and script.
    SetMapping(map, ev(kMouseLeftClick), act(12, u"t", u"s"));
    EXPECT_EQ(map[0].action.text, u"t");
    // Unassigning an event without an entry adds an entry of action 0.
    SetMapping(map, ev(kMouseMiddleClick, true), act(0));
    EXPECT_EQ(entries(map), u"1:0:0:0:=12:s 1:0:1:0:=10: 2:0:0:0:=4: 2:0:1:0:=5: 7:0:0:0:=11:x 4:1:0:0:=0:");
}

TEST(MouseDialogLogic, EventFromControlsAndLabel) {
    std::vector<uint32_t> events;
    for (auto [button, twice] : {std::pair{1, false}, {2, true}, {3, true}, {0, true}})
        events.push_back(MouseEventFromControls(button, twice, false, false, false).event);
    EXPECT_EQ(events, (std::vector<uint32_t>{1, 5, 8, 0}));
    EXPECT_EQ(MouseEventFromControls(3, false, true, false, true), ev(7, true, false, true));

    const TMouseNames names = MakeMouseNames([](std::u16string_view, std::u16string_view t) {
        return std::u16string(t);
    });
    EXPECT_EQ(MouseEventLabel(ev(1, true, true), names), u"ctrl+shift Left button click");
    EXPECT_EQ(MouseEventLabel(ev(8), names), u" Right button double click");
    EXPECT_EQ(MouseEventLabel(ev(4, false, false, true), names), u"alt Middle button click");
}

// The dialog's parameter controls, and the action its controls describe: a change from a text action
// to the script action keeps the edit's text, which then is the script.
TEST(MouseDialogRules, ParameterControlsFollowTheAction) {
    struct Case { uint32_t action; bool showing; bool assist; TMouseParamView want; };
    const Case cases[] = {
        {kMouseSendText, false, true, {true, u"mousecfg_cpp_304", u"Text/macro:", true, true}},
        {kMouseContHighlightSendText, true, false, {true, u"mousecfg_cpp_304", u"Text/macro:", true, false}},
        {kMouseRunScript, true, true, {true, u"mousecfg_cpp_256", u"Script file name:", true, false}},
        {kMouseRunScript, false, true, {true, u"mousecfg_cpp_310", u"Script file name:", true, false}},
        {kMousePopupMenu, false, true, {}},
        {99, false, true, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.action);
        const TMouseParamView view = MouseParamView(c.action, c.assist, c.showing);
        const auto fields = [](const TMouseParamView& v) {
            return std::tuple(v.labelShown, std::u16string(v.labelKey), std::u16string(v.labelDefault), v.editShown,
                              v.assistShown);
        };
        EXPECT_EQ(fields(view), fields(c.want));
    }

    const TMouseAction text = MouseActionFromControls(11, u"a:b");
    EXPECT_EQ(text.text + u"|" + text.script + u"|" + MouseParamText(text), u"a:b||a:b");
    const TMouseAction script = MouseActionFromControls(12, u"a:b");
    EXPECT_EQ(script.text + u"|" + script.script + u"|" + MouseParamText(script), u"|a:b|a:b");
    EXPECT_EQ(MouseActionFromControls(15, u"x").action, 0u);
    EXPECT_EQ(MouseParamText(MouseActionFromControls(6, u"x")), u"");
}

// The reply's items in the frame every reply has.
std::u16string reply(const TMouseMap& map) {
    return xmltest::DataReplyOf([&](Element& data) { WriteMouseMapItem(data, map); });
}

TEST(MouseMapDocument, ReadsMapChildrenOnlyAndReplacesTheMap) {
    const auto doc = xmltest::Parse(
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
    // The same event twice: both kept, the first found. Event 0 stays in the list and an empty script is a
    // script; attribute values arrive trimmed, references resolved; no attributes: event 0, not assigned.
    EXPECT_EQ(entries(map), u"1:0:1:0:=11:a:b 1:0:1:0:=6: 0:0:0:0:=12: 7:1:0:0:=11: <Enter> 0:0:0:0:=0:");
    EXPECT_EQ(Lookup(map, map[0].event).action, 11u);
}

TEST(MouseMapDocument, ReplyHoldsAssignedEntriesInOrder) {
    TMouseMap map;
    RestoreDefaultMap(map);
    SetMapping(map, TMouseEvent{kMouseMiddleClick, true, false, true}, TMouseAction{11, u"say \"hi\" & <go>", {}});
    SetMapping(map, TMouseEvent{kMouseRightClick}, TMouseAction{12, u"kept text", u"C:\\s.scr"});
    SetMapping(map, TMouseEvent{9}, TMouseAction{0, {}, {}});  // added with action 0: not written
    EXPECT_EQ(reply(map),
              xmltest::DataReply(u"    <Item Element=\"MouseMap\">\n"
              u"      <Map Event=\"1:0:0:0:\" Action=\"9:\"/>\n"
              u"      <Map Event=\"1:0:1:0:\" Action=\"10:\"/>\n"
              u"      <Map Event=\"7:0:0:0:\" Action=\"12:C:\\s.scr\"/>\n"
              u"      <Map Event=\"2:0:0:0:\" Action=\"4:\"/>\n"
              u"      <Map Event=\"2:0:1:0:\" Action=\"5:\"/>\n"
              u"      <Map Event=\"4:1:0:1:\" Action=\"11:say &quot;hi&quot; &amp; &lt;go&gt;\"/>\n"
              u"    </Item>\n"));
    // With nothing assigned the item is still written.
    EXPECT_EQ(reply({{TMouseEvent{1}, TMouseAction{}}}), xmltest::DataReply(u"    <Item Element=\"MouseMap\"/>\n"));
}

}  // namespace
}  // namespace qrl
