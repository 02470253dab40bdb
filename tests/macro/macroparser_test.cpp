#include "macro/macro.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

constexpr uint32_t Full = MacroEscapes | MacroKeys | MacroLanguage;

Macro parse(std::u16string_view text, uint32_t flags = Full, uint32_t tag = 0)
{
    Macro macro;
    parseMacro(macro, text, tag, flags);
    return macro;
}

std::u16string joined(const Macro& macro)
{
    std::u16string text;
    for (const MacroToken& token : macro.Tokens) {
        if (token.Type == MacroType::End)
            break;
        text += token.Source;
    }
    return text;
}

// The token list of a parse without error: the tokens, then exactly one end token.
void expectWellFormed(const Macro& macro, std::u16string_view text)
{
    ASSERT_EQ(macro.ErrorCode, 0);
    ASSERT_FALSE(macro.Tokens.empty());
    EXPECT_EQ(macro.Tokens.back().Type, MacroType::End);
    EXPECT_EQ(macro.Tokens.back().StartPos, text.size());
    EXPECT_EQ(joined(macro), text);
    uint32_t pos = 0;
    for (size_t i = 0; i + 1 < macro.Tokens.size(); ++i) {
        EXPECT_EQ(macro.Tokens[i].StartPos, pos);
        EXPECT_EQ(macro.Tokens[i].EndPos + 1 - macro.Tokens[i].StartPos, macro.Tokens[i].Source.size());
        pos = macro.Tokens[i].EndPos + 1;
    }
}

TEST(MacroParser, RoundTripIsExact)
{
    const char16_t* texts[] = {
        u"",
        u"hello world",
        u"\\n\\r\\t\\b\\f\\\\\\{\\}\\q\\x4\\xZZ\\x41",
        u"login\\nuser{Enter}{PF1}",
        u"{.ClearScreen()}{.clearscreen()}{.Pause(10)}{.Pause(-5)}{.Pause(0x1F)}{.Pause(-)}",
        u"{.SetProp(\"a b\",\"c\")}{.ShellCmd(\"x\",\"\")}{.MsgBox(\"{}\\n\")}",
        u"{%if(r=1)}x{%endif}{%while(r<>0x0)}{%wend}",
        u"{%if(r<=-3)}{%if(r>=3)}{%if(r<3)}{%if(r>3)}",
        u"{:top}{%goto :top}{%exit}{.ClearScreen}",
        u"\\S/run.sh/\\E'cmd'\\p005\\p\\p12345\\m\\e|PATH|\\v.x.\\U!u!",
        u"}stray}",
        u"a\\",
    };
    for (const char16_t* text : texts) {
        SCOPED_TRACE(testing::Message() << std::u16string(text).size());
        Macro macro = parse(text);
        expectWellFormed(macro, text);
    }
    // The lower levels and "no parsing" round-trip too.
    for (uint32_t flags : {0u, 1u, 3u}) {
        std::u16string_view text = u"a\\nb{x}}{%if(r=1)}\\p1";
        Macro macro = parse(text, flags);
        expectWellFormed(macro, text);
    }
}

TEST(MacroParser, EmptyTextAndFlagsZero)
{
    Macro empty = parse(u"");
    ASSERT_EQ(empty.Tokens.size(), 1u);
    EXPECT_EQ(empty.Tokens[0].Type, MacroType::End);
    EXPECT_EQ(empty.Tokens[0].StartPos, 0u);
    EXPECT_EQ(empty.Tokens[0].EndPos, 0u);

    Macro none = parse(u"a{%x}\\n", 0, 5);
    ASSERT_EQ(none.Tokens.size(), 2u);
    EXPECT_EQ(none.Tokens[0].Type, MacroType::Text);
    EXPECT_EQ(none.Tokens[0].Text, u"a{%x}\\n");
    EXPECT_EQ(none.Tokens[0].EndPos, 6u);
    EXPECT_EQ(none.Tokens[0].Tag, 5u);
    EXPECT_EQ(none.Tokens[1].StartPos, 7u);
}

TEST(MacroParser, TextAndCharacterTokens)
{
    Macro m = parse(u"ab\\qc\\x4\\xZZ\\");
    ASSERT_EQ(m.ErrorCode, 0);
    ASSERT_EQ(m.Tokens.size(), 7u);
    EXPECT_EQ(m.Tokens[0].Type, MacroType::Text);
    EXPECT_EQ(m.Tokens[0].Text, u"ab");
    EXPECT_EQ(m.Tokens[1].Type, MacroType::Character);
    EXPECT_EQ(m.Tokens[1].CharCode, u'q');
    EXPECT_EQ(m.Tokens[1].Text, u"q");
    EXPECT_FALSE(m.Tokens[1].CharIsHex);
    EXPECT_EQ(m.Tokens[3].CharCode, 4);
    EXPECT_TRUE(m.Tokens[3].CharIsHex);
    EXPECT_EQ(m.Tokens[4].CharCode, 0);
    EXPECT_TRUE(m.Tokens[4].CharIsHex);
    EXPECT_EQ(m.Tokens[4].Source, u"\\x");
    // "ZZ" and the final lone backslash are one Text token.
    EXPECT_EQ(m.Tokens[5].Type, MacroType::Text);
    EXPECT_EQ(m.Tokens[5].Text, u"ZZ\\");
    EXPECT_EQ(m.Tokens[6].Type, MacroType::End);

    Macro lone = parse(u"\\");
    ASSERT_EQ(lone.Tokens.size(), 2u);
    EXPECT_EQ(lone.Tokens[0].Type, MacroType::Text);
    EXPECT_EQ(lone.Tokens[0].Text, u"\\");
}

TEST(MacroParser, InventedNamesTagsAndAppending)
{
    Macro m;
    parseMacro(m, u"a\\nb", 8, Full);
    parseMacro(m, u"{x}", 9, Full);
    ASSERT_EQ(m.Tokens.size(), 6u);  // two lists, each with its end token
    EXPECT_EQ(m.Tokens[0].Label, u"_0");
    EXPECT_EQ(m.Tokens[2].Label, u"_2");
    EXPECT_EQ(m.Tokens[4].Label, u"_3");
    EXPECT_EQ(m.Tokens[2].Tag, 8u);
    EXPECT_EQ(m.Tokens[4].Tag, 9u);
    EXPECT_EQ(m.NextName, 4u);
    EXPECT_EQ(m.Flags, Full);

    m.NextName = 0x1A;
    parseMacro(m, u"z", 0, Full);
    EXPECT_EQ(m.Tokens[6].Label, u"_1A");

    // After a fault nothing more is parsed until clearMacro.
    parseMacro(m, u"{", 0, Full);
    size_t count = m.Tokens.size();
    parseMacro(m, u"abc", 0, Full);
    EXPECT_EQ(m.Tokens.size(), count);
    clearMacro(m);
    EXPECT_TRUE(m.Tokens.empty());
    EXPECT_EQ(m.ErrorCode, 0);
    EXPECT_EQ(m.ErrorPos, 0u);
    parseMacro(m, u"abc", 0, Full);
    EXPECT_EQ(m.Tokens.size(), 2u);
}

TEST(MacroParser, BracesByLevel)
{
    Macro level1 = parse(u"{x}", MacroEscapes);
    ASSERT_EQ(level1.Tokens.size(), 2u);
    EXPECT_EQ(level1.Tokens[0].Type, MacroType::Text);
    EXPECT_EQ(level1.Tokens[0].Text, u"{x}");

    Macro level3 = parse(u"{%if(r=1)}", MacroEscapes | MacroKeys);
    ASSERT_EQ(level3.Tokens.size(), 2u);
    EXPECT_EQ(level3.Tokens[0].Type, MacroType::EmulationKey);
    EXPECT_EQ(level3.Tokens[0].Name, u"%if(r=1)");
    EXPECT_EQ(level3.Tokens[0].Text, u"{%if(r=1)}");

    // Classic letters count only at the full level.
    Macro p3 = parse(u"\\p", 3);
    ASSERT_EQ(p3.Tokens.size(), 2u);
    EXPECT_EQ(p3.Tokens[0].Type, MacroType::Character);
    EXPECT_EQ(p3.Tokens[0].CharCode, u'p');

    Macro stray = parse(u"a}b");
    ASSERT_EQ(stray.ErrorCode, 0);
    ASSERT_EQ(stray.Tokens.size(), 4u);
    EXPECT_EQ(stray.Tokens[1].Type, MacroType::Invalid);
    EXPECT_EQ(stray.Tokens[1].Source, u"}");
    EXPECT_EQ(tokenName(stray.Tokens[1]), u"invalid token");
}

TEST(MacroParser, FunctionsAndEmulationKeys)
{
    Macro m = parse(u"{.ClearScreen()}{.clearscreen()}{.ClearScreen}{Enter}{.SetProp(\"a\",\"\\n\")}");
    ASSERT_EQ(m.ErrorCode, 0);
    ASSERT_EQ(m.Tokens.size(), 6u);
    EXPECT_EQ(m.Tokens[0].Type, MacroType::Function);
    EXPECT_EQ(m.Tokens[0].FunctionId, 4);
    EXPECT_EQ(m.Tokens[1].FunctionId, 4);
    EXPECT_EQ(m.Tokens[1].Name, u"clearscreen");
    EXPECT_EQ(m.Tokens[2].Type, MacroType::EmulationKey);
    EXPECT_EQ(m.Tokens[2].Name, u"ClearScreen");
    EXPECT_EQ(m.Tokens[2].Text, u"{ClearScreen}");
    EXPECT_EQ(m.Tokens[3].Name, u"Enter");
    EXPECT_EQ(m.Tokens[3].Text, u"{Enter}");
    const MacroToken& setProp = m.Tokens[4];
    EXPECT_EQ(setProp.FunctionId, 12);
    ASSERT_EQ(setProp.Params.size(), 2u);
    EXPECT_EQ(setProp.Params[0].Kind, MacroParamKind::String);
    EXPECT_EQ(setProp.Params[0].Text, u"a");
    EXPECT_EQ(setProp.Params[1].Text, u"\n");  // string characters are values after escapes
}

TEST(MacroParser, Numbers)
{
    struct Case {
        const char16_t* Arg;
        int32_t Value;
    } good[] = {
        {u"10", 10},       {u"-5", -5}, {u"0x1f", 31}, {u"0X1F", 31},
        {u"-", 0},         {u"007", 7}, {u"0", 0},     {u"4294967295", -1},
        {u"-2147483648", INT32_MIN},
    };
    for (const Case& c : good) {
        std::u16string text = u"{.Pause(" + std::u16string(c.Arg) + u")}";
        Macro m = parse(text);
        SCOPED_TRACE(text.size());
        ASSERT_EQ(m.ErrorCode, 0);
        ASSERT_EQ(m.Tokens[0].Params.size(), 1u);
        EXPECT_EQ(m.Tokens[0].Params[0].Kind, MacroParamKind::Number);
        EXPECT_EQ(m.Tokens[0].Params[0].Number, c.Value);
    }

    struct Bad {
        const char16_t* Text;
        const char16_t* Error;
        uint32_t Pos;
    } bad[] = {
        {u"{.Pause(-0x10)}", u"Invalid decimal number", 10},
        {u"{.Pause(0x)}", u"Invalid hex number", 10},
        {u"{.Pause(0x", u"Invalid hex number", 10},
        {u"{.Pause(0xG)}", u"Invalid hex number", 10},
        {u"{.Pause(12a)}", u"Invalid decimal number", 10},
        {u"{.Pause(12", u"Invalid decimal number", 10},
        {u"{.MsgBox(\"abc)}", u"Unmatched \" in string", 9},
    };
    for (const Bad& c : bad) {
        Macro m = parse(c.Text);
        SCOPED_TRACE(std::u16string(c.Text).size());
        EXPECT_EQ(m.ErrorCode, MacroError::Syntax);
        EXPECT_EQ(m.ErrorText, c.Error);
        EXPECT_EQ(m.ErrorPos, c.Pos);
        EXPECT_TRUE(m.Tokens.empty());
    }
}

TEST(MacroParser, StringsEndAtAnyQuote)
{
    // An escaped quote ends a string as a plain one does.
    Macro m = parse(u"{.MsgBox(\"a\\\")}");
    ASSERT_EQ(m.ErrorCode, 0);
    EXPECT_EQ(m.Tokens[0].Params[0].Text, u"a");
}

TEST(MacroParser, FunctionErrors)
{
    Macro wrongKind = parse(u"ok{.Pause(\"x\")}");
    EXPECT_EQ(wrongKind.ErrorCode, MacroError::WrongArguments);
    EXPECT_EQ(wrongKind.ErrorPos, 2u);
    EXPECT_EQ(wrongKind.ErrorText, u"Pause");
    // The faulty token is dropped and no end token is added.
    ASSERT_EQ(wrongKind.Tokens.size(), 1u);
    EXPECT_EQ(wrongKind.Tokens[0].Text, u"ok");

    Macro wrongCount = parse(u"{.pause(1,2)}");
    EXPECT_EQ(wrongCount.ErrorCode, MacroError::WrongArguments);
    EXPECT_EQ(wrongCount.ErrorText, u"pause");

    // "()" holds no argument at all.
    Macro noArgs = parse(u"{.Pause()}");
    EXPECT_EQ(noArgs.ErrorCode, MacroError::WrongArguments);

    Macro unknown = parse(u"{.Nonsense()}");
    EXPECT_EQ(unknown.ErrorCode, MacroError::UnknownFunction);
    EXPECT_EQ(unknown.ErrorText, u"Nonsense");
    EXPECT_EQ(unknown.ErrorPos, 0u);

    Macro noParen = parse(u"{.Pause 1}");
    EXPECT_EQ(noParen.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(noParen.ErrorPos, 7u);

    Macro badValue = parse(u"{.Pause(x)}");
    EXPECT_EQ(badValue.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(badValue.ErrorText, u"");
    EXPECT_EQ(badValue.ErrorPos, 8u);

    Macro trailing = parse(u"{.ClearScreen()x}");
    EXPECT_EQ(trailing.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(trailing.ErrorPos, 15u);
}

TEST(MacroParser, BracedErrors)
{
    Macro open = parse(u"ab{");
    EXPECT_EQ(open.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(open.ErrorPos, 3u);
    ASSERT_EQ(open.Tokens.size(), 1u);

    Macro unclosed = parse(u"{Enter");
    EXPECT_EQ(unclosed.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(unclosed.ErrorPos, 6u);

    Macro nested = parse(u"{\\n}");
    EXPECT_EQ(nested.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(nested.ErrorPos, 1u);
}

TEST(MacroParser, Statements)
{
    Macro m = parse(u"{%if(r<>-2)}{%while(r>=0x10)}{%wend}{%endif}{%exit}{:top_1}{%goto :top_1}");
    ASSERT_EQ(m.ErrorCode, 0);
    ASSERT_EQ(m.Tokens.size(), 8u);
    EXPECT_EQ(m.Tokens[0].Type, MacroType::If);
    EXPECT_EQ(m.Tokens[0].Identifier, u"r");
    EXPECT_EQ(m.Tokens[0].Operator, MacroOperator::NotEqual);
    EXPECT_EQ(m.Tokens[0].Value.Kind, MacroParamKind::Number);
    EXPECT_EQ(m.Tokens[0].Value.Number, -2);
    EXPECT_EQ(m.Tokens[1].Type, MacroType::While);
    EXPECT_EQ(m.Tokens[1].Operator, MacroOperator::GreaterEqual);
    EXPECT_EQ(m.Tokens[1].Value.Number, 16);
    EXPECT_EQ(m.Tokens[2].Type, MacroType::Wend);
    EXPECT_EQ(m.Tokens[3].Type, MacroType::EndIf);
    EXPECT_EQ(m.Tokens[4].Type, MacroType::Exit);
    EXPECT_EQ(m.Tokens[5].Type, MacroType::Label);
    EXPECT_EQ(m.Tokens[5].Label, u"top_1");
    EXPECT_EQ(m.Tokens[6].Type, MacroType::Goto);
    EXPECT_EQ(m.Tokens[6].Name, u"top_1");
    EXPECT_EQ(m.Tokens[6].Label, u"_6");  // the invented name stays in Label

    struct Op {
        const char16_t* Text;
        int32_t Operator;
    } ops[] = {{u"=", 0}, {u"<>", 1}, {u"<", 2}, {u">", 3}, {u">=", 4}, {u"<=", 5}};
    for (const Op& op : ops) {
        Macro c = parse(u"{%if(r" + std::u16string(op.Text) + u"7)}");
        ASSERT_EQ(c.ErrorCode, 0);
        EXPECT_EQ(c.Tokens[0].Operator, op.Operator);
    }
}

TEST(MacroParser, StatementErrors)
{
    struct Case {
        const char16_t* Text;
        int32_t Code;
        uint32_t Pos;
        const char16_t* ErrorText;
    } cases[] = {
        {u"{%break}", MacroError::UnknownStatement, 2, u"break"},
        {u"{%If(r=1)}", MacroError::UnknownStatement, 2, u"If"},
        {u"{%ifx(r=1)}", MacroError::UnknownStatement, 2, u"ifx"},
        {u"{%if(q=1)}", MacroError::BadIdentifier, 5, u"q"},
        {u"{%if(R=1)}", MacroError::BadIdentifier, 5, u"R"},
        {u"{%if(r=\"a\")}", MacroError::ValueNotNumber, 7, u""},
        // A later fault in the same token replaces an earlier one.
        {u"{%if(q=\"a\")}", MacroError::ValueNotNumber, 7, u""},
        {u"{%if(r!1)}", MacroError::Syntax, 6, u""},
        {u"{%if(r=1,2)}", MacroError::Syntax, 8, u""},
        {u"{%if(r=1x)}", MacroError::Syntax, 8, u"Invalid decimal number"},
        {u"{%goto:x}", MacroError::Syntax, 6, u""},
        {u"{%goto  :x}", MacroError::Syntax, 7, u""},
        {u"{%goto :}", MacroError::Syntax, 8, u""},
        {u"{%exit(1)}", MacroError::Syntax, 6, u""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::u16string(c.Text).size());
        Macro m = parse(c.Text);
        EXPECT_EQ(m.ErrorCode, c.Code);
        EXPECT_EQ(m.ErrorPos, c.Pos);
        EXPECT_EQ(m.ErrorText, c.ErrorText);
        EXPECT_TRUE(m.Tokens.empty());
    }
}

TEST(MacroParser, ClassicFunctions)
{
    Macro m = parse(u"\\S/run.sh/\\p005\\p\\p1234\\m\\e'HOME'");
    ASSERT_EQ(m.ErrorCode, 0);
    ASSERT_EQ(m.Tokens.size(), 8u);
    EXPECT_EQ(m.Tokens[0].Type, MacroType::Classic);
    EXPECT_EQ(m.Tokens[0].FunctionId, 16);
    EXPECT_EQ(m.Tokens[0].Delimiter, u'/');
    ASSERT_EQ(m.Tokens[0].Params.size(), 1u);
    EXPECT_EQ(m.Tokens[0].Params[0].Kind, MacroParamKind::String);
    EXPECT_EQ(m.Tokens[0].Params[0].Text, u"run.sh");
    EXPECT_EQ(m.Tokens[1].FunctionId, 5);
    EXPECT_EQ(m.Tokens[1].Params[0].Kind, MacroParamKind::Number);
    EXPECT_EQ(m.Tokens[1].Params[0].Number, 5);
    EXPECT_EQ(m.Tokens[2].Params[0].Number, 0);
    EXPECT_EQ(m.Tokens[2].Source, u"\\p");
    // Three digits at most; the fourth is text.
    EXPECT_EQ(m.Tokens[3].Params[0].Number, 123);
    EXPECT_EQ(m.Tokens[4].Type, MacroType::Text);
    EXPECT_EQ(m.Tokens[4].Text, u"4");
    EXPECT_EQ(m.Tokens[5].FunctionId, 19);
    EXPECT_TRUE(m.Tokens[5].Params.empty());
    EXPECT_EQ(m.Tokens[6].FunctionId, 7);
    EXPECT_EQ(m.Tokens[6].Delimiter, u'\'');

    Macro unmatched = parse(u"x\\S/run");
    EXPECT_EQ(unmatched.ErrorCode, MacroError::Syntax);
    EXPECT_EQ(unmatched.ErrorText, u"Unmatched delimiter");
    EXPECT_EQ(unmatched.ErrorPos, 3u);

    // A brace or an escape inside the parameter leaves class 1 before the delimiter.
    Macro brace = parse(u"\\U|a{b|");
    EXPECT_EQ(brace.ErrorText, u"Unmatched delimiter");
    EXPECT_EQ(brace.ErrorPos, 2u);
    Macro escape = parse(u"\\U|a\\nb|");
    EXPECT_EQ(escape.ErrorText, u"Unmatched delimiter");

    Macro bare = parse(u"\\S");
    EXPECT_EQ(bare.ErrorText, u"Unmatched delimiter");
    EXPECT_EQ(bare.ErrorPos, 2u);
}

}  // namespace
}  // namespace qrl
