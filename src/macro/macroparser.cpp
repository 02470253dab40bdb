// Turns a macro text into tokens. Each token's Source is the slice of the input it was read from, so
// joining the Sources of a text that parsed gives that text back exactly, whatever form it was written in.
//
// Faults are stored in the Macro, never thrown. Reading goes on to the end of the token in which a fault
// was found, a later fault in that token replacing an earlier one; the main loop then stops. A function is
// checked against the table even when its arguments could not be read, so a bad argument of an unknown
// function, or one of the wrong kind, reports the function; a condition's value is followed by its own
// checks in the same way. The faulty token itself is not kept, so that the list ends with the last token
// that was read whole.
#include "macro/macro.h"

#include "macro/macrointernal.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {
namespace {

// Statement words, compared exactly. "break" is missing on purpose: {%break} does not parse.
struct StatementWord {
    const char16_t* Word;
    int32_t Type;
};
constexpr StatementWord kStatements[] = {
    {u"goto", MacroType::Goto}, {u"if", MacroType::If},     {u"endif", MacroType::EndIf},
    {u"while", MacroType::While}, {u"wend", MacroType::Wend}, {u"exit", MacroType::Exit},
};

bool isIdentifierChar(char16_t c)
{
    return macroIsDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

class MacroParser {
public:
    MacroParser(Macro& macro, std::u16string_view text, uint32_t tag, uint32_t flags)
        : m_macro(macro), m_text(text), m_lexer(std::u16string(text), flags), m_tag(tag)
    {
    }

    void run();

private:
    // The lexer's present character is `c`. Structural characters are matched on their value after
    // escape processing, as the lexer delivers them; only the braces are matched on their class.
    bool on(char16_t c) const { return !m_lexer.atEnd() && m_lexer.Char == c; }
    bool onDigit() const { return !m_lexer.atEnd() && macroIsDigit(m_lexer.Char); }
    void fail(int32_t code, uint32_t pos, std::u16string text = {});

    void readText(MacroToken& token);
    void readCharacter(MacroToken& token);
    void readClassic(MacroToken& token);
    void readBraced(MacroToken& token);
    void readEmulationKey(MacroToken& token);
    void readFunction(MacroToken& token);
    void readArguments(MacroToken& token);
    void checkFunction(MacroToken& token);
    void readStatement(MacroToken& token);
    void readCondition(MacroToken& token);
    void readLabel(MacroToken& token);
    std::u16string readIdentifier();
    bool readValue(MacroParam& param);
    bool readString(MacroParam& param);
    bool readNumber(MacroParam& param);

    Macro& m_macro;
    std::u16string_view m_text;
    MacroLexer m_lexer;
    uint32_t m_tag;
};

void MacroParser::fail(int32_t code, uint32_t pos, std::u16string text)
{
    m_macro.ErrorCode = code;
    m_macro.ErrorPos = pos;
    m_macro.ErrorText = std::move(text);
}

void MacroParser::run()
{
    while (!m_lexer.atEnd() && m_macro.ErrorCode == MacroError::None) {
        MacroToken token;
        token.Label = u"_" + hexUpper(m_macro.NextName++);
        token.Tag = m_tag;
        token.StartPos = m_lexer.Start;
        switch (m_lexer.Class) {
        case MacroClass::Plain: readText(token); break;
        case MacroClass::Escaped:
        case MacroClass::Hex: readCharacter(token); break;
        case MacroClass::Open: readBraced(token); break;
        case MacroClass::Classic: readClassic(token); break;
        default: m_lexer.step(); break;  // a stray } stays an invalid token
        }
        // Every reader takes at least one character, so the range is never empty.
        token.EndPos = m_lexer.Start - 1;
        token.Source = std::u16string(m_text.substr(token.StartPos, token.EndPos - token.StartPos + 1));
        if (m_macro.ErrorCode == MacroError::None)
            m_macro.Tokens.push_back(std::move(token));
    }
}

void MacroParser::readText(MacroToken& token)
{
    token.Type = MacroType::Text;
    while (m_lexer.Class == MacroClass::Plain) {
        token.Text += m_lexer.Char;
        m_lexer.step();
    }
}

void MacroParser::readCharacter(MacroToken& token)
{
    token.Type = MacroType::Character;
    token.CharCode = m_lexer.Char;
    token.Text = std::u16string(1, m_lexer.Char);
    token.CharIsHex = m_lexer.Class != MacroClass::Escaped;
    m_lexer.step();
}

void MacroParser::readClassic(MacroToken& token)
{
    token.Type = MacroType::Classic;
    // The lexer gives class 6 only for the letters of the classic table.
    const MacroClassicRow* row = findMacroClassicLetter(m_lexer.Char);
    token.FunctionId = row != nullptr ? static_cast<int32_t>(row->Id) : -1;
    m_lexer.step();
    if (row == nullptr || row->Form == MacroClassicForm::None)
        return;
    if (row->Form == MacroClassicForm::Number) {
        // Up to three digits; none gives 0.
        uint32_t value = 0;
        for (int digits = 0; digits < 3 && onDigit(); ++digits) {
            value = value * 10 + (m_lexer.Char - u'0');
            m_lexer.step();
        }
        addParam(token, {MacroParamKind::Number, static_cast<int32_t>(value), {}});
        return;
    }
    token.Delimiter = m_lexer.Char;
    uint32_t delimiterPos = m_lexer.Start;
    m_lexer.step();
    MacroParam param{MacroParamKind::String, 0, {}};
    while (m_lexer.Class == MacroClass::Plain && m_lexer.Char != token.Delimiter) {
        param.Text += m_lexer.Char;
        m_lexer.step();
    }
    if (m_lexer.Class != MacroClass::Plain)
        fail(MacroError::Syntax, delimiterPos, u"Unmatched delimiter");
    else
        m_lexer.step();
    addParam(token, param);
}

void MacroParser::readBraced(MacroToken& token)
{
    m_lexer.step();
    if (m_lexer.Class != MacroClass::Plain)
        fail(MacroError::Syntax, m_lexer.Start);
    if (!(m_lexer.Flags & MacroLanguage))
        readEmulationKey(token);
    else if (on(u'%'))
        readStatement(token);
    else if (on(u'.'))
        readFunction(token);
    else if (on(u':'))
        readLabel(token);
    else
        readEmulationKey(token);
    if (m_lexer.Class != MacroClass::Close) {
        if (m_macro.ErrorCode == MacroError::None)
            fail(MacroError::Syntax, m_lexer.Start);
        while (m_lexer.Class != MacroClass::Close && !m_lexer.atEnd())
            m_lexer.step();
    }
    m_lexer.step();
    m_lexer.AtStart = true;
}

void MacroParser::readEmulationKey(MacroToken& token)
{
    token.Type = MacroType::EmulationKey;
    token.Name.clear();
    while (m_lexer.Class == MacroClass::Plain) {
        token.Name += m_lexer.Char;
        m_lexer.step();
    }
    token.Text = u"{" + token.Name + u"}";
}

std::u16string MacroParser::readIdentifier()
{
    std::u16string identifier;
    while (m_lexer.Class == MacroClass::Plain && isIdentifierChar(m_lexer.Char)) {
        identifier += m_lexer.Char;
        m_lexer.step();
    }
    return identifier;
}

void MacroParser::readFunction(MacroToken& token)
{
    m_lexer.step();
    token.Name = readIdentifier();
    if (m_lexer.Class == MacroClass::Close) {
        // "{.name}" without arguments names an emulation key.
        token.Type = MacroType::EmulationKey;
        token.Text = u"{" + token.Name + u"}";
    } else if (on(u'(')) {
        token.Type = MacroType::Function;
        readArguments(token);
        checkFunction(token);
    } else {
        fail(MacroError::Syntax, m_lexer.Start);
    }
}

void MacroParser::readArguments(MacroToken& token)
{
    m_lexer.step();
    while (!on(u')')) {
        // Each value takes a character or fails, and a failure ends the loop: no endless loop at the end.
        MacroParam param;
        readValue(param);
        addParam(token, param);
        if (m_macro.ErrorCode != MacroError::None)
            break;
        if (on(u','))
            m_lexer.step();
    }
    m_lexer.step();
}

void MacroParser::checkFunction(MacroToken& token)
{
    token.FunctionId = -1;
    bool nameKnown = false;
    for (const MacroFunctionRow& row : macroFunctions()) {
        if (!iequals(row.Name, token.Name))
            continue;
        nameKnown = true;
        if (row.ParamCount != token.Params.size())
            continue;
        int32_t id = static_cast<int32_t>(row.Id);
        for (size_t i = 0; i < token.Params.size(); ++i)
            if (static_cast<uint32_t>(token.Params[i].Kind) != row.ParamTypes[i])
                id = -1;
        if (id != -1) {
            token.FunctionId = id;
            return;
        }
    }
    fail(nameKnown ? MacroError::WrongArguments : MacroError::UnknownFunction, token.StartPos, token.Name);
}

void MacroParser::readStatement(MacroToken& token)
{
    token.Type = MacroType::Invalid;
    m_lexer.step();
    uint32_t wordPos = m_lexer.Start;
    std::u16string word = readIdentifier();
    int32_t type = MacroType::Invalid;
    for (const StatementWord& statement : kStatements)
        if (word == statement.Word)
            type = statement.Type;
    if (type == MacroType::Invalid) {
        fail(MacroError::UnknownStatement, wordPos, word);
        return;
    }
    token.Type = type;
    if (type == MacroType::If || type == MacroType::While) {
        readCondition(token);
    } else if (type == MacroType::Goto) {
        // "{%goto :name}": exactly one blank, then a colon.
        if (on(u' '))
            m_lexer.step();
        else
            fail(MacroError::Syntax, m_lexer.Start);
        if (on(u':'))
            m_lexer.step();
        else
            fail(MacroError::Syntax, m_lexer.Start);
        uint32_t namePos = m_lexer.Start;
        token.Name = readIdentifier();
        if (token.Name.empty())
            fail(MacroError::Syntax, namePos);
    }
}

void MacroParser::readCondition(MacroToken& token)
{
    // Whatever stands in place of the "(" is stepped over as if it were one.
    if (!on(u'('))
        fail(MacroError::Syntax, m_lexer.Start);
    m_lexer.step();
    uint32_t identifierPos = m_lexer.Start;
    token.Identifier = readIdentifier();
    if (token.Identifier != u"r")
        fail(MacroError::BadIdentifier, identifierPos, token.Identifier);

    if (on(u'<')) {
        m_lexer.step();
        token.Operator = MacroOperator::Less;
        if (on(u'>')) {
            token.Operator = MacroOperator::NotEqual;
            m_lexer.step();
        } else if (on(u'=')) {
            token.Operator = MacroOperator::LessEqual;
            m_lexer.step();
        }
    } else if (on(u'>')) {
        m_lexer.step();
        token.Operator = MacroOperator::Greater;
        if (on(u'=')) {
            token.Operator = MacroOperator::GreaterEqual;
            m_lexer.step();
        }
    } else if (on(u'=')) {
        token.Operator = MacroOperator::Equal;
        m_lexer.step();
    } else {
        fail(MacroError::Syntax, m_lexer.Start);
    }

    // The checks after the value run even when it could not be read, and their fault replaces its.
    uint32_t valuePos = m_lexer.Start;
    token.Value = MacroParam{};
    readValue(token.Value);
    if (token.Value.Kind == MacroParamKind::String) {
        fail(MacroError::ValueNotNumber, valuePos);
    } else if (on(u')')) {
        m_lexer.step();
    } else {
        fail(MacroError::Syntax, m_lexer.Start);
    }
}

void MacroParser::readLabel(MacroToken& token)
{
    m_lexer.step();
    token.Type = MacroType::Label;
    token.Label = readIdentifier();
}

bool MacroParser::readValue(MacroParam& param)
{
    if (on(u'"')) {
        param.Kind = MacroParamKind::String;
        return readString(param);
    }
    if (onDigit() || on(u'-')) {
        param.Kind = MacroParamKind::Number;
        return readNumber(param);
    }
    fail(MacroError::Syntax, m_lexer.Start);
    return false;
}

bool MacroParser::readString(MacroParam& param)
{
    // Quoted is never set, so an escaped quote ends the string as a plain one does.
    uint32_t quotePos = m_lexer.Start;
    m_lexer.step();
    while (!on(u'"')) {
        if (m_lexer.atEnd()) {
            fail(MacroError::Syntax, quotePos, u"Unmatched \" in string");
            return false;
        }
        param.Text += m_lexer.Char;
        m_lexer.step();
    }
    m_lexer.step();
    return true;
}

bool MacroParser::readNumber(MacroParam& param)
{
    // Unsigned arithmetic: a number too long for 32 bits wraps instead of overflowing.
    uint32_t value = 0;
    bool negative = false;
    if (on(u'-')) {
        negative = true;
        m_lexer.step();
    } else if (on(u'0')) {
        m_lexer.step();
        if (on(u'x') || on(u'X')) {
            m_lexer.step();
            // The digit is looked at before the end, so "0x)" is an error too.
            do {
                int digit = m_lexer.atEnd() ? -1 : macroHexDigit(m_lexer.Char);
                if (digit < 0) {
                    fail(MacroError::Syntax, m_lexer.Start, u"Invalid hex number");
                    return false;
                }
                value = value * 16 + static_cast<uint32_t>(digit);
                m_lexer.step();
            } while (!on(u')') && !on(u','));
            param.Number = static_cast<int32_t>(value);
            return true;
        }
    }
    while (!on(u')') && !on(u',')) {
        if (!onDigit()) {
            fail(MacroError::Syntax, m_lexer.Start, u"Invalid decimal number");
            return false;
        }
        value = value * 10 + static_cast<uint32_t>(m_lexer.Char - u'0');
        m_lexer.step();
    }
    if (negative)
        value = 0u - value;
    param.Number = static_cast<int32_t>(value);
    return true;
}

}  // namespace

void parseMacro(Macro& macro, std::u16string_view text, uint32_t tag, uint32_t flags)
{
    if (flags == 0) {
        MacroToken token;
        token.Type = MacroType::Text;
        token.Text = std::u16string(text);
        token.Source = token.Text;
        token.StartPos = 0;
        token.EndPos = static_cast<uint32_t>(text.size()) - 1;  // the largest value for an empty text
        token.Tag = tag;
        macro.Tokens.push_back(std::move(token));
    } else {
        macro.Flags = flags;
        // Tokens are large: room for a token every eight characters saves moving them as the list
        // grows. Capped, so that a huge text of few tokens does not ask for a huge block.
        constexpr std::size_t kMostReserved = 32768;
        macro.Tokens.reserve(macro.Tokens.size() + std::min(text.size() / 8, kMostReserved) + 1);
        MacroParser parser(macro, text, tag, flags);
        parser.run();
    }
    if (macro.ErrorCode == MacroError::None) {
        MacroToken end;
        end.Type = MacroType::End;
        end.StartPos = static_cast<uint32_t>(text.size());
        end.EndPos = end.StartPos;
        end.Tag = tag;
        macro.Tokens.push_back(std::move(end));
    }
}

void clearMacro(Macro& macro)
{
    macro.ErrorCode = MacroError::None;
    macro.ErrorPos = 0;
    macro.Tokens.clear();
}

}  // namespace qrl
