#include "macro/macro.h"

#include <gtest/gtest.h>

#include <string>

#include "text/textutil.h"

namespace qrl {
namespace {

constexpr uint32_t Full = MacroEscapes | MacroKeys | MacroLanguage;

Macro parse(std::u16string_view text, uint32_t flags = Full, uint32_t tag = 0)
{
    Macro macro;
    parseMacro(macro, text, tag, flags);
    return macro;
}

std::string param(const MacroParam& p)
{
    if (p.Kind == MacroParamKind::Number) return "n" + std::to_string(p.Number);
    return p.Kind == MacroParamKind::String ? "\"" + utf16ToUtf8(p.Text) + "\"" : "-";
}

// The tokens in short: each one's type, then the fields that type uses.
std::string dump(const Macro& macro)
{
    static const char* const types[] = {"?", "", "c", "K", "F", "S", "if", "endif", "while", "wend",
                                        "goto ", "break", "exit", ":", "$"};
    std::string out;
    for (const MacroToken& t : macro.Tokens) {
        out += (out.empty() ? "" : " ") + std::string(types[t.Type]);
        if (t.Type == MacroType::Invalid) out += utf16ToUtf8(t.Source);
        if (t.Type == MacroType::Text) out += "'" + utf16ToUtf8(t.Text) + "'";
        if (t.Type == MacroType::Character) out += std::to_string(t.CharCode) + (t.CharIsHex ? "x" : "");
        if (t.Type == MacroType::EmulationKey) out += utf16ToUtf8(t.Name) + "=" + utf16ToUtf8(t.Text);
        if (t.Type == MacroType::Label) out += utf16ToUtf8(t.Label);
        if (t.Type == MacroType::Goto) out += utf16ToUtf8(t.Name) + "/" + utf16ToUtf8(t.Label);
        if (t.Type == MacroType::If || t.Type == MacroType::While)
            out += "(" + utf16ToUtf8(t.Identifier) + std::to_string(t.Operator) + param(t.Value) + ")";
        if (t.Type == MacroType::Function || t.Type == MacroType::Classic) {
            out += std::to_string(t.FunctionId);
            out += t.Type == MacroType::Function ? ":" + utf16ToUtf8(t.Name) : std::string(1, char(t.Delimiter));
            out += "(";
            for (size_t i = 0; i < t.Params.size(); ++i) out += (i ? "," : "") + param(t.Params[i]);
            out += ")";
        }
    }
    return out;
}

// A parse without error: the tokens cover the text without gap, then exactly one end token.
void expectWellFormed(const Macro& macro, std::u16string_view text)
{
    ASSERT_EQ(macro.ErrorCode, 0);
    ASSERT_FALSE(macro.Tokens.empty());
    EXPECT_EQ(macro.Tokens.back().Type, MacroType::End);
    EXPECT_EQ(macro.Tokens.back().StartPos, text.size());
    std::u16string joined;
    uint32_t pos = 0;
    for (size_t i = 0; i + 1 < macro.Tokens.size(); ++i) {
        const MacroToken& t = macro.Tokens[i];
        EXPECT_EQ(t.StartPos, pos);
        EXPECT_EQ(t.EndPos + 1 - t.StartPos, t.Source.size());
        pos = t.EndPos + 1;
        joined += t.Source;
    }
    EXPECT_EQ(joined, text);
}

TEST(MacroParser, Tokens)
{
    struct Case { std::u16string_view text; uint32_t flags; std::string tokens; };
    const Case cases[] = {
        {u"", Full, "$"},
        {u"a{%x}\\n", 0, "'a{%x}\\n' $"},  // no parsing at all
        // "ZZ" and the final lone backslash are one Text token.
        {u"ab\\qc\\x4\\xZZ\\", Full, "'ab' c113 'c' c4x c0x 'ZZ\\' $"},
        {u"{x}", MacroEscapes, "'{x}' $"},
        {u"{%if(r=1)}", MacroEscapes | MacroKeys, "K%if(r=1)={%if(r=1)} $"},
        {u"\\p", MacroEscapes | MacroKeys, "c112 $"},  // classic letters count only at the full level
        {u"a}b", Full, "'a' ?} 'b' $"},
        {u"{.ClearScreen()}{.clearscreen()}{.ClearScreen}{Enter}", Full,
         "F4:ClearScreen() F4:clearscreen() KClearScreen={ClearScreen} KEnter={Enter} $"},
        // String characters are values after escapes; an escaped quote ends a string as a plain one does.
        {u"{.SetProp(\"a\",\"\\n\")}{.MsgBox(\"a\\\")}", Full, "F12:SetProp(\"a\",\"\n\") F6:MsgBox(\"a\") $"},
        {u"{%if(r<>-2)}{%while(r>=0x10)}{%wend}{%endif}{%exit}{:top_1}{%goto :top_1}", Full,
         "if(r1n-2) while(r4n16) wend endif exit :top_1 goto top_1/_6 $"},  // the invented name stays in Label
        {u"{%if(r=7)}{%if(r<7)}{%if(r>7)}{%if(r<=7)}", Full, "if(r0n7) if(r2n7) if(r3n7) if(r5n7) $"},
        // \p takes three digits at most; the fourth is text.
        {u"\\S/run.sh/\\p005\\p\\p1234\\m\\e'HOME'", Full,
         "S16/(\"run.sh\") S5'(n5) S5'(n0) S5'(n123) '4' S19'() S7'(\"HOME\") $"},
        // Numbers: decimal or hex, "-" alone is 0, 32 bits wrap.
        {u"{.Pause(10)}{.Pause(-5)}{.Pause(0x1f)}{.Pause(0X1F)}{.Pause(-)}", Full,
         "F5:Pause(n10) F5:Pause(n-5) F5:Pause(n31) F5:Pause(n31) F5:Pause(n0) $"},
        {u"{.Pause(007)}{.Pause(0)}{.Pause(4294967295)}{.Pause(-2147483648)}", Full,
         "F5:Pause(n7) F5:Pause(n0) F5:Pause(n-1) F5:Pause(n-2147483648) $"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(utf16ToUtf8(c.text));
        Macro macro = parse(c.text, c.flags);
        expectWellFormed(macro, c.text);
        EXPECT_EQ(dump(macro), c.tokens);
    }
}

// A fault drops the faulty token and adds no end token.
TEST(MacroParser, ErrorsAndTheirPositions)
{
    using namespace MacroError;
    struct Case {
        std::u16string_view text;
        int32_t code;
        uint32_t pos;
        std::u16string_view errorText;
        std::string left;
    };
    const Case cases[] = {
        {u"{.Pause(-0x10)}", Syntax, 10, u"Invalid decimal number", ""},
        {u"{.Pause(0x)}", Syntax, 10, u"Invalid hex number", ""},
        {u"{.Pause(0x", Syntax, 10, u"Invalid hex number", ""},
        {u"{.Pause(12a)}", Syntax, 10, u"Invalid decimal number", ""},
        {u"{.Pause(12", Syntax, 10, u"Invalid decimal number", ""},
        {u"{.MsgBox(\"abc)}", Syntax, 9, u"Unmatched \" in string", ""},
        {u"ok{.Pause(\"x\")}", WrongArguments, 2, u"Pause", "'ok'"},
        {u"{.pause(1,2)}", WrongArguments, 0, u"pause", ""},
        {u"{.Pause()}", WrongArguments, 0, u"Pause", ""},  // "()" holds no argument at all
        {u"{.Nonsense()}", UnknownFunction, 0, u"Nonsense", ""},
        {u"{.Pause 1}", Syntax, 7, u"", ""},
        // The function is checked even after a bad argument, and its fault replaces the argument's:
        // the unread argument has no kind, so it never fits.
        {u"{.Pause(x)}", WrongArguments, 0, u"Pause", ""},
        {u"a{.Nonsense(0x)}", UnknownFunction, 1, u"Nonsense", "'a'"},
        {u"{.Pause(\"1)}", WrongArguments, 0, u"Pause", ""},
        {u"{.ShellCmd(\"a\",b)}", WrongArguments, 0, u"ShellCmd", ""},
        // A bad argument that still has the row's kind leaves the argument's fault standing.
        {u"{.Find(\"a)}", Syntax, 7, u"Unmatched \" in string", ""},
        {u"{.ClearScreen()x}", Syntax, 15, u"", ""},
        {u"ab{", Syntax, 3, u"", "'ab'"},
        {u"{Enter", Syntax, 6, u"", ""},
        {u"{\\n}", Syntax, 1, u"", ""},
        {u"{%break}", UnknownStatement, 2, u"break", ""},
        {u"{%If(r=1)}", UnknownStatement, 2, u"If", ""},
        {u"{%ifx(r=1)}", UnknownStatement, 2, u"ifx", ""},
        {u"{%if(q=1)}", BadIdentifier, 5, u"q", ""},
        {u"{%if(R=1)}", BadIdentifier, 5, u"R", ""},
        {u"{%if(r=\"a\")}", ValueNotNumber, 7, u"", ""},
        {u"{%if(q=\"a\")}", ValueNotNumber, 7, u"", ""},  // a later fault in the same token replaces an earlier one
        {u"{%if(r!1)}", Syntax, 6, u"", ""},
        {u"{%if(r=1,2)}", Syntax, 8, u"", ""},
        {u"{%if(r=1x)}", Syntax, 8, u"", ""},  // the value's own fault is replaced by that of the check after it
        {u"{%if(r=\"a", ValueNotNumber, 7, u"", ""},
        // The character in place of "(" is taken as one, so what follows still reads.
        {u"{%if<r=1)}", Syntax, 4, u"", ""},
        {u"{%while=1)}", Syntax, 9, u"", ""},
        {u"{%goto:x}", Syntax, 6, u"", ""},
        {u"{%goto  :x}", Syntax, 7, u"", ""},
        {u"{%goto :}", Syntax, 8, u"", ""},
        {u"{%exit(1)}", Syntax, 6, u"", ""},
        {u"x\\S/run", Syntax, 3, u"Unmatched delimiter", "'x'"},
        // A brace (or an escape) inside the parameter leaves class 1 before the delimiter.
        {u"\\U|a{b|", Syntax, 2, u"Unmatched delimiter", ""},
        {u"\\S", Syntax, 2, u"Unmatched delimiter", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(utf16ToUtf8(c.text));
        Macro m = parse(c.text);
        EXPECT_EQ(m.ErrorCode, c.code);
        EXPECT_EQ(m.ErrorPos, c.pos);
        EXPECT_EQ(m.ErrorText, c.errorText);
        EXPECT_EQ(dump(m), c.left);
    }
}

TEST(MacroParser, InventedNamesTagsAndAppending)
{
    Macro m;
    parseMacro(m, u"a\\nb", 8, Full);
    parseMacro(m, u"{x}", 9, Full);
    EXPECT_EQ(dump(m), "'a' c10 'b' $ Kx={x} $");  // two lists, each with its end token
    EXPECT_EQ(m.Tokens[0].Label + m.Tokens[2].Label + m.Tokens[4].Label, u"_0_2_3");
    EXPECT_EQ(std::vector<uint32_t>({m.Tokens[2].Tag, m.Tokens[4].Tag, m.NextName, m.Flags}),
              std::vector<uint32_t>({8, 9, 4, Full}));
    m.NextName = 0x1A;
    parseMacro(m, u"z", 0, Full);
    EXPECT_EQ(m.Tokens[6].Label, u"_1A");

    // After a fault nothing more is parsed until clearMacro.
    parseMacro(m, u"{", 0, Full);
    size_t count = m.Tokens.size();
    parseMacro(m, u"abc", 0, Full);
    EXPECT_EQ(m.Tokens.size(), count);
    clearMacro(m);
    EXPECT_EQ(std::tuple(m.Tokens.size(), m.ErrorCode, m.ErrorPos), std::tuple(0u, 0, 0u));
    parseMacro(m, u"abc", 0, Full);
    EXPECT_EQ(dump(m), "'abc' $");
}

// Each step as "class:value@start-end", the value in decimal.
std::string lexAll(std::u16string text, uint32_t flags)
{
    std::string out;
    MacroLexer lexer(std::move(text), flags);
    for (; !lexer.atEnd(); lexer.step()) {
        out += out.empty() ? "" : " ";
        out += std::to_string(lexer.Class) + ":" + std::to_string(lexer.Char) + "@" + std::to_string(lexer.Start) +
               "-" + std::to_string(lexer.End);
    }
    return out;
}

TEST(MacroLexer, Steps)
{
    struct Case { std::u16string_view text; uint32_t flags; std::string steps; };
    const Case cases[] = {
        {u"\\n\\r\\t\\b\\f", MacroEscapes, "2:10@0-1 2:13@2-3 2:9@4-5 2:8@6-7 2:12@8-9"},
        {u"\\{\\}\\\\\\q\\\"", MacroEscapes, "2:123@0-1 2:125@2-3 2:92@4-5 2:113@6-7 2:34@8-9"},
        // \x takes at most two digits, of either case, and reads 0 without any.
        {u"\\x414\\xfF\\x4\\xZZ\\x", MacroEscapes, "3:65@0-3 1:52@4-4 3:255@5-8 3:4@9-11 3:0@12-13 1:90@14-14 "
                                                   "1:90@15-15 3:0@16-17"},
        {u"a\\", MacroEscapes | MacroKeys | MacroLanguage, "1:97@0-0 1:92@1-1"},  // a backslash at the end is plain
        {u"\\n", MacroKeys, "1:92@0-0 1:110@1-1"},                                  // and so is one without escapes
        {u"{a}", MacroKeys, "4:123@0-0 1:97@1-1 5:125@2-2"},
        // AtStart is never cleared, so a classic letter counts anywhere in the text.
        {u"ab\\p", 7, "1:97@0-0 1:98@1-1 6:112@2-3"},
        {u"\\E\\v\\U", 7, "6:69@0-1 6:118@2-3 6:85@4-5"},  // the classic letters no other test reads
    };
    for (const Case& c : cases) EXPECT_EQ(lexAll(std::u16string(c.text), c.flags), c.steps) << c.steps;
}

}  // namespace
}  // namespace qrl
