#include "macro/macro.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

MacroToken tokenOf(int32_t type)
{
    MacroToken token;
    token.Type = type;
    return token;
}

MacroToken parsedToken(std::u16string_view text)
{
    Macro macro;
    parseMacro(macro, text, 0, 7);
    EXPECT_EQ(macro.ErrorCode, 0);
    EXPECT_EQ(macro.Tokens.size(), 2u);
    return macro.Tokens.empty() ? MacroToken{} : macro.Tokens.front();
}

std::u16string rebuilt(MacroToken token)
{
    rebuildToken(token);
    return token.Source;
}

TEST(MacroPrinter, Characters)
{
    MacroToken c = tokenOf(MacroType::Character);
    struct Case {
        uint32_t Code;
        const char16_t* Short;
    } cases[] = {
        {8, u"\\b"},    {9, u"\\t"},     {10, u"\\n"},    {12, u"\\f"},    {13, u"\\r"},
        {92, u"\\\\"},  {123, u"\\{"},   {125, u"\\}"},   {0x41, u"\\x41"}, {11, u"\\x0B"},
        {0, u"\\x00"},  {124, u"\\x7C"}, {255, u"\\xFF"}, {0x1234, u"\\x1234"},
    };
    for (const Case& k : cases) {
        setCharacter(c, k.Code);
        EXPECT_EQ(c.Source, k.Short) << k.Code;
    }
    // The hex form is kept even for codes that have a short one.
    c.CharIsHex = true;
    setCharacter(c, 10);
    EXPECT_EQ(c.Source, u"\\x0A");

    setByte(c, 0x7F);
    EXPECT_EQ(c.CharCode, 0x7F);
    EXPECT_EQ(c.Source, u"\\x7F");
    setByte(c, 256);
    EXPECT_EQ(c.CharCode, 0);
    EXPECT_EQ(c.Source, u"\\x00");
    setCharacter(c, 0x1FFFF);  // only 16 bits are kept
    EXPECT_EQ(c.CharCode, 0xFFFF);
}

TEST(MacroPrinter, ParsedCharactersPrintInEscapeForm)
{
    EXPECT_EQ(rebuilt(parsedToken(u"\\q")), u"\\x71");
    EXPECT_EQ(rebuilt(parsedToken(u"\\x4")), u"\\x04");
    EXPECT_EQ(rebuilt(parsedToken(u"\\n")), u"\\n");
    EXPECT_EQ(rebuilt(parsedToken(u"\\x0a")), u"\\x0A");
}

TEST(MacroPrinter, Functions)
{
    EXPECT_EQ(rebuilt(parsedToken(u"{.clearscreen()}")), u"{.ClearScreen()}");
    EXPECT_EQ(rebuilt(parsedToken(u"{.pause(0x10)}")), u"{.Pause(16)}");
    EXPECT_EQ(rebuilt(parsedToken(u"{.setprop(\"a\",\"b c\")}")), u"{.SetProp(\"a\",\"b c\")}");

    MacroToken f = tokenOf(MacroType::Function);
    f.FunctionId = 15;  // ShellCmd: missing strings print as ""
    EXPECT_EQ(rebuilt(f), u"{.ShellCmd(\"\",\"\")}");
    addParam(f, {MacroParamKind::String, 0, u"ls"});
    EXPECT_EQ(rebuilt(f), u"{.ShellCmd(\"ls\",\"\")}");
    f.FunctionId = 5;  // Pause: a missing number prints as 0
    f.Params.clear();
    EXPECT_EQ(rebuilt(f), u"{.Pause(0)}");
    addParam(f, {MacroParamKind::Number, INT32_MIN, {}});
    EXPECT_EQ(rebuilt(f), u"{.Pause(-2147483648)}");
    f.FunctionId = 3;  // no such row
    f.Source = u"old";
    EXPECT_EQ(rebuilt(f), u"");
    f.FunctionId = -1;
    EXPECT_EQ(rebuilt(f), u"");
}

TEST(MacroPrinter, ClassicFunctions)
{
    EXPECT_EQ(rebuilt(parsedToken(u"\\p005")), u"\\p005");
    EXPECT_EQ(rebuilt(parsedToken(u"\\p5")), u"\\p005");
    EXPECT_EQ(rebuilt(parsedToken(u"\\p")), u"\\p000");
    EXPECT_EQ(rebuilt(parsedToken(u"\\S/run.sh/")), u"\\S/run.sh/");
    EXPECT_EQ(rebuilt(parsedToken(u"\\m")), u"\\m");

    MacroToken c = tokenOf(MacroType::Classic);
    c.FunctionId = 5;
    EXPECT_EQ(rebuilt(c), u"\\p000");
    addParam(c, {MacroParamKind::Number, 1234, {}});
    EXPECT_EQ(rebuilt(c), u"\\p1234");
    c.Params[0].Number = -7;
    EXPECT_EQ(rebuilt(c), u"\\p-007");
    c.FunctionId = 18;
    c.Params.clear();
    EXPECT_EQ(rebuilt(c), u"\\E''");  // the constructed delimiter is an apostrophe
    c.Delimiter = u'#';
    addParam(c, {MacroParamKind::String, 0, u"cmd"});
    EXPECT_EQ(rebuilt(c), u"\\E#cmd#");
    c.FunctionId = 4;  // a function id, but not a classic one
    EXPECT_EQ(rebuilt(c), u"");
}

TEST(MacroPrinter, Conditions)
{
    EXPECT_EQ(rebuilt(parsedToken(u"{%if(r<>0x10)}")), u"{%if(r<>16)}");
    EXPECT_EQ(rebuilt(parsedToken(u"{%while(r<=-1)}")), u"{%while(r<=-1)}");

    // A constructed token is a valid condition: r = 0.
    EXPECT_EQ(rebuilt(tokenOf(MacroType::If)), u"{%if(r=0)}");
    MacroToken w = tokenOf(MacroType::While);
    w.Operator = MacroOperator::GreaterEqual;
    w.Value = {MacroParamKind::String, 5, u"abc"};
    EXPECT_EQ(rebuilt(w), u"{%while(r>=\"abc\")}");
    w.Value.Kind = MacroParamKind::None;
    EXPECT_EQ(rebuilt(w), u"{%while(r>=\"abc\")}");
    w.Operator = 9;  // out of range prints no operator
    w.Value = {MacroParamKind::Number, 5, {}};
    EXPECT_EQ(rebuilt(w), u"{%while(r5)}");
}

TEST(MacroPrinter, OtherTypes)
{
    MacroToken t = tokenOf(MacroType::Text);
    t.Text = u"a\\b{";
    EXPECT_EQ(rebuilt(t), u"a\\b{");
    MacroToken k = tokenOf(MacroType::EmulationKey);
    k.Name = u"PF1";
    EXPECT_EQ(rebuilt(k), u"{PF1}");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::EndIf)), u"{%endif}");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::Wend)), u"{%wend}");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::Break)), u"{%break}");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::Exit)), u"{%exit}");
    MacroToken l = tokenOf(MacroType::Label);
    l.Label = u"top";
    EXPECT_EQ(rebuilt(l), u"{:top}");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::Invalid)), u"");
    EXPECT_EQ(rebuilt(tokenOf(MacroType::End)), u"");
    EXPECT_EQ(rebuilt(tokenOf(99)), u"");
}

TEST(MacroPrinter, GotoPrintsLabelNotTheParsedName)
{
    Macro macro;
    parseMacro(macro, u"{:a}{%goto :a}", 0, 7);
    ASSERT_EQ(macro.ErrorCode, 0);
    MacroToken go = macro.Tokens[1];
    EXPECT_EQ(go.Source, u"{%goto :a}");
    EXPECT_EQ(go.Name, u"a");
    rebuildToken(go);
    EXPECT_EQ(go.Source, u"{%goto :_1}");
    go.Label = u"a";
    rebuildToken(go);
    EXPECT_EQ(go.Source, u"{%goto :a}");
}

TEST(MacroPrinter, TokenNames)
{
    const char16_t* names[] = {
        u"invalid token",   u"Text",            u"Character",      u"Emulation key",
        u"Function",        u"Function (classic)", u"If statement", u"EndIf statement",
        u"While statement", u"Wend statement",  u"Goto statement", u"Break statement",
        u"Exit statement",  u"Label",           u"invalid token",
    };
    for (int32_t type = 0; type < 15; ++type)
        EXPECT_EQ(tokenName(tokenOf(type)), names[type]) << type;
    EXPECT_EQ(tokenName(tokenOf(-1)), u"invalid token");
    EXPECT_EQ(tokenName(tokenOf(15)), u"invalid token");
}

TEST(MacroPrinter, ConstructedFunctionIsConnect)
{
    MacroToken t;
    t.Type = MacroType::Function;
    EXPECT_EQ(rebuilt(t), u"{.Connect()}");
}

}  // namespace
}  // namespace qrl
