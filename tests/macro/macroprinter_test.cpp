#include "macro/macro.h"

#include <gtest/gtest.h>

#include <set>

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
    struct Case { uint32_t Code; const char16_t* Short; } cases[] = {
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
    EXPECT_EQ(std::pair(c.CharCode, c.Source), std::pair(u'\x7F', std::u16string(u"\\x7F")));
    setByte(c, 256);
    EXPECT_EQ(std::pair(c.CharCode, c.Source), std::pair(u'\0', std::u16string(u"\\x00")));
    setCharacter(c, 0x1FFFF);  // only 16 bits are kept
    EXPECT_EQ(c.CharCode, 0xFFFF);
}

TEST(MacroPrinter, ParsedTokensPrintInCanonicalForm)
{
    const std::pair<std::u16string_view, std::u16string_view> cases[] = {
        {u"\\q", u"\\x71"},
        {u"\\x4", u"\\x04"},
        {u"{.clearscreen()}", u"{.ClearScreen()}"},
        {u"{.pause(0x10)}", u"{.Pause(16)}"},
        {u"{.setprop(\"a\",\"b c\")}", u"{.SetProp(\"a\",\"b c\")}"},
        {u"\\p5", u"\\p005"},
        {u"\\p", u"\\p000"},
        {u"\\m", u"\\m"},
        {u"{%if(r<>0x10)}", u"{%if(r<>16)}"},
    };
    for (const auto& [text, printed] : cases) EXPECT_EQ(rebuilt(parsedToken(text)), printed);

    // A goto prints its label, not the name the parse gave it.
    Macro macro;
    parseMacro(macro, u"{:a}{%goto :a}", 0, 7);
    ASSERT_EQ(macro.ErrorCode, 0);
    MacroToken go = macro.Tokens[1];
    EXPECT_EQ(go.Source, u"{%goto :a}");
    EXPECT_EQ(rebuilt(go), u"{%goto :_1}");
}

TEST(MacroPrinter, ConstructedTokens)
{
    namespace T = MacroType;
    namespace K = MacroParamKind;
    const std::pair<MacroToken, std::u16string_view> cases[] = {
        {{.Type = T::Function}, u"{.Connect()}"},
        {{.Type = T::Function, .FunctionId = 15}, u"{.ShellCmd(\"\",\"\")}"},  // missing strings print as ""
        {{.Params = {{K::String, 0, u"ls"}}, .Type = T::Function, .FunctionId = 15}, u"{.ShellCmd(\"ls\",\"\")}"},
        {{.Type = T::Function, .FunctionId = 5}, u"{.Pause(0)}"},  // a missing number prints as 0
        {{.Params = {{K::Number, INT32_MIN, {}}}, .Type = T::Function, .FunctionId = 5}, u"{.Pause(-2147483648)}"},
        // A parameter prints by its own kind: another row chosen over old parameters shows them as they are.
        // One without a kind prints as if it were missing.
        {{.Params = {{K::String, 0, u"abc"}}, .Type = T::Function, .FunctionId = 5}, u"{.Pause(\"abc\")}"},
        {{.Params = {{K::Number, 42, {}}, {K::None, 7, u"x"}}, .Type = T::Function, .FunctionId = 15},
         u"{.ShellCmd(42,\"\")}"},
        {{.Type = T::Function, .Source = u"old", .FunctionId = 3}, u""},  // no such row
        {{.Type = T::Classic, .FunctionId = 5}, u"\\p000"},
        {{.Params = {{K::Number, 1234, {}}}, .Type = T::Classic, .FunctionId = 5}, u"\\p1234"},
        {{.Params = {{K::Number, -7, {}}}, .Type = T::Classic, .FunctionId = 5}, u"\\p-007"},
        {{.Type = T::Classic, .FunctionId = 18}, u"\\E''"},  // the constructed delimiter is an apostrophe
        {{.Params = {{K::String, 0, u"cmd"}}, .Type = T::Classic, .FunctionId = 18, .Delimiter = u'#'}, u"\\E#cmd#"},
        {{.Type = T::Classic, .FunctionId = 4}, u""},  // a function id, but not a classic one
        {{.Type = T::If}, u"{%if(r=0)}"},
        {{.Operator = MacroOperator::GreaterEqual, .Value = {K::String, 5, u"abc"}, .Type = T::While},
         u"{%while(r>=\"abc\")}"},
        {{.Operator = MacroOperator::GreaterEqual, .Value = {K::None, 5, u"abc"}, .Type = T::While},
         u"{%while(r>=\"abc\")}"},
        {{.Operator = 9, .Value = {K::Number, 5, {}}, .Type = T::While}, u"{%while(r5)}"},  // no operator
        {{.Type = T::Text, .Text = u"a\\b{"}, u"a\\b{"},
        {{.Type = T::EmulationKey, .Name = u"PF1"}, u"{PF1}"},
        {{.Type = T::EndIf}, u"{%endif}"},
        {{.Type = T::Exit}, u"{%exit}"},
        {{.Type = T::Label, .Label = u"top"}, u"{:top}"},
        {{.Type = T::Goto, .Label = u"a", .Name = u"b"}, u"{%goto :a}"},
        {{.Type = T::End}, u""},
        {{.Type = 99}, u""},
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(rebuilt(cases[i].first), cases[i].second) << "row " << i;
    MacroToken added{.Type = T::Function, .FunctionId = 5};
    addParam(added, {K::Number, 3, {}});
    EXPECT_EQ(rebuilt(added), u"{.Pause(3)}");
}

TEST(MacroPrinter, TokenNamesOutOfRange)
{
    // The names are the assistant's list rows; outside the types they fall back, not past the table.
    for (int32_t type : {-1, 14, 15}) EXPECT_EQ(tokenName(tokenOf(type)), u"invalid token") << type;
}

// The rows the parser and the assistant rely on: ids and names unique, every parameter a number or
// a string with a prompt to show.
TEST(MacroTables, FunctionTable)
{
    std::set<uint32_t> ids;
    std::set<std::u16string> names;
    for (const MacroFunctionRow& row : macroFunctions()) {
        ids.insert(row.Id);
        names.insert(row.Name);
        EXPECT_LE(row.ParamCount, 3u);
        for (uint32_t i = 0; i < row.ParamCount; ++i) {
            EXPECT_TRUE(row.ParamTypes[i] == 1 || row.ParamTypes[i] == 2) << row.Id;
            EXPECT_NE(row.Prompts[i], nullptr);
        }
    }
    EXPECT_EQ(std::pair(ids.size(), names.size()), std::pair(macroFunctions().size(), macroFunctions().size()));
    EXPECT_EQ(findMacroFunction(3), nullptr);
    EXPECT_EQ(findMacroFunction(-1), nullptr);
}

TEST(MacroTables, ByteCaptions)
{
    std::u16string captions;
    for (int byte : {0, 13, 32, 33, 255}) captions += macroByteCaption(byte) + u"|";
    EXPECT_EQ(captions, u"\\x00  NUL|\\x0D  CR|\\x20  Space|\\x21|\\xFF|");
}

}  // namespace
}  // namespace qrl
