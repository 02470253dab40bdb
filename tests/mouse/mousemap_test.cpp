#include <gtest/gtest.h>

#include <map>
#include <string>

#include "mouse/mousemap.h"
#include "mouse/mousenames.h"

using namespace qrl;

namespace {

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

}  // namespace

TEST(MouseText, EventFieldsEndWithColons) {
    TMouseEvent e = ParseMouseEvent(u"1:0:1:0:");
    EXPECT_EQ(e, ev(1, false, true, false));
    EXPECT_EQ(ParseMouseEvent(u"11:5:-1:1:"), ev(11, true, true, true));  // flags: anything not 0
    // A number without its ":" reads 0, and so does everything after it.
    EXPECT_EQ(ParseMouseEvent(u"2:1:1:1"), ev(2, true, true, false));
    EXPECT_EQ(ParseMouseEvent(u"2:1"), ev(2));
    EXPECT_EQ(ParseMouseEvent(u"7"), ev(0));
    EXPECT_EQ(ParseMouseEvent(u""), ev(0));
    // Event codes outside 0 to 11 become 0; the flags are still read.
    EXPECT_EQ(ParseMouseEvent(u"12:1:0:0:"), ev(0, true));
    EXPECT_EQ(ParseMouseEvent(u"-1:0:0:1:"), ev(0, false, false, true));
    EXPECT_EQ(ParseMouseEvent(u"x:y:1:z:"), ev(0, false, true));

    EXPECT_EQ(MouseEventText(ev(1, false, true)), u"1:0:1:0:");
    EXPECT_EQ(MouseEventText(ev(10, true, true, true)), u"10:1:1:1:");
}

TEST(MouseText, ActionCodeAndParameter) {
    struct Case { std::u16string_view text; TMouseAction read; };
    const Case cases[] = {
        {u"11:hello", act(11, u"hello")},
        {u"13:a:b::c", act(13, u"a:b::c")},  // only the first ":" separates
        {u"12:", act(12)},
        {u"12:run.scr", act(12, {}, u"run.scr")},
        {u"6:junk", act(6)},  // parameters of actions that take none are dropped
        {u"9", act(0)},       // no ":" at all, or a code out of range: not assigned
        {u"99:text", act(0)},
        {u"15:x", act(0)},
        {u"-2:x", act(0)},
        {u"14:x", act(14, u"x")},
    };
    for (const Case& c : cases) {
        const TMouseAction a = ParseMouseAction(c.text);
        EXPECT_EQ(a.action, c.read.action);
        EXPECT_EQ(a.text + u"|" + a.script, c.read.text + u"|" + c.read.script);
    }
    EXPECT_EQ(MouseActionText(act(11, u"hi:there", u"ignored")), u"11:hi:there");
    EXPECT_EQ(MouseActionText(act(12, u"ignored", u"s.scr")), u"12:s.scr");
    EXPECT_EQ(MouseActionText(act(4, u"ignored", u"ignored")), u"4:");
}

TEST(MouseMap, LookupFindsFirstOfTwinEntries) {
    TMouseMap map{{ev(1), act(3)}, {ev(1), act(4)}, {ev(1, true), act(5)}};
    EXPECT_EQ(Lookup(map, ev(1)).action, 3u);
    EXPECT_EQ(Lookup(map, ev(1, true)).action, 5u);
    const TMouseAction& none = Lookup(map, ev(1, false, false, true));
    EXPECT_EQ(none.action, kMouseNotAssigned);
    EXPECT_TRUE(none.text.empty());
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
    EXPECT_EQ(MouseEventFromControls(1, false, false, false, false).event, 1u);
    EXPECT_EQ(MouseEventFromControls(2, true, false, false, false).event, 5u);
    EXPECT_EQ(MouseEventFromControls(3, true, false, false, false).event, 8u);
    EXPECT_EQ(MouseEventFromControls(0, true, false, false, false).event, 0u);
    EXPECT_EQ(MouseEventFromControls(3, false, true, false, true), ev(7, true, false, true));

    const TMouseNames names = MakeMouseNames([](std::u16string_view, std::u16string_view t) {
        return std::u16string(t);
    });
    EXPECT_EQ(MouseEventLabel(ev(1, true, true), names), u"ctrl+shift Left button click");
    EXPECT_EQ(MouseEventLabel(ev(8), names), u" Right button double click");
    EXPECT_EQ(MouseEventLabel(ev(4, false, false, true), names), u"alt Middle button click");
}

TEST(MouseNames, KeysAndDefaults) {
    std::map<std::u16string, std::u16string> asked;
    const TMouseNames names = MakeMouseNames([&](std::u16string_view key, std::u16string_view t) {
        asked[std::u16string(key)] = std::u16string(t);
        return u"[" + std::u16string(t) + u"]";
    });
    EXPECT_EQ(asked.size(), 27u);
    EXPECT_EQ(asked[u"mousecfg_cpp_57"], u"(none)");
    EXPECT_EQ(asked[u"mousecfg_cpp_68"], u"Mouse move");
    EXPECT_EQ(asked[u"mousecfg_cpp_35"], u"(not assigned)");
    EXPECT_EQ(asked[u"mousecfg_cpp_44"], u"Rectangular highlight & move cursor");
    EXPECT_EQ(asked[u"mousecfg_cpp_49"], u"Continuous highlight & send text/macro");
    EXPECT_EQ(names.events[10], u"[Wheel scroll]");
    EXPECT_EQ(names.actions[12], u"[Run a script]");
    EXPECT_EQ(&MouseNames(), &MouseNames());
    EXPECT_EQ(MouseActionParam(11), TMouseParam::Text);
    EXPECT_EQ(MouseActionParam(12), TMouseParam::Script);
    EXPECT_EQ(MouseActionParam(14), TMouseParam::Text);
    EXPECT_EQ(MouseActionParam(10), TMouseParam::None);
}

// The dialog's parameter controls, and the action its controls describe: a change from a text action
// to the script action keeps the edit's text, which then is the script.
TEST(MouseDialogRules, ParameterControlsFollowTheAction) {
    struct Case {
        uint32_t action;
        bool showing;
        bool assist;
        TMouseParamView want;
    };
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
        EXPECT_EQ(view.labelShown, c.want.labelShown);
        EXPECT_EQ(std::u16string(view.labelKey), c.want.labelKey);
        EXPECT_EQ(std::u16string(view.labelDefault), c.want.labelDefault);
        EXPECT_EQ(view.editShown, c.want.editShown);
        EXPECT_EQ(view.assistShown, c.want.assistShown);
    }

    const TMouseAction text = MouseActionFromControls(11, u"a:b");
    EXPECT_EQ(text.text, u"a:b");
    EXPECT_EQ(MouseParamText(text), u"a:b");
    const TMouseAction script = MouseActionFromControls(12, u"a:b");
    EXPECT_EQ(script.script, u"a:b");
    EXPECT_EQ(script.text, u"");
    EXPECT_EQ(MouseParamText(script), u"a:b");
    EXPECT_EQ(MouseActionFromControls(15, u"x").action, 0u);
    EXPECT_EQ(MouseActionFromControls(-1, u"x").action, 0u);
    EXPECT_EQ(MouseParamText(MouseActionFromControls(6, u"x")), u"");
}
