#include "macro/macroassist.h"

#include <gtest/gtest.h>

#include <functional>

#include "text/textutil.h"

namespace qrl {
namespace {

TMacroAssist opened(std::u16string_view text, uint32_t mode = 7, int select = 0) {
    TMacroAssist assist(mode, {u"Enter", u"PF1"});
    assist.Parse(text);
    assist.Select(select);
    return assist;
}

TEST(MacroAssist, ListShowsTheTokensBeforeTheEndOrTheFault) {
    struct Case { uint32_t mode; std::u16string_view text; std::vector<std::u16string> rows; };
    const Case cases[] = {
        {7, u"", {}},
        {7, u"ab{%break}cd", {u"Text\tab"}},  // a break outside a loop stops the parse
        {3, u"ab\\n{Enter}", {u"Text\tab", u"Character\t\\n", u"Emulation key\t{Enter}"}},
        {7, u"{.Pause(5)}{%goto :x}", {u"Function\t{.Pause(5)}", u"Goto statement\t{%goto :x}"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.text.begin(), c.text.end()));
        TMacroAssist assist = opened(c.text, c.mode);
        EXPECT_EQ(assist.Rows(), c.rows);
        EXPECT_EQ(assist.Selected(), c.rows.empty() ? -1 : 0);
        EXPECT_EQ(assist.Panel(), c.rows.empty() ? MacroPanel::None : macroPanelFor(assist.Current()->Type));
    }
}

TEST(MacroAssist, TypeListFollowsTheLevel) {
    EXPECT_EQ(macroAllowedTypes(1), (std::vector<int32_t>{1, 2}));
    EXPECT_EQ(macroAllowedTypes(3), (std::vector<int32_t>{1, 2, 3}));
    EXPECT_EQ(macroAllowedTypes(0).size(), 13u);
    // An emulation key has no row among the two types of the escapes level.
    EXPECT_EQ(opened(u"{Enter}", 3).TypeRow(), 2);
    EXPECT_EQ(opened(u"a", 1).TypeRow(), 0);
}

TEST(MacroAssist, ReparsingKeepsTheSelectedIndexWhileItIsARow) {
    TMacroAssist assist = opened(u"a\\nb", 7, 2);
    assist.Parse(u"x\\ty");
    EXPECT_EQ(assist.Selected(), 2);
    assist.Parse(u"x");
    EXPECT_EQ(assist.Selected(), -1);
}

// Each edit and what the token prints afterwards.
TEST(MacroAssist, EditsRebuildTheSelectedToken) {
    struct Case {
        const char* name;
        std::u16string_view text;
        std::function<void(TMacroAssist&)> edit;
        std::u16string_view joined;
    };
    const Case cases[] = {
        {"text to character", u"ab", [](TMacroAssist& a) { a.ChooseType(1); }, u"\\n"},
        // A character token's Text holds the character itself.
        {"no type chosen is text", u"\\r", [](TMacroAssist& a) { a.ChooseType(-1); }, u"\r"},
        {"typed text", u"ab", [](TMacroAssist& a) { a.SetText(u"{lit"); }, u"{lit"},
        {"named character", u"\\x41", [](TMacroAssist& a) { a.ChooseCharRow(1, 65); }, u"\\x0D"},  // stays hex
        {"hex value row takes the byte", u"\\n", [](TMacroAssist& a) { a.ChooseCharRow(8, 0x41); }, u"\\x41"},
        {"hex value row without a byte", u"\\n", [](TMacroAssist& a) { a.ChooseCharRow(8, -1); }, u"\\x00"},
        {"byte", u"\\n", [](TMacroAssist& a) { a.ChooseByte(13); }, u"\\r"},
        {"byte out of range", u"\\n", [](TMacroAssist& a) { a.ChooseByte(300); }, u"\\n"},
        {"key", u"{Enter}", [](TMacroAssist& a) { a.SetKeyName(u"PF9"); }, u"{PF9}"},
        {"function", u"{.Copy()}", [](TMacroAssist& a) { a.ChooseFunction(63); }, u"{.SetProp(\"\",\"\")}"},
        {"function params", u"{.SetProp(\"a\",\"b\")}",
         [](TMacroAssist& a) { a.SetFunctionParams({u"x", u"y", u"z"}); }, u"{.SetProp(\"x\",\"y\")}"},
        {"number param", u"{.Pause(1)}", [](TMacroAssist& a) { a.SetFunctionParams({u"12x"}); }, u"{.Pause(12)}"},
        {"classic", u"\\p001", [](TMacroAssist& a) { a.ChooseClassic(3); }, u"\\U''"},
        {"classic number", u"\\p001", [](TMacroAssist& a) { a.SetClassicParam(u"7"); }, u"\\p007"},
        {"classic text", u"\\U'a'", [](TMacroAssist& a) { a.SetClassicParam(u"b c"); }, u"\\U'b c'"},
        {"delimiter", u"\\U'a'", [](TMacroAssist& a) { a.SetDelimiter(u"#"); }, u"\\U#a#"},
        {"blank delimiter", u"\\U#a#", [](TMacroAssist& a) { a.SetDelimiter(u" "); }, u"\\U'a'"},
        {"high delimiter", u"\\U#a#", [](TMacroAssist& a) { a.SetDelimiter(u"\u00e9"); }, u"\\U'a'"},
        {"empty delimiter", u"\\U#a#", [](TMacroAssist& a) { a.SetDelimiter(u""); }, u"\\U'a'"},
        {"operator", u"{%if(r=1)}{%endif}", [](TMacroAssist& a) { a.ChooseOperator(4); }, u"{%if(r>=1)}{%endif}"},
        {"negative value", u"{%while(r=1)}{%wend}", [](TMacroAssist& a) { a.SetValue(u"-5x"); },
         u"{%while(r=-5)}{%wend}"},
        // The text after the opening quote is taken as it is, its closing quote included.
        {"quoted value", u"{%if(r=1)}{%endif}", [](TMacroAssist& a) { a.SetValue(u"\"ab\""); },
         u"{%if(r=\"ab\"\")}{%endif}"},
        {"other value", u"{%if(r=1)}{%endif}", [](TMacroAssist& a) { a.SetValue(u"r"); }, u"{%if(r=1)}{%endif}"},
        {"label", u"{:a}", [](TMacroAssist& a) { a.SetLabel(u"b"); }, u"{:b}"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TMacroAssist assist = opened(c.text);
        c.edit(assist);
        EXPECT_EQ(assist.Joined(), c.joined);
    }

    // A goto keeps its source until its label is edited.
    TMacroAssist assist = opened(u"{:top}{%goto :top}", 7, 1);
    EXPECT_EQ(assist.Joined(), u"{:top}{%goto :top}");
    assist.SetLabel(u"end");
    EXPECT_EQ(assist.Joined(), u"{:top}{%goto :end}");
}

// A field as "prompt=text", "#" before it when it takes digits only; nothing when it is hidden.
std::u16string show(const MacroField& f) {
    return f.shown ? (f.number ? u"#" : u"") + f.prompt + u"=" + f.text : u"";
}
std::u16string show(const std::array<MacroField, 3>& fields) {
    return show(fields[0]) + u"|" + show(fields[1]) + u"|" + show(fields[2]);
}

TEST(MacroAssist, PanelsLoadTheirFields) {
    TMacroAssist pause = opened(u"{.Pause(15)}");
    EXPECT_EQ(pause.Panel(), MacroPanel::Function);
    EXPECT_EQ(show(pause.LoadFunctionFields()), u"#Period (tenths of a second)=15||");
    TMacroAssist setProp = opened(u"{.SetProp(\"a\",\"b\")}");
    EXPECT_EQ(show(setProp.LoadFunctionFields()), u"Property name=a|Value=b|");

    // A row with fewer parameters drops the rest when its fields load, not before.
    setProp.ChooseFunction(49);  // Paste: none
    EXPECT_EQ(setProp.Joined(), u"{.Paste()}");
    EXPECT_EQ(setProp.Current()->Params.size(), 2u);
    setProp.LoadFunctionFields();
    EXPECT_TRUE(setProp.Current()->Params.empty());

    TMacroAssist classic = opened(u"\\U#x#");
    EXPECT_EQ(classic.ClassicRow(), 3);
    EXPECT_EQ(show(classic.ClassicField()) + u"|" + classic.DelimiterText(), u"URL=x|#");
    EXPECT_EQ(show(opened(u"\\m").ClassicField()), u"");

    TMacroAssist condition = opened(u"{%if(r<-5)}{%endif}");
    EXPECT_EQ(condition.OperatorRow(), 2);
    EXPECT_EQ(condition.ValueText(), u"-5");
    condition.SetValue(u"\"s");
    EXPECT_EQ(condition.ValueText(), u"\"s\"");

    EXPECT_EQ(std::pair(opened(u"\\r").CharRow(), opened(u"\\r").ByteRow()), std::pair(1, 13));
    EXPECT_EQ(opened(u"\\x41").CharRow(), 8);  // no name: the "Hex value" row
    EXPECT_EQ(opened(u"{%endif}").Panel(), MacroPanel::None);

    // The key warning names an unknown key.
    EXPECT_EQ(opened(u"{Enter}", 3).KeyWarning(u"Enter"), u"");
    EXPECT_EQ(opened(u"{Enter}", 3).KeyWarning(u"enter"), u"warning: key 'enter' is not defined in this emulation");
}

// The text the tokens make, then the selected index.
std::u16string state(const TMacroAssist& a) { return a.Joined() + u"@" + latin1ToUtf16(std::to_string(a.Selected())); }

TEST(MacroAssist, ListButtonsMoveTheSelectionWithTheToken) {
    TMacroAssist assist(7, {});
    assist.Parse(u"");
    assist.InsertAfter();  // nothing selected: first
    EXPECT_EQ(assist.Selected(), 0);
    EXPECT_EQ(assist.Rows(), std::vector<std::u16string>{u"Text\t"});

    assist.Parse(u"a\\nb{%exit}");
    assist.Select(3);
    assist.MoveDown();  // the next one is the end token
    EXPECT_EQ(state(assist), u"a\\nb{%exit}@3");
    assist.MoveUp();
    EXPECT_EQ(state(assist), u"a\\n{%exit}b@2");
    assist.Select(0);
    assist.MoveUp();  // already the first
    EXPECT_EQ(state(assist), u"a\\n{%exit}b@0");
    assist.InsertBefore();
    assist.SetText(u"z");
    EXPECT_EQ(state(assist), u"za\\n{%exit}b@0");
    assist.Select(4);
    assist.InsertAfter();
    EXPECT_EQ(std::pair(assist.Selected(), assist.Count()), std::pair(5, 6));
    assist.Delete();
    EXPECT_EQ(state(assist), u"za\\n{%exit}b@4");  // fell off the end: the last token
    assist.Select(0);
    for (int i = 0; i < 5; ++i) assist.Delete();
    EXPECT_EQ(state(assist), u"@-1");
    assist.Delete();  // nothing selected: nothing happens
    EXPECT_EQ(assist.Count(), 0);
}

TEST(MacroAssist, ListButtonsWorkOnATextThatDidNotParse) {
    TMacroAssist assist = opened(u"ab{%nonsense}", 7);  // no end token after a fault
    ASSERT_EQ(assist.Count(), 1);
    assist.InsertAfter();
    assist.MoveDown();
    EXPECT_EQ(state(assist), u"ab@1");
    assist.MoveUp();
    EXPECT_EQ(state(assist), u"ab@0");
}

}  // namespace
}  // namespace qrl
