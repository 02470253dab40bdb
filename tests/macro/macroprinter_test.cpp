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
    EXPECT_EQ(c.CharCode, 0x7F);
    EXPECT_EQ(c.Source, u"\\x7F");
    setByte(c, 256);
    EXPECT_EQ(c.CharCode, 0);
    EXPECT_EQ(c.Source, u"\\x00");
    setCharacter(c, 0x1FFFF);  // only 16 bits are kept
    EXPECT_EQ(c.CharCode, 0xFFFF);
}

TEST(MacroPrinter, ParsedTokensPrintInCanonicalForm)
{
    const std::pair<std::u16string_view, std::u16string_view> cases[] = {
        {u"\\q", u"\\x71"},
        {u"\\x4", u"\\x04"},
        {u"\\n", u"\\n"},
        {u"\\x0a", u"\\x0A"},
        {u"{.clearscreen()}", u"{.ClearScreen()}"},
        {u"{.pause(0x10)}", u"{.Pause(16)}"},
        {u"{.setprop(\"a\",\"b c\")}", u"{.SetProp(\"a\",\"b c\")}"},
        {u"\\p5", u"\\p005"},
        {u"\\p", u"\\p000"},
        {u"\\S/run.sh/", u"\\S/run.sh/"},
        {u"\\m", u"\\m"},
        {u"{%if(r<>0x10)}", u"{%if(r<>16)}"},
        {u"{%while(r<=-1)}", u"{%while(r<=-1)}"},
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
        {{.Type = T::Function, .FunctionId = -1}, u""},
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
        {{.Type = T::Wend}, u"{%wend}"},
        {{.Type = T::Break}, u"{%break}"},
        {{.Type = T::Exit}, u"{%exit}"},
        {{.Type = T::Label, .Label = u"top"}, u"{:top}"},
        {{.Type = T::Goto, .Label = u"a", .Name = u"b"}, u"{%goto :a}"},
        {{.Type = T::Invalid}, u""},
        {{.Type = T::End}, u""},
        {{.Type = 99}, u""},
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(rebuilt(cases[i].first), cases[i].second) << "row " << i;
    MacroToken added{.Type = T::Function, .FunctionId = 5};
    addParam(added, {K::Number, 3, {}});
    EXPECT_EQ(rebuilt(added), u"{.Pause(3)}");
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

TEST(MacroTables, FunctionTable)
{
    auto rows = macroFunctions();
    ASSERT_EQ(rows.size(), 73u);
    EXPECT_EQ(std::u16string(rows.front().Name), u"ClearScreen");
    EXPECT_EQ(std::u16string(rows.back().Name), u"ViewToolbar");
    std::set<uint32_t> ids;
    std::set<std::u16string> names;
    int withParams = 0;
    for (const MacroFunctionRow& row : rows) {
        ids.insert(row.Id);
        names.insert(row.Name);
        EXPECT_LE(row.ParamCount, 3u);
        for (uint32_t i = 0; i < row.ParamCount; ++i) {
            EXPECT_TRUE(row.ParamTypes[i] == 1 || row.ParamTypes[i] == 2) << row.Id;
            EXPECT_NE(row.Prompts[i], nullptr);
        }
        bool variable = std::u16string(row.Name) == u"EnvVar" || std::u16string(row.Name) == u"UserVar";
        EXPECT_EQ(row.Kind, variable ? 2u : 1u);
        withParams += row.ParamCount > 0;
    }
    // Ids and names unique; 3 and 18 are the only ids from 1 to 75 that no function has; 12 take parameters.
    EXPECT_EQ(std::vector<size_t>({ids.size(), names.size(), ids.count(3) + ids.count(18), *ids.begin(), *ids.rbegin(),
                                   size_t(withParams)}),
              std::vector<size_t>({73, 73, 0, 1, 75, 12}));
    ASSERT_NE(findMacroFunction(5), nullptr);
    EXPECT_EQ(std::u16string(findMacroFunction(5)->Name), u"Pause");
    EXPECT_EQ(std::u16string(findMacroFunction(15)->Prompts[1]), u"Parameters");
    EXPECT_EQ(findMacroFunction(3), nullptr);
    EXPECT_EQ(findMacroFunction(-1), nullptr);
}

TEST(MacroTables, ClassicTable)
{
    auto rows = macroClassics();
    ASSERT_EQ(rows.size(), 7u);
    std::u16string letters;
    for (const MacroClassicRow& row : rows)
        letters += row.Letter;
    EXPECT_EQ(letters, u"pevUSEm");
    EXPECT_EQ(findMacroClassicLetter(u'p')->Form, MacroClassicForm::Number);
    EXPECT_EQ(findMacroClassicLetter(u'm')->Form, MacroClassicForm::None);
    EXPECT_EQ(findMacroClassicLetter(u'E')->Id, 18u);
    EXPECT_EQ(std::u16string(findMacroClassic(8)->Name), u"User defined variable");
    EXPECT_EQ(std::u16string(findMacroClassic(18)->Prompt), u"Command");
    EXPECT_EQ(findMacroClassicLetter(u'x'), nullptr);
    EXPECT_EQ(findMacroClassic(4), nullptr);
}

TEST(MacroTables, AssistantLists)
{
    auto chars = macroNamedChars();
    ASSERT_EQ(chars.size(), 9u);
    EXPECT_EQ(chars[5].Code, 92);
    EXPECT_EQ(std::u16string(chars[5].Caption), u"\\\\  Backslash");
    EXPECT_EQ(chars.back().Code, 0);
    EXPECT_EQ(std::u16string(chars.back().Caption), u"Hex value");

    std::u16string captions;
    for (int byte : {0, 13, 32, 33, 255}) captions += macroByteCaption(byte) + u"|";
    EXPECT_EQ(captions, u"\\x00  NUL|\\x0D  CR|\\x20  Space|\\x21|\\xFF|");

    ASSERT_EQ(macroOperators().size(), 6u);
    EXPECT_EQ(macroOperatorText(MacroOperator::NotEqual), u"<>");
    EXPECT_EQ(macroOperatorText(MacroOperator::LessEqual), u"<=");
    EXPECT_EQ(macroOperatorText(6), u"");
}

}  // namespace
}  // namespace qrl
